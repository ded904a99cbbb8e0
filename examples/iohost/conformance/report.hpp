#pragma once

#include "../json_value.hpp"

#include <cstddef>
#include <string>
#include <vector>

namespace iohost::conformance {

/// What is said of the rules, in the order in which they were looked at.
class report {
public:
    enum class outcome { ok, failed, skipped };

    /// \param shown  whether each rule is printed at once, one line on standard output
    explicit report(bool shown) : shown_(shown) {}

    void ok(std::string const& rule, std::string const& detail);
    void failed(std::string const& rule, std::string const& detail);
    void skipped(std::string const& rule, std::string const& why);

    /// `failed` with the first of the faults and the number of the others, or `ok` where there are
    /// none.
    void judge(std::string const& rule,
               std::vector<std::string> const& faults,
               std::string const& detail);

    /// How many rules have this outcome.
    [[nodiscard]] std::size_t count(outcome wanted) const;
    /// `30 rules: 28 ok, 1 FAILED, 1 skipped`
    [[nodiscard]] std::string summary() const;
    /// `{"rules": [{"rule": ..., "outcome": ..., "detail": ...}], "ok": ..., ...}`
    [[nodiscard]] json document() const;

private:
    struct line {
        std::string rule;
        outcome what;
        std::string detail;
    };

    void add(line made);

    bool shown_;
    std::vector<line> lines_;
};

} // namespace iohost::conformance
