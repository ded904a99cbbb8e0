#pragma once

#include <backend_module.hpp>
#include <backend_support/clock.hpp>

namespace linux_backend {

/// Opens the machine that it runs on. Its state is the clock of its backends alone.
class linux_module final : public example::backend_module {
public:
    /// \param time  lives longer than all backends that are opened
    explicit linux_module(
        backend_support::clock const& time = backend_support::machine_clock()) noexcept
        : time_(time) {}

    void describe(example::module_info& info,
                  tavi::ioapi::v2::io_error& error) const noexcept override;
    void form(tavi::ioapi::v2::config::config_template& form,
              tavi::ioapi::v2::io_error& error) const noexcept override;
    void verify(tavi::ioapi::v2::config::store const& values,
                tavi::ioapi::v2::config::verification_result& verdict,
                tavi::ioapi::v2::io_error& error) const noexcept override;
    [[nodiscard]] example::backend* open(tavi::ioapi::v2::config::store const& values,
                                         tavi::ioapi::v2::backend_query host,
                                         tavi::ioapi::v2::utility::string& problem,
                                         tavi::ioapi::v2::io_error& error) const noexcept override;

private:
    backend_support::clock const& time_;
};

} // namespace linux_backend
