#pragma once

#include "../detail/data_model.hpp"
#include "../detail/element_run.hpp"
#include "../detail/iokern_allocator.hpp"
#include "../detail/narrow.hpp"
#include "../detail/truth.hpp"
#include "data_view.hpp"

#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <type_traits>
#include <utility>
#include <vector>

namespace tavi::ioapi::v2 {

class io_value;

namespace utility {

/// An owning array of fixed length that any module may build, read and free.
///
/// Two words, pointer first; one block from the library's memory gateway, none where it is empty.
/// There is no spare capacity: the length changes only by assignment, which replaces the block.
///
/// Every operation that makes elements may raise `std::bad_array_new_length`, for more than
/// `max_size()` elements, `std::bad_alloc`, and what the elements raise when they are copied;
/// what was made until then is destroyed and released.
template <class T>
class array {
    // Braces around a single value would wrap it in one compiler and copy it in another where the
    // element can itself hold an array; `of` says which is meant.
    struct no_element {
        no_element() = delete;
    };
    using listed = std::conditional_t<std::is_same_v<T, io_value>, no_element, T>;

    template <class Iterator>
    using if_forward = std::enable_if_t<
        std::is_base_of_v<std::forward_iterator_tag,
                          typename std::iterator_traits<Iterator>::iterator_category>,
        bool>;

public:
    using value_type = T;
    using iterator = T*;
    using const_iterator = T const*;

    /// No elements, no block.
    array() noexcept = default;

    /// `count` elements: numbers are zero, all else is default-constructed.
    explicit array(unsigned int count)
        : array(counted{}, count, [](detail::element_run<T>& elements) {
              elements.build_default();
          }) {}

    /// Copies of the elements from `first` to `last`; no elements where `last` lies before it.
    template <class Iterator, if_forward<Iterator> = true>
    array(Iterator first, Iterator last)
        : array(counted{}, count_between(first, last), [&](detail::element_run<T>& elements) {
              elements.build_copies(first);
          }) {}

    /// Copies of the listed elements. Not for `io_value`: use `of`.
    array(std::initializer_list<listed> elements) : array(elements.begin(), elements.end()) {}

    /// Copies of the elements of a standard vector, `std::vector<bool>` included.
    explicit array(std::vector<T> const& elements) : array(elements.begin(), elements.end()) {}

    /// Copies of the elements of a view.
    explicit array(data_view<T const> elements)
        : array(copies_of(elements.begin(), elements.size())) {}

    /// \return copies of `count` elements from `first` on. Beyond 2 GiB of elements, 32-bit
    /// platforms can only count them: the distance of two pointers is too narrow there.
    template <class Iterator, if_forward<Iterator> = true>
    [[nodiscard]] static array copies_of(Iterator first, unsigned int count) {
        return array(counted{}, count,
                     [&](detail::element_run<T>& elements) { elements.build_copies(first); });
    }

    /// \return `count` numbers or truth values that `fill` writes, called once with the address of
    /// the first. They are not set to zero before: where they come from a loop anyway, that is half
    /// of the work on a large array. `fill` must write every element that is read later. It is not
    /// called for no elements.
    template <class Fill>
    [[nodiscard]] static array filled(unsigned int count, Fill&& fill) {
        static_assert(std::is_trivially_copyable_v<T>, "other elements are built one by one");
        return array(counted{}, count,
                     [&](detail::element_run<T>& elements) { elements.build_by(fill); });
    }

    /// \return an array of the arguments, each of which converts to `T` implicitly and is moved in
    /// where it can be.
    template <class... Elements>
    [[nodiscard]] static array of(Elements&&... elements) {
        static_assert((std::is_convertible_v<Elements, T> && ...), "an argument is no element");
        if constexpr (sizeof...(Elements) == 0) {
            return array();
        } else {
            return array(counted{}, sizeof...(Elements), [&](detail::element_run<T>& run) {
                (run.build_next(std::forward<Elements>(elements)), ...);
            });
        }
    }

    /// Copies of all elements, deep.
    array(array const& other) : array(copies_of(other.begin(), other.size())) {}

    /// Takes the block and leaves no elements.
    array(array&& other) noexcept
        : data_(std::exchange(other.data_, nullptr)), size_(std::exchange(other.size_, 0)) {}

    /// Destroys the elements from the last to the first. Where one raises, the rest is destroyed
    /// and the block released before its exception goes on.
    ~array() noexcept(std::is_nothrow_destructible_v<T>) { release(); }

    /// Assign element by element; where the counts differ, into a new block of default elements
    /// after the old one has been released. Where that cannot be had, no elements are left; where
    /// an element cannot be assigned, those behind it are as they were, in a new block the default.
    /// `other` may be held by an element.
    array& operator=(array const& other) { // NOLINT(bugprone-unhandled-self-assignment): safe
        if constexpr (detail::can_hold_its_own_array<T>::value) {
            if (holds_address(&other)) {
                *this = array(other);
                return *this;
            }
        }
        if (size_ != other.size_) {
            release();
            *this = array(other.size_);
        }
        detail::assign_elements(data_, other.data_, size_);
        return *this;
    }

    /// Takes the block and leaves no elements; assigning an array to itself changes nothing.
    array& operator=(array&& other) noexcept(std::is_nothrow_destructible_v<T>) {
        if (this != &other) {
            array taken(std::move(other)); // first: an element of this one may hold the other
            release();
            data_ = std::exchange(taken.data_, nullptr);
            size_ = std::exchange(taken.size_, 0);
        }
        return *this;
    }

    /// The largest count of elements whose bytes can be stated in 32 bits.
    [[nodiscard]] static constexpr unsigned int max_size() noexcept {
        return static_cast<unsigned int>(detail::largest_size / sizeof(T));
    }

    /// The first element, or null where there is none.
    [[nodiscard]] T* data() noexcept TAVI_IOAPI_LIFETIMEBOUND { return data_; }
    [[nodiscard]] T const* data() const noexcept TAVI_IOAPI_LIFETIMEBOUND { return data_; }
    /// The count of elements.
    [[nodiscard]] unsigned int size() const noexcept { return size_; }
    [[nodiscard]] bool empty() const noexcept { return size_ == 0; }

    [[nodiscard]] T* begin() noexcept TAVI_IOAPI_LIFETIMEBOUND { return data_; }
    [[nodiscard]] T const* begin() const noexcept TAVI_IOAPI_LIFETIMEBOUND { return data_; }
    [[nodiscard]] T* end() noexcept TAVI_IOAPI_LIFETIMEBOUND { return data_ + size_; }
    [[nodiscard]] T const* end() const noexcept TAVI_IOAPI_LIFETIMEBOUND { return data_ + size_; }

    /// The element at `index`, which is not checked; so for the first and the last one.
    [[nodiscard]] T& operator[](unsigned int index) noexcept TAVI_IOAPI_LIFETIMEBOUND {
        return data_[index];
    }
    [[nodiscard]] T const& operator[](unsigned int index) const noexcept TAVI_IOAPI_LIFETIMEBOUND {
        return data_[index];
    }
    [[nodiscard]] T& front() noexcept TAVI_IOAPI_LIFETIMEBOUND { return data_[0]; }
    [[nodiscard]] T const& front() const noexcept TAVI_IOAPI_LIFETIMEBOUND { return data_[0]; }
    [[nodiscard]] T& back() noexcept TAVI_IOAPI_LIFETIMEBOUND { return data_[size_ - 1]; }
    [[nodiscard]] T const& back() const noexcept TAVI_IOAPI_LIFETIMEBOUND {
        return data_[size_ - 1];
    }

    /// Copies of the elements as a standard vector.
    [[nodiscard]] std::vector<T> to_vector() const {
        if constexpr (std::is_same_v<T, bool>) {
            std::vector<T> result(size_);
            for (unsigned int i = 0; i < size_; ++i) result[i] = detail::truth_at(data_ + i);
            return result;
        } else {
            return std::vector<T>(begin(), end());
        }
    }

    /// Whether `address` lies in the block of this array or, where elements hold arrays of their
    /// own kind, in a block below. Linear in the elements then, else constant.
    [[nodiscard]] bool holds_address(void const* address) const noexcept {
        return detail::run_holds_address(data_, size_, address);
    }

private:
    friend struct detail::layout_of<array<T>>;

    template <class Iterator>
    static unsigned int count_between(Iterator first, Iterator last) {
        auto const distance = std::distance(first, last);
        return distance < 1 ? 0 : detail::narrow_count(static_cast<unsigned long long>(distance));
    }

    struct counted {};

    template <class Build>
    array(counted, unsigned int count, Build build) {
        if (count == 0) return;
        if (count > max_size()) throw std::bad_array_new_length();
        detail::element_run<T> elements(count);
        build(elements);
        data_ = elements.take();
        size_ = count;
    }

    void release() noexcept(std::is_nothrow_destructible_v<T>) {
        T* const data = std::exchange(data_, nullptr);
        detail::release_run(data, std::exchange(size_, 0));
    }

    T* data_ = nullptr;
    unsigned int size_ = 0;
};

} // namespace utility
} // namespace tavi::ioapi::v2

namespace tavi::ioapi::v2::detail {

template <>
struct layout_of<utility::array<int>> {
    static_assert(sizeof(utility::array<int>) == by_data_model(8, 16));
    static_assert(offsetof(utility::array<int>, data_) == 0);
    static_assert(offsetof(utility::array<int>, size_) == sizeof(void*));
};

} // namespace tavi::ioapi::v2::detail
