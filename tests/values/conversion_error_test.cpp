#include "counted_diagnostics.hpp"
#include "foreign_category.hpp"
#include "raw_value.hpp"
#include "sample_payloads.hpp"
#include "scalar_targets.hpp"
#include "support/allocations.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <climits>
#include <limits>
#include <string>
#include <thread>
#include <vector>

namespace values_test {
namespace {

using test_support::allocation_counter;
using test_support::allocation_failure;

template <class T>
class ConversionError : public ::testing::Test {
protected:
    static constexpr bool is_number = std::is_arithmetic_v<T> && !std::is_same_v<T, bool>;
    foreign_category category;
    counted_diagnostics diagnostics;

    io_error earlier_failure() {
        io_error error(category, 77);
        error.diagnostics(io_error_diagnostics(&diagnostics));
        return error;
    }
    void expect_cleared(io_error const& error) {
        EXPECT_EQ(&error.category(), &generic_io_error_category());
        EXPECT_EQ(error.diagnostics().list(), nullptr);
        EXPECT_EQ(diagnostics.added, 1);
        EXPECT_EQ(diagnostics.released, 1);
    }
};
TYPED_TEST_SUITE(ConversionError, scalar_targets, target_names);

TYPED_TEST(ConversionError, OfAnEarlierCallIsClearedOnSuccess) {
    for (io_value const& value : {io_value(), io_value(1), io_value("1"), io_value(1.0)}) {
        this->diagnostics.added = this->diagnostics.released = 0;
        io_error error = this->earlier_failure();
        (void)detail::get_as<TypeParam>(value, error);
        EXPECT_EQ(error.code(), 0);
        this->expect_cleared(error);
    }
}

TYPED_TEST(ConversionError, OfAnEarlierCallIsReplacedOnFailure) {
    if constexpr (!std::is_same_v<TypeParam, bool>) {
        io_error error = this->earlier_failure();
        TypeParam const result = detail::get_as<TypeParam>(io_value(io_object()), error);
        EXPECT_EQ(result, TypeParam());
        EXPECT_EQ(error.code(), 3);
        this->expect_cleared(error);
    }
}

TYPED_TEST(ConversionError, CarriesTheWordsOfTheGenericCategory) {
    if constexpr (TestFixture::is_number) {
        io_error error;
        (void)detail::get_as<TypeParam>(io_value(true), error);
        EXPECT_EQ(error.message(), "value too large");
        (void)detail::get_as<TypeParam>(io_value("x"), error);
        EXPECT_EQ(error.message(), "incompatible type");
    }
}

TYPED_TEST(ConversionError, OfOneFailureDoesNotOutliveTheNextSuccess) {
    if constexpr (TestFixture::is_number) {
        io_error error;
        (void)detail::get_as<TypeParam>(io_value("x"), error);
        EXPECT_TRUE(error.failed());
        EXPECT_EQ(detail::get_as<TypeParam>(io_value(7), error), TypeParam(7));
        EXPECT_TRUE(error.ok());
    }
}

TYPED_TEST(ConversionError, BecomesUnhandledWhereItsTextFindsNoMemory) {
    if constexpr (TestFixture::is_number) {
        for (io_value const& value : {io_value(true), io_value("x")}) {
            for (std::size_t n = 1;; ++n) {
                long long const before = test_support::live_blocks();
                io_error error;
                bool hit = false;
                TypeParam result{1};
                {
                    allocation_failure const failure(n);
                    result = detail::get_as<TypeParam>(value, error);
                    hit = failure.hit();
                }
                EXPECT_EQ(result, TypeParam());
                EXPECT_EQ(test_support::live_blocks(), before);
                if (!hit) break;
                EXPECT_EQ(error, io_error(io_errc::unhandled_exception));
            }
        }
    }
}

TYPED_TEST(ConversionError, IsUnhandledForACorruptIndex) {
    for (int const index : {-1, 34, 255, INT_MAX, INT_MIN}) {
        raw_value value(5);
        corrupt_index(*value, index);
        this->diagnostics.added = this->diagnostics.released = 0;
        io_error error = this->earlier_failure();
        EXPECT_EQ(detail::get_as<TypeParam>(*value, error), TypeParam()) << index;
        EXPECT_EQ(error.code(), 8) << index;
        EXPECT_EQ(error.message(), "unhandled exception") << index;
        this->expect_cleared(error);
        EXPECT_EQ(value->index(), index);
    }
}

TYPED_TEST(ConversionError, LeavesNoBlockBehind) {
    io_value const values[] = {io_value(true), io_value("x"), io_value(io_object()), io_value(-1),
                               io_value(array<int>{1, 2})};
    long long const before = test_support::live_blocks();
    for (io_value const& value : values) {
        io_error error;
        (void)detail::get_as<TypeParam>(value, error);
    }
    EXPECT_EQ(test_support::live_blocks(), before);
}

TYPED_TEST(ConversionError, DoesNotComeBetweenNumbersAndTheyAllocateNothing) {
    if constexpr (!std::is_same_v<TypeParam, utility::string>) {
        io_value const values[] = {io_value(),
                                   io_value(static_cast<signed char>(1)),
                                   io_value(short{1}),
                                   io_value(1),
                                   io_value(1L),
                                   io_value(1LL),
                                   io_value(static_cast<unsigned char>(1)),
                                   io_value(1U),
                                   io_value(static_cast<unsigned short>(1)),
                                   io_value(1UL),
                                   io_value(1ULL),
                                   io_value(1.0F),
                                   io_value(1.0),
                                   io_value('\1')};
        for (io_value const& value : values) {
            io_error error;
            allocation_counter const counter;
            TypeParam const result = detail::get_as<TypeParam>(value, error);
            EXPECT_EQ(counter.allocations(), 0U) << value.index();
            EXPECT_EQ(result, TypeParam(value.empty() ? 0 : 1)) << value.index();
            EXPECT_TRUE(error.ok()) << value.index();
        }
    }
}

TEST(ConversionToText, AllocatesOnce) {
    for (io_value const& value :
         {io_value(true), io_value(5), io_value(-1.5), io_value("level"), io_value('A'),
          io_value(std::numeric_limits<unsigned long long>::max()),
          io_value(std::numeric_limits<double>::lowest())}) {
        io_error error;
        allocation_counter const counter;
        utility::string const text = detail::get_as<utility::string>(value, error);
        EXPECT_EQ(counter.allocations(), 1U) << value.index();
        EXPECT_EQ(test_support::last_aligned_allocation().size, text.size() + 1) << value.index();
    }
}

TEST(ConversionToText, AllocatesNothingForNothing) {
    io_error error;
    allocation_counter const counter;
    utility::string const text = detail::get_as<utility::string>(io_value(), error);
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(text.size(), 0U);
}

TEST(ConversionToText, IsUnhandledWhereMemoryIsExhausted) {
    for (io_value const& value : {io_value(true), io_value(5), io_value(-1.5F), io_value(-1.5),
                                  io_value("level"), io_value('A'), io_value(5UL)}) {
        long long const before = test_support::live_blocks();
        io_error error;
        bool hit = false;
        {
            allocation_failure const failure(1);
            utility::string const text = detail::get_as<utility::string>(value, error);
            hit = failure.hit();
            EXPECT_EQ(text.size(), 0U);
        }
        EXPECT_TRUE(hit) << value.index();
        EXPECT_EQ(error, io_error(io_errc::unhandled_exception)) << value.index();
        EXPECT_EQ(error.diagnostics().list(), nullptr);
        EXPECT_EQ(test_support::live_blocks(), before);
    }
}

TEST(Conversion, RunsInSeveralThreadsOnOneValue) {
    io_value const number(70000.0F);
    io_value const text("9223372036854775807");
    io_value const elements(array<int>{1, 2});
    std::atomic<int> wrong{0};
    auto const convert = [&] {
        for (int i = 0; i < 300; ++i) {
            io_error error;
            bool right = detail::get_as<short>(number, error) == 4464 && error.ok();
            right = right && detail::get_as<utility::string>(number, error) == "70000";
            right = right && detail::get_as<long long>(text, error) == 9223372036854775807LL;
            right = right && detail::get_as<utility::string>(text, error) == "9223372036854775807";
            right = right && detail::get_as<int>(text, error) == 0 && error.code() == 3;
            right = right && detail::get_as<int>(elements, error) == 0 && error.code() == 3;
            right = right && detail::get_as<bool>(elements, error) && error.ok();
            io_value const copy(elements);
            right = right && copy.get_if<array<int>>()->size() == 2;
            if (!right) ++wrong;
        }
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) threads.emplace_back(convert);
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(wrong.load(), 0);
}

} // namespace
} // namespace values_test
