#pragma once

#include <tavi/ioapi/v2/backend_query.hpp>

#include <string>

namespace modbus_backend {

/// The log of the host. What goes wrong while a record is made is nobody's concern: the work goes
/// on without it.
class journal {
public:
    explicit journal(tavi::ioapi::v2::backend_query host) noexcept : host_(host) {}

    /// Push one record, whose parts stand next to each other.
    template <class... Texts>
    void write(tavi::ioapi::v2::log_severity_level level, Texts const&... parts) const noexcept {
        try {
            std::string line;
            (line.append(parts), ...);
            host_.push_log_record(level, line);
        } catch (...) {
            return;
        }
    }

private:
    tavi::ioapi::v2::backend_query host_;
};

} // namespace modbus_backend
