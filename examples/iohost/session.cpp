#include "session.hpp"

#include "configuration.hpp"
#include "failures.hpp"
#include "log_printer.hpp"
#include "module_path.hpp"

#include <string>

namespace iohost {

namespace {

std::string const& required_backend(options const& chosen) {
    if (!chosen.backend) throw setup_failure("--backend is required; see iohost --help");
    return *chosen.backend;
}

} // namespace

session::session(options const& chosen)
    : chosen_(chosen),
      module_(module_path(required_backend(chosen))),
      host_(log_printer(chosen.verbose)) {
    auto const info = module_.describe();
    host_.serve(info.name.str(), info.version);
}

setting_texts session::texts() const {
    setting_texts texts;
    if (chosen_.config_file) texts = read_settings(*chosen_.config_file);
    for (auto& text : parsed_settings(chosen_.settings)) texts.push_back(std::move(text));
    return texts;
}

tavi::ioapi::v2::config::store const& session::values() {
    if (!values_) values_ = configuration(module_.form(), texts());
    return *values_;
}

example::backend& session::connection() {
    if (backend_ == nullptr) {
        backend_ = module_.open(values(), tavi::ioapi::v2::backend_query(host_));
    }
    return *backend_;
}

void insist_on_no_configuration(options const& chosen) {
    if (!chosen.config_file && chosen.settings.empty()) return;
    throw setup_failure(std::string(chosen.config_file ? "--config" : "--set") +
                        " has no use here: " + chosen.command +
                        " shows the same with any configuration; verify judges one");
}

} // namespace iohost
