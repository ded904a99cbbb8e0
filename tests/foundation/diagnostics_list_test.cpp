#include <tavi/ioapi/v2/io_error_diagnostics_generic.hpp>

#include "listed_pairs.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using namespace tavi::ioapi::v2;
using namespace std::string_view_literals;
using foundation_test::impl_behind;
using foundation_test::list_of;
using foundation_test::number_pairs;
using foundation_test::pairs_in;

TEST(NullDiagnostics, ReadAsAnEmptyList) {
    io_error_diagnostics const null;
    EXPECT_EQ(null.list(), nullptr);
    EXPECT_EQ(null.size(), 0U);
    EXPECT_TRUE(null.empty());
    EXPECT_TRUE(null.begin() == null.end());
    for (auto const key : {""sv, "a"sv, "address"sv}) {
        EXPECT_FALSE(null.has(key)) << key;
        EXPECT_FALSE(null.contains(key)) << key;
        EXPECT_TRUE(null.get(key).empty()) << key;
        EXPECT_EQ(null.get(key).data_type(), io_data_type()) << key;
    }
}

TEST(DiagnosticsList, StartsEmpty) {
    io_error_diagnostics_generic const list;
    EXPECT_NE(impl_behind(list), nullptr);
    EXPECT_EQ(list.size(), 0U);
    EXPECT_TRUE(list.empty());
    EXPECT_TRUE(list.begin() == list.end());
}

TEST(DiagnosticsList, SaysThatItHasEveryAbsentKey) {
    io_error_diagnostics_generic list;
    for (auto const key : {""sv, "a"sv, "address"sv}) {
        EXPECT_TRUE(list.has(key)) << key;
        EXPECT_TRUE(impl_behind(list)->has(key)) << key;
        EXPECT_FALSE(list.contains(key)) << key;
    }
    list.set("b", 1);
    for (auto const key : {""sv, "a"sv, "bb"sv, "c"sv, "B"sv, "b\0"sv}) {
        EXPECT_TRUE(list.has(key)) << key;
        EXPECT_FALSE(list.contains(key)) << key;
        EXPECT_TRUE(list.get(key).empty()) << key;
    }
}

TEST(DiagnosticsList, SaysThatItHasNoPresentKey) {
    auto const list = list_of({{"a", 1}, {"", 2}, {"address", 3}});
    for (auto const key : {""sv, "a"sv, "address"sv}) {
        EXPECT_FALSE(list.has(key)) << key;
        EXPECT_FALSE(impl_behind(list)->has(key)) << key;
        EXPECT_TRUE(list.contains(key)) << key;
    }
}

TEST(DiagnosticsList, GivesTheValueUnderAKey) {
    io_error_diagnostics_generic list;
    list.set("a", "broken");
    EXPECT_EQ(*list.get("a").get_if<utility::string>(), "broken");
    EXPECT_TRUE(list.get("b").empty());
    EXPECT_EQ(list.get("b").data_type(), io_data_type());
}

TEST(DiagnosticsList, GivesACopyOfTheValue) {
    io_error_diagnostics_generic list;
    list.set("a", "broken");
    io_value const first = list.get("a");
    list.set("a", 5);
    EXPECT_EQ(*first.get_if<utility::string>(), "broken");
    list.set("a", "broken");
    io_value const second = list.get("a");
    EXPECT_NE((*list.begin()).value.get_if<utility::string>()->data(),
              second.get_if<utility::string>()->data());
}

TEST(DiagnosticsList, TakesTheBlockOfAValue) {
    io_error_diagnostics_generic list;
    for (int round = 0; round < 2; ++round) { // inserted, then replaced
        io_value value("a text of its own");
        char const* const block = value.get_if<utility::string>()->data();
        list.set("a", std::move(value));
        EXPECT_EQ((*list.begin()).value.get_if<utility::string>()->data(), block);
    }
}

TEST(DiagnosticsList, CopiesTheKey) {
    io_error_diagnostics_generic list;
    std::string key = "a key that is longer than small buffers";
    list.set(key, 1);
    auto const as_it_was = key;
    key.assign(key.size(), 'x');
    EXPECT_EQ(pairs_in(list), (number_pairs{{as_it_was, 1}}));
}

TEST(DiagnosticsList, KeepsTheEmptyValueUnderAKey) {
    io_error_diagnostics_generic list;
    list.set("a", io_value());
    EXPECT_EQ(list.size(), 1U);
    EXPECT_FALSE(list.has("a"));
    EXPECT_TRUE(list.contains("a"));
}

TEST(DiagnosticsList, ReplacesTheValueOfAPresentKey) {
    io_error_diagnostics_generic list;
    list.set("b", 1);
    list.set("a", 2);
    list.set("a", 3);
    EXPECT_EQ(list.size(), 2U);
    EXPECT_EQ(pairs_in(list), (number_pairs{{"a", 3}, {"b", 1}}));
    list.set("b", 4);
    EXPECT_EQ(pairs_in(list), (number_pairs{{"a", 3}, {"b", 4}}));
}

// In their order: byte for byte as unsigned numbers, the shorter one first.
std::vector<std::string> const ordered_keys{"",
                                            std::string("\0", 1),
                                            std::string("\0\0", 2),
                                            "A",
                                            "B",
                                            "a",
                                            std::string("a\0", 2),
                                            "aa",
                                            "ab",
                                            "b",
                                            "\x7f",
                                            "\x80",
                                            "\x80\x01",
                                            "\xff"};

TEST(DiagnosticsList, IsWalkedInTheOrderOfTheUnsignedBytesOfItsKeys) {
    std::mt19937 random(7);
    auto shuffled = ordered_keys;
    for (int round = 0; round < 50; ++round) {
        io_error_diagnostics_generic list;
        for (auto const& key : shuffled) list.set(key, 1);
        std::vector<std::string> walked;
        for (auto const& entry : list) walked.push_back(entry.key.str());
        ASSERT_EQ(walked, ordered_keys) << "round " << round;
        std::shuffle(shuffled.begin(), shuffled.end(), random);
    }
}

TEST(DiagnosticsList, FindsEachOfItsKeys) {
    for (std::size_t count = 1; count <= ordered_keys.size(); ++count) {
        io_error_diagnostics_generic list;
        for (std::size_t i = 0; i < count; ++i) list.set(ordered_keys[i], static_cast<int>(i));
        for (std::size_t i = 0; i < ordered_keys.size(); ++i) {
            EXPECT_EQ(list.has(ordered_keys[i]), i >= count) << i << " of " << count;
            EXPECT_EQ(list.contains(ordered_keys[i]), i < count) << i << " of " << count;
            io_value const value = list.get(ordered_keys[i]);
            int const* const number = value.get_if<int>();
            ASSERT_EQ(number != nullptr, i < count) << i << " of " << count;
            if (number != nullptr) {
                EXPECT_EQ(*number, static_cast<int>(i)) << i << " of " << count;
            }
        }
    }
}

TEST(DiagnosticsList, IsSilentAboutTheRemovalOfAnAbsentKey) {
    io_error_diagnostics_generic list;
    list.remove("a");
    EXPECT_EQ(list.size(), 0U);
    list.set("b", 1);
    for (auto const key : {""sv, "a"sv, "bb"sv, "c"sv}) list.remove(key);
    EXPECT_EQ(pairs_in(list), (number_pairs{{"b", 1}}));
}

TEST(DiagnosticsList, KeepsTheOrderOfTheOthersWhereOneIsRemoved) {
    number_pairs const all{{"a", 1}, {"b", 2}, {"c", 3}};
    for (std::size_t gone = 0; gone < all.size(); ++gone) {
        auto list = list_of(all);
        list.remove(all[gone].first);
        number_pairs left = all;
        left.erase(left.begin() + static_cast<std::ptrdiff_t>(gone));
        EXPECT_EQ(pairs_in(list), left) << "without " << all[gone].first;
        EXPECT_EQ(list.size(), 2U);
        EXPECT_TRUE(list.has(all[gone].first));
        EXPECT_TRUE(list.get(all[gone].first).empty());
    }
}

TEST(DiagnosticsList, IsEmptyAfterTheRemovalOfItsOnlyKey) {
    auto list = list_of({{"a", 1}});
    list.remove("a");
    EXPECT_TRUE(list.empty());
    EXPECT_TRUE(list.begin() == list.end());
    list.set("a", 2);
    EXPECT_EQ(pairs_in(list), (number_pairs{{"a", 2}}));
}

TEST(DiagnosticsList, AgreesWithAnOrderedMapOverManyChanges) {
    std::mt19937 random(11);
    io_error_diagnostics_generic list;
    std::map<std::string, int> expected;
    for (int step = 0; step < 2000; ++step) {
        std::string key(random() % 3, 'a');
        for (char& c : key) c = static_cast<char>(random() % 4 * 0x55); // 0x00 to 0xff
        if (random() % 3 == 0) {
            list.remove(key);
            expected.erase(key);
        } else {
            list.set(key, step);
            expected[key] = step;
        }
        ASSERT_EQ(pairs_in(list), number_pairs(expected.begin(), expected.end())) << step;
        ASSERT_EQ(list.size(), expected.size());
    }
}

TEST(DiagnosticsKey, IsSpelledAsItIsNamed) {
    EXPECT_EQ(diagnostics_key::operation, "operation"sv);
    EXPECT_EQ(diagnostics_key::address, "address"sv);
    EXPECT_EQ(diagnostics_key::index, "index"sv);
    EXPECT_EQ(diagnostics_key::source_type, "source_type"sv);
    EXPECT_EQ(diagnostics_key::target_type, "target_type"sv);
    EXPECT_EQ(diagnostics_key::device_code, "device_code"sv);
    EXPECT_EQ(diagnostics_key::device_text, "device_text"sv);
}

} // namespace
