#pragma once

#include <backend_module.hpp>

#include <string>
#include <utility>
#include <vector>

namespace iohost {

/// Subscriptions of a backend, which end with this object.
class subscriptions {
public:
    explicit subscriptions(example::backend& backend) : backend_(backend) {}
    subscriptions(subscriptions const&) = delete;
    subscriptions& operator=(subscriptions const&) = delete;
    /// Ends those that are left, and keeps quiet about what goes wrong.
    ~subscriptions();

    /// Subscribe to variables. \return those that were refused, each with its error
    /// \throws operation_failure
    using refused = std::pair<tavi::ioapi::v2::plc_identifier, tavi::ioapi::v2::io_error>;
    [[nodiscard]] std::vector<refused> add(
        std::vector<tavi::ioapi::v2::plc_identifier> const& variables);

    /// End all. \return what went wrong, one line each
    [[nodiscard]] std::vector<std::string> end();

private:
    example::backend& backend_;
    // The results own the ids, which cannot be copied.
    std::vector<tavi::ioapi::v2::subscription_result> results_;
};

} // namespace iohost
