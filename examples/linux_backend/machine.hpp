#pragma once

#include "catalogue.hpp"
#include "settings.hpp"
#include "structures.hpp"

#include <backend_module.hpp>
#include <backend_support/clock.hpp>
#include <backend_support/subscription_list.hpp>

#include <string_view>

namespace linux_backend {

/// The machine's own data as the variables of a controller. Nothing is kept open: each operation
/// reads the files that it needs.
///
/// The secondary part of an identifier may name a member of a structure, and with dots a member of
/// that: `receive.bytes`. Elements of arrays have no names.
class machine final : public example::backend {
public:
    /// Registers the structures and writes to the log. \param time  lives longer
    /// \throws registration_failure, and what the host throws
    machine(settings given,
            tavi::ioapi::v2::backend_query host,
            backend_support::clock const& time);

    void release() noexcept override;
    void browse(tavi::ioapi::v2::plc_identifier const& folder,
                tavi::ioapi::v2::browse_result& result,
                tavi::ioapi::v2::io_error& error) noexcept override;
    void read(tavi::ioapi::v2::read_result& result,
              tavi::ioapi::v2::io_error& error) noexcept override;
    /// Refuses each variable: none can be written.
    void write(tavi::ioapi::v2::utility::data_view<tavi::ioapi::v2::io_value const> values,
               tavi::ioapi::v2::write_result& result,
               tavi::ioapi::v2::io_error& error) noexcept override;
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
    [[nodiscard]] snapshot look() const;
    void read_all(tavi::ioapi::v2::read_result& result) const;

    settings given_;
    tavi::ioapi::v2::backend_query host_;
    backend_support::clock const& time_;
    structures structures_;
    backend_support::subscription_list subscriptions_;
};

} // namespace linux_backend
