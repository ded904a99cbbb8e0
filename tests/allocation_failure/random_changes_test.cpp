#include "content.hpp"
#include "support/allocations.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <new>
#include <random>
#include <string>
#include <utility>
#include <vector>

// Long sequences of changes, in which memory runs out now and then, beside what they must have made
// in containers of the standard: a change is made whole or not at all, and the next one goes on
// from there.

namespace allocation_failure_test {
namespace {

using test_support::allocation_failure;
using v2::io_value;
using v2::plc_identifier;

/// What is done, and when memory runs out.
class chance {
public:
    explicit chance(unsigned int seed) : bits_(seed) {}

    unsigned int below(unsigned int bound) {
        return std::uniform_int_distribution<unsigned int>(0, bound - 1)(bits_);
    }
    /// Often one that has come before; every other takes a block of its own.
    std::string key() {
        std::string const text = "key " + std::to_string(below(7));
        return below(2) == 0 ? text
                             : text + ", too long to stand anywhere but in a block of its own";
    }
    io_value value() {
        switch (below(4)) {
        case 0: return io_value(static_cast<int>(below(100)));
        case 1: return io_value(key());
        case 2: return io_value(v2::utility::array<v2::utility::string>{key(), key()});
        default: return io_value(v2::utility::array<io_value>::of(key(), 7, key()));
        }
    }
    /// Does `change`, with any of its first allocations failing, or none.
    /// \return whether it was done
    template <class Change>
    bool allows(Change change) {
        auto const kind =
            below(2) == 0 ? test_support::shortage::once : test_support::shortage::lasting;
        allocation_failure const failure(below(12) + 1, kind);
        try {
            change();
            return true;
        } catch (std::bad_alloc const&) {
            EXPECT_TRUE(failure.hit());
            return false;
        }
    }

private:
    std::mt19937 bits_;
};

using by_key = std::map<std::string, std::string>;

/// Does `set` with some key and value, and expects these where it is done.
template <class Set>
void add_value(chance& next, by_key& expected, Set set) {
    std::string const key = next.key();
    io_value value = next.value();
    std::string const text = text_of(value);
    // The argument is moved in: its copy is no part of the change.
    if (next.allows([&] { set(key, std::move(value)); })) expected[key] = text;
}

/// Each of these has a container, and what it must hold.
struct a_store {
    config::store made;
    by_key expected;

    void add(chance& next) {
        add_value(next, expected,
                  [&](std::string const& key, io_value value) { made.set(key, std::move(value)); });
    }
    void drop(chance& next) {
        std::string const key = next.key();
        EXPECT_EQ(made.remove(key), expected.erase(key) == 1);
    }
    [[nodiscard]] by_key content() const {
        by_key found;
        for (auto const key : made.keys()) found[std::string(key)] = text_of(made.get(key));
        return found;
    }
};

struct a_list_of_diagnostics {
    v2::io_error_diagnostics_generic made;
    by_key expected;

    void add(chance& next) {
        add_value(next, expected,
                  [&](std::string const& key, io_value value) { made.set(key, std::move(value)); });
    }
    void drop(chance& next) {
        std::string const key = next.key();
        made.remove(key);
        expected.erase(key);
    }
    [[nodiscard]] by_key content() const {
        by_key found;
        for (auto const& entry : made) found[std::string(entry.key)] = text_of(entry.value);
        return found;
    }
};

struct an_object {
    v2::io_object made;
    by_key expected;

    void add(chance& next) {
        v2::io_error error;
        add_value(next, expected, [&](std::string const& key, io_value value) {
            made.set(key, std::move(value), error);
        });
        EXPECT_TRUE(error.ok());
    }
    void drop(chance& next) {
        std::string const key = next.key();
        v2::io_error error;
        made.remove(key, error);
        EXPECT_EQ(error.ok(), expected.erase(key) == 1);
    }
    [[nodiscard]] by_key content() const {
        by_key found;
        for (auto const& [key, value] : made) found[std::string(key)] = text_of(value);
        return found;
    }
};

struct a_set_of_subscriptions {
    v2::subscription_result made;
    by_key expected;

    void add(chance& next) {
        std::string const key = next.key();
        plc_identifier const identifier(key, key);
        unsigned int const number = next.below(1000);
        if (next.allows([&] { made.set(identifier, {}, number, {}); })) {
            expected[key] = std::to_string(number);
        }
    }
    void drop(chance& next) {
        std::string const key = next.key();
        EXPECT_EQ(made.remove(plc_identifier(key, key)), expected.erase(key));
    }
    [[nodiscard]] by_key content() const {
        by_key found;
        for (auto const& entry : made) {
            found[std::string(entry.identifier.primary().text())] = std::to_string(entry.aux_value);
        }
        return found;
    }
};

using in_order = std::vector<std::string>;

struct a_list_of_nodes {
    v2::browse_result made;
    in_order expected;

    void add(chance& next) {
        std::string const key = next.key();
        v2::browsing::node node{v2::browsing::node_class::variable,
                                plc_identifier(key, key),
                                plc_identifier(key),
                                v2::utility::string(key),
                                {}};
        if (next.allows([&] { made.push(std::move(node)); })) expected.push_back(key);
    }
    void drop(chance& next) {
        unsigned int const size = next.below(6);
        if (next.allows([&] { made.resize(size); })) expected.resize(size);
    }
    [[nodiscard]] in_order content() const {
        in_order found;
        for (auto const& node : made) found.emplace_back(node.description);
        return found;
    }
};

struct a_list_of_options {
    config::category made{"name", "description", true, true, {}};
    in_order expected;

    void add(chance& next) {
        std::string const key = next.key();
        config::option const option(key, key, key, next.value(), {});
        bool const is_new = std::find(expected.begin(), expected.end(), key) == expected.end();
        bool added = false;
        if (next.allows([&] { added = made.add_option(option); })) {
            EXPECT_EQ(added, is_new);
            if (is_new) expected.push_back(key);
        }
    }
    void drop(chance& next) {
        std::string const key = next.key();
        auto const at = std::find(expected.begin(), expected.end(), key);
        EXPECT_EQ(made.remove_option(key), at != expected.end());
        if (at != expected.end()) expected.erase(at);
    }
    [[nodiscard]] in_order content() const {
        in_order found;
        for (auto const& option : made.options()) found.emplace_back(option.key());
        return found;
    }
};

template <class Kind>
class RandomChanges : public ::testing::Test {};
using changed_kinds = ::testing::Types<a_store,
                                       a_list_of_diagnostics,
                                       an_object,
                                       a_set_of_subscriptions,
                                       a_list_of_nodes,
                                       a_list_of_options>;
TYPED_TEST_SUITE(RandomChanges, changed_kinds);

TYPED_TEST(RandomChanges, AreMadeWholeOrNotAtAll) {
    for (unsigned int seed = 0; seed < 40; ++seed) {
        chance next(seed);
        long long const before = test_support::live_blocks();
        {
            TypeParam kind;
            for (int step = 0; step < 40; ++step) {
                if (next.below(4) == 0) {
                    kind.drop(next);
                } else {
                    kind.add(next);
                }
                ASSERT_EQ(kind.content(), kind.expected) << "seed " << seed << ", step " << step;
            }
        }
        ASSERT_EQ(test_support::live_blocks(), before) << "seed " << seed;
    }
}

} // namespace
} // namespace allocation_failure_test
