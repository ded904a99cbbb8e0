#pragma once

#include <tavi/ioapi/v2/io_timestamp.hpp>
#include <tavi/ioapi/v2/read_result.hpp>

#include <cstddef>
#include <optional>
#include <unordered_map>
#include <vector>

namespace iohost {

/// A variable that is watched, and what is known of it.
struct watched_variable {
    tavi::ioapi::v2::plc_identifier identifier;
    /// What the last change said; none until the first.
    std::optional<tavi::ioapi::v2::read_result::result_type> last;
    unsigned long long changes = 0;
    unsigned long long errors = 0; ///< among the changes
};

/// All of them, and how often they were looked at.
struct watch_state {
    std::vector<watched_variable> variables;
    unsigned long long polls = 0;
    unsigned long long failed_polls = 0;
    unsigned long long refused = 0; ///< variables that cannot be watched, and are not among these
    bool last_poll_failed = false;

    /// Add a variable, unless it is there already.
    void add(tavi::ioapi::v2::plc_identifier identifier);
    /// The one that a change is of, or null.
    [[nodiscard]] watched_variable* find(tavi::ioapi::v2::plc_identifier const& identifier);
    /// Take those out that cannot be watched, and count them.
    void refuse(std::vector<tavi::ioapi::v2::plc_identifier> const& identifiers);

    /// Whether the last that is known of all of them is a value, of the last poll, too.
    [[nodiscard]] bool well() const;

private:
    std::unordered_map<tavi::ioapi::v2::plc_identifier, std::size_t> places_;
};

} // namespace iohost
