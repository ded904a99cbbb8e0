#pragma once

#include <backend_module.hpp>
#include <backend_support/clock.hpp>

namespace modbus_backend {

/// What this backend offers without a connection. Its state is the clock of its backends alone.
class tcp_module final : public example::backend_module {
public:
    /// \param time  lives longer than all backends that are opened
    explicit tcp_module(
        backend_support::clock const& time = backend_support::machine_clock()) noexcept
        : time_(time) {}

    void describe(example::module_info& info,
                  tavi::ioapi::v2::io_error& error) const noexcept override;
    /// See `make_form`.
    void form(tavi::ioapi::v2::config::config_template& form,
              tavi::ioapi::v2::io_error& error) const noexcept override;
    /// See `check`.
    void verify(tavi::ioapi::v2::config::store const& values,
                tavi::ioapi::v2::config::verification_result& verdict,
                tavi::ioapi::v2::io_error& error) const noexcept override;
    /// The error is `bad_setting` or `bad_map` where `verify` finds one, `not_connected` where the
    /// controller cannot be reached, or that of a host which refuses a structure.
    [[nodiscard]] example::backend* open(tavi::ioapi::v2::config::store const& values,
                                         tavi::ioapi::v2::backend_query host,
                                         tavi::ioapi::v2::utility::string& problem,
                                         tavi::ioapi::v2::io_error& error) const noexcept override;

private:
    backend_support::clock const& time_;
};

} // namespace modbus_backend
