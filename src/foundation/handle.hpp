#pragma once

#include <tavi/ioapi/v2/detail/deep_ptr.hpp>

/// Spells the five special members of a handle in the source file that knows its private part.
/// \param scope  the class with the names of the classes around it
/// \param name   the class alone
#define TAVI_IOAPI_DEFINE_HANDLE(scope, name)                                                      \
    scope::name(scope const&) = default;                                                           \
    scope::name(scope&&) noexcept = default;                                                       \
    scope& scope::operator=(scope const&) = default;                                               \
    scope& scope::operator=(scope&&) noexcept = default;                                           \
    scope::~name() = default
