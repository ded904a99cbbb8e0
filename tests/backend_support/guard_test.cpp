#include "support/typed_tests.hpp"

#include <backend_support/guard.hpp>
#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <type_traits>

namespace {

namespace v2 = tavi::ioapi::v2;

TEST(guard, clears_what_an_earlier_call_has_left) {
    v2::io_error error = v2::io_errc::not_found;
    bool worked = false;
    backend_support::guarded(error, [&] { worked = true; });
    EXPECT_TRUE(worked);
    EXPECT_EQ(error, v2::io_error());
}

TEST(guard, keeps_the_error_that_the_work_sets) {
    v2::io_error error;
    backend_support::guarded(error, [&] {
        EXPECT_TRUE(error.ok());
        error = v2::io_errc::not_supported;
    });
    EXPECT_EQ(error, v2::io_errc::not_supported);
}

TEST(guard, hands_on_the_error_of_the_librarys_own_exception) {
    v2::io_error error;
    backend_support::guarded(error, [] { throw v2::io_exception(v2::io_errc::not_found); });
    EXPECT_EQ(error, v2::io_errc::not_found);
}

template <class Thrown>
class guard_against : public testing::Test {};

using thrown_kinds = testing::Types<std::runtime_error, std::bad_alloc, int>;
TYPED_TEST_SUITE(guard_against, thrown_kinds);

TYPED_TEST(guard_against, every_exception_becomes_an_error) {
    v2::io_error error;
    backend_support::guarded(error, [] {
        if constexpr (std::is_same_v<TypeParam, std::runtime_error>) {
            throw std::runtime_error("no way");
        } else {
            throw TypeParam();
        }
    });
    EXPECT_EQ(error, v2::io_errc::unhandled_exception);
}

} // namespace
