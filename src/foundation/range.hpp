#pragma once

/// Spells the six operations that make a class a range of contiguous elements, in the source file
/// that knows where they stand.
/// \param scope    the class with the names of the classes around it
/// \param element  the class of the elements
/// \param first    how a member function comes to the first element, null where there is none
/// \param count    how it comes to their number
#define TAVI_IOAPI_DEFINE_RANGE(scope, element, first, count)                                      \
    element* scope::begin() noexcept {                                                             \
        return first;                                                                              \
    }                                                                                              \
    element* scope::end() noexcept {                                                               \
        return (first) + (count);                                                                  \
    }                                                                                              \
    element const* scope::begin() const noexcept {                                                 \
        return first;                                                                              \
    }                                                                                              \
    element const* scope::end() const noexcept {                                                   \
        return (first) + (count);                                                                  \
    }                                                                                              \
    element const* scope::cbegin() const noexcept {                                                \
        return begin();                                                                            \
    }                                                                                              \
    element const* scope::cend() const noexcept {                                                  \
        return end();                                                                              \
    }                                                                                              \
    static_assert(true)
