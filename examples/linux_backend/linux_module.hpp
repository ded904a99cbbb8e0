#pragma once

#include <backend_module.hpp>

namespace linux_backend {

/// Opens the machine that it runs on.
class linux_module final : public example::backend_module {
public:
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
};

} // namespace linux_backend
