#pragma once

#include <tavi/ioapi/v2/interfaces/io_error_diagnostics_impl.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

namespace values_test {

/// Diagnostics on the stack of a test, which count what is done to their references.
class counted_diagnostics final : public tavi::ioapi::v2::interfaces::io_error_diagnostics_impl {
public:
    int added = 0;
    int released = 0;

    unsigned int add_ref() override { return static_cast<unsigned int>(1 + ++added - released); }
    unsigned int release() override { return static_cast<unsigned int>(1 + added - ++released); }
    unsigned int size() const override { return 0; }
    bool has(tavi::ioapi::v2::utility::string_view) const override { return false; }
    tavi::ioapi::v2::io_value get(tavi::ioapi::v2::utility::string_view) const override {
        return {};
    }
    iterator_impl* make_iterator() const override { return nullptr; }
};

} // namespace values_test
