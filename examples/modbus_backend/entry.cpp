#include "guard.hpp"
#include "settings.hpp"
#include "setup_error.hpp"
#include "tcp_backend.hpp"

#include <backend_module.hpp>

#include <memory>

example::backend* example_open_backend_2(
    example::v2::utility::data_view<example::setting const> settings,
    example::v2::utility::string& problem,
    example::v2::io_error& error) noexcept {
    example::backend* opened = nullptr;
    modbus_backend::guarded(error, [&] {
        try {
            auto const given = modbus_backend::read_settings(settings);
            opened = std::make_unique<modbus_backend::tcp_backend>(given).release();
        } catch (modbus_backend::setup_error const& failure) {
            problem = failure.what();
            error = modbus_backend::make_modbus_error(failure.code());
        }
    });
    return opened;
}
