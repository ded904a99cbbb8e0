#pragma once

#include "floor/floor.hpp"
#include "peers.hpp"

#include <any>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

/// \file
/// The values of the peers, and how each is made and read.

namespace bench {

namespace v2 = tavi::ioapi::v2;

using boost_value = boost::json::value;
using nlohmann_value = nlohmann::json;
using poco_value = Poco::Dynamic::Var;
using std_value = std::variant<std::monostate,
                               bool,
                               std::int8_t,
                               std::int16_t,
                               std::int32_t,
                               std::int64_t,
                               std::uint8_t,
                               std::uint16_t,
                               std::uint32_t,
                               std::uint64_t,
                               float,
                               double,
                               std::string,
                               std::vector<std::int32_t>,
                               std::vector<double>,
                               std::vector<std::string>>;

/// A GValue that ends by itself.
class glib_value {
public:
    glib_value() = default;
    explicit glib_value(GType type) { g_value_init(&value_, type); }
    glib_value(glib_value const& other) : glib_value(G_VALUE_TYPE(&other.value_)) {
        g_value_copy(&other.value_, &value_);
    }
    glib_value(glib_value&& other) noexcept
        : value_(std::exchange(other.value_, GValue G_VALUE_INIT)) {}
    glib_value& operator=(glib_value other) noexcept {
        std::swap(value_, other.value_);
        return *this;
    }
    ~glib_value() {
        if (value_.g_type != 0) g_value_unset(&value_);
    }

    [[nodiscard]] GValue* get() noexcept { return &value_; }
    [[nodiscard]] GValue const* get() const noexcept { return &value_; }

    /// \return the value as another type, by GLib's own conversion.
    [[nodiscard]] glib_value transformed(GType type) const {
        glib_value result(type);
        g_value_transform(&value_, &result.value_);
        return result;
    }

private:
    GValue value_ = G_VALUE_INIT;
};

/// The tagged value by hand: 16 bytes, in line, owns nothing.
struct bare_value {
    enum kind : int { none, i8, i16, i32, i64, u8, u16, u32, u64, flt, dbl };

    kind tag = none;
    union {
        std::int64_t i64 = 0;
        std::int8_t i8;
        std::int16_t i16;
        std::int32_t i32;
        std::uint8_t u8;
        std::uint16_t u16;
        std::uint32_t u32;
        std::uint64_t u64;
        float flt;
        double dbl;
    } as;

    /// Call `take` with the number; `none` gives the number 0.
    template <class Take>
    [[gnu::always_inline]] auto visit(Take take) const {
        switch (tag) {
        case i8: return take(as.i8);
        case i16: return take(as.i16);
        case i32: return take(as.i32);
        case u8: return take(as.u8);
        case u16: return take(as.u16);
        case u32: return take(as.u32);
        case u64: return take(as.u64);
        case flt: return take(as.flt);
        case dbl: return take(as.dbl);
        default: return take(as.i64);
        }
    }
};

/// The value of the floor, copied by calls into its shared object.
class floor_value {
public:
    explicit floor_value(int number) {
        floor::copy(value_, zero<int>);
        value_.i32 = number;
    }
    explicit floor_value(double number) {
        floor::copy(value_, zero<double>);
        value_.dbl = number;
    }
    floor_value(floor_value const& other) { floor::copy(value_, other.value_); }
    floor_value(floor_value&& other) noexcept { floor::move(value_, other.value_); }
    floor_value& operator=(floor_value const&) = delete;
    floor_value& operator=(floor_value&& other) noexcept {
        floor::move(value_, other.value_);
        return *this;
    }
    ~floor_value() = default;

    [[nodiscard]] floor::value const& get() const noexcept { return value_; }

private:
    // Not made at each call: bytes that were just written one by one are slow to copy.
    template <class T>
    static inline floor::value const zero{T(0)};

    floor::value value_;
};

/// How a peer's value is named, made and read: `of` a number or a text, `number` and `text` of it.
template <class V>
struct peer;

template <>
struct peer<v2::io_value> {
    static constexpr char const* name = "iokern";
    template <class T>
    static v2::io_value of(T const& content) {
        return v2::io_value(content);
    }
    static double number(v2::io_value const& value) { return value.as<double>(); }
    static std::string text(v2::io_value const& value) { return value.as<std::string>(); }
};

template <>
struct peer<bare_value> {
    static constexpr char const* name = "limit";
    static bare_value of(int number) {
        bare_value value{bare_value::i32, {}};
        value.as.i32 = number;
        return value;
    }
    static bare_value of(double number) {
        bare_value value{bare_value::dbl, {}};
        value.as.dbl = number;
        return value;
    }
    static double number(bare_value const& value) {
        return value.visit([](auto number) { return static_cast<double>(number); });
    }
};

template <>
struct peer<floor_value> {
    static constexpr char const* name = "floor";
    template <class T>
    static floor_value of(T number) {
        return floor_value(number);
    }
    static double number(floor_value const& value) {
        return value.get().index == 1 ? value.get().i32 : value.get().dbl;
    }
};

template <>
struct peer<std_value> {
    static constexpr char const* name = "std_variant";
    template <class T>
    static std_value of(T const& content) {
        return std_value(content);
    }
    static double number(std_value const& value) {
        return std::visit(
            [](auto const& content) {
                if constexpr (std::is_arithmetic_v<std::decay_t<decltype(content)>>) {
                    return static_cast<double>(content);
                } else {
                    return std::numeric_limits<double>::quiet_NaN();
                }
            },
            value);
    }
    static std::string text(std_value const& value) { return std::get<std::string>(value); }
};

template <>
struct peer<std::any> {
    static constexpr char const* name = "std_any";
    template <class T>
    static std::any of(T const& content) {
        return std::any(content);
    }
    static double number(std::any const& value) {
        auto const* const whole = std::any_cast<int>(&value);
        return whole != nullptr ? *whole : std::any_cast<double>(value);
    }
    static std::string text(std::any const& value) { return std::any_cast<std::string>(value); }
};

template <>
struct peer<QVariant> {
    static constexpr char const* name = "qt_qvariant";
    template <class T>
    static QVariant of(T number) {
        return QVariant(number);
    }
    static QVariant of(std::string const& text) { return QVariant(QString::fromStdString(text)); }
    static double number(QVariant const& value) { return value.toDouble(); }
    static std::string text(QVariant const& value) { return value.toString().toStdString(); }
};

template <>
struct peer<poco_value> {
    static constexpr char const* name = "poco_var";
    template <class T>
    static poco_value of(T const& content) {
        return poco_value(content);
    }
    static double number(poco_value const& value) { return value.convert<double>(); }
    static std::string text(poco_value const& value) { return value.convert<std::string>(); }
};

template <>
struct peer<glib_value> {
    static constexpr char const* name = "glib_gvalue";
    static glib_value of(int number) {
        glib_value value(G_TYPE_INT);
        g_value_set_int(value.get(), number);
        return value;
    }
    static glib_value of(double number) {
        glib_value value(G_TYPE_DOUBLE);
        g_value_set_double(value.get(), number);
        return value;
    }
    static glib_value of(std::string const& text) {
        glib_value value(G_TYPE_STRING);
        g_value_set_string(value.get(), text.c_str());
        return value;
    }
    static double number(glib_value const& value) {
        return g_value_get_double(value.transformed(G_TYPE_DOUBLE).get());
    }
    static std::string text(glib_value const& value) { return g_value_get_string(value.get()); }
};

template <>
struct peer<boost_value> {
    static constexpr char const* name = "boost_json";
    template <class T>
    static boost_value of(T const& content) {
        return boost_value(content);
    }
    static double number(boost_value const& value) { return value.to_number<double>(); }
    static std::string text(boost_value const& value) { return std::string(value.as_string()); }
};

template <>
struct peer<nlohmann_value> {
    static constexpr char const* name = "nlohmann";
    template <class T>
    static nlohmann_value of(T const& content) {
        return nlohmann_value(content);
    }
    static double number(nlohmann_value const& value) { return value.get<double>(); }
    static std::string text(nlohmann_value const& value) { return value.get<std::string>(); }
};

/// Peers whose value can stand for one of ours in every respect.
template <class Call>
void for_each_value_peer(Call call) {
    (call.template operator()<v2::io_value>(), call.template operator()<std_value>(),
     call.template operator()<std::any>(), call.template operator()<QVariant>(),
     call.template operator()<poco_value>(), call.template operator()<glib_value>(),
     call.template operator()<boost_value>(), call.template operator()<nlohmann_value>());
}

/// Peers that keep values of every kind in a list and hand a list of them back as numbers.
template <class Call>
void for_each_list_peer(Call call) {
    (call.template operator()<QVariant>(), call.template operator()<poco_value>());
}

/// 32 characters: beyond every buffer that a text may have in itself.
inline char const text32[] = "0123456789abcdef0123456789abcdef";

/// The name of a peer with a note behind it.
template <class V>
std::string named(char const* note) {
    return std::string(peer<V>::name) + '[' + note + ']';
}

} // namespace bench
