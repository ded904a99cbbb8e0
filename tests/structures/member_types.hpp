#pragma once

#include <tavi/ioapi/v2/io_data_type.hpp>

/// \file
/// The types that the members of the tests' structures have.

namespace structures_test {

using types = tavi::ioapi::v2::io_data_type::basic_types;

constexpr auto i32 = tavi::ioapi::v2::io_data_type::scalar(types::i32);
constexpr auto dbl = tavi::ioapi::v2::io_data_type::scalar(types::dbl);
constexpr auto text = tavi::ioapi::v2::io_data_type::scalar(types::string);
constexpr auto reals = tavi::ioapi::v2::io_data_type::array_of(types::dbl);

} // namespace structures_test
