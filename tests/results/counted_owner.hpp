#pragma once

#include <tavi/ioapi/v2/interfaces/object.hpp>
#include <tavi/ioapi/v2/subscription_id.hpp>

namespace results_test {

/// A counted object of a backend, on the stack of a test, which counts what is done to it.
class counted_owner final : public tavi::ioapi::v2::interfaces::object {
public:
    unsigned int add_ref() override { return static_cast<unsigned int>(1 + ++added - released); }
    unsigned int release() override { return static_cast<unsigned int>(1 + added - ++released); }

    /// An id that takes over a reference.
    [[nodiscard]] tavi::ioapi::v2::subscription_id id() {
        return tavi::ioapi::v2::subscription_id::adopt(this);
    }

    int added = 0;
    int released = 0;
};

} // namespace results_test
