#include "clock.hpp"

namespace backend_support {

namespace {

class clock_of_machine final : public clock {
public:
    [[nodiscard]] tavi::ioapi::v2::io_timestamp now() const noexcept override {
        return tavi::ioapi::v2::io_timestamp::now();
    }
};

} // namespace

clock const& machine_clock() noexcept {
    static clock_of_machine const instance;
    return instance;
}

} // namespace backend_support
