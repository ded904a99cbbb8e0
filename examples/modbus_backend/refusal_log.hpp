#pragma once

#include <tavi/ioapi/v2/io_error.hpp>

#include "journal.hpp"
#include "request_plan.hpp"

#include <unordered_map>

namespace modbus_backend {

/// Logs what the controller refuses to give: once, until it is given or refused for another reason,
/// for who polls would hear of it again and again.
class refusal_log {
public:
    explicit refusal_log(journal log) : log_(log) {}

    void refused(request const& asked, tavi::ioapi::v2::io_error const& reason);
    void answered(request const& asked);

private:
    journal log_;
    std::unordered_map<variable const*, int> known_; ///< with the number of the exception
};

} // namespace modbus_backend
