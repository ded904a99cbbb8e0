#include "tcp_module.hpp"

#include "configuration.hpp"
#include "form.hpp"
#include "setup_error.hpp"
#include "tcp_backend.hpp"

#include <backend_support/guard.hpp>

#include <memory>
#include <utility>

namespace modbus_backend {

namespace v2 = tavi::ioapi::v2;
using backend_support::guarded;

void tcp_module::describe(example::module_info& info, v2::io_error& error) const noexcept {
    guarded(error, [&] {
        info = {"modbus", "Controllers that speak Modbus TCP, by a map of their registers", {}};
        info.version.major_version = 1;
    });
}

void tcp_module::form(v2::config::config_template& form, v2::io_error& error) const noexcept {
    guarded(error, [&] { form = make_form(); });
}

void tcp_module::verify(v2::config::store const& values,
                        v2::config::verification_result& verdict,
                        v2::io_error& error) const noexcept {
    guarded(error, [&] { verdict = check(values).verdict; });
}

example::backend* tcp_module::open(v2::config::store const& values,
                                   v2::backend_query host,
                                   v2::utility::string& problem,
                                   v2::io_error& error) const noexcept {
    example::backend* opened = nullptr;
    guarded(error, [&] {
        try {
            auto checked = check(values);
            require_usable(checked);
            opened = std::make_unique<tcp_backend>(std::move(checked), host, time_).release();
        } catch (setup_error const& failure) {
            problem = failure.what();
            error = failure.error();
        } catch (...) {
            problem = "the backend could not be opened";
            throw;
        }
    });
    return opened;
}

} // namespace modbus_backend
