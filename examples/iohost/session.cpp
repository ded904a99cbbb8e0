#include "session.hpp"

#include "configuration.hpp"
#include "failures.hpp"
#include "log_printer.hpp"
#include "module_path.hpp"

#include <string>

namespace iohost {

namespace {

std::string const& required_backend(options const& chosen) {
    if (chosen.backend.empty()) throw setup_failure("--backend is required; see iohost --help");
    return chosen.backend;
}

} // namespace

session::session(options const& chosen)
    : chosen_(chosen),
      module_(module_path(required_backend(chosen))),
      host_(log_printer(chosen.verbose)) {
    auto const info = module_.describe();
    host_.serve(info.name.str(), info.version);
}

tavi::ioapi::v2::config::store const& session::values() {
    if (!values_) {
        setting_texts texts;
        if (!chosen_.config_file.empty()) texts = read_settings(chosen_.config_file);
        for (auto& text : parsed_settings(chosen_.settings)) texts.push_back(std::move(text));
        values_ = configuration(module_.form(), texts);
    }
    return *values_;
}

example::backend& session::connection() {
    if (backend_ == nullptr) {
        backend_ = module_.open(values(), tavi::ioapi::v2::backend_query(host_));
    }
    return *backend_;
}

} // namespace iohost
