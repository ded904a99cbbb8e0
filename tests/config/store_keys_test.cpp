#include <tavi/ioapi/v2/config/store.hpp>

#include "samples.hpp"
#include "support/object_bytes.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

// The keys of a store in their order, and copies of stores.

namespace {

using namespace tavi::ioapi::v2;
using namespace std::string_view_literals;
using config::store;
using config_test::long_key;
using config_test::long_text;
using config_test::other_long_key;
using config_test::texts;

texts keys_of(store const& values) {
    texts result;
    for (utility::string_view const key : values.keys()) result.push_back(key.str());
    return result;
}

TEST(StoreKeys, AreInTheOrderOfTheirBytes) {
    std::vector<std::string_view> const ordered = {
        ""sv,    "\0"sv,   "\0\0"sv, "\x01"sv, "A"sv,    "B"sv,    "Ba"sv,   "a"sv,
        "a\0"sv, "a\0b"sv, "aa"sv,   "b"sv,    "\x7F"sv, "\x80"sv, "\xFF"sv, "\xFF\x01"sv};
    std::vector<std::string_view> inserted = ordered;
    texts expected;
    for (auto const key : ordered) expected.emplace_back(key);
    for (int round = 0; round < 3; ++round) {
        store values;
        for (auto const key : inserted) values.set(key, 1);
        EXPECT_EQ(keys_of(values), expected);
        std::reverse(inserted.begin(), inserted.end());
        std::rotate(inserted.begin(), inserted.begin() + 5, inserted.end());
    }
}

TEST(StoreKeys, OfAnEmptyStoreAreANullArray) {
    store const values;
    test_support::allocation_counter const counter;
    auto const keys = values.keys();
    EXPECT_EQ(keys.data(), nullptr);
    EXPECT_EQ(keys.size(), 0U);
    EXPECT_EQ(counter.allocations(), 0U);
    static_assert(std::is_same_v<decltype(values.keys()), utility::array<utility::string_view>>);
}

TEST(StoreKeys, AreViewsOfWhatIsStored) {
    store values;
    values.set("short", 1);
    values.set(long_key, 2);
    auto const before = values.keys();
    values.set("another", 3);
    values.set("short", "another value");
    values.remove("another");
    auto const after = values.keys();
    ASSERT_EQ(after.size(), before.size());
    for (unsigned int i = 0; i < before.size(); ++i) {
        EXPECT_EQ(before[i].data(), after[i].data());
        EXPECT_EQ(before[i].size(), after[i].size());
    }
}

TEST(StoreKeys, LiveOnWhenTheStoreIsMoved) {
    store values;
    values.set("short", 1);
    auto const keys = values.keys();
    store const target(std::move(values));
    EXPECT_EQ(target.keys()[0].data(), keys[0].data());
}

TEST(StoreKeys, CanBeUsedToChangeTheStore) {
    store values;
    values.set(long_key, 1);
    values.set(other_long_key, 2);
    auto const keys = values.keys();
    for (auto const key : keys) values.set(key, "new");
    EXPECT_EQ(values.keys().size(), 2U);
    for (auto const key : keys) EXPECT_TRUE(values.remove(key));
    EXPECT_EQ(values.keys().size(), 0U);
}

TEST(StoreKeys, FollowRemovals) {
    store values;
    for (char const* const key : {"c", "a", "b"}) values.set(key, 1);
    values.remove("b");
    EXPECT_EQ(keys_of(values), (texts{"a", "c"}));
    values.remove("a");
    values.remove("c");
    EXPECT_EQ(keys_of(values), texts());
}

TEST(StoreKeys, StandInABlockOfTheGateway) {
    constexpr auto key_size = static_cast<unsigned int>(sizeof(utility::string_view));
    for (unsigned int const count : {1U, 4096 / key_size - 1, 4096 / key_size}) {
        store values;
        for (unsigned int i = 0; i < count; ++i) values.set(std::to_string(i), 1);
        void const* block = nullptr;
        {
            auto const keys = values.keys();
            block = keys.data();
            auto const made = test_support::last_aligned_allocation();
            EXPECT_EQ(made.block, block);
            EXPECT_EQ(made.size, count * key_size);
            EXPECT_EQ(made.alignment, count * key_size < 4096 ? 16U : 32U);
        }
        EXPECT_EQ(test_support::last_aligned_release().block, block);
    }
}

TEST(StoreCopy, IsIndependent) {
    store source;
    source.set("a", long_text);
    source.set("b", 2);
    store copy(source);
    store assigned;
    assigned.set("old", 1);
    assigned = source;
    for (store* const other : {&copy, &assigned}) {
        EXPECT_EQ(keys_of(*other), (texts{"a", "b"}));
        other->set("a", 3);
        other->set("c", 4);
        other->remove("b");
        EXPECT_EQ(keys_of(*other), (texts{"a", "c"}));
    }
    EXPECT_EQ(keys_of(source), (texts{"a", "b"}));
    EXPECT_TRUE(identical(source.get("a"), io_value(long_text)));
    source.set("a", 9);
    EXPECT_TRUE(identical(copy.get("a"), io_value(3)));
}

TEST(StoreCopy, HasKeysOfItsOwn) {
    store source;
    source.set(long_key, 1);
    store const copy(source);
    EXPECT_NE(copy.keys()[0].data(), source.keys()[0].data());
}

TEST(StoreCopy, ReusesTheEntriesOfTheTarget) {
    for (unsigned int const before : {0U, 1U, 2U, 5U}) {
        for (unsigned int const after : {0U, 1U, 2U, 5U}) {
            store target;
            store source;
            for (unsigned int i = 0; i < before; ++i) target.set("t" + std::to_string(i), 1);
            for (unsigned int i = 0; i < after; ++i) source.set("s" + std::to_string(i), 2);
            test_support::allocation_counter const counter;
            target = source;
            EXPECT_EQ(counter.allocations(), after > before ? after - before : 0U);
            EXPECT_EQ(counter.releases(), before > after ? before - after : 0U);
            EXPECT_EQ(keys_of(target), keys_of(source));
        }
    }
}

} // namespace
