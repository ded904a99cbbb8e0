#pragma once

#include "api.hpp"
#include "detail/alternatives.hpp"
#include "detail/character_types.hpp"
#include "detail/conversion_target.hpp"
#include "detail/data_model.hpp"
#include "detail/get_as.hpp"
#include "detail/visit.hpp"
#include "io_data_type.hpp"
#include "io_error.hpp"
#include "io_exception.hpp"
#include "io_object.hpp"
#include "utility/array.hpp"
#include "utility/string.hpp"
#include "utility/string_view.hpp"

#include <cstddef>
#include <iosfwd>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace tavi::ioapi::v2::detail {
struct payload_transfer; // within the library
}

namespace tavi::ioapi::v2 {

/// One value of any kind, with the data type that it has for the controller. What a read gives,
/// what a write takes, a configuration entry, a diagnostic and a member of a structure are all of
/// this class.
///
/// Type and payload stand side by side: `data_type()` says what the value is for the controller,
/// `index()` says which of 34 kinds of payload is stored. The constructors pair them.
///
/// **For 64-bit numbers use `long long`.** `long` is paired with `i32` and `unsigned long` with
/// `u32` on every platform, and on 64-bit Linux `std::int64_t` is a `long`: use `from_i64` and
/// `from_u64` where the source is one of the standard's fixed-width types.
///
/// A value owns its payload and copies it deep. Scalars and moves allocate nothing. A moved-from
/// value is the empty value. Concurrent reads of one value are safe.
///
/// When memory is exhausted during a copy assignment, the target is left without a payload,
/// `index()` -1. To copy, move, assign, visit, compare, print or destroy it then raises a
/// `char const*`; a conversion gives `unhandled_exception`. Where a value must outlive that, make
/// a copy first and move it in.
class io_value {
    template <class T>
    using if_alternative = std::enable_if_t<detail::is_alternative<T>, bool>;
    template <class T>
    using if_payload =
        std::enable_if_t<detail::is_alternative<T> && !std::is_same_v<T, std::nullptr_t>, bool>;
    template <class T>
    using if_refused =
        std::enable_if_t<detail::is_foreign_pointer<T> || detail::is_wide_character<T> ||
                             std::is_same_v<T, long double>,
                         bool>;

public:
    /// Short for the kinds of an element.
    using basic_types = io_data_type::basic_types;

    /// \name Construction
    /// \{

    /// The empty value: every field of its type 0, index 0.
    io_value() noexcept = default;

    /// A value of exactly the type of the argument: `bool`, `char` (a number), an integer, `float`,
    /// `double`, `utility::string`, `io_object`, or a `utility::array` of one of these or of
    /// values. An array of values is `{empty, 0, 2, 0}`: the constructor with a type says more.
    /// The macro NULL is an integer here.
    template <class T, if_payload<T> = true>
    io_value(T payload) : type_(detail::declared_type<T>()) {
        if constexpr (std::is_same_v<T, io_object>)
            type_.structure_id = payload.type().structure_id;
        emplace(std::move(payload));
    }

    /// A text of `n` bytes. \param s  not null, unless `n` is 0 \throws std::bad_alloc
    TAVI_IOAPI_API io_value(char const* s, unsigned int n);
    /// A text terminated by a zero byte. \param s  not null \throws std::bad_alloc
    TAVI_IOAPI_API io_value(char const* s);
    /// Texts of other types, copied. \throws std::bad_alloc, also for a text too long for 32 bits
    io_value(char* s) : io_value(static_cast<char const*>(s)) {}
    io_value(utility::string_view text) : io_value(text.data(), text.size()) {}
    io_value(std::string_view text) : io_value(utility::string(text)) {}
    io_value(std::string const& text) : io_value(std::string_view(text)) {}

    /// A payload under a type that is stored as it is given, unchecked: the element type of an
    /// array of values, or what a backend means by it. `nullptr` stores nothing under the type.
    template <class T, if_alternative<T> = true>
    explicit io_value(io_data_type const& type, T payload) : type_(type) {
        emplace(std::move(payload));
    }

    /// An `i64`, whatever type the number comes from.
    [[nodiscard]] static io_value from_i64(long long number) { return io_value(number); }
    /// A `u64`, whatever type the number comes from.
    [[nodiscard]] static io_value from_u64(unsigned long long number) { return io_value(number); }

    io_value(std::nullptr_t) = delete;
    io_value(std::nullptr_t, unsigned int) = delete;
    template <class T, if_refused<T> = true>
    io_value(T) = delete;

    /// \}
    /// \name Copy, move, destruction
    /// \{

    /// \throws std::bad_alloc
    TAVI_IOAPI_API io_value(io_value const& other);
    /// Leaves the empty value behind. Allocates nothing.
    TAVI_IOAPI_API io_value(io_value&& other);
    /// \throws char const*  for a value without a legal alternative; such a value cannot be ended
    ~io_value() noexcept(false) {
        if (owns_payload()) destroy_payload();
    }

    /// The same as `assign`.
    TAVI_IOAPI_API io_value& operator=(io_value const& other);
    TAVI_IOAPI_API io_value& operator=(io_value&& other);

    /// Copy `other`, which may be held by an array in this value, or this value itself, which
    /// changes nothing. The old payload goes first. \throws std::bad_alloc, and then this value is
    /// left without a payload, or unchanged where it holds `other`
    TAVI_IOAPI_API io_value& assign(io_value const& other);
    /// Take the payload of `other`, which may be held by an array in this value, and leave the
    /// empty value behind; assigning a value to itself changes nothing. Allocates nothing.
    TAVI_IOAPI_API io_value& assign(io_value&& other);

    /// \}
    /// \name What it is
    /// \{

    /// What the value is for the controller.
    [[nodiscard]] io_data_type const& data_type() const noexcept TAVI_IOAPI_LIFETIMEBOUND {
        return type_;
    }
    /// The type code of the data type, see `io_data_type::type_code`.
    [[nodiscard]] unsigned int type_code() const noexcept { return type_.type_code(); }
    /// Which alternative is stored, 0 to 33, or -1 after a failed copy assignment.
    [[nodiscard]] int index() const noexcept { return index_; }
    /// Whether nothing is stored (alternative 0), whatever the data type says.
    [[nodiscard]] bool empty() const noexcept { return index_ == 0; }
    /// Whether one of the array alternatives is stored.
    [[nodiscard]] bool is_array() const noexcept {
        return index_ >= detail::index_of<utility::array<bool>> &&
               index_ < detail::alternatives::size;
    }

    /// The exported forms of `type_code`.
    [[nodiscard]] TAVI_IOAPI_API static unsigned int p_basic_type(
        io_data_type const& type) noexcept;
    [[nodiscard]] TAVI_IOAPI_API unsigned int p_basic_type() const noexcept;

    /// \}
    /// \name The payload as it is stored
    /// \{

    /// The payload where it is exactly a `T`, else null. Valid until the value changes. A `bool` is
    /// given as it is stored: read one that a foreign module has made by `as` or `visit`.
    template <class T>
    [[nodiscard]] T const* get_if() const noexcept TAVI_IOAPI_LIFETIMEBOUND {
        static_assert(detail::is_alternative<T>, "a value never holds a T; use as<T>()");
        return index_ == detail::index_of<T> ? &stored<T>() : nullptr;
    }

    /// Call `function` with the payload, `nullptr` for the empty value, and give back its result,
    /// which has one type for all alternatives. A truth value is given as a `bool`, whatever byte
    /// another module has stored; the elements of an `array<bool>` are given as they stand.
    /// \throws char const*  for a value without a legal alternative
    template <class Function>
    [[gnu::always_inline]] auto visit(Function&& function) const -> decltype(function(nullptr)) {
        using result = decltype(function(nullptr));
        return detail::visit_index(index_, [&](auto index) -> result {
            using T = detail::alternative_at<decltype(index)::value>;
            static_assert(std::is_same_v<decltype(function(payload<T>())), result>,
                          "the function must give one type for all alternatives");
            return function(payload<T>());
        });
    }

    /// \}
    /// \name The payload as another type
    /// By the rules of `detail::get_as`. `T` is one of its types, `std::string`, or a `std::vector`
    /// of any of them, as which an array is had. An object is no target: `get_if<io_object>()`
    /// gives the one that is stored.
    /// \{

    /// \param[out] error  cleared or set, see `detail::get_as`
    /// \return the converted value, or the default of `T` when `error` is set
    /// \throws std::bad_alloc  for a standard text or vector
    template <class T>
    [[nodiscard]] T as(io_error& error) const {
        using target = detail::conversion_target<T>;
        static_assert(target::exists, "no conversion gives a T; get_if<T>() gives what is stored");
        return target::finish(detail::get_as<typename target::instance>(*this, error));
    }

    /// \throws io_exception  with the error that the other form reports
    template <class T>
    [[nodiscard]] T as() const {
        io_error error;
        T result = as<T>(error);
        if (error) throw io_exception(std::move(error));
        return result;
    }

    /// \return the converted value, or nothing where it does not convert.
    template <class T>
    [[nodiscard]] std::optional<T> try_as() const {
        io_error error;
        std::optional<T> result = as<T>(error);
        if (error) result.reset();
        return result;
    }

    /// \return the converted value, or `fallback` where it does not convert. The empty value does
    /// convert: to the default of `T`.
    template <class T>
    [[nodiscard]] T value_or(T fallback) const {
        io_error error;
        T result = as<T>(error);
        return error ? std::move(fallback) : std::move(result);
    }

    /// As `as`, but a number in floating point that would be clamped or cut on its way to an
    /// integer is refused: `value_too_large`.
    template <class T>
    [[nodiscard]] T get_exact(io_error& error) const;

    /// \throws io_exception  with the error that the other form reports
    template <class T>
    [[nodiscard]] T get_exact() const {
        io_error error;
        T result = get_exact<T>(error);
        if (error) throw io_exception(std::move(error));
        return result;
    }

    /// \}
    /// \name The payload as another data type
    /// For a type that is known at run time only, as a member of a structure declares it.
    /// \{

    /// Whether `to_variant(type)` succeeds: the type is the value's own, or one from `boolean` to
    /// `string` or an array of these that the payload converts to by the rules of `detail::get_as`.
    /// The empty value, alone or in an array, fits no type but its own, and no value fits a type of
    /// objects but its own. The own type is not looked at further: an `i32` that is stored as a
    /// 64-bit `long` passes for `i32` whatever its number. Allocates nothing, stops at the first
    /// element that fails.
    /// \throws char const*  for a value without a legal alternative
    [[nodiscard]] TAVI_IOAPI_API bool converts_to(io_data_type const& type) const;

    /// A copy where `type` is the value's own, else the payload converted. An array type of any
    /// kind and extent then gives `array_kind` 2 and `array_extent` 0, and the number of elements
    /// is not checked: compare the `type_code` of the result, not its whole type. The empty value
    /// converts to any scalar, and anything to the type `empty`.
    /// \param[out] error  cleared or set as by `detail::get_as`, and `incompatible_type` (3) for
    ///     a type of objects or an unknown one
    /// \return a value of the type. Where `error` is set, one with the default payload, or the
    ///     empty value for a type that nothing converts to
    /// \throws std::bad_alloc  from the copy
    [[nodiscard]] TAVI_IOAPI_API io_value to_variant(io_data_type const& type,
                                                     io_error& error) const;
    /// The same, and nothing tells of a failure: ask `converts_to` first.
    [[nodiscard]] TAVI_IOAPI_API io_value to_variant(io_data_type const& type) const;

    /// \}
    /// \name Comparison and printing
    /// All recurse as deep as the value is nested.
    /// \{

    /// Whether both mean the same: of one type, by what is stored; else one of them converted to
    /// the other's kind, in either direction. So the `int` 5, the `double` 5.0 and the text "5" are
    /// equal. Not an equivalence: a NaN and an object are unequal to themselves, and `true` equals
    /// 1 and 7. See `identical` for a comparison without conversion.
    /// \throws char const*  for a value without a legal alternative, as all comparisons
    [[nodiscard]] TAVI_IOAPI_API bool operator==(io_value const& other) const;
    [[nodiscard]] TAVI_IOAPI_API bool operator!=(io_value const& other) const;

    /// One direction: whether `other` fits the kind of this value and, converted to it, is the
    /// same.
    [[nodiscard]] TAVI_IOAPI_API bool equals(io_value const& other) const;

    /// By what is stored, for two values of one data type; the alternative of this one decides.
    [[nodiscard]] TAVI_IOAPI_API bool equals_same_type(io_value const& other) const;

    /// The value as text for people, on several lines where it is nested; nothing is escaped, and
    /// the last line has no end. Its cost grows with the length of the text.
    /// \param fill   what indentation is made of
    /// \param width  how many of it for each level
    /// \param level  the level of this value
    /// \throws std::bad_alloc, std::length_error for an indentation beyond the longest string
    [[nodiscard]] TAVI_IOAPI_API utility::string printable_string(char fill = ' ',
                                                                  unsigned int width = 2,
                                                                  unsigned int level = 0) const;

    /// \}

    /// Whether `address` lies in a block of this value's own payload that can hold other values.
    /// Linear in the values held.
    [[nodiscard]] bool holds_address(void const* address) const noexcept {
        auto const* const values = get_if<utility::array<io_value>>();
        return values != nullptr && values->holds_address(address);
    }

private:
    friend struct detail::layout_of<io_value>;
    friend struct detail::payload_transfer;

    // A union would need its alternatives complete here; bytes do not, and all of them can be
    // copied whatever is stored. Behind a payload they are zero.
    struct alignas(8) storage {
        unsigned char bytes[(sizeof(utility::string) + 7) / 8 * 8];
    };

    bool owns_payload() const noexcept {
        return static_cast<unsigned int>(index_) >
               static_cast<unsigned int>(detail::last_plain_index);
    }

    template <class T>
    T const& stored() const noexcept {
        return *std::launder(reinterpret_cast<T const*>(storage_.bytes));
    }

    // What a visitor sees. Another module may have stored any byte as a truth value.
    template <class T>
    decltype(auto) payload() const noexcept {
        if constexpr (std::is_same_v<T, std::nullptr_t>) {
            return nullptr;
        } else if constexpr (std::is_same_v<T, bool>) {
            return storage_.bytes[0] != 0;
        } else {
            return stored<T>();
        }
    }

    template <class T>
    void emplace(T&& payload) {
        ::new (static_cast<void*>(storage_.bytes)) T(std::forward<T>(payload));
        index_ = detail::index_of<T>;
    }

    // Leaves the index at -1 and the storage zero.
    void destroy_payload() {
        int const index = std::exchange(index_, -1);
        detail::visit_index(index, [&](auto constant) {
            using T = detail::alternative_at<decltype(constant)::value>;
            if constexpr (!std::is_trivially_destructible_v<T>) {
                std::launder(reinterpret_cast<T*>(storage_.bytes))->~T();
            }
        });
        storage_ = {};
    }

    bool drop_payload_but(io_value const& other);
    io_value& assign_held(io_value const& other);
    io_value& assign_held(io_value&& other);
    void copy_owned(io_value const& other);

    io_data_type type_;
    storage storage_ = {};
    int index_ = 0;
};

} // namespace tavi::ioapi::v2

namespace tavi::ioapi::v2::detail {

// Every class that holds a value directly inherits this; handles hold theirs behind a pointer.
static_assert(!std::is_nothrow_destructible_v<io_value>);
static_assert(!std::is_nothrow_destructible_v<utility::array<io_value>>);
static_assert(can_hold_its_own_array<io_value>::value);

template <>
struct layout_of<io_value> {
    static_assert(sizeof(io_value) == by_data_model(48, 56) && alignof(io_value) == 8);
    static_assert(offsetof(io_value, type_) == 0);
    static_assert(offsetof(io_value, storage_) == 24);
    static_assert(offsetof(io_value, index_) == by_data_model(40, 48));
};

} // namespace tavi::ioapi::v2::detail

// What needs a complete value.
#include "detail/exactness.hpp"
#include "detail/identical.hpp"
#include "detail/object_convenience.hpp"

namespace tavi::ioapi::v2 {

/// Print as `printable_string` does, with its defaults.
template <class Traits>
std::basic_ostream<char, Traits>& operator<<(std::basic_ostream<char, Traits>& out,
                                             io_value const& value) {
    return out << value.printable_string();
}

} // namespace tavi::ioapi::v2
