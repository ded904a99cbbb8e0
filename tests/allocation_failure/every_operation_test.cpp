#include "tables.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace allocation_failure_test {

std::vector<operation> every_operation() {
    std::vector<operation> all;
    for (auto const table : {&value_operations, &conversion_operations, &container_operations,
                             &structure_operations, &result_operations, &subscription_operations,
                             &configuration_operations, &error_operations, &service_operations}) {
        std::vector<operation> rows = table();
        all.insert(all.end(), std::make_move_iterator(rows.begin()),
                   std::make_move_iterator(rows.end()));
    }
    return all;
}

namespace {

/// Counts what was judged, and says it at the end.
class Figures : public ::testing::Environment {
public:
    /// \param failures  how many allocations of an operation were made to fail
    void add(std::size_t failures) {
        ++operations_;
        failures_ += failures;
    }
    void TearDown() override {
        if (operations_ == 0) return;
        (void)std::printf(
            "allocation_failure: %zu operations, %zu allocations failed one at a time\n",
            operations_, failures_);
    }

private:
    std::size_t operations_ = 0;
    std::size_t failures_ = 0;
};

auto* const figures =
    static_cast<Figures*>(::testing::AddGlobalTestEnvironment(new Figures)); // gtest ends it

} // namespace

TEST_P(MemoryRunsOut, OnceAndThePromiseIsKept) {
    verdict const found = judge(GetParam(), test_support::shortage::once);
    figures->add(found.failures);
    EXPECT_EQ(found.complaint, "");
    EXPECT_EQ(found.failures == 0, GetParam().kept == promise::quiet)
        << "an operation in the table asks for memory, or says that it does not";
}

TEST_P(MemoryRunsOut, ForGoodAndThePromiseIsKept) {
    EXPECT_EQ(judge(GetParam(), test_support::shortage::lasting).complaint, "");
}

} // namespace allocation_failure_test
