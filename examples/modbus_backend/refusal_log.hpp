#pragma once

#include <tavi/ioapi/v2/io_error.hpp>

#include "function_code.hpp"
#include "journal.hpp"
#include "request_plan.hpp"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace modbus_backend {

/// Logs what the controller refuses to give: once, until it is given or refused for another reason,
/// for who polls would hear of it again and again. All that one read is refused for the same reason
/// is one record, for a map may have thousands of variables that a controller does not know.
class refusal_log {
public:
    explicit refusal_log(journal log) : log_(log) {}

    /// Take note of a request that was refused.
    void refused(request const& asked, tavi::ioapi::v2::io_error const& reason);
    void answered(request const& asked);

    /// Write what was noted since the last time, one record for each function and reason.
    void tell();

private:
    struct news {
        function_code function;
        int code; ///< number of the exception
        std::string reason;
        std::string where; ///< what was asked for first: the range and the variables
        std::size_t variables = 0;
        std::size_t requests = 0;
    };

    news& news_of(request const& asked, tavi::ioapi::v2::io_error const& reason);

    journal log_;
    std::unordered_map<variable const*, int> known_; ///< with the number of the exception
    std::vector<news> untold_;                       ///< of few reasons
};

} // namespace modbus_backend
