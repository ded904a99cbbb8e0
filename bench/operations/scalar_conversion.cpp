#include "checked_number.hpp"
#include "inputs.hpp"
#include "operations.hpp"

#include <cstdint>

/// \file
/// A number of a kind that is known at run time to one that is known at compile time, by the
/// checked conversion of each peer.

namespace bench {

namespace {

/// Numbers that fit every target.
constexpr int fitting(int number) {
    return number % 200;
}

/// The type that our library and the floor have for a target: 64 bits are a `long long` there.
template <class T>
using own_target = std::conditional_t<std::is_same_v<T, std::int64_t>, long long, T>;

// --- how each peer converts; the outcome is not asked of a peer that cannot tell

template <class T>
outcome<own_target<T>> convert(v2::io_value const& value, v2::io_error& error) {
    auto const number = value.as<own_target<T>>(error);
    return {number, error.ok()};
}

template <class T>
outcome<T> convert(bare_value const& value) {
    T number{};
    bool const ok = convert_number(value, number);
    return {number, ok};
}

template <class T>
outcome<own_target<T>> convert(floor_value const& value, floor::error& error) {
    if constexpr (std::is_same_v<T, std::int64_t>) {
        auto const number = floor::to_i64(value.get(), error);
        return {number, error.code == 0};
    } else if constexpr (std::is_same_v<T, std::uint8_t>) {
        auto const number = floor::to_u8(value.get(), error);
        return {number, error.code == 0};
    } else {
        auto const number = floor::to_i32(value.get(), error);
        return {number, error.code == 0};
    }
}

template <class T>
outcome<T> convert(std_value const& value) {
    T number{};
    bool const ok = std::visit(
        [&](auto const& content) {
            using content_type = std::decay_t<decltype(content)>;
            if constexpr (std::is_arithmetic_v<content_type> &&
                          !std::is_same_v<content_type, bool>) {
                return convert_number(content, number);
            } else {
                return false;
            }
        },
        value);
    return {number, ok};
}

template <class T>
outcome<T> convert(boost_value const& value) {
    boost::json::error_code error;
    T const number = value.to_number<T>(error);
    return {number, !error};
}

template <class T>
outcome<T> convert(poco_value const& value) {
    try {
        return {value.convert<T>(), true};
    } catch (Poco::Exception const&) {
        return {T{}, false};
    }
}

template <class T>
outcome<T> convert(QVariant const& value) {
    if constexpr (std::is_same_v<T, std::uint8_t>) {
        return {qvariant_cast<std::uint8_t>(value), true};
    } else {
        bool ok = false;
        auto const number = sizeof(T) == 8 ? value.toLongLong(&ok) : value.toInt(&ok);
        return {static_cast<T>(number), ok};
    }
}

template <class T>
outcome<T> convert(glib_value const& value) {
    if constexpr (std::is_same_v<T, std::int64_t>) {
        return {g_value_get_int64(value.transformed(G_TYPE_INT64).get()), true};
    } else if constexpr (std::is_same_v<T, std::uint8_t>) {
        return {g_value_get_uchar(value.transformed(G_TYPE_UCHAR).get()), true};
    } else {
        return {g_value_get_int(value.transformed(G_TYPE_INT).get()), true};
    }
}

template <class T>
outcome<T> convert(nlohmann_value const& value) {
    return {value.get<T>(), true};
}

/// For a number whose kind is known at compile time.
template <class T, class S>
outcome<T> convert_static(S number) {
    try {
        return {boost::numeric_cast<T>(number), true};
    } catch (boost::numeric::bad_numeric_cast const&) {
        return {T{}, false};
    }
}

// --- one operation

/// \param number_at  the number of an input, of its index
/// \param is_right  of an outcome and that index
template <class T, class Number, class Right>
struct conversion {
    char const* operation;
    Number number_at;
    Right is_right;

    template <class V>
    void add_peer(std::string const& name) const {
        auto const make = [at = number_at](int i) { return peer<V>::of(at(i)); };
        add_calls(
            operation, name, make, [](V const& value) { return convert<T>(value); }, is_right);
    }

    /// With the record of the outcome that a caller keeps from call to call.
    template <class V, class Error>
    void add_recording() const {
        auto const make = [at = number_at](int i) { return peer<V>::of(at(i)); };
        auto const error = std::make_shared<Error>();
        add_calls(
            operation, peer<V>::name, make,
            [=](V const& value) { return convert<T>(value, *error); }, is_right);
    }

    /// The peers that report every failure.
    void add_checked() const {
        add_recording<v2::io_value, v2::io_error>();
        add_recording<floor_value, floor::error>();
        add_peer<bare_value>("limit");
        add_peer<std_value>("std_variant[checked by hand]");
        add_peer<boost_value>("boost_json");
    }

    /// Those that look at the range alone and cut fractions off.
    void add_checking_range(bool is_complete) const {
        add_peer<poco_value>(is_complete ? peer<poco_value>::name
                                         : named<poco_value>("less: cuts fractions"));
        add_calls(
            operation, "boost_numeric_cast[less: static type]", number_at,
            [](auto number) { return convert_static<T>(number); }, is_right);
    }

    /// The others; of these, Qt and GLib check the widening, where there is nothing to check.
    void add_unchecked() const {
        bool const is_complete = sizeof(T) == 8;
        char const* const note = "less: unchecked";
        add_peer<QVariant>(is_complete ? peer<QVariant>::name : named<QVariant>(note));
        add_peer<glib_value>(is_complete ? peer<glib_value>::name : named<glib_value>(note));
        add_peer<nlohmann_value>(is_complete ? peer<nlohmann_value>::name
                                             : named<nlohmann_value>(note));
    }
};

template <class T, class Number, class Right>
conversion<T, Number, Right> to(char const* operation, Number number_at, Right is_right) {
    return {operation, number_at, is_right};
}

template <class T, class S>
void add_success(char const* operation) {
    auto const number_at = [](int i) { return static_cast<S>(fitting(i)); };
    auto const is_right = [](auto const& got, int i) {
        return got.ok && static_cast<int>(got.number) == fitting(i);
    };
    auto const all = to<T>(operation, number_at, is_right);
    all.add_checked();
    all.add_checking_range(std::is_integral_v<S>);
    all.add_unchecked();
}

template <class T, class S>
void add_failure(char const* operation, S misfit) {
    auto const number_at = [=](int) { return misfit; };
    auto const is_right = [](auto const& got, int) { return !got.ok; };
    auto const all = to<T>(operation, number_at, is_right);
    all.add_checked();
    if constexpr (std::is_integral_v<S>) all.add_checking_range(true);
}

} // namespace

void add_scalar_conversion() {
    add_success<std::int64_t, int>("i32_to_i64");
    add_success<std::uint8_t, int>("i32_to_u8");
    add_success<std::int32_t, double>("dbl_to_i32");
    add_failure<std::uint8_t>("i32_to_u8_fails", 300);
    add_failure<std::int32_t>("dbl_to_i32_fails", 0.5);
}

} // namespace bench
