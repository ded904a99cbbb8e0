#include "equality.hpp"

#include <tavi/ioapi/v2/io_error.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include "array_rules.hpp"

#include <limits>
#include <type_traits>

/// \file
/// Values are compared by what they mean: one of them is converted to the other's kind, by the
/// rules of conversion, and then compared. Nothing is built for that but an array of values.

namespace tavi::ioapi::v2 {

namespace detail {
namespace {

// --- one converted payload against one that stands

/// Whether `source` converts to the kind of `own` and is then the same. The text of a number is
/// compared in place.
template <class Own, class From>
bool equals_converted(Own const& own, From const& source) {
    if constexpr (std::is_same_v<From, std::nullptr_t>) {
        return false; // nothing is equal to what was set
    } else if constexpr (std::is_same_v<From, io_value>) {
        return source.visit([&](auto const& payload) { return equals_converted(own, payload); });
    } else if constexpr (std::is_same_v<Own, utility::string>) {
        if constexpr (number<From>) {
            return own == number_text(source).view();
        } else if constexpr (std::is_same_v<From, bool>) {
            return own == text_of(source);
        } else if constexpr (std::is_same_v<From, utility::string>) {
            return own == source;
        } else {
            return false;
        }
    } else {
        Own converted{};
        return convert(source, converted) == io_errc::success && converted == own;
    }
}

/// Whether every element of `source` converts to the kind of the elements of `own` and is then the
/// same. The number of elements must be, too.
template <class Own, class From>
bool equals_converted_array(utility::array<Own> const& own, utility::array<From> const& source) {
    if (own.size() != source.size()) return false;
    unsigned int first = 0; // numbers that differ may still be equal, once they are clamped
    if constexpr (agreement_is_equality<Own, From>()) {
        first = agreeing_elements(own.data(), source.data(), own.size());
    }
    for (unsigned int i = first; i < own.size(); ++i) {
        if (!equals_converted(element_of(own, i), element_of(source, i))) return false;
    }
    return true;
}

// --- numbers at first sight

/// A number as a `double`, NaN for all that is no number or that a `double` is not trusted to hold.
struct plain_number {
    double value = std::numeric_limits<double>::quiet_NaN();
    bool is_whole = false;
    bool is_float = false;
};

inline plain_number plain(io_value const& value) noexcept {
    // What is stored without a legal alternative is for the rules to meet.
    if (value.index() < 0 || value.index() > last_plain_index) return {};
    return value.visit([]<class T>(T const& payload) -> plain_number {
        if constexpr (!number<T>) {
            return {};
        } else if constexpr (real<T>) {
            return {payload, false, std::is_same_v<T, float>};
        } else {
            using to_double = rule<double, T>;
            return to_double::fits(payload) ? plain_number{to_double::make(payload), true, false}
                                            : plain_number{};
        }
    });
}

/// Whether two numbers are equal by the rules because they agree; "no" says nothing. An integer
/// that agrees with a `float` counts only where a `float` is trusted to hold it.
inline bool agree_plainly(io_value const& a, io_value const& b) noexcept {
    plain_number const left = plain(a);
    plain_number const right = plain(b);
    if (!(left.value == right.value)) return false;
    bool const is_in_doubt = (left.is_float && right.is_whole) || (right.is_float && left.is_whole);
    return !is_in_doubt || rule<float, long long>::fits(static_cast<long long>(left.value));
}

using values = utility::array<io_value>;

// --- the kind of the left value decides

bool equals_nothing(io_value const& other) {
    return other.data_type() == io_data_type{};
}

bool equals_values(values const& own, io_value const& other) {
    if (auto const* const others = other.get_if<values>())
        return compare_elements(own, *others).forth;
    io_error error;
    values const converted = get_as<values>(other, error);
    return error.ok() && compare_elements(own, converted).forth;
}

template <class Own>
bool equals_payload(Own const& own, io_value const& other) {
    using element = array_element_t<Own>;
    if constexpr (std::is_same_v<Own, std::nullptr_t>) {
        return equals_nothing(other);
    } else if constexpr (std::is_same_v<Own, io_object> || std::is_same_v<element, io_object>) {
        return false;
    } else if constexpr (!is_array<Own>) {
        return equals_converted(own, other);
    } else {
        // No array equals one of objects, not even an empty one.
        bool const may_equal = other.get_if<utility::array<io_object>>() == nullptr;
        if constexpr (std::is_same_v<element, io_value>) {
            return may_equal && equals_values(own, other);
        } else {
            return may_equal && other.visit([&]<class From>(From const& source) {
                if constexpr (is_array<From>) {
                    return equals_converted_array(own, source);
                } else {
                    return false;
                }
            });
        }
    }
}

} // namespace

both_ways compare_elements(utility::array<io_value> const& a, utility::array<io_value> const& b) {
    bool const is_one_size = a.size() == b.size();
    both_ways result{is_one_size, is_one_size};
    for (unsigned int i = 0; i < a.size() && (result.forth || result.back); ++i) {
        both_ways const each = compare(a[i], b[i]);
        result.forth = result.forth && each.forth;
        result.back = result.back && each.back;
    }
    return result;
}

both_ways compare(io_value const& a, io_value const& b) {
    bool const is_one_type = a.data_type() == b.data_type();
    auto const* const left = a.get_if<values>();
    auto const* const right = b.get_if<values>();
    both_ways ways{};
    if (left != nullptr && right != nullptr) {
        ways = compare_elements(*left, *right);
    } else if (is_one_type) {
        ways.forth = a.equals_same_type(b);
        ways.back = a.index() == b.index() ? ways.forth : b.equals_same_type(a);
    } else {
        ways.forth = a.equals(b);
        ways.back = !ways.forth && b.equals(a);
    }
    if (is_one_type) return ways;
    bool const either = ways.forth || ways.back;
    return {either, either};
}

} // namespace detail

bool io_value::equals(io_value const& other) const {
    return visit([&](auto const& own) { return detail::equals_payload(own, other); });
}

bool io_value::operator==(io_value const& other) const {
    if (type_ == other.type_) return equals_same_type(other);
    return detail::agree_plainly(*this, other) || detail::compare(*this, other).forth;
}

bool io_value::operator!=(io_value const& other) const {
    return !(*this == other);
}

} // namespace tavi::ioapi::v2
