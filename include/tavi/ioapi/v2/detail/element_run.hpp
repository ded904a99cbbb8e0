#pragma once

#include "iokern_allocator.hpp"

#include <cstring>
#include <exception>
#include <functional>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

/// \file
/// The elements of an owning array: built one by one, destroyed from the last to the first, safe
/// against an element that raises in either.

namespace tavi::ioapi::v2::detail {

/// Destroy `count` elements from the last to the first and release their block. Where elements
/// raise, all are destroyed and the block released before the first exception goes on.
template <class T>
void release_run(T* data, unsigned int count) noexcept(std::is_nothrow_destructible_v<T>) {
    auto const bytes = static_cast<unsigned int>(count * sizeof(T));
    if constexpr (std::is_nothrow_destructible_v<T>) {
        if constexpr (!std::is_trivially_destructible_v<T>) {
            for (unsigned int i = count; i > 0; --i) std::destroy_at(data + (i - 1));
        }
        release_block(data, bytes);
    } else {
        std::exception_ptr first;
        for (unsigned int i = count; i > 0; --i) {
            try {
                std::destroy_at(data + (i - 1));
            } catch (...) {
                if (!first) first = std::current_exception();
            }
        }
        release_block(data, bytes);
        if (first) std::rethrow_exception(first);
    }
}

/// Holds a block while its elements are built, and undoes all of it unless the block is taken.
template <class T>
class element_run {
public:
    /// A block for `count` elements, none of them built. \throws std::bad_alloc
    explicit element_run(unsigned int count)
        : data_(static_cast<T*>(allocate_block(static_cast<unsigned int>(count * sizeof(T))))),
          count_(count) {}

    element_run(element_run const&) = delete;
    element_run& operator=(element_run const&) = delete;

    ~element_run() {
        if (data_ == nullptr) return;
        for (; built_ > 0; --built_) destroy_quietly(data_[built_ - 1]);
        release_block(data_, static_cast<unsigned int>(count_ * sizeof(T)));
    }

    /// Build every element from nothing: numbers are zero.
    void build_default() {
        if constexpr (std::is_nothrow_destructible_v<T>) {
            std::uninitialized_value_construct_n(data_, count_);
            built_ = count_;
        } else {
            for (; built_ < count_; ++built_) ::new (static_cast<void*>(data_ + built_)) T();
        }
    }

    /// Build every element as a copy, in order from `first` on.
    template <class Iterator>
    void build_copies(Iterator first) {
        if constexpr (std::is_nothrow_destructible_v<T>) {
            std::uninitialized_copy_n(first, count_, data_);
            built_ = count_;
        } else {
            for (; built_ < count_; ++built_, ++first) {
                ::new (static_cast<void*>(data_ + built_)) T(*first);
            }
        }
    }

    /// Leave it to `fill` to write the elements, which need no building.
    template <class Fill>
    void build_by(Fill& fill) {
        fill(data_);
        built_ = count_;
    }

    /// Build the next element from `source`.
    template <class Source>
    void build_next(Source&& source) {
        ::new (static_cast<void*>(data_ + built_)) T(std::forward<Source>(source));
        ++built_;
    }

    /// Give the block and its elements to the caller.
    [[nodiscard]] T* take() noexcept { return std::exchange(data_, nullptr); }

private:
    // Another exception is on its way: one of an element must not end the process.
    static void destroy_quietly(T& element) noexcept {
        if constexpr (std::is_nothrow_destructible_v<T>) {
            std::destroy_at(&element);
        } else {
            try {
                std::destroy_at(&element);
            } catch (...) { // NOLINT(bugprone-empty-catch): a second one would end the process
            }
        }
    }

    T* data_;
    unsigned int count_;
    unsigned int built_ = 0;
};

/// Assign an element that lives on. One whose failed copy assignment would leave it unusable is
/// replaced by a finished copy, so that it keeps its old content on a failure.
template <class T>
void assign_element(T& target, T const& source) {
    if constexpr (std::is_nothrow_destructible_v<T>) {
        target = source;
    } else {
        T copy(source);
        target = std::move(copy);
    }
}

/// Assign `count` elements in order. Plain ones are copied as bytes, whatever these are.
template <class T>
void assign_elements(T* target, T const* source, unsigned int count) {
    if constexpr (std::is_trivially_copyable_v<T>) {
        if (count != 0) std::memmove(target, source, count * sizeof(T));
    } else {
        for (unsigned int i = 0; i < count; ++i) assign_element(target[i], source[i]);
    }
}

template <class T, class = void>
struct can_hold_its_own_array : std::false_type {};
template <class T>
struct can_hold_its_own_array<
    T,
    std::void_t<decltype(std::declval<T const&>().holds_address(static_cast<void*>(nullptr)))>>
    : std::true_type {};

/// Whether `address` lies in one of `count` elements at `data` or in a block that they hold.
template <class T>
[[nodiscard]] bool run_holds_address(T const* data,
                                     unsigned int count,
                                     void const* address) noexcept {
    std::less<> const below;
    void const* const first = data;
    void const* const last = data + count;
    if (!below(address, first) && below(address, last)) return true;
    if constexpr (can_hold_its_own_array<T>::value) {
        for (unsigned int i = 0; i < count; ++i) {
            if (data[i].holds_address(address)) return true;
        }
    }
    return false;
}

} // namespace tavi::ioapi::v2::detail
