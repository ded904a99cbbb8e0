#include "machine.hpp"

#include "members.hpp"
#include "reports.hpp"

#include <backend_support/guard.hpp>
#include <backend_support/name_tree.hpp>
#include <backend_support/not_found.hpp>
#include <backend_support/subscribe_each.hpp>

#include <string>
#include <utility>
#include <vector>

namespace linux_backend {

namespace {

namespace v2 = tavi::ioapi::v2;
using backend_support::not_found;
using v2::browsing::node_class;

std::string_view name_of(v2::plc_identifier const& identifier) {
    return identifier.primary().text();
}

// Null for what is no variable and no member of one.
variable const* find(catalogue& variables,
                     v2::plc_identifier const& identifier,
                     structures const& known) {
    if (identifier.primary().kind() != v2::plc_identifier_kind::text) return nullptr;
    variable const* const found = variables.find(name_of(identifier));
    if (found == nullptr) return nullptr;
    return has_member(found->data_type, identifier.secondary(), known) ? found : nullptr;
}

backend_support::subscribable subscribable_at(catalogue& variables,
                                              v2::plc_identifier const& identifier,
                                              structures const& known) {
    try {
        variable const* const found = find(variables, identifier, known);
        if (found == nullptr) return {{}, not_found("subscribe", identifier)};
        if (!identifier.secondary().is_none()) {
            return {
                {},
                backend_support::entry_error(v2::io_errc::not_supported, "subscribe", identifier)};
        }
        return {found->data_type};
    } catch (file_failure const& failure) {
        return {{}, report(failure, "subscribe", name_of(identifier))};
    }
}

std::vector<backend_support::leaf> folders() {
    return {{"load", "how much there is to do", {}, node_class::folder},
            {"uptime", "since the machine was started", {}, node_class::folder},
            {"memory", "main memory and swap space", {}, node_class::folder},
            {"system", "the system as a whole", {}, node_class::folder},
            {"cpu", "what the processors did", {}, node_class::folder},
            {"network", "traffic of the network interfaces", {}, node_class::folder}};
}

backend_support::name_tree tree_of(std::vector<variable const*> const& variables) {
    auto leaves = folders();
    for (auto const* const one : variables) {
        leaves.push_back({one->name, one->description, one->data_type});
    }
    return backend_support::name_tree(leaves);
}

} // namespace

machine::machine(settings given, v2::backend_query host, backend_support::clock const& time)
    : given_(std::move(given)), host_(host), time_(time), structures_(host) {
    host_.log(v2::log_severity_level::information,
              "linux: opened, on " + given_.proc + " and " + given_.sys);
}

void machine::release() noexcept {
    v2::io_error ignored;
    backend_support::guarded(
        ignored, [&] { host_.log(v2::log_severity_level::information, "linux: closed"); });
    delete this;
}

void machine::browse(v2::plc_identifier const& folder,
                     v2::browse_result& result,
                     v2::io_error& error) noexcept {
    backend_support::guarded(error, [&] {
        snapshot files = look();
        catalogue variables(files, structures_);
        if (!tree_of(variables.all()).children(folder, result)) error = v2::io_errc::not_found;
    });
}

snapshot machine::look() const {
    return {given_.proc, given_.sys, time_.now()};
}

void machine::read_all(v2::read_result& result) const {
    snapshot files = look();
    catalogue variables(files, structures_);
    for (auto& entry : result) {
        auto const& identifier = entry.identifier();
        try {
            variable const* const found = find(variables, identifier, structures_);
            if (found == nullptr) {
                entry.set(not_found("read", identifier));
                continue;
            }
            entry.set(v2::io_data_value(member_of(found->read(files), identifier.secondary()),
                                        files.time(), v2::io_data_value::value_quality::good));
        } catch (file_failure const& failure) {
            entry.set(report(failure, "read", name_of(identifier)));
        }
    }
}

void machine::read(v2::read_result& result, v2::io_error& error) noexcept {
    backend_support::guarded(error, [&] { read_all(result); });
}

void machine::write(v2::utility::data_view<v2::io_value const>,
                    v2::write_result& result,
                    v2::io_error& error) noexcept {
    backend_support::guarded(error, [&] {
        snapshot files = look();
        catalogue variables(files, structures_);
        for (auto& entry : result) {
            auto const& identifier = entry.identifier();
            auto const name = name_of(identifier);
            try {
                bool const is_known = find(variables, identifier, structures_) != nullptr;
                entry.set(is_known ? report_read_only(name) : not_found("write", identifier));
            } catch (file_failure const& failure) {
                entry.set(report(failure, "write", name));
            }
        }
    });
}

void machine::subscribe(v2::utility::data_view<v2::plc_identifier const> variables,
                        v2::subscription_result& result,
                        v2::io_error& error) noexcept {
    backend_support::guarded(error, [&] {
        snapshot files = look();
        catalogue known(files, structures_);
        auto const look_up = [&](v2::plc_identifier const& identifier) {
            return subscribable_at(known, identifier, structures_);
        };
        backend_support::subscribe_each(variables, look_up, subscriptions_, result);
    });
}

unsigned int machine::poll_interval() const noexcept {
    return given_.poll_interval_ms;
}

void machine::poll(v2::read_result& changes, v2::io_error& error) noexcept {
    backend_support::guarded(error, [&] {
        v2::read_result fresh(subscriptions_.variables());
        if (!fresh.empty()) read_all(fresh);
        subscriptions_.changes(fresh, changes);
    });
}

void machine::unsubscribe(v2::subscription_id const& id, v2::io_error& error) noexcept {
    backend_support::guarded(error, [&] {
        if (!subscriptions_.remove(id)) error = v2::io_errc::not_found;
    });
}

} // namespace linux_backend
