#include "subject.hpp"

#include <tavi/ioapi/v2/io_value.hpp>

#include "../failures.hpp"

namespace iohost::conformance {

namespace {

namespace v2 = tavi::ioapi::v2;

} // namespace

backend_ptr subject::open() const {
    v2::utility::string problem;
    backend_ptr opened;
    auto const error = seen.call("open", [&](v2::io_error& outcome) {
        opened.reset(module.operations().open(values, v2::backend_query(host), problem, outcome));
    });
    if (opened != nullptr) return opened;
    throw setup_failure(problem.empty() ? "open: " + describe(error) : problem.str());
}

example::backend& subject::connection() {
    if (shared == nullptr) shared = open();
    return *shared;
}

v2::io_error subject::browse(example::backend& backend,
                             v2::plc_identifier const& folder,
                             v2::browse_result& result) const {
    return seen.call("browse", [&](v2::io_error& error) { backend.browse(folder, result, error); });
}

v2::io_error subject::read(example::backend& backend, v2::read_result& result) const {
    auto error = seen.call("read", [&](v2::io_error& outcome) { backend.read(result, outcome); });
    for (auto const& entry : result) seen.entry("read", entry.error());
    return error;
}

v2::io_error subject::write(example::backend& backend,
                            v2::utility::data_view<v2::io_value const> values_to_write,
                            v2::write_result& result) const {
    auto error = seen.call(
        "write", [&](v2::io_error& outcome) { backend.write(values_to_write, result, outcome); });
    for (auto const& entry : result) seen.entry("write", entry.error());
    return error;
}

v2::io_error subject::subscribe(example::backend& backend,
                                std::vector<v2::plc_identifier> const& wanted,
                                v2::subscription_result& result) const {
    auto error = seen.call(
        "subscribe", [&](v2::io_error& outcome) { backend.subscribe(wanted, result, outcome); });
    for (auto const& entry : result) seen.entry("subscribe", entry.error);
    return error;
}

v2::io_error subject::poll(example::backend& backend, v2::read_result& changes) const {
    auto error = seen.call("poll", [&](v2::io_error& outcome) { backend.poll(changes, outcome); });
    for (auto const& entry : changes) seen.entry("poll", entry.error());
    return error;
}

v2::io_error subject::unsubscribe(example::backend& backend, v2::subscription_id const& id) const {
    return seen.call("unsubscribe", [&](v2::io_error& error) { backend.unsubscribe(id, error); });
}

v2::read_result::result_type subject::read_one(example::backend& backend,
                                               v2::plc_identifier const& variable) const {
    v2::plc_identifier const variables_to_read[] = {variable};
    v2::read_result result(variables_to_read);
    if (auto const error = read(backend, result)) result.set(0U, error);
    return result[0];
}

std::vector<v2::browsing::node> subject::readable(std::size_t most) const {
    std::vector<v2::browsing::node> found;
    for (std::size_t i = 0; i < entries.size() && found.size() < most; ++i) {
        if (entries[i].ok()) found.push_back(variables[i]);
    }
    return found;
}

v2::plc_identifier unknown_variable() {
    return v2::plc_identifier("a variable that iohost check has made up");
}

v2::plc_identifier unknown_member(v2::plc_identifier const& variable) {
    return v2::plc_identifier(variable.primary(), "a member that iohost check has made up");
}

bool untouched(v2::io_error const& error) {
    return error == v2::io_error(v2::io_errc::no_result);
}

} // namespace iohost::conformance
