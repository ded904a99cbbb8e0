#pragma once

#include "../api.hpp"

#include <utility>

namespace tavi::ioapi::v2::detail {

/// The only member of a handle: owns the private part of a public class and passes `const` on.
/// Copies are deep, a move leaves null behind, and a null pointer may only be destroyed or
/// assigned to. Where `T` is incomplete, as in the public headers, only naming the type is
/// possible; the special members of a handle are defined in the library's sources.
template <class T>
class deep_ptr {
public:
    /// Owns a `T` built from `arguments`. \throws std::bad_alloc, and what the constructor throws
    template <class... Arguments>
    explicit deep_ptr(std::in_place_t, Arguments&&... arguments)
        : p_(new T(std::forward<Arguments>(arguments)...)) {}

    deep_ptr(deep_ptr const& other) : p_(other.p_ != nullptr ? new T(*other.p_) : nullptr) {}
    deep_ptr(deep_ptr&& other) noexcept : p_(std::exchange(other.p_, nullptr)) {}

    ~deep_ptr() {
        static_assert(sizeof(T) > 0, "the private part must be complete here");
        delete p_;
    }

    /// Null resets the target; a null target gets a copy; else the private part is assigned in
    /// place, so that it can reuse what it holds.
    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): compared by pointer
    deep_ptr& operator=(deep_ptr const& other) {
        if (p_ == other.p_) return *this;
        if (p_ != nullptr && other.p_ != nullptr) {
            *p_ = *other.p_;
        } else {
            delete std::exchange(p_, other.p_ != nullptr ? new T(*other.p_) : nullptr);
        }
        return *this;
    }

    deep_ptr& operator=(deep_ptr&& other) noexcept {
        T* const taken = std::exchange(other.p_, nullptr); // first: the other may be this one
        delete std::exchange(p_, taken);
        return *this;
    }

    T* operator->() noexcept { return p_; }
    T const* operator->() const noexcept { return p_; }
    T const* get() const noexcept { return p_; }

private:
    T* p_;
};

} // namespace tavi::ioapi::v2::detail
