#pragma once

#include <cstddef>
#include <cstring>
#include <type_traits>

/// \file
/// Other modules read the fields of a class at fixed places. So do the tests, which for that need
/// no friend inside the class.

namespace test_support {

inline constexpr bool has_wide_words = sizeof(void*) == 8;

/// \return what a layout has in this build's data model.
constexpr std::size_t by_word(std::size_t narrow, std::size_t wide) noexcept {
    return has_wide_words ? wide : narrow;
}

/// \return the field of type `Field` that stands `offset` bytes behind the start of `object`.
template <class Field, class Object>
[[nodiscard]] Field field_at(Object const& object, std::size_t offset) noexcept {
    static_assert(std::is_trivially_copyable_v<Field>);
    Field field;
    std::memcpy(&field, reinterpret_cast<unsigned char const*>(&object) + offset, sizeof field);
    return field;
}

/// \return the distance of a subobject from the start of `object`.
template <class Object, class Part>
[[nodiscard]] std::size_t offset_of(Object const& object, Part const& part) noexcept {
    return static_cast<std::size_t>(reinterpret_cast<unsigned char const*>(&part) -
                                    reinterpret_cast<unsigned char const*>(&object));
}

/// \return the private pointer of a handle; null in a moved-from one.
template <class Handle>
[[nodiscard]] void const* impl_of(Handle const& handle) noexcept {
    static_assert(sizeof(Handle) == sizeof(void*), "a handle is one pointer");
    return field_at<void const*>(handle, 0);
}

} // namespace test_support
