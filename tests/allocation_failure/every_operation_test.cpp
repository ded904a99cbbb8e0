#include "tables.hpp"

#include <gtest/gtest.h>

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

TEST_P(MemoryRunsOut, OnceAndThePromiseIsKept) {
    verdict const found = judge(GetParam(), test_support::shortage::once);
    EXPECT_EQ(found.complaint, "");
    EXPECT_EQ(found.failures == 0, GetParam().kept == promise::quiet)
        << "an operation in the table asks for memory, or says that it does not";
}

TEST_P(MemoryRunsOut, ForGoodAndThePromiseIsKept) {
    EXPECT_EQ(judge(GetParam(), test_support::shortage::lasting).complaint, "");
}

} // namespace allocation_failure_test
