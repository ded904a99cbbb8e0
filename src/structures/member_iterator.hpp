#pragma once

#include "foundation/handle.hpp"

#include <utility>

/// Spells the operations of an iterator over members, a handle over its own `impl`, in the source
/// file that knows the `impl`. The iterators differ in what they give and in nothing else.
/// \param scope  the class with the names of the classes around it
#define TAVI_IOAPI_DEFINE_MEMBER_ITERATOR(scope)                                                   \
    scope::const_iterator(impl const& position) : impl_(std::in_place, position) {}                \
    TAVI_IOAPI_DEFINE_HANDLE(scope, const_iterator);                                               \
    scope& scope::operator++() {                                                                   \
        impl_->increment();                                                                        \
        return *this;                                                                              \
    }                                                                                              \
    scope scope::operator++(int) {                                                                 \
        scope before(*this);                                                                       \
        impl_->increment();                                                                        \
        return before;                                                                             \
    }                                                                                              \
    scope::value_type scope::operator*() const {                                                   \
        return impl_->get();                                                                       \
    }                                                                                              \
    bool scope::operator==(scope const& other) const noexcept {                                    \
        if (impl_.get() == other.impl_.get()) return true;                                         \
        if (impl_.get() == nullptr || other.impl_.get() == nullptr) return false;                  \
        return impl_->equal(*other.impl_.get());                                                   \
    }                                                                                              \
    bool scope::operator!=(scope const& other) const noexcept {                                    \
        return !(*this == other);                                                                  \
    }                                                                                              \
    static_assert(true)
