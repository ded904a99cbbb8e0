#include <tavi/ioapi/v2/subscription_result.hpp>

#include "subscribed_identifiers.hpp"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace tavi::ioapi::v2;
using id = plc_identifier;
using results_test::identifiers_in;

TEST(SubscriptionOrder, IsOrderedByNumbersThenTexts) {
    std::vector<id> const ordered{id(0),   id(1),   id(3),    id(7),   id(~0ULL),  id(""),
                                  id("A"), id("a"), id("aa"), id("b"), id("\x7f"), id("\x80")};
    subscription_result result;
    for (std::size_t i = 0; i < ordered.size(); ++i) { // 5 and 12 have no common factor
        result.set(ordered[i * 5 % ordered.size()], io_data_type(), 1, subscription_id());
    }
    EXPECT_EQ(identifiers_in(result), ordered);
    for (id const& each : ordered) EXPECT_TRUE(result.has(each)) << each;
    for (id const& absent : {id(2), id("ab"), id("5"), id("c")}) {
        EXPECT_FALSE(result.has(absent)) << absent;
    }
}

TEST(SubscriptionOrder, TellsANumberFromTheTextOfItsDigits) {
    subscription_result result;
    result.set(id("5"), io_data_type(), 1, subscription_id::from_number(1));
    EXPECT_FALSE(result.has(id(5)));
    result.set(id(5), io_data_type(), 2, subscription_id::from_number(2));
    EXPECT_EQ(result.get(id("5")).aux_value, 1U);
    EXPECT_EQ(result.get(id(5)).aux_value, 2U);
}

TEST(SubscriptionOrder, MatchesByThePrimaryPartAlone) {
    subscription_result result;
    result.set(id("a", 1), io_data_type(), 5, subscription_id::from_number(42));
    EXPECT_TRUE(result.has(id("a")));
    EXPECT_TRUE(result.has(id("a", 2)));
    EXPECT_EQ(result.get(id("a", "other")).aux_value, 5U);
    EXPECT_EQ(result[id("a", 3)].aux_value, 5U);
    EXPECT_EQ(result.remove(id("a", 4)), 1U);
    EXPECT_TRUE(result.empty());
}

// The key stands in the block of its entry, before it.
id const& key_of(subscription_result::variable_result const& entry) {
    return *(reinterpret_cast<id const*>(&entry) - 1);
}

TEST(SubscriptionOrder, KeepsTheFirstSecondaryPartInItsKeyAndShowsTheLast) {
    for (bool const failing : {false, true}) {
        subscription_result result;
        result.set(id("a", "first"), io_data_type(), 1, subscription_id::from_number(1));
        if (failing) {
            result.set(id("a", 2), io_errc::no_result);
        } else {
            result.set(id("a", 2), io_data_type(), 2, subscription_id::from_number(2));
        }
        EXPECT_EQ(identifiers_in(result), (std::vector<id>{id("a", 2)}));
        EXPECT_EQ(key_of(result.get(id("a"))), id("a", "first"));
    }
}

TEST(SubscriptionOrder, TakesAnIdentifierWithoutPrimaryPartForTheOnlyText) {
    subscription_result result;
    result.set(id("a"), io_data_type(), 1, subscription_id::from_number(1));
    EXPECT_TRUE(result.has(id()));
    result.set(id(), io_data_type(), 2, subscription_id::from_number(2));
    EXPECT_EQ(identifiers_in(result), (std::vector<id>{id()}));
    EXPECT_EQ(result.get(id("a")).aux_value, 2U);
}

TEST(SubscriptionOrder, KeepsAnIdentifierWithoutPrimaryPartBehindTheNumbers) {
    subscription_result result;
    result.set(id(), io_data_type(), 1, subscription_id::from_number(1));
    result.set(id(7), io_data_type(), 2, subscription_id::from_number(2));
    EXPECT_EQ(identifiers_in(result), (std::vector<id>{id(7), id()}));
    EXPECT_EQ(result.get(id()).aux_value, 1U);
}

} // namespace
