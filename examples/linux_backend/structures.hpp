#pragma once

#include <tavi/ioapi/v2/backend_query.hpp>
#include <tavi/ioapi/v2/io_exception.hpp>
#include <tavi/ioapi/v2/io_object.hpp>

#include <string>
#include <utility>

namespace linux_backend {

/// A structure that the host does not take.
class registration_failure : public tavi::ioapi::v2::io_exception {
public:
    registration_failure(tavi::ioapi::v2::io_error error, std::string name)
        : io_exception(std::move(error)), name_(std::move(name)) {}

    [[nodiscard]] std::string const& name() const noexcept { return name_; }

private:
    std::string name_;
};

/// The structures of the variables, registered with the host each under its name, as objects
/// without values; values are made from copies.
class structures {
public:
    /// \throws registration_failure
    explicit structures(tavi::ioapi::v2::backend_query host);

    /// `linux.cpu_times`: the members of `processor_time_names`, in seconds (dbl)
    [[nodiscard]] auto const& cpu_times() const noexcept { return cpu_times_; }
    /// `linux.network_counters`: `bytes`, `packets`, `errors`, `dropped` (u64)
    [[nodiscard]] auto const& network_counters() const noexcept { return network_counters_; }
    /// `linux.network_traffic`: `receive`, `transmit` (`linux.network_counters`)
    [[nodiscard]] auto const& network_traffic() const noexcept { return network_traffic_; }
    /// `linux.network_link`: `state` (string), `mtu` (u32, bytes)
    [[nodiscard]] auto const& network_link() const noexcept { return network_link_; }
    /// `linux.block_device`: `size`, `reads`, `read_bytes`, `writes`, `written_bytes` (u64), `busy`
    /// (dbl, seconds)
    [[nodiscard]] auto const& block_device() const noexcept { return block_device_; }

    /// The blank of a type of objects or of arrays of objects, or null.
    [[nodiscard]] tavi::ioapi::v2::io_object const* find(
        tavi::ioapi::v2::io_data_type const& type) const noexcept;

private:
    tavi::ioapi::v2::io_object cpu_times_;
    tavi::ioapi::v2::io_object network_counters_;
    tavi::ioapi::v2::io_object network_traffic_;
    tavi::ioapi::v2::io_object network_link_;
    tavi::ioapi::v2::io_object block_device_;
};

} // namespace linux_backend
