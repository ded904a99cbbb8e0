#pragma once

#include "detail/data_model.hpp"

#include <cstddef>
#include <iosfwd>
#include <type_traits>

namespace tavi::ioapi::v2 {

/// What a value is for the controller: an element kind, one of them or an array of them, and for
/// structured values the id of their structure type. A plain record, compared field by field.
///
/// The type says nothing of how a value is stored; several payloads of `io_value` share one type.
struct io_data_type {
    /// The kind of an element. Other numbers are legal by cast: they are kept and compared, and no
    /// value converts to them.
    enum class basic_types : unsigned int {
        empty = 0,   ///< no value
        boolean = 1, ///< truth value
        u8 = 2,      ///< unsigned 8-bit integer
        u16 = 3,     ///< unsigned 16-bit integer
        u32 = 4,     ///< unsigned 32-bit integer
        u64 = 5,     ///< unsigned 64-bit integer
        i8 = 6,      ///< signed 8-bit integer
        i16 = 7,     ///< signed 16-bit integer
        i32 = 8,     ///< signed 32-bit integer
        i64 = 9,     ///< signed 64-bit integer
        flt = 10,    ///< 32-bit float
        dbl = 11,    ///< 64-bit float
        string = 12, ///< text
        object = 13, ///< structured value, whose structure type `structure_id` names
    };

    /// Set in a type code where the type is an array.
    static constexpr unsigned int array_flag = 0x80000000U;

    basic_types basic_type = basic_types::empty; ///< the kind of an element
    unsigned long long structure_id = 0;         ///< 0 unless `basic_type` is `object`
    unsigned int array_kind = 0;   ///< 0: a scalar; all else: an array. The library makes 2
    unsigned int array_extent = 0; ///< for backends, such as a number of elements; only compared.
                                   ///< The library makes 0

    /// \return the type of one element of kind `element`.
    [[nodiscard]] static constexpr io_data_type scalar(basic_types element) noexcept {
        return {element, 0, 0, 0};
    }
    /// \return the type of an array of elements of kind `element`.
    [[nodiscard]] static constexpr io_data_type array_of(basic_types element) noexcept {
        return {element, 0, 2, 0};
    }
    /// \return the type of a structured value. \param structure_id  0 for one with free keys
    [[nodiscard]] static constexpr io_data_type object(unsigned long long structure_id) noexcept {
        return {basic_types::object, structure_id, 0, 0};
    }

    /// Decided by `array_kind` alone, whatever `array_extent` says.
    [[nodiscard]] constexpr bool is_array() const noexcept { return array_kind != 0; }

    /// The number by which types are switched on: `basic_type`, with `array_flag` for an array.
    [[nodiscard]] constexpr unsigned int type_code() const noexcept {
        return static_cast<unsigned int>(basic_type) | (is_array() ? array_flag : 0U);
    }
};

/// Equal when all four fields are.
[[nodiscard]] constexpr bool operator==(io_data_type const& left,
                                        io_data_type const& right) noexcept {
    return left.basic_type == right.basic_type && left.structure_id == right.structure_id &&
           left.array_kind == right.array_kind && left.array_extent == right.array_extent;
}
[[nodiscard]] constexpr bool operator!=(io_data_type const& left,
                                        io_data_type const& right) noexcept {
    return !(left == right);
}

/// \return the name of an element kind as it is spelled above, or null for an unknown one.
[[nodiscard]] constexpr char const* name_of(io_data_type::basic_types element) noexcept {
    using types = io_data_type::basic_types;
    switch (element) {
    case types::empty: return "empty";
    case types::boolean: return "boolean";
    case types::u8: return "u8";
    case types::u16: return "u16";
    case types::u32: return "u32";
    case types::u64: return "u64";
    case types::i8: return "i8";
    case types::i16: return "i16";
    case types::i32: return "i32";
    case types::i64: return "i64";
    case types::flt: return "flt";
    case types::dbl: return "dbl";
    case types::string: return "string";
    case types::object: return "object";
    }
    return nullptr;
}

/// Print as `i32`, `flt[]`, `object<7>`; a kind without a name as `type(99)`.
template <class Traits>
std::basic_ostream<char, Traits>& operator<<(std::basic_ostream<char, Traits>& out,
                                             io_data_type const& type) {
    if (char const* const name = name_of(type.basic_type)) {
        out << name;
    } else {
        out << "type(" << static_cast<unsigned int>(type.basic_type) << ')';
    }
    if (type.structure_id != 0) out << '<' << type.structure_id << '>';
    if (type.is_array()) out << "[]";
    return out;
}

static_assert(std::is_trivially_copyable_v<io_data_type>, "passed and kept as plain words");
static_assert(sizeof(io_data_type) == 24 && alignof(io_data_type) == 8);
static_assert(offsetof(io_data_type, basic_type) == 0);
static_assert(offsetof(io_data_type, structure_id) == 8);
static_assert(offsetof(io_data_type, array_kind) == 16);
static_assert(offsetof(io_data_type, array_extent) == 20);

} // namespace tavi::ioapi::v2
