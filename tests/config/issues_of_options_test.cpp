#include <tavi/ioapi/v2/config/verification_result.hpp>

#include "samples.hpp"
#include "support/object_bytes.hpp"
#include "support/raw_text.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string_view>
#include <utility>
#include <vector>

// Which issues concern an option, and how bad they are.

namespace {

using namespace tavi::ioapi::v2;
using namespace std::string_view_literals;
using config::verification_result;
using config_test::long_key;
using config_test::long_text;
using config_test::texts;
using issue = verification_result::issue_type;
using severity = verification_result::severity_type;

texts messages_for(verification_result const& result, utility::string_view key) {
    texts messages;
    for (issue const& element : result.issues_for_option(key)) {
        messages.push_back(element.message.str());
    }
    return messages;
}

TEST(IssuesOfAnOption, AreRecordsOfSeverityMessageAndKeys) {
    using test_support::by_word;
    static_assert(sizeof(issue) == by_word(24, 48));
    static_assert(offsetof(issue, severity) == 0);
    static_assert(offsetof(issue, message) == sizeof(void*));
    static_assert(offsetof(issue, options) == by_word(16, 32));
}

TEST(IssuesOfAnOption, AreThoseThatNameItInOrder) {
    verification_result result;
    result.add_issue({severity::error, "1", {"a", "b"}});
    result.add_issue({severity::none, "2", {"b"}});
    result.add_issue({severity::warning, "3", {"c", "b", "a"}});
    result.add_issue({severity::error, "4", {}});
    EXPECT_EQ(messages_for(result, "a"), (texts{"1", "3"}));
    EXPECT_EQ(messages_for(result, "b"), (texts{"1", "2", "3"}));
    EXPECT_EQ(messages_for(result, "c"), (texts{"3"}));
    EXPECT_EQ(messages_for(result, "d"), texts());
    auto const found = result.issues_for_option("a");
    EXPECT_EQ(found[1].severity, severity::warning);
    EXPECT_EQ(found[1].options.to_vector(), (std::vector<utility::string>{"c", "b", "a"}));
}

TEST(IssuesOfAnOption, AreTakenOnceEach) {
    verification_result result;
    result.add_issue({severity::error, "twice", {"a", "a"}});
    EXPECT_EQ(messages_for(result, "a"), (texts{"twice"}));
    result.add_issue({severity::error, "twice", {"a", "a"}});
    EXPECT_EQ(messages_for(result, "a"), (texts{"twice", "twice"}));
}

TEST(IssuesOfAnOption, AreNoneOfTheWholeConfiguration) {
    verification_result result;
    result.add_issue({severity::error, "whole", {}});
    EXPECT_EQ(result.end() - result.begin(), 1);
    for (utility::string_view const key :
         {utility::string_view(), utility::string_view(""), utility::string_view("whole")}) {
        EXPECT_EQ(result.issues_for_option(key).data(), nullptr);
        EXPECT_EQ(result.issues_for_option(key).size(), 0U);
        EXPECT_EQ(result.severity_for_option(key), severity::none);
    }
}

TEST(IssuesOfAnOption, AreFoundByTheExactKey) {
    verification_result result;
    for (std::string_view const key : {"Key"sv, "a\0b"sv, "\xFF"sv, std::string_view(long_key)}) {
        result.add_issue({severity::error, "text", {utility::string(key)}});
        EXPECT_EQ(result.issues_for_option(key).size(), 1U) << key;
        EXPECT_EQ(result.severity_for_option(key), severity::error) << key;
    }
    for (std::string_view const key :
         {""sv, "key"sv, "KEY"sv, "Ke"sv, "Key1"sv, "Key\0"sv, "a"sv, "text"sv, "\x7F"sv}) {
        EXPECT_EQ(result.issues_for_option(key).size(), 0U) << key;
        EXPECT_EQ(result.severity_for_option(key), severity::none) << key;
    }
}

TEST(IssuesOfAnOption, AreFoundByAnEmptyKeyWithAndWithoutABlock) {
    utility::string const without_block;
    utility::string const with_block("");
    ASSERT_EQ(test_support::block_of(without_block), nullptr);
    ASSERT_NE(test_support::block_of(with_block), nullptr);
    issue of_blocks{severity::warning, "with", utility::array<utility::string>(1)};
    of_blocks.options[0] = utility::string("");
    verification_result result;
    result.add_issue({severity::warning, "without", {without_block}});
    result.add_issue(std::move(of_blocks));
    result.add_issue({severity::error, "other", {"a"}});
    ASSERT_EQ(test_support::block_of(result.begin()[0].options[0]), nullptr);
    ASSERT_NE(test_support::block_of(result.begin()[1].options[0]), nullptr);
    for (utility::string_view const key : {utility::string_view(), utility::string_view("")}) {
        EXPECT_EQ(messages_for(result, key), (texts{"without", "with"}));
        EXPECT_EQ(result.severity_for_option(key), severity::warning);
    }
}

TEST(IssuesOfAnOption, AreCopies) {
    verification_result result;
    result.add_issue({severity::error, "old", {"a"}});
    auto const found = result.issues_for_option("a");
    result.begin()->message = "new";
    result.begin()->options[0] = "b";
    result = verification_result();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].message, "old");
    EXPECT_EQ(found[0].options[0], "a");
}

// The release of the array's own block is the last one: the issues go first.
TEST(IssuesOfAnOption, StandInABlockOfTheGateway) {
    for (std::size_t const count :
         {std::size_t{1}, 4095 / sizeof(issue), 4095 / sizeof(issue) + 1}) {
        verification_result result;
        for (std::size_t i = 0; i < count; ++i) result.add_issue({severity::error, "", {"a"}});
        void const* block = nullptr;
        {
            auto const found = result.issues_for_option("a");
            ASSERT_EQ(found.size(), count);
            block = found.data();
        }
        auto const released = test_support::last_aligned_release();
        EXPECT_EQ(released.block, block);
        EXPECT_EQ(released.size, count * sizeof(issue));
        EXPECT_EQ(released.alignment, count * sizeof(issue) < 4096 ? 16U : 32U);
    }
}

TEST(SeverityOfAnOption, IsTheWorst) {
    constexpr int lowest = std::numeric_limits<int>::min();
    constexpr int highest = std::numeric_limits<int>::max();
    struct row {
        std::vector<int> severities;
        int worst;
    };
    for (row const& r : {row{{}, 0}, row{{0}, 0}, row{{1, 2}, 2}, row{{2, 3, 1}, 3}, row{{-1}, 0},
                         row{{lowest}, 0}, row{{-5, -1, lowest}, 0}, row{{-1, 1}, 1},
                         row{{99, 3}, 99}, row{{highest, lowest, 0}, highest}}) {
        auto order = r.severities;
        std::sort(order.begin(), order.end());
        do {
            verification_result result;
            result.add_issue({severity{highest}, "of another", {"b"}});
            result.add_issue({severity{highest}, "of the whole", {}});
            for (int const number : order) result.add_issue({severity{number}, "", {"b", "a"}});
            EXPECT_EQ(static_cast<int>(result.severity_for_option("a")), r.worst);
            EXPECT_EQ(result.issues_for_option("a").size(), order.size());
        } while (std::next_permutation(order.begin(), order.end()));
    }
}

TEST(SeverityOfAnOption, IsKeptInTheIssueWhateverItIs) {
    verification_result result;
    for (int const number : {-1, 99}) result.add_issue({severity{number}, "", {"a"}});
    EXPECT_EQ(static_cast<int>(result.begin()[0].severity), -1);
    EXPECT_EQ(static_cast<int>(result.issues_for_option("a")[0].severity), -1);
    EXPECT_EQ(static_cast<int>(result.issues_for_option("a")[1].severity), 99);
}

TEST(SeverityOfAnOption, AsksForNoMemory) {
    verification_result result;
    result.add_issue({severity::error, long_text, {long_key}});
    test_support::allocation_counter const counter;
    EXPECT_EQ(result.severity_for_option(long_key), severity::error);
    EXPECT_EQ(result.severity_for_option(long_text), severity::none);
    EXPECT_EQ(result.issues_for_option(long_text).size(), 0U);
    EXPECT_EQ(counter.allocations(), 0U);
}

} // namespace
