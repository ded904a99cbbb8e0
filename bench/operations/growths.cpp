#include "harness.hpp"
#include "keyed.hpp"
#include "operations.hpp"
#include "own_containers.hpp"
#include "structures.hpp"

#include <cmath>

/// \file
/// How the time of each operation of a container grows with its size. One pass is one operation, or
/// for those that take up all, all of them.

namespace bench {

namespace {

/// Goes round the numbers below `size`, at most 4096 of them: far from each other, so that every
/// size meets its own caches, and evenly spread, so that a few have the mean of all.
class spread_walk {
public:
    explicit spread_walk(int size) {
        for (int i = 0; i < std::min(size, 4096); ++i) {
            double const turns = (i + 0.5) * 0.6180339887498949; // the golden section
            order_.push_back(static_cast<int>((turns - std::floor(turns)) * size));
        }
    }
    int next() {
        if (++at_ == order_.size()) at_ = 0;
        return order_[at_];
    }

private:
    std::vector<int> order_;
    std::size_t at_ = 0;
};

/// An operation on one element at a time.
/// \param make  of a size, the container
/// \param touch  of the container and the number of an element, whether it was there
/// \param is_right  of the same, after an element was touched
template <class Make, class Touch, class Right>
void add_growing(
    char const* operation, benchmark::BigO order, Make make, Touch touch, Right is_right) {
    int const passes = order == benchmark::oN ? 8 : 256;
    add_growth(operation, order, passes, [=](int size) {
        auto const container = make(size);
        auto const walk = std::make_shared<spread_walk>(size);
        auto const run = [=] {
            bool found = touch(*container, walk->next());
            DoNotOptimize(found);
        };
        return job{run, [=] {
                       for (int const number : {0, size / 2, size - 1}) {
                           if (!touch(*container, number) || !is_right(*container, number))
                               return false;
                       }
                       return true;
                   }};
    });
}

/// One whose answer tells already.
template <class Make, class Touch>
void add_growing(char const* operation, benchmark::BigO order, Make make, Touch touch) {
    add_growing(operation, order, make, touch, touch);
}

// --- containers under keys

template <class Container>
void add_keyed_growth(char const* get, char const* set) {
    auto const make = [](int size) { return std::make_shared<filled<Container>>(size); };
    add_growing(get, benchmark::oLogN, make, [](filled<Container>& all, int number) {
        return all.container.get(all.keys[static_cast<std::size_t>(number)]) == 0.5;
    });
    add_growing(
        set, benchmark::oLogN, make,
        [](filled<Container>& all, int number) {
            all.container.put(all.keys[static_cast<std::size_t>(number)], number + 1);
            return true;
        },
        [](filled<Container>& all, int number) {
            return all.container.get(all.keys[static_cast<std::size_t>(number)]) == number + 1;
        });
}

// --- lists and maps of identifiers

template <class Container>
struct identified {
    Container container;
    identifiers ids;

    explicit identified(int size) : ids(make_identifiers(size)) {
        if constexpr (std::is_same_v<Container, v2::read_result>) {
            container.assign(ids);
        } else if constexpr (std::is_same_v<Container, v2::browse_result>) {
            for (auto const& id : ids) container.push(make_node(id));
        } else {
            unsigned int number = 0;
            for (auto const& id : ids) container.set(id, ++number);
        }
    }

    [[nodiscard]] v2::plc_identifier const& id(int number) const {
        return ids[static_cast<std::size_t>(number)];
    }
};

void add_identified_growths() {
    using results = identified<v2::read_result>;
    using nodes = identified<v2::browse_result>;
    using subscriptions = identified<iokern_subscriptions>;
    add_growing(
        "growth_result_find", benchmark::oN,
        [](int size) { return std::make_shared<results>(size); },
        [](results& all, int number) {
            auto const* const entry = all.container.find(all.id(number));
            return entry == all.container.begin() + number;
        });
    add_growing(
        "growth_browse_find", benchmark::oN, [](int size) { return std::make_shared<nodes>(size); },
        [](nodes& all, int number) {
            auto const* const node = all.container.get_node(all.id(number));
            return node == all.container.begin() + number;
        });
    auto const make = [](int size) { return std::make_shared<subscriptions>(size); };
    add_growing("growth_subscription_get", benchmark::oLogN, make,
                [](subscriptions& all, int number) {
                    return all.container.get(all.id(number)) == unsigned(number) + 1;
                });
    add_growing(
        "growth_subscription_set", benchmark::oLogN, make,
        [](subscriptions& all, int number) {
            all.container.set(all.id(number), unsigned(number) + 2);
            return true;
        },
        [](subscriptions& all, int number) {
            return all.container.get(all.id(number)) == unsigned(number) + 2;
        });
}

// --- all of them at once

void add_whole_growths() {
    add_growth("growth_browse_push", benchmark::oN, 1, [](int size) {
        auto const ids = shared(make_identifiers(size));
        auto const push_all = [=] {
            iokern_nodes nodes;
            for (auto const& id : *ids) nodes.push(make_node(id));
            return nodes;
        };
        auto const run = [=] {
            auto nodes = push_all();
            DoNotOptimize(nodes);
        };
        return job{run, [=] { return push_all().last().identifier == ids->back(); }};
    });
    add_growth("growth_result_build", benchmark::oN, 1, [](int size) {
        auto const ids = shared(make_identifiers(size));
        auto const run = [=] {
            v2::read_result results(*ids);
            DoNotOptimize(results);
        };
        return job{run, [=] {
                       v2::read_result const results(*ids);
                       return results.size() == unsigned(size) &&
                              results.begin()->identifier() == ids->front();
                   }};
    });
}

} // namespace

void add_growths() {
    add_identified_growths();
    add_whole_growths();
    add_keyed_growth<iokern_store>("growth_store_get", "growth_store_set");
    add_keyed_growth<iokern_object>("growth_object_get", "growth_object_set");
    add_growing(
        "growth_dictionary_get", benchmark::oLogN,
        [](int size) { return std::make_shared<iokern_dictionary>(size); },
        [](iokern_dictionary& dictionary, int number) {
            return iokern_dictionary::is_motor(dictionary.get(structure_id(number)));
        });
}

} // namespace bench
