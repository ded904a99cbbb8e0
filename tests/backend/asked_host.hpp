#pragma once

#include <tavi/ioapi/v2/backend_query.hpp>

#include "recording_host.hpp"

#include <gtest/gtest.h>

namespace backend_test {

/// A host, a query for it and what operations are called with.
class asked_host : public ::testing::Test {
protected:
    recording_host host;
    backend_query query{host};
    backend_query const& constant = query;
    plc_identifier const name{"pump", 4};
    io_data_type const type{io_data_type::basic_types::object, 7, 1, 2};
    io_error error;
};

} // namespace backend_test
