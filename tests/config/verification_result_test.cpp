#include <tavi/ioapi/v2/config/verification_result.hpp>

#include "samples.hpp"
#include "support/raw_text.hpp"

#include <gtest/gtest.h>

#include <iterator>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

// The list of issues, and what an issue does when it is copied and moved.

namespace {

using namespace tavi::ioapi::v2;
using config::verification_result;
using config_test::long_text;
using config_test::texts;
using issue = verification_result::issue_type;
using severity = verification_result::severity_type;
using test_support::block_of;

texts messages_of(verification_result const& result) {
    texts messages;
    for (issue const& element : result) messages.push_back(element.message.str());
    return messages;
}

TEST(VerificationResult, HasNoIssuesByDefault) {
    verification_result result;
    verification_result const& constant = result;
    EXPECT_TRUE(result.empty());
    EXPECT_EQ(result.begin(), result.end());
    EXPECT_EQ(constant.begin(), constant.end());
    EXPECT_EQ(result.cbegin(), result.cend());
    for (char const* const key : {"", "a"}) {
        EXPECT_EQ(result.issues_for_option(key).size(), 0U);
        EXPECT_EQ(result.issues_for_option(key).data(), nullptr);
        EXPECT_EQ(result.severity_for_option(key), severity::none);
        EXPECT_EQ(static_cast<int>(result.severity_for_option(key)), 0);
    }
}

TEST(VerificationResult, HasSignedSeverities) {
    static_assert(std::is_same_v<std::underlying_type_t<severity>, int> && sizeof(severity) == 4);
    static_assert(static_cast<int>(severity::none) == 0);
    static_assert(static_cast<int>(severity::information) == 1);
    static_assert(static_cast<int>(severity::warning) == 2);
    static_assert(static_cast<int>(severity::error) == 3);
}

TEST(VerificationResult, KeepsIssuesInTheOrderOfAdding) {
    verification_result result;
    result.add_issue({severity::error, "b", {"x"}});
    result.add_issue({severity::none, "a", {}});
    result.add_issue({severity::error, "b", {"x"}});
    EXPECT_FALSE(result.empty());
    EXPECT_EQ(messages_of(result), (texts{"b", "a", "b"})) << "the same one twice is two";
    EXPECT_EQ(result.begin()[0].severity, severity::error);
    EXPECT_EQ(result.begin()[1].severity, severity::none);
    EXPECT_EQ(result.begin()[2].options[0], "x");
    EXPECT_EQ(std::distance(result.begin(), result.end()), 3);
}

TEST(VerificationResult, GivesOneRangeInEachForm) {
    using result_type = verification_result;
    static_assert(std::is_same_v<decltype(std::declval<result_type&>().begin()), issue*>);
    static_assert(std::is_same_v<decltype(std::declval<result_type&>().end()), issue*>);
    static_assert(
        std::is_same_v<decltype(std::declval<result_type const&>().begin()), issue const*>);
    static_assert(std::is_same_v<decltype(std::declval<result_type const&>().end()), issue const*>);
    static_assert(std::is_same_v<decltype(std::declval<result_type&>().cbegin()), issue const*>);
    static_assert(std::is_same_v<decltype(std::declval<result_type&>().cend()), issue const*>);
    verification_result result;
    for (int i = 0; i < 3; ++i) result.add_issue({});
    verification_result const& constant = result;
    EXPECT_EQ(result.begin(), constant.begin());
    EXPECT_EQ(result.begin(), result.cbegin());
    EXPECT_EQ(result.end(), constant.end());
    EXPECT_EQ(result.end(), result.cend());
    EXPECT_EQ(result.end() - result.begin(), 3);
}

TEST(VerificationResult, LetsItsIssuesBeChanged) {
    verification_result result;
    result.add_issue({severity::error, "text", {"a"}});
    for (issue& element : result) {
        element.severity = severity::warning;
        element.options = {"b"};
    }
    EXPECT_EQ(result.severity_for_option("a"), severity::none);
    EXPECT_EQ(result.severity_for_option("b"), severity::warning);
}

TEST(VerificationResult, MovesAnIssueIn) {
    verification_result result;
    issue source{severity::error, long_text, {"a", "b"}};
    auto const* const message = block_of(source.message);
    auto const* const options = block_of(source.options);
    result.add_issue(std::move(source));
    EXPECT_EQ(block_of(result.begin()->message), message);
    EXPECT_EQ(block_of(result.begin()->options), options);
}

TEST(VerificationResult, CopiesAnIssueThatIsKept) {
    verification_result result;
    issue const source{severity::error, long_text, {"a", "b"}};
    result.add_issue(source);
    EXPECT_EQ(source.message, long_text);
    EXPECT_EQ(result.begin()->message, long_text);
    EXPECT_NE(block_of(result.begin()->message), block_of(source.message));
    EXPECT_NE(block_of(result.begin()->options), block_of(source.options));
}

TEST(VerificationResult, AddsAnIssueOfItsOwn) {
    verification_result result;
    result.add_issue({severity::error, long_text, {"a"}});
    for (int i = 0; i < 5; ++i) result.add_issue(*result.begin());
    EXPECT_EQ(messages_of(result), texts(6, long_text));
}

TEST(VerificationResult, KeepsTheBlocksOfItsIssuesWhenItGrows) {
    verification_result result;
    result.add_issue({severity::error, long_text, {"a"}});
    auto const* const message = block_of(result.begin()->message);
    auto const* const options = block_of(result.begin()->options);
    for (int i = 0; i < 20; ++i) result.add_issue({});
    EXPECT_EQ(block_of(result.begin()->message), message);
    EXPECT_EQ(block_of(result.begin()->options), options);
}

TEST(VerificationResult, GrowsByDoubling) {
    verification_result result;
    auto const add = [&](int) {
        test_support::allocation_counter const counter;
        result.add_issue({});
        return counter.allocations();
    };
    EXPECT_EQ(config_test::sizes_that_allocate(18, add), (std::vector<int>{0, 1, 2, 4, 8, 16}));
}

TEST(Issue, LeavesNothingButItsSeverityWhenMoved) {
    issue source{severity::error, long_text, {"a"}};
    issue const target(std::move(source));
    EXPECT_EQ(target.severity, severity::error);
    EXPECT_EQ(target.message, long_text);
    ASSERT_EQ(target.options.size(), 1U);
    EXPECT_EQ(source.severity, severity::error);
    EXPECT_EQ(source.message.size(), 0U);
    EXPECT_EQ(block_of(source.message), nullptr);
    EXPECT_EQ(source.options.size(), 0U);
    EXPECT_EQ(source.options.data(), nullptr);
}

TEST(Issue, BeginsWithoutAnything) {
    issue const made;
    EXPECT_EQ(made.severity, severity::none);
    EXPECT_TRUE(made.message.empty());
    EXPECT_TRUE(made.options.empty());
}

TEST(VerificationCopy, IsIndependent) {
    verification_result source;
    source.add_issue({severity::error, "first", {"a"}});
    verification_result assigned;
    for (int i = 0; i < 3; ++i) assigned.add_issue({severity::error, "old", {"b"}});
    assigned = source;
    verification_result copy(source);
    for (verification_result* const other : {&copy, &assigned}) {
        EXPECT_EQ(messages_of(*other), (texts{"first"}));
        EXPECT_EQ(other->severity_for_option("b"), severity::none);
        EXPECT_NE(block_of(other->begin()->message), block_of(source.begin()->message));
        EXPECT_NE(block_of(other->begin()->options), block_of(source.begin()->options));
        other->add_issue({severity::error, "second", {"a"}});
        other->begin()->message = "changed";
        EXPECT_EQ(messages_of(source), (texts{"first"}));
        EXPECT_EQ(messages_of(*other), (texts{"changed", "second"}));
    }
}

} // namespace
