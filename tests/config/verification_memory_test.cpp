#include <tavi/ioapi/v2/config/verification_result.hpp>

#include "samples.hpp"

#include <gtest/gtest.h>

#include <cstddef>

// What is left of a verification result when there is no memory.

namespace {

using namespace tavi::ioapi::v2;
using config::verification_result;
using config_test::fails_at;
using config_test::long_key;
using config_test::long_text;
using issue = verification_result::issue_type;
using severity = verification_result::severity_type;
using test_support::count_survived_failures;
using test_support::live_blocks;

TEST(VerificationMemory, ExhaustedLeavesTheResultWithoutTheNewIssue) {
    issue const fresh{severity::error, long_text, {"a", "b"}};
    for (int const size : {0, 1, 2, 3, 4}) {
        for (std::size_t n = 1;; ++n) {
            long long const before = live_blocks();
            bool hit = false;
            {
                verification_result result;
                for (int i = 0; i < size; ++i) result.add_issue({severity::none, "old", {"x"}});
                auto const* const block = result.begin();
                hit = fails_at(n, [&] { result.add_issue(fresh); });
                EXPECT_EQ(result.end() - result.begin(), hit ? size : size + 1) << n;
                if (hit) {
                    EXPECT_EQ(result.begin(), block) << n;
                }
                EXPECT_EQ(result.issues_for_option("x").size(), static_cast<unsigned int>(size));
            }
            EXPECT_EQ(live_blocks(), before) << n;
            if (!hit) break;
        }
    }
}

TEST(VerificationMemory, ExhaustedLeavesNothingOfTheFoundIssues) {
    verification_result result;
    for (int i = 0; i < 3; ++i) result.add_issue({severity::error, long_text, {"a", long_key}});
    EXPECT_GE(count_survived_failures([&] { (void)result.issues_for_option("a"); }), 1 + 3 * 4);
    EXPECT_EQ(result.issues_for_option("a").size(), 3U);
}

} // namespace
