#include "linux_module.hpp"

#include "error_category.hpp"
#include "machine.hpp"
#include "settings.hpp"

#include <backend_support/form_check.hpp>
#include <backend_support/guard.hpp>

#include <memory>

namespace linux_backend {

namespace v2 = tavi::ioapi::v2;

void linux_module::describe(example::module_info& info, v2::io_error& error) const noexcept {
    backend_support::guarded(error, [&] {
        info = {"linux",
                "what the machine tells of itself: load, memory, network, devices",
                {1, 0, 0, {}}};
    });
}

void linux_module::form(v2::config::config_template& form, v2::io_error& error) const noexcept {
    backend_support::guarded(error, [&] { form = settings_form(); });
}

void linux_module::verify(v2::config::store const& values,
                          v2::config::verification_result& verdict,
                          v2::io_error& error) const noexcept {
    backend_support::guarded(error, [&] { verdict = verify_settings(values); });
}

example::backend* linux_module::open(v2::config::store const& values,
                                     v2::backend_query host,
                                     v2::utility::string& problem,
                                     v2::io_error& error) const noexcept {
    example::backend* opened = nullptr;
    backend_support::guarded(error, [&] {
        problem = {};
        auto const verdict = verify_settings(values);
        if (auto const* const issue = backend_support::first_error(verdict)) {
            problem = issue->message;
            error = make_linux_error(linux_errc::bad_option);
            return;
        }
        try {
            opened = std::make_unique<machine>(read_settings(values), host, time_).release();
        } catch (registration_failure const& failure) {
            problem = "the host does not take the structure '" + failure.name() + "'";
            error = failure.error();
        }
    });
    return opened;
}

} // namespace linux_backend
