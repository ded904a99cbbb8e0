#pragma once

#include <tavi/ioapi/v2/io_error_category.hpp>

namespace foundation_test {

/// A category of a backend's own, with one code that means something: 5.
class pump_category final : public tavi::ioapi::v2::io_error_category {
public:
    char const* name() const override { return "pump"; }
    tavi::ioapi::v2::utility::string message(int code) const override {
        return code == 5 ? "blocked" : tavi::ioapi::v2::utility::string();
    }
};

} // namespace foundation_test
