#include "sample_payloads.hpp"
#include "support/allocations.hpp"

#include <gtest/gtest.h>

namespace whole_values {
namespace {

using namespace values_test;
using test_support::allocation_failure;
using test_support::live_blocks;

TEST(DeclaredTypeAllocation, ThatFailsInTheCopyToTheOwnTypePassesOut) {
    io_value const value(array<utility::string>{"one", "two"});
    int const failures = test_support::count_survived_failures([&] {
        io_error error;
        (void)value.to_variant(value.data_type(), error);
    });
    EXPECT_EQ(failures, 3);
    EXPECT_GE(
        test_support::count_survived_failures([&] { (void)value.to_variant(value.data_type()); }),
        3);
}

TEST(DeclaredTypeAllocation, ThatFailsInAConversionIsAnUnhandledException) {
    io_value const value(array<int>{1, 2});
    auto const texts = io_data_type::array_of(types::string);
    for (std::size_t n = 1;; ++n) {
        long long const before = live_blocks();
        bool hit = false;
        {
            io_error error;
            allocation_failure const failure(n);
            io_value const result = value.to_variant(texts, error);
            hit = failure.hit();
            EXPECT_EQ(error.code(), hit ? 8 : 0);
            EXPECT_EQ(result.data_type(), texts);
            ASSERT_EQ(result.index(), 31);
            EXPECT_EQ(result.get_if<array<utility::string>>()->size(), hit ? 0U : 2U);
        }
        EXPECT_EQ(live_blocks(), before);
        if (hit) continue;
        EXPECT_EQ(n, 4U);
        break;
    }
}

TEST(DeclaredTypeAllocation, IsNoneBetweenScalars) {
    io_error error;
    io_value const value(5);
    test_support::allocation_counter const counter;
    io_value const result = value.to_variant(io_data_type::scalar(types::dbl), error);
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(*result.get_if<double>(), 5.0);
}

TEST(DeclaredTypeAllocation, IsOneForAnArrayOfNumbers) {
    io_error error;
    io_value const value(array<int>{1, 2, 3});
    test_support::allocation_counter const counter;
    io_value const result = value.to_variant(io_data_type::array_of(types::dbl), error);
    EXPECT_EQ(counter.allocations(), 1U);
    EXPECT_EQ(result.get_if<array<double>>()->size(), 3U);
}

} // namespace
} // namespace whole_values
