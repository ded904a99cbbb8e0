#pragma once

#include "../detail/data_model.hpp"
#include "../detail/narrow.hpp"

#include <cstddef>
#include <type_traits>
#include <utility>

namespace tavi::ioapi::v2::utility {

/// A contiguous run of elements that belong to somebody else: pointer, then count, passed by value
/// in two words. `data_view<T const>` reads, `data_view<T>` also writes. An argument type: it is
/// implicitly made from arrays and from containers that have `data()` and `size()`.
template <class T>
class data_view {
    template <class Range>
    using if_range_of_elements = std::enable_if_t<
        !std::is_same_v<std::remove_cv_t<Range>, data_view> &&
            std::is_convertible_v<
                std::remove_pointer_t<decltype(std::declval<Range&>().data())> (*)[],
                T (*)[]> &&
            std::is_convertible_v<decltype(std::declval<Range&>().size()), std::size_t>,
        bool>;

public:
    using value_type = std::remove_cv_t<T>;
    using iterator = T*;
    using const_iterator = T const*;

    /// No elements; `data()` is null.
    constexpr data_view() noexcept = default;

    /// `size` elements at `data`; null is allowed where `size` is 0.
    constexpr data_view(T* data, unsigned int size) noexcept : data_(data), size_(size) {}

    /// The same elements, for reading only.
    template <class U, std::enable_if_t<std::is_same_v<U const, T>, bool> = true>
    constexpr data_view(data_view<U> other) noexcept : data_(other.data()), size_(other.size()) {}

    /// All elements of an array. \throws std::length_error beyond 4294967295 elements
    template <std::size_t N>
    constexpr data_view(T (&elements)[N]) : data_(elements), size_(detail::narrow_view_size(N)) {}

    /// All elements of a container. \throws std::length_error beyond 4294967295 elements
    template <class Range, if_range_of_elements<std::remove_reference_t<Range>> = true>
    constexpr data_view(Range&& range)
        : data_(range.data()), size_(detail::narrow_view_size(range.size())) {}

    /// The first element, or null in a view that was made from null or from nothing.
    [[nodiscard]] constexpr T* data() const noexcept { return data_; }
    /// The count of elements.
    [[nodiscard]] constexpr unsigned int size() const noexcept { return size_; }
    [[nodiscard]] constexpr bool empty() const noexcept { return size_ == 0; }
    /// The element at `index`, which is not checked.
    [[nodiscard]] constexpr T& operator[](unsigned int index) const noexcept {
        return data_[index];
    }
    [[nodiscard]] constexpr T& front() const noexcept { return data_[0]; }
    [[nodiscard]] constexpr T& back() const noexcept { return data_[size_ - 1]; }
    [[nodiscard]] constexpr T* begin() const noexcept { return data_; }
    [[nodiscard]] constexpr T* end() const noexcept { return data_ + size_; }

private:
    friend struct detail::layout_of<data_view<T>>;

    T* data_ = nullptr;
    unsigned int size_ = 0;
};

} // namespace tavi::ioapi::v2::utility

namespace tavi::ioapi::v2::detail {

static_assert(std::is_trivially_copyable_v<utility::data_view<int const>>,
              "passed by value in two words");

template <>
struct layout_of<utility::data_view<int const>> {
    static_assert(sizeof(utility::data_view<int const>) == by_data_model(8, 16));
    static_assert(offsetof(utility::data_view<int const>, data_) == 0);
    static_assert(offsetof(utility::data_view<int const>, size_) == sizeof(void*));
};

} // namespace tavi::ioapi::v2::detail
