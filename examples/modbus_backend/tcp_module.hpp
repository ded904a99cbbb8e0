#pragma once

#include <backend_module.hpp>

namespace modbus_backend {

/// What this backend offers without a connection. It has no state.
class tcp_module final : public example::backend_module {
public:
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
};

} // namespace modbus_backend
