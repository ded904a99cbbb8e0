#pragma once

#include <tavi/ioapi/v2/io_error_category.hpp>

namespace values_test {

/// The category of some backend, so that a test sees it go.
class foreign_category final : public tavi::ioapi::v2::io_error_category {
public:
    char const* name() const override { return "foreign"; }
    tavi::ioapi::v2::utility::string message(int) const override { return {}; }
};

} // namespace values_test
