#pragma once

#include <tavi/ioapi/v2/subscription_result.hpp>

#include <gtest/gtest.h>

#include <utility>

namespace results_test {

/// A result with the entries 3, 5 and 7, set in another order.
class three_subscriptions : public ::testing::Test {
protected:
    using at_entry = tavi::ioapi::v2::subscription_result::const_iterator;

    three_subscriptions() {
        for (unsigned int const each : {7U, 3U, 5U}) {
            result.set(tavi::ioapi::v2::plc_identifier(each), tavi::ioapi::v2::io_data_type(), each,
                       tavi::ioapi::v2::subscription_id());
        }
    }

    /// An iterator that was moved from.
    [[nodiscard]] at_entry hollow() const {
        at_entry made = result.begin();
        { at_entry const taken(std::move(made)); }
        return made;
    }

    tavi::ioapi::v2::subscription_result result;
};

} // namespace results_test
