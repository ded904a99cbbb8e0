#pragma once

/// \file
/// The whole interface of the library in one header.

#include "browsing/node.hpp"
#include "detail/get_as.hpp"
#include "interfaces/io_error_diagnostics_impl.hpp"
#include "interfaces/object.hpp"
#include "io_data_type.hpp"
#include "io_data_value.hpp"
#include "io_errc.hpp"
#include "io_error.hpp"
#include "io_error_category.hpp"
#include "io_exception.hpp"
#include "io_object.hpp"
#include "io_structure_type.hpp"
#include "io_timestamp.hpp"
#include "io_value.hpp"
#include "make_object_implementation.hpp"
#include "plc_identifier.hpp"
#include "plc_identifier_part.hpp"
#include "read_result.hpp"
#include "utility/array.hpp"
#include "utility/data_view.hpp"
#include "utility/pair.hpp"
#include "utility/string.hpp"
#include "utility/string_view.hpp"
#include "write_result.hpp"
