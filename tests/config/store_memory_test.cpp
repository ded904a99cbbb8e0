#include <tavi/ioapi/v2/config/store.hpp>

#include "samples.hpp"

#include <gtest/gtest.h>

#include <string>
#include <utility>

// What is left of a store when there is no memory.

namespace {

using namespace tavi::ioapi::v2;
using config::option;
using config::store;
using config_test::fails_at;
using config_test::long_key;
using config_test::long_text;
using config_test::other_long_key;
using test_support::count_survived_failures;
using test_support::live_blocks;

store full_store() {
    store values;
    values.set(long_key, long_text);
    values.set("kept", utility::array<utility::string>{long_text, long_text});
    values.set("number", 7);
    return values;
}

bool is_full(store const& values) {
    return values.keys().size() == 3 && identical(values.get(long_key), io_value(long_text)) &&
           identical(values.get("kept"),
                     io_value(utility::array<utility::string>{long_text, long_text})) &&
           identical(values.get("number"), io_value(7));
}

TEST(StoreMemory, ExhaustedLeavesAStoreWithoutTheNewValue) {
    for (std::size_t n = 1;; ++n) {
        long long const before = live_blocks();
        bool hit = false;
        {
            store values = full_store();
            io_value value(long_text);
            hit = fails_at(n, [&] { values.set(other_long_key, std::move(value)); });
            EXPECT_EQ(values.has(other_long_key), !hit) << n;
            values.remove(other_long_key);
            EXPECT_TRUE(is_full(values)) << n;
        }
        EXPECT_EQ(live_blocks(), before) << n;
        if (!hit) {
            EXPECT_EQ(n, 3U) << "the entry and its key";
            break;
        }
    }
}

TEST(StoreMemory, IsNotAskedToReplaceAValue) {
    store values = full_store();
    io_value value(other_long_key);
    EXPECT_FALSE(fails_at(1, [&] { values.set(long_key, std::move(value)); }));
    EXPECT_TRUE(identical(values.get(long_key), io_value(other_long_key)));
}

TEST(StoreMemory, ExhaustedLeavesTheStoreWhereItIsRead) {
    store const values = full_store();
    EXPECT_EQ(count_survived_failures([&] { (void)values.get(long_key); }), 1);
    EXPECT_EQ(count_survived_failures([&] { (void)values.get("kept"); }), 3);
    io_value const fallback(long_text);
    EXPECT_EQ(count_survived_failures([&] { (void)values.get("absent", fallback); }), 1);
    EXPECT_EQ(count_survived_failures([&] { (void)values.get(long_key, fallback); }), 1);
    option const with_default("absent", "", "", fallback);
    EXPECT_EQ(count_survived_failures([&] { (void)get_or_default(values, with_default); }), 1);
    EXPECT_GE(count_survived_failures([&] { (void)values.keys(); }), 1);
    EXPECT_TRUE(is_full(values));
}

TEST(StoreMemory, ExhaustedLeavesNothingOfACopy) {
    store const source = full_store();
    EXPECT_GE(count_survived_failures([&] { store const copy(source); }), 1 + 3 + 1 + 4);
    EXPECT_TRUE(is_full(source));
}

// A part of the values or none, each of them whole.
TEST(StoreMemory, ExhaustedLeavesASoundTargetOfAnAssignment) {
    store const source = full_store();
    for (int const size : {0, 1, 3, 7}) {
        for (std::size_t n = 1;; ++n) {
            long long const before = live_blocks();
            bool hit = false;
            {
                store target;
                for (int i = 0; i < size; ++i) target.set(long_key + std::to_string(i), long_text);
                hit = fails_at(n, [&] { target = source; });
                for (auto const key : target.keys()) {
                    EXPECT_TRUE(target.has(key)) << n;
                    EXPECT_GE(target.get(key).index(), 0) << n;
                    if (source.has(key)) {
                        EXPECT_TRUE(identical(target.get(key), source.get(key))) << n;
                    }
                }
                store copy(target);
                copy.set("fresh", 1);
                target.set("fresh", long_text);
                EXPECT_TRUE(target.remove("fresh"));
                target = source;
                EXPECT_TRUE(is_full(target)) << n;
            }
            EXPECT_EQ(live_blocks(), before) << n;
            if (!hit) break;
        }
    }
    EXPECT_TRUE(is_full(source));
}

} // namespace
