#pragma once

#include "configuration.hpp"
#include "connection.hpp"
#include "refusal_log.hpp"
#include "variable_map.hpp"

#include <backend_module.hpp>
#include <backend_support/clock.hpp>
#include <backend_support/name_tree.hpp>
#include <backend_support/subscribe_each.hpp>
#include <backend_support/subscription_list.hpp>

namespace modbus_backend {

/// The variables of a map file, read from and written to one controller over Modbus TCP. Every
/// operation that needs the controller connects first where the connection was lost.
class tcp_backend final : public example::backend {
public:
    /// Connects, and registers the structures of the map. \param checked  without an error
    /// \param time  lives longer \throws setup_error
    tcp_backend(configuration checked,
                tavi::ioapi::v2::backend_query host,
                backend_support::clock const& time);

    void release() noexcept override;
    /// What `browse_tree_of` says.
    void browse(tavi::ioapi::v2::plc_identifier const& folder,
                tavi::ioapi::v2::browse_result& result,
                tavi::ioapi::v2::io_error& error) noexcept override;
    /// A member that the structure does not have is `not_found`.
    void read(tavi::ioapi::v2::read_result& result,
              tavi::ioapi::v2::io_error& error) noexcept override;
    /// In the order given. `wrong_count`, and nothing is written, where there are not as many
    /// values as entries.
    void write(tavi::ioapi::v2::utility::data_view<tavi::ioapi::v2::io_value const> values,
               tavi::ioapi::v2::write_result& result,
               tavi::ioapi::v2::io_error& error) noexcept override;
    /// A member gives `member_subscription`.
    void subscribe(
        tavi::ioapi::v2::utility::data_view<tavi::ioapi::v2::plc_identifier const> variables,
        tavi::ioapi::v2::subscription_result& result,
        tavi::ioapi::v2::io_error& error) noexcept override;
    [[nodiscard]] unsigned int poll_interval() const noexcept override;
    void poll(tavi::ioapi::v2::read_result& changes,
              tavi::ioapi::v2::io_error& error) noexcept override;
    void unsubscribe(tavi::ioapi::v2::subscription_id const& id,
                     tavi::ioapi::v2::io_error& error) noexcept override;

private:
    void read_all(tavi::ioapi::v2::read_result& result);
    tavi::ioapi::v2::io_error write_one(tavi::ioapi::v2::plc_identifier const& identifier,
                                        tavi::ioapi::v2::io_value const& value);
    [[nodiscard]] backend_support::subscribable subscribable_at(
        tavi::ioapi::v2::plc_identifier const& identifier) const;

    variable_map map_;
    connection connection_;
    refusal_log refusals_;
    backend_support::clock const& time_;
    unsigned int poll_interval_ms_;
    backend_support::name_tree tree_;
    backend_support::subscription_list subscriptions_;
};

} // namespace modbus_backend
