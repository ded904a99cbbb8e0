#include <tavi/ioapi/v2/config/store.hpp>

#include "samples.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>

// Which value a store gives for which key.

namespace {

using namespace tavi::ioapi::v2;
using namespace std::string_view_literals;
using config::store;
using config_test::is_blank;
using config_test::long_key;
using config_test::long_text;
using types = io_data_type::basic_types;

bool holds(store const& values, std::string_view key, io_value const& expected) {
    return values.has(key) && identical(values.get(key), expected) &&
           identical(values.get(key, io_value("another")), expected);
}

TEST(Store, HoldsNothingByDefault) {
    store const values;
    for (std::string_view const key : {std::string_view(), ""sv, "a"sv}) {
        EXPECT_FALSE(values.has(key));
        EXPECT_TRUE(is_blank(values.get(key)));
    }
    EXPECT_EQ(values.keys().size(), 0U);
}

TEST(Store, HoldsValuesUnderTheirKeys) {
    store values;
    values.set("level", 1.5);
    values.set("state", "open");
    values.set("", 7);
    values.set(long_key, utility::array<int>{1, 2});
    EXPECT_TRUE(holds(values, "level", 1.5));
    EXPECT_TRUE(holds(values, "state", "open"));
    EXPECT_TRUE(holds(values, "", 7));
    EXPECT_TRUE(holds(values, std::string_view(), 7));
    EXPECT_TRUE(holds(values, long_key, utility::array<int>{1, 2}));
    EXPECT_EQ(values.keys().size(), 4U);
}

TEST(Store, FindsKeysExactly) {
    store values;
    values.set("Key", 1);
    for (std::string_view const key : {""sv, "key"sv, "KEY"sv, "Ke"sv, "Key1"sv, "Key\0"sv}) {
        EXPECT_FALSE(values.has(key)) << key;
        EXPECT_TRUE(is_blank(values.get(key))) << key;
        EXPECT_FALSE(values.remove(key)) << key;
    }
    EXPECT_TRUE(holds(values, "Key", 1));
}

TEST(Store, CreatesNothingWhenItIsRead) {
    store const values;
    (void)values.get("a");
    (void)values.get("a", io_value(1));
    EXPECT_FALSE(values.has("a"));
    EXPECT_EQ(values.keys().size(), 0U);
}

TEST(Store, GivesTheFallbackForAnAbsentKeyOnly) {
    store values;
    values.set("a", 1);
    io_value const fallback(long_text);
    EXPECT_TRUE(identical(values.get("a", fallback), io_value(1)));
    EXPECT_TRUE(identical(values.get("b", fallback), io_value(long_text)));
    EXPECT_TRUE(is_blank(values.get("b", io_value())));
    EXPECT_TRUE(identical(fallback, io_value(long_text)));
}

TEST(Store, HoldsAnEmptyValue) {
    store values;
    values.set("a", io_value());
    values.set("b", io_value(io_data_type::scalar(types::i32), nullptr));
    EXPECT_TRUE(values.has("a"));
    EXPECT_TRUE(is_blank(values.get("a", io_value(1))));
    EXPECT_TRUE(values.get("b", io_value(1)).empty());
    EXPECT_EQ(values.get("b").data_type(), io_data_type::scalar(types::i32));
    EXPECT_EQ(values.keys().size(), 2U);
}

TEST(Store, ReplacesTheValueUnderAKey) {
    store values;
    values.set("a", 1);
    values.set("b", 2);
    values.set("a", long_text);
    EXPECT_TRUE(holds(values, "a", long_text));
    values.set("a", io_value());
    EXPECT_TRUE(holds(values, "a", io_value()));
    values.set("a", values.get("b"));
    EXPECT_TRUE(holds(values, "a", 2));
    EXPECT_TRUE(holds(values, "b", 2));
    EXPECT_EQ(values.keys().size(), 2U);
}

TEST(Store, CopiesItsKeys) {
    auto key = std::make_unique<std::string>(long_key);
    store values;
    values.set(*key, 1);
    key->assign(key->size(), '#');
    key.reset();
    EXPECT_TRUE(holds(values, long_key, 1));
}

TEST(Store, MovesAValueIn) {
    store values;
    io_value fresh(utility::array<int>{1, 2, 3});
    {
        test_support::allocation_counter const counter;
        values.set("a", std::move(fresh));
        EXPECT_EQ(counter.allocations(), 1U) << "the entry, whose key is short";
    }
    EXPECT_TRUE(fresh.empty());
    io_value next(utility::array<int>{4, 5});
    {
        test_support::allocation_counter const counter;
        values.set("a", std::move(next));
        EXPECT_EQ(counter.allocations(), 0U);
        EXPECT_EQ(counter.releases(), 1U) << "of the old value";
    }
    EXPECT_TRUE(holds(values, "a", utility::array<int>{4, 5}));
}

TEST(Store, GivesCopies) {
    store values;
    values.set("a", utility::array<int>{1, 2, 3});
    io_value const first = values.get("a");
    io_value const second = values.get("a", io_value());
    EXPECT_NE(first.get_if<utility::array<int>>()->data(),
              second.get_if<utility::array<int>>()->data());
    values.set("a", 1);
    EXPECT_TRUE(identical(first, io_value(utility::array<int>{1, 2, 3})));
}

TEST(Store, RemovesAValueOnce) {
    store values;
    values.set("a", 1);
    values.set("b", 2);
    EXPECT_TRUE(values.remove("a"));
    EXPECT_FALSE(values.remove("a"));
    EXPECT_FALSE(values.has("a"));
    EXPECT_TRUE(is_blank(values.get("a")));
    EXPECT_TRUE(holds(values, "b", 2));
    values.set("a", 3);
    EXPECT_TRUE(holds(values, "a", 3));
}

TEST(Store, RemovesAnEmptyValue) {
    store values;
    values.set("", io_value());
    EXPECT_TRUE(values.remove(""));
    EXPECT_FALSE(values.remove(""));
}

TEST(Store, LooksUpWithoutMemory) {
    store values;
    values.set(long_key, 1);
    test_support::allocation_counter const counter;
    (void)values.has(long_key);
    (void)values.has(long_text);
    (void)values.get(long_key);
    (void)values.get(long_text);
    (void)values.get(long_key, io_value(2));
    (void)values.get(long_text, io_value(2));
    (void)values.remove(long_text);
    values.set(long_key, 2);
    (void)values.remove(long_key);
    EXPECT_EQ(counter.allocations(), 0U);
}

} // namespace
