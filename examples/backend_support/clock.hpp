#pragma once

#include <tavi/ioapi/v2/io_timestamp.hpp>

namespace backend_support {

/// Where a backend takes the times of its values from. A test brings one of its own.
class clock {
public:
    clock(clock const&) = delete;
    clock& operator=(clock const&) = delete;

    [[nodiscard]] virtual tavi::ioapi::v2::io_timestamp now() const noexcept = 0;

protected:
    clock() noexcept = default;
    ~clock() = default;
};

/// \return the clock of the machine, which lives as long as the module.
[[nodiscard]] clock const& machine_clock() noexcept;

} // namespace backend_support
