#include "tcp_backend.hpp"

#include "browse_tree.hpp"
#include "data_type.hpp"
#include "diagnostics.hpp"
#include "reader.hpp"
#include "request_plan.hpp"
#include "setup_error.hpp"
#include "structure_registration.hpp"
#include "writer.hpp"

#include <backend_support/guard.hpp>
#include <backend_support/not_found.hpp>
#include <backend_support/subscribe_each.hpp>

#include <cerrno>
#include <string>
#include <utility>
#include <vector>

namespace modbus_backend {

namespace v2 = tavi::ioapi::v2;
using backend_support::guarded;
using backend_support::not_found;

tcp_backend::tcp_backend(configuration checked,
                         v2::backend_query host,
                         backend_support::clock const& time)
    : map_(std::move(checked.map).value()),
      connection_(checked.values.controller, journal(host)),
      refusals_(journal(host)),
      time_(time),
      poll_interval_ms_(checked.values.poll_interval_ms) {
    auto const& controller = checked.values.controller;
    if (!connection_.open()) {
        std::string const reason = modbus_strerror(errno);
        throw setup_error(modbus_errc::not_connected, "cannot connect to " + controller.host + ":" +
                                                          std::to_string(controller.port) + ": " +
                                                          reason);
    }
    register_structures(map_.structures(), host);
    tree_ = browse_tree_of(map_);
}

void tcp_backend::release() noexcept {
    delete this;
}

void tcp_backend::browse(v2::plc_identifier const& folder,
                         v2::browse_result& result,
                         v2::io_error& error) noexcept {
    guarded(error, [&] {
        if (!tree_.children(folder, result)) error = v2::io_errc::not_found;
    });
}

void tcp_backend::read(v2::read_result& result, v2::io_error& error) noexcept {
    guarded(error, [&] { read_all(result); });
}

void tcp_backend::read_all(v2::read_result& result) {
    std::vector<wanted_variable> wanted;
    for (unsigned int i = 0; i < result.size(); ++i) {
        variable const* const described = map_.find(result[i].identifier());
        if (described == nullptr) {
            result.set(i, not_found("read", result[i].identifier()));
        } else {
            wanted.push_back({described, i});
        }
    }
    if (wanted.empty()) return;
    // Where this fails, every request tells so by its own error.
    connection_.open();
    for (auto const& request : plan_requests(std::move(wanted))) {
        carry_out(request, connection_, refusals_, time_, result);
    }
    refusals_.tell();
}

void tcp_backend::write(v2::utility::data_view<v2::io_value const> values,
                        v2::write_result& result,
                        v2::io_error& error) noexcept {
    guarded(error, [&] {
        if (values.size() != result.size()) {
            error = make_modbus_error(modbus_errc::wrong_count);
            return;
        }
        if (values.empty()) return;
        connection_.open();
        for (unsigned int i = 0; i < values.size(); ++i) {
            v2::io_error outcome;
            guarded(outcome, [&] { outcome = write_one(result[i].identifier(), values[i]); });
            result.set(i, std::move(outcome));
        }
    });
}

v2::io_error tcp_backend::write_one(v2::plc_identifier const& identifier,
                                    v2::io_value const& value) {
    variable const* const whole = map_.find(v2::plc_identifier(identifier.primary()));
    if (whole == nullptr) return not_found("write", identifier);
    auto const& member = identifier.secondary();
    if (member.is_none()) return write_variable(*whole, value, connection_);
    bool const has_members = whole->type.members != nullptr;
    if (!has_members || member.kind() != v2::plc_identifier_kind::text) {
        return not_found("write", identifier);
    }
    return write_member(*whole, member.text(), value, connection_);
}

void tcp_backend::subscribe(v2::utility::data_view<v2::plc_identifier const> variables,
                            v2::subscription_result& result,
                            v2::io_error& error) noexcept {
    guarded(error, [&] {
        backend_support::subscribe_each(
            variables, [&](auto const& identifier) { return subscribable_at(identifier); },
            subscriptions_, result);
    });
}

backend_support::subscribable tcp_backend::subscribable_at(
    v2::plc_identifier const& identifier) const {
    variable const* const described = map_.find(identifier);
    if (described == nullptr) return {{}, not_found("subscribe", identifier)};
    if (!identifier.secondary().is_none()) {
        return {
            {},
            refused(make_modbus_error(modbus_errc::member_subscription), "subscribe", *described)};
    }
    return {data_type_of(described->type), {}};
}

unsigned int tcp_backend::poll_interval() const noexcept {
    return poll_interval_ms_;
}

void tcp_backend::poll(v2::read_result& changes, v2::io_error& error) noexcept {
    guarded(error, [&] {
        v2::read_result fresh(subscriptions_.variables());
        read_all(fresh);
        subscriptions_.changes(fresh, changes);
    });
}

void tcp_backend::unsubscribe(v2::subscription_id const& id, v2::io_error& error) noexcept {
    guarded(error, [&] {
        if (!subscriptions_.remove(id)) error = v2::io_errc::not_found;
    });
}

} // namespace modbus_backend
