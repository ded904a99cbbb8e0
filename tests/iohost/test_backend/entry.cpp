#include "behaviour.hpp"
#include "connection.hpp"

#include <backend_module.hpp>

#include <exception>
#include <utility>

namespace test_backend {

namespace {

class module final : public example::backend_module {
public:
    void describe(example::module_info& info, v2::io_error& error) const noexcept override {
        error.reset();
        info.name = form_has("sentence_for_a_name") ? "A test." : "test";
        info.summary = "Keeps its values in memory";
        info.version = {1, 2, 3, "beta"};
    }

    void form(v2::config::config_template& form, v2::io_error& error) const noexcept override {
        error.reset();
        form = test_backend::form();
    }

    void verify(v2::config::store const& values,
                v2::config::verification_result& verdict,
                v2::io_error& error) const noexcept override {
        error.reset();
        verdict = verdict_on(values);
    }

    [[nodiscard]] example::backend* open(v2::config::store const& values,
                                         v2::backend_query host,
                                         v2::utility::string& problem,
                                         v2::io_error& error) const noexcept override {
        static unsigned int opened = 0;
        error.reset();
        auto how = behaviour_of(values);
        using severity_scale = v2::config::verification_result::severity_type;
        if (!how.has("opens_anything")) {
            for (auto const& issue : verdict_on(values)) {
                if (issue.severity < severity_scale::error) continue;
                problem = issue.message;
                error = v2::io_errc::invalid_property;
                return nullptr;
            }
        }
        if (how.has("does_not_open") || (how.has("opens_once") && ++opened > 1)) {
            problem = "nobody\nanswers";
            error = v2::io_error(device_category(), 7);
            return nullptr;
        }
        try {
            return new connection(std::move(how), host);
        } catch (std::exception const&) {
            error = v2::io_errc::unhandled_exception;
            return nullptr;
        }
    }
};

} // namespace
} // namespace test_backend

example::backend_module const* example_backend_module_3() noexcept {
    static test_backend::module const instance;
    return &instance;
}
