#pragma once

#include <tavi/ioapi/v2/read_result.hpp>

#include "refusal_log.hpp"
#include "register_access.hpp"
#include "request_plan.hpp"

#include <backend_support/clock.hpp>

namespace modbus_backend {

/// Carry out a request and store what comes of it: a value, stamped with the time of the answer
/// by `time`, or an error with diagnostics for each member. Where the controller refuses a range,
/// narrower ranges are tried, so that in the end only those variables have the error that cannot be
/// read.
void carry_out(request const& wanted,
               register_access& source,
               refusal_log& refusals,
               backend_support::clock const& time,
               tavi::ioapi::v2::read_result& result);

} // namespace modbus_backend
