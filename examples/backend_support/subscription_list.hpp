#pragma once

#include <tavi/ioapi/v2/io_data_value.hpp>
#include <tavi/ioapi/v2/io_error.hpp>
#include <tavi/ioapi/v2/plc_identifier.hpp>
#include <tavi/ioapi/v2/read_result.hpp>
#include <tavi/ioapi/v2/subscription_id.hpp>

#include <map>
#include <optional>
#include <unordered_map>
#include <vector>

namespace backend_support {

/// The subscriptions of one backend, and what was delivered for them, so that each change is
/// delivered once. Nothing is read here: who polls reads `variables()` and asks for the `changes`.
///
/// Where memory is exhausted, all stays as it was. Not synchronised.
class subscription_list {
public:
    /// Subscribe to a variable once more; it is due in the next `changes`, whatever it is.
    /// \return an id that is never given again, of kind `number`
    [[nodiscard]] tavi::ioapi::v2::subscription_id add(
        tavi::ioapi::v2::plc_identifier const& variable);

    /// End a subscription. \return whether the id was that of one
    bool remove(tavi::ioapi::v2::subscription_id const& id);

    [[nodiscard]] bool empty() const noexcept { return subscribed_.empty(); }

    /// The variables subscribed to, each once, in the order of their first subscriptions.
    [[nodiscard]] std::vector<tavi::ioapi::v2::plc_identifier> variables() const;

    /// Find out what is to be delivered.
    /// \param fresh  what was read, each variable at most once; those not subscribed to are
    ///     passed over, and those left out are still due next time
    /// \param[out] changed  replaced by an entry for each variable that is due after `add`, or
    ///     whose value, quality or error (by code and category) is not the one delivered last, in
    ///     the order of `fresh`. A new timestamp or other diagnostics alone are no change.
    void changes(tavi::ioapi::v2::read_result const& fresh, tavi::ioapi::v2::read_result& changed);

private:
    struct answer {
        tavi::ioapi::v2::io_data_value value;
        tavi::ioapi::v2::io_error error;
    };
    struct subscribed {
        tavi::ioapi::v2::plc_identifier variable;
        unsigned int subscriptions = 0;
        std::optional<answer> delivered{}; ///< none where it is due
    };

    subscribed* find(tavi::ioapi::v2::plc_identifier const& variable);
    [[nodiscard]] static bool is_change(subscribed const& known,
                                        tavi::ioapi::v2::read_result::result_type const& fresh);

    unsigned long long last_number_ = 0;
    std::map<unsigned long long, subscribed> subscribed_; ///< by the number of the first id
    std::unordered_map<tavi::ioapi::v2::plc_identifier, unsigned long long> places_;
    std::unordered_map<unsigned long long, unsigned long long> subscriptions_; ///< id to place
};

} // namespace backend_support
