#include "json_value.hpp"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <type_traits>

namespace iohost {

namespace {

namespace v2 = tavi::ioapi::v2;

json number_of(double number) {
    if (std::isnan(number)) return "nan";
    if (std::isinf(number)) return number > 0 ? "inf" : "-inf";
    return number;
}

json number_of(float number) {
    if (!std::isfinite(number)) return number_of(static_cast<double>(number));
    char digits[32];
    auto const written = std::to_chars(digits, digits + sizeof(digits), number);
    double same = 0;
    std::from_chars(digits, written.ptr, same);
    return same;
}

template <class T>
struct payload_json;

template <class T>
json json_of(T const& payload) {
    return payload_json<T>::of(payload);
}

template <class T>
struct payload_json {
    static json of(T const& number) {
        if constexpr (std::is_floating_point_v<T>) {
            return number_of(number);
        } else if constexpr (std::is_same_v<T, char>) {
            return static_cast<unsigned char>(number); // a number from 0 to 255, never a letter
        } else {
            return number;
        }
    }
};

template <>
struct payload_json<std::nullptr_t> {
    static json of(std::nullptr_t) { return nullptr; }
};

template <>
struct payload_json<v2::utility::string> {
    static json of(v2::utility::string const& text) { return text.str(); }
};

template <>
struct payload_json<v2::io_object> {
    static json of(v2::io_object const& object) {
        json members = json::object();
        for (auto const& [key, value] : object) members[key.str()] = to_json(value);
        return members;
    }
};

template <>
struct payload_json<v2::io_value> {
    static json of(v2::io_value const& value) { return to_json(value); }
};

template <class T>
struct payload_json<v2::utility::array<T>> {
    static json of(v2::utility::array<T> const& elements) {
        json list = json::array();
        for (auto const& element : elements) list.push_back(json_of(element));
        return list;
    }
};

// The bytes of another module's truth values may be any.
template <>
struct payload_json<v2::utility::array<bool>> {
    static json of(v2::utility::array<bool> const& elements) {
        json list = json::array();
        for (bool const element : elements.to_vector()) list.push_back(element);
        return list;
    }
};

} // namespace

json to_json(v2::io_value const& value) {
    return value.visit([](auto const& payload) -> json { return json_of(payload); });
}

json to_json(v2::io_error const& error) {
    json diagnostics = json::object();
    auto const list = error.diagnostics();
    for (auto const& entry : list) diagnostics[entry.key.str()] = to_json(entry.value);
    return {{"code", error.code()},
            {"category", error.category().name()},
            {"message", error.message().str()},
            {"diagnostics", std::move(diagnostics)}};
}

std::string document_of(json const& content) {
    return content.dump(2, ' ', false, json::error_handler_t::replace);
}

std::string line_of(json const& content) {
    return content.dump(-1, ' ', false, json::error_handler_t::replace);
}

} // namespace iohost
