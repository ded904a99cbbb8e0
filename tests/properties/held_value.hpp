#pragma once

#include <tavi/ioapi/v2/ioapi.hpp>

#include <rapidcheck.h>

#include <limits>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

/// \file
/// Values of every kind for properties, which are made smaller again where one fails.

namespace properties_test {

namespace v2 = tavi::ioapi::v2;
using v2::io_data_type;
using v2::io_value;
using types = io_data_type::basic_types;

/// A value as the property library can hold it: it needs a destructor that never raises.
class held_value {
public:
    explicit held_value(io_value value) : value_(std::make_shared<io_value>(std::move(value))) {}

    [[nodiscard]] io_value const& get() const noexcept { return *value_; }

private:
    std::shared_ptr<io_value const> value_;
};

inline std::ostream& operator<<(std::ostream& out, held_value const& held) {
    return out << held.get().data_type() << ' ' << held.get();
}

/// Any number, and more often than chance has it one at a border.
template <class T>
rc::Gen<T> any_number() {
    using limits = std::numeric_limits<T>;
    if constexpr (std::is_floating_point_v<T>) {
        return rc::gen::oneOf(rc::gen::arbitrary<T>(),
                              rc::gen::map(rc::gen::arbitrary<short>(),
                                           [](short number) { return static_cast<T>(number); }),
                              rc::gen::element(T(0), T(-0.0), T(0.5), T(300), T(16777215),
                                               T(16777216), T(9007199254740992.0), limits::max(),
                                               limits::lowest(), limits::denorm_min(),
                                               limits::infinity(), -limits::infinity(),
                                               limits::quiet_NaN()));
    } else {
        return rc::gen::oneOf(rc::gen::arbitrary<T>(),
                              rc::gen::element(limits::min(), limits::max(),
                                               static_cast<T>(limits::max() / 2 + 1), T(0), T(1),
                                               static_cast<T>(-1), T(100)));
    }
}

inline rc::Gen<std::string> any_text() {
    return rc::gen::oneOf(
        rc::gen::arbitrary<std::string>(), rc::gen::string<std::string>(),
        rc::gen::map(rc::gen::arbitrary<long long>(),
                     [](long long number) { return std::to_string(number); }),
        rc::gen::map(rc::gen::arbitrary<float>(),
                     [](float number) { return v2::io_value(number).as<std::string>(); }),
        rc::gen::element<std::string>("", "0", "-0", "0.0", "inf", "nan", "true", "1e3", ".5"));
}

template <class T>
rc::Gen<held_value> value_of(rc::Gen<T> payload) {
    return rc::gen::map(std::move(payload),
                        [](T const& each) { return held_value(io_value(each)); });
}

template <class T>
rc::Gen<held_value> array_of(rc::Gen<T> element) {
    return rc::gen::map(
        rc::gen::container<std::vector<T>>(std::move(element)),
        [](std::vector<T> const& elements) { return held_value(v2::utility::array<T>(elements)); });
}

template <class T>
rc::Gen<held_value> number_or_numbers() {
    return rc::gen::oneOf(value_of(any_number<T>()), array_of(any_number<T>()));
}

inline rc::Gen<held_value> any_number_value() {
    return rc::gen::oneOf(value_of(any_number<signed char>()), value_of(any_number<short>()),
                          value_of(any_number<int>()), value_of(any_number<long>()),
                          value_of(any_number<long long>()), value_of(any_number<unsigned char>()),
                          value_of(any_number<unsigned short>()),
                          value_of(any_number<unsigned int>()),
                          value_of(any_number<unsigned long>()),
                          value_of(any_number<unsigned long long>()), value_of(any_number<float>()),
                          value_of(any_number<double>()), value_of(any_number<char>()));
}

inline rc::Gen<held_value> any_flat_value() {
    return rc::gen::oneOf(
        rc::gen::just(held_value(io_value())), value_of(rc::gen::arbitrary<bool>()),
        number_or_numbers<signed char>(), number_or_numbers<short>(), number_or_numbers<int>(),
        number_or_numbers<long>(), number_or_numbers<long long>(),
        number_or_numbers<unsigned char>(), number_or_numbers<unsigned short>(),
        number_or_numbers<unsigned int>(), number_or_numbers<unsigned long>(),
        number_or_numbers<unsigned long long>(), number_or_numbers<float>(),
        number_or_numbers<double>(), number_or_numbers<char>(), value_of(any_text()),
        array_of(rc::gen::arbitrary<bool>()),
        rc::gen::map(rc::gen::container<std::vector<std::string>>(any_text()),
                     [](std::vector<std::string> const& texts) {
                         return held_value(
                             v2::utility::array<v2::utility::string>(texts.begin(), texts.end()));
                     }));
}

inline held_value array_holding(std::vector<held_value> const& elements) {
    v2::utility::array<io_value> result(static_cast<unsigned int>(elements.size()));
    unsigned int next = 0;
    for (held_value const& each : elements) result[next++] = each.get();
    return held_value(std::move(result));
}

inline held_value object_holding(std::map<std::string, held_value> const& members) {
    v2::io_object object;
    for (auto const& [key, value] : members) object.set(key, value.get());
    return held_value(std::move(object));
}

/// Any value with so many levels of arrays of values and of objects.
inline rc::Gen<held_value> any_value(int depth = 2) {
    if (depth == 0) return any_flat_value();
    auto const smaller = [depth] { return rc::gen::scale(0.3, any_value(depth - 1)); };
    return rc::gen::weightedOneOf<held_value>(
        {{6, any_flat_value()},
         {2, rc::gen::map(rc::gen::container<std::vector<held_value>>(smaller()), array_holding)},
         {1,
          rc::gen::map(rc::gen::container<std::map<std::string, held_value>>(any_text(), smaller()),
                       object_holding)}});
}

/// A type that some values convert to: scalar or array, from `boolean` to `string`.
inline rc::Gen<io_data_type> any_target() {
    return rc::gen::map(rc::gen::inRange(0, 24), [](int choice) {
        auto const element = types{static_cast<unsigned int>(choice % 12) + 1};
        return choice < 12 ? io_data_type::scalar(element) : io_data_type::array_of(element);
    });
}

} // namespace properties_test

template <>
struct rc::Arbitrary<properties_test::held_value> {
    static rc::Gen<properties_test::held_value> arbitrary() { return properties_test::any_value(); }
};
