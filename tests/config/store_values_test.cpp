#include <tavi/ioapi/v2/config/store.hpp>

#include "samples.hpp"
#include "support/alternatives.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

// Values of all kinds and in large numbers in a store, and the defaults of options.

namespace {

using namespace tavi::ioapi::v2;
using config::option;
using config::store;
using config_test::is_blank;
using types = io_data_type::basic_types;

TEST(Store, HoldsManyValues) {
    store values;
    for (int i = 0; i < 1000; ++i) values.set("key " + std::to_string(i * 7 % 1000), i * 7 % 1000);
    for (int i = 0; i < 1000; ++i) {
        EXPECT_TRUE(identical(values.get("key " + std::to_string(i)), io_value(i))) << i;
    }
    auto const keys = values.keys();
    EXPECT_EQ(keys.size(), 1000U);
    EXPECT_TRUE(std::is_sorted(keys.begin(), keys.end(), [](auto const& left, auto const& right) {
        return left.str() < right.str();
    }));
    for (int i = 0; i < 1000; i += 2) EXPECT_TRUE(values.remove("key " + std::to_string(i)));
    for (int i = 0; i < 1000; ++i) EXPECT_EQ(values.has("key " + std::to_string(i)), i % 2 == 1);
}

template <class T>
class StoredAlternative : public ::testing::Test {};
TYPED_TEST_SUITE(StoredAlternative,
                 test_support::every_alternative,
                 test_support::alternative_names);

TYPED_TEST(StoredAlternative, IsGivenAsItWasSet) {
    io_data_type const unusual{types{77}, 5, 3, 9};
    io_value const value(unusual, TypeParam());
    store values;
    values.set("a", value);
    EXPECT_EQ(values.get("a").index(), value.index());
    EXPECT_EQ(values.get("a").data_type(), unusual);
    EXPECT_EQ(values.get("b", value).index(), value.index());
    EXPECT_EQ(values.get("b", value).data_type(), unusual);
}

TEST(GetOrDefault, PrefersTheStoredValue) {
    option const with_default("key", "", "", io_value(42));
    store values;
    values.set("key", "stored");
    EXPECT_TRUE(identical(get_or_default(values, with_default), io_value("stored")));
    values.set("key", io_value());
    EXPECT_TRUE(is_blank(get_or_default(values, with_default))) << "an empty value is a value";
}

TEST(GetOrDefault, GivesTheDefaultOfTheOption) {
    store values;
    values.set("another", 1);
    EXPECT_TRUE(
        identical(get_or_default(values, option("key", "", "", io_value(42))), io_value(42)));
    EXPECT_FALSE(values.has("key"));
}

TEST(GetOrDefault, GivesTheEmptyValueWhereThereIsNone) {
    store const values;
    EXPECT_TRUE(is_blank(get_or_default(values, option("key", "", "", types::i32))));
    EXPECT_TRUE(is_blank(get_or_default(values, option("key", "", "", io_value()))));
}

} // namespace
