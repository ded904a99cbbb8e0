#include "sample_payloads.hpp"
#include "support/alternatives.hpp"
#include "support/typed_tests.hpp"
#include "value_image.hpp"

#include <gtest/gtest.h>

namespace values_test {
namespace {

constexpr bool wide = sizeof(void*) == 8;

TEST(ValueLayout, HasTheSizeOfTheDataModel) {
    EXPECT_EQ(sizeof(io_value), wide ? 56U : 48U);
    EXPECT_EQ(alignof(io_value), 8U);
}

TEST(ValueLayout, BeginsWithTheDataType) {
    io_value const value(io_data_type{types{0x01020304U}, 0x1112131415161718ULL, 0x2122U, 0x3132U},
                         1);
    EXPECT_EQ(read_at<unsigned int>(value, 0), 0x01020304U);
    EXPECT_EQ(read_at<unsigned long long>(value, 8), 0x1112131415161718ULL);
    EXPECT_EQ(read_at<unsigned int>(value, 16), 0x2122U);
    EXPECT_EQ(read_at<unsigned int>(value, 20), 0x3132U);
}

template <class T>
class ValueLayoutOf : public ::testing::Test {};
TYPED_TEST_SUITE(ValueLayoutOf, test_support::every_alternative, test_support::alternative_names);

TYPED_TEST(ValueLayoutOf, EndsWithTheIndex) {
    EXPECT_EQ(read_at<int>(sample_value<TypeParam>(), index_offset), detail::index_of<TypeParam>);
}

TYPED_TEST(ValueLayoutOf, HasThePayloadBehindTheType) {
    io_value const value = sample_value<TypeParam>();
    auto const* const begin = reinterpret_cast<unsigned char const*>(&value);
    auto const* const payload = reinterpret_cast<unsigned char const*>(value.get_if<TypeParam>());
    EXPECT_EQ(payload - begin, static_cast<std::ptrdiff_t>(payload_offset));
}

TYPED_TEST(ValueLayoutOf, HasZerosBehindAShorterPayload) {
    io_value const value = sample_value<TypeParam>();
    value_image const image = image_of(value);
    if constexpr (std::is_arithmetic_v<TypeParam>) {
        for (std::size_t i = payload_offset + sizeof(TypeParam); i < index_offset; ++i) {
            EXPECT_EQ(image[i], 0) << i;
        }
    }
}

TYPED_TEST(ValueLayoutOf, StoresTheBytesOfAScalar) {
    if constexpr (std::is_arithmetic_v<TypeParam>) {
        EXPECT_EQ(read_at<TypeParam>(sample_value<TypeParam>(), payload_offset),
                  sample<TypeParam>());
    }
}

TEST(ValueLayout, StoresSizeAndPointerOfAText) {
    io_value const value("level");
    std::size_t const size_offset = payload_offset + (wide ? 8 : 4);
    std::size_t const data_offset = payload_offset + (wide ? 16 : 8);
    EXPECT_EQ(read_at<unsigned int>(value, size_offset), 5U);
    EXPECT_EQ(read_at<char const*>(value, data_offset), value.get_if<utility::string>()->data());
}

TEST(ValueLayout, StoresPointerAndSizeOfAnArray) {
    io_value const value(array<int>{1, 2, 3});
    EXPECT_EQ(read_at<int const*>(value, payload_offset), value.get_if<array<int>>()->data());
    EXPECT_EQ(read_at<unsigned int>(value, payload_offset + sizeof(void*)), 3U);
}

TEST(ValueLayout, StoresOnePointerForAnObject) {
    io_value const value(sample_object());
    EXPECT_NE(read_at<void const*>(value, payload_offset), nullptr);
    EXPECT_EQ(read_at<void const*>(value, payload_offset), impl_of(*value.get_if<io_object>()));
}

} // namespace
} // namespace values_test
