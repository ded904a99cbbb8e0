#pragma once

#include <tavi/ioapi/v2/detail/deep_ptr.hpp>

/// Spells the five special members of a handle in the source file that knows its private part.
#define TAVI_IOAPI_DEFINE_HANDLE(type)                                                             \
    type::type(type const&) = default;                                                             \
    type::type(type&&) noexcept = default;                                                         \
    type& type::operator=(type const&) = default;                                                  \
    type& type::operator=(type&&) noexcept = default;                                              \
    type::~type() = default
