#include <tavi/ioapi/v2/ioapi.hpp>

#include "model/array_conversion.hpp"
#include "model/library_value.hpp"
#include "model/random_value.hpp"
#include "model/rules.hpp"
#include "support/check.hpp"
#include "support/target.hpp"

#include <array>
#include <iterator>
#include <utility>

/// \file
/// A script of operations on four values, each done to a model as well.

namespace {

using namespace fuzz;
using v2::io_value;

/// The model's form of what a conversion of the library gives.
template <class T>
struct conversion_of {
    using library_type = T;
    static bool same_value(T const& given, T const& expected) {
        return same_result(given, expected);
    }
};
template <>
struct conversion_of<std::string> {
    using library_type = v2::utility::string;
    static bool same_value(v2::utility::string const& given, std::string const& expected) {
        return same_text(given, expected);
    }
};
template <>
struct conversion_of<value_model> {
    using library_type = io_value;
    static bool same_value(io_value const& given, value_model const& expected) {
        return same(given, expected);
    }
};

template <class T>
void compare_scalar(io_value const& value, value_model const& model) {
    using conversion = conversion_of<T>;
    outcome<T> const expected = to_scalar_of<T>(model);
    v2::io_error error(io_errc::not_found);
    auto const given = v2::detail::get_as<typename conversion::library_type>(value, error);
    check(error == v2::io_error(expected.code), "get_as reports the code of the rules");
    check(conversion::same_value(given, expected.value), "get_as gives what the rules say");
}

template <class T>
void compare_list(io_value const& value, outcome<list<T>> const& expected) {
    using conversion = conversion_of<T>;
    using target = v2::utility::array<typename conversion::library_type>;
    v2::io_error error(io_errc::not_found);
    target const given = v2::detail::get_as<target>(value, error);
    check(error == v2::io_error(expected.code), "get_as of an array reports the code of the rules");
    check(given.size() == expected.value.size(), "get_as of an array gives as many elements");
    unsigned int next = 0;
    for (auto const& each : expected.value) {
        check(conversion::same_value(given[next++], each), "get_as of an array gives the elements");
    }
}

template <class T>
void compare_conversion(io_value const& value, value_model const& model) {
    compare_scalar<T>(value, model);
    compare_list<T>(value, to_list_of<T>(model));
}

void compare_conversion_to(unsigned int target, io_value const& value, value_model const& model) {
    switch (target) {
    case 0: return compare_conversion<bool>(value, model);
    case 1: return compare_conversion<char>(value, model);
    case 2: return compare_conversion<signed char>(value, model);
    case 3: return compare_conversion<unsigned char>(value, model);
    case 4: return compare_conversion<short>(value, model);
    case 5: return compare_conversion<unsigned short>(value, model);
    case 6: return compare_conversion<int>(value, model);
    case 7: return compare_conversion<unsigned int>(value, model);
    case 8: return compare_conversion<long>(value, model);
    case 9: return compare_conversion<unsigned long>(value, model);
    case 10: return compare_conversion<long long>(value, model);
    case 11: return compare_conversion<unsigned long long>(value, model);
    case 12: return compare_conversion<float>(value, model);
    case 13: return compare_conversion<double>(value, model);
    case 14: return compare_conversion<long double>(value, model);
    case 15: return compare_conversion<std::string>(value, model);
    default: return compare_list<value_model>(value, to_values(model));
    }
}

struct pair {
    io_value value;
    value_model model;
};

class machine {
public:
    explicit machine(input& script) : script_(script) {}

    void run() {
        for (int step = 0; step < 64 && !script_.empty(); ++step) {
            operate(slot(), slot());
            for (pair const& each : slots_) {
                check(same(each.value, each.model), "a value holds what was put into it");
            }
        }
    }

private:
    pair& slot() { return slots_.at(script_.below(4)); }

    void operate(pair& left, pair& right) {
        switch (script_.below(12)) {
        case 0: return build(left);
        case 1: return copy(left, right);
        case 2: return move(left, right);
        case 3: return build_by_copy(left, right);
        case 4: return build_by_move(left, right);
        case 5: return take_element(left, true);
        case 6: return take_element(left, false);
        case 7: return convert(left);
        case 8: return compare(left, right);
        case 9: return declare(left);
        case 10: return swap(left, right);
        default: return build_text(left);
        }
    }

    void build(pair& target) {
        value_model model = random_value(script_);
        target.value = made(model);
        target.model = std::move(model);
    }

    void build_text(pair& target) {
        std::string const text = random_text(script_);
        target.value = io_value(text.data(), static_cast<unsigned int>(text.size()));
        target.model = natural(text);
    }

    static void copy(pair& target, pair const& source) {
        target.value = source.value; // the two may be one
        if (&target != &source) target.model = source.model;
        check(identical(target.value, source.value), "a copy is identical to its source");
    }

    static void move(pair& target, pair& source) {
        target.value = std::move(source.value);
        if (&target == &source) return;
        target.model = std::move(source.model);
        source.model = value_model();
    }

    static void build_by_copy(pair& target, pair const& source) {
        io_value copied(source.value);
        io_value const& left_behind = copied;
        value_model model = source.model;
        target.value.assign(std::move(copied));
        check(left_behind.index() == 0 && left_behind.data_type() == io_data_type(),
              "a value that was moved from is empty");
        target.model = std::move(model);
    }

    static void build_by_move(pair& target, pair& source) {
        io_value moved(std::move(source.value));
        value_model model = std::move(source.model);
        source.model = value_model();
        target.value.assign(moved);
        target.model = std::move(model);
    }

    static void swap(pair& left, pair& right) {
        std::swap(left.value, right.value);
        std::swap(left.model, right.model);
    }

    /// An element of an array of values takes the place of the array.
    void take_element(pair& holder, bool moved) {
        auto* const elements = std::get_if<list<value_model>>(&holder.model.payload);
        if (elements == nullptr || elements->empty()) return;
        auto const at = script_.byte() % static_cast<unsigned int>(elements->size());
        auto const& stored = *holder.value.get_if<v2::utility::array<io_value>>();
        if (moved) {
            holder.value = std::move(const_cast<io_value&>(stored[at]));
        } else {
            holder.value = stored[at];
        }
        value_model element = *std::next(elements->begin(), static_cast<std::ptrdiff_t>(at));
        holder.model = std::move(element);
    }

    void convert(pair const& from) {
        compare_conversion_to(script_.below(17), from.value, from.model);
    }

    void declare(pair& from) {
        io_data_type const type = random_type(script_);
        check(from.value.converts_to(type) == fits(from.model, type), "a value fits by the rules");
        outcome<value_model> expected = converted(from.model, type);
        v2::io_error error(io_errc::not_found);
        io_value given = from.value.to_variant(type, error);
        check(error == v2::io_error(expected.code), "to_variant reports the code of the rules");
        check(same(given, expected.value), "to_variant gives what the rules say");
        from.value = std::move(given);
        from.model = std::move(expected.value);
    }

    static void compare(pair const& left, pair const& right) {
        check((left.value == right.value) == equal(left.model, right.model), "== is as the rules");
        check((left.value != right.value) == !equal(left.model, right.model), "!= is as the rules");
        check(left.value.equals(right.value) == equals_one_way(left.model, right.model),
              "equals is as the rules");
        if (left.model.type == right.model.type) {
            check(left.value.equals_same_type(right.value) == equal_stored(left.model, right.model),
                  "equals_same_type is as the rules");
        }
    }

    input& script_;
    std::array<pair, 4> slots_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    input script(data, size);
    machine(script).run();
    return 0;
}
