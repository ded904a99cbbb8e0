#include <tavi/ioapi/v2/read_result.hpp>
#include <tavi/ioapi/v2/write_result.hpp>

#include "support/allocations.hpp"
#include "support/object_bytes.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

#include <new>

namespace {

using namespace tavi::ioapi::v2;
using view = utility::data_view<plc_identifier const>;
using test_support::allocation_counter;
using test_support::allocation_failure;

template <class Result>
struct limit_of;
template <>
struct limit_of<read_result> {
    static constexpr unsigned int refused = 33554432; // on every platform
};
template <>
struct limit_of<write_result> {
    static constexpr unsigned int refused = 67108864;
};

template <class Result>
class ResultLimit : public ::testing::Test {
protected:
    static constexpr unsigned int refused = limit_of<Result>::refused;
    // The largest count whose bytes can be stated in 32 bits.
    static constexpr auto limit =
        static_cast<unsigned int>(0xFFFFFFFFULL / sizeof(typename Result::result_type));

    plc_identifier const few[1] = {plc_identifier("level")};
};

using result_classes = ::testing::Types<read_result, write_result>;
TYPED_TEST_SUITE(ResultLimit, result_classes);

TYPED_TEST(ResultLimit, IsTheDocumentedOneWhereWordsHave32Bits) {
    if constexpr (!test_support::has_wide_words) {
        EXPECT_EQ(this->limit + 1, this->refused);
    } else {
        EXPECT_LT(this->limit, this->refused);
    }
}

TYPED_TEST(ResultLimit, RefusesAResizeBeyond) {
    TypeParam result(this->few);
    auto const* const block = result.begin();
    allocation_counter const counter;
    for (unsigned int const count :
         {this->limit + 1, this->refused, this->refused + 1, 0xFFFFFFFFU}) {
        EXPECT_THROW(result.resize(count), std::bad_array_new_length) << count;
    }
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(result.begin(), block);
    EXPECT_EQ(result.size(), 1U);
}

TYPED_TEST(ResultLimit, AsksMemoryForTheLargestResize) {
    TypeParam result(this->few);
    {
        allocation_failure const failure(1);
        EXPECT_THROW(
            {
                try {
                    result.resize(this->limit);
                } catch (std::bad_array_new_length const&) {
                    ADD_FAILURE() << "refused at the limit";
                    throw;
                }
            },
            std::bad_alloc);
        EXPECT_TRUE(failure.hit());
    }
    EXPECT_EQ(result.size(), 1U);
}

// A view that claims more than there is: whoever reads it runs out of the few identifiers.
TYPED_TEST(ResultLimit, RefusesAViewBeyond) {
    for (unsigned int const count : {this->limit + 1, this->refused, 0xFFFFFFFFU}) {
        EXPECT_THROW(TypeParam{view(this->few, count)}, std::bad_array_new_length) << count;
    }
}

TYPED_TEST(ResultLimit, RefusesAnAssignBeyond) {
    TypeParam result(this->few);
    result.set(0, io_error());
    for (unsigned int const count : {this->limit + 1, this->refused, 0xFFFFFFFFU}) {
        EXPECT_THROW(result.assign(view(this->few, count)), std::bad_array_new_length) << count;
    }
    EXPECT_EQ(result.size(), 1U);
    EXPECT_TRUE(result[0].ok());
}

TYPED_TEST(ResultLimit, AsksMemoryForTheLargestView) {
    // Two of them span 2 GiB on 32-bit platforms, where the distance of two pointers ends.
    for (unsigned int const count : {0x80000000U / 48 + 1, this->limit - 1, this->limit}) {
        bool asked = false;
        bool too_many = false;
        {
            allocation_failure const failure(1);
            try {
                TypeParam const result(view(this->few, count));
            } catch (std::bad_array_new_length const&) {
                too_many = true;
            } catch (std::bad_alloc const&) {
                asked = failure.hit();
            }
        }
        EXPECT_EQ(too_many, count > this->limit) << count;
        EXPECT_EQ(asked, count <= this->limit) << count;
    }
}

} // namespace
