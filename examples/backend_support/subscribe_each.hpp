#pragma once

#include <tavi/ioapi/v2/io_data_type.hpp>
#include <tavi/ioapi/v2/io_error.hpp>
#include <tavi/ioapi/v2/plc_identifier.hpp>
#include <tavi/ioapi/v2/subscription_result.hpp>
#include <tavi/ioapi/v2/utility/data_view.hpp>

#include "subscription_list.hpp"

#include <functional>

namespace backend_support {

/// What a backend knows of a variable that somebody wants to subscribe to.
struct subscribable {
    tavi::ioapi::v2::io_data_type data_type{};
    tavi::ioapi::v2::io_error error{}; ///< why it cannot be
};

/// Subscribe to all variables of one request and set an entry of `result` for each.
///
/// An entry has room for one id, and is found by the primary part alone. So a variable that the
/// request repeats is subscribed to once, and no error, such as that of a member, takes the place
/// of an id. An identifier without a primary part would be taken for whatever stands in the result:
/// it has an entry only where there is no other.
///
/// \param look_up  says what there is to each identifier, member or not
/// \throws what `look_up` and memory raise; then the entries that were set are true, and no
///     subscription is without an entry
void subscribe_each(
    tavi::ioapi::v2::utility::data_view<tavi::ioapi::v2::plc_identifier const> variables,
    std::function<subscribable(tavi::ioapi::v2::plc_identifier const&)> const& look_up,
    subscription_list& subscriptions,
    tavi::ioapi::v2::subscription_result& result);

} // namespace backend_support
