#include <gtest/gtest.h>
#include <iohost/conversion.hpp>

#include <vector>

namespace {

namespace v2 = tavi::ioapi::v2;
using declared = v2::io_data_type;
using kinds = declared::basic_types;
using quality = v2::io_data_value::value_quality;

/// What one value becomes.
v2::read_result converted(v2::io_value const& value, declared const& type) {
    std::vector<v2::plc_identifier> const identifiers{v2::plc_identifier("a")};
    v2::read_result result(identifiers);
    result.set(0U, v2::io_data_value(value, v2::io_timestamp(5), quality::uncertain));
    iohost::convert_values(result, type);
    return result;
}

TEST(conversion, gives_the_value_as_the_type) {
    auto const result = converted("12", declared::scalar(kinds::i32));
    ASSERT_TRUE(result[0].ok());
    EXPECT_EQ(result[0].value().value().data_type(), declared::scalar(kinds::i32));
    ASSERT_NE(result[0].value().value().get_if<int>(), nullptr);
    EXPECT_EQ(*result[0].value().value().get_if<int>(), 12);
}

TEST(conversion, keeps_time_and_quality) {
    auto const result = converted(12, declared::scalar(kinds::string));
    EXPECT_EQ(result[0].value().timestamp(), v2::io_timestamp(5));
    EXPECT_EQ(result[0].value().quality(), quality::uncertain);
}

TEST(conversion, converts_arrays_by_element) {
    auto const result =
        converted(v2::utility::array<bool>{true}, declared::array_of(kinds::string));
    ASSERT_TRUE(result[0].ok());
    EXPECT_EQ(result[0].value().value().data_type(), declared::array_of(kinds::string));
    EXPECT_EQ(result[0].value().value().as<std::vector<std::string>>(),
              std::vector<std::string>{"true"});
}

struct failing {
    v2::io_value value;
    declared type;
    v2::io_errc code;
};

TEST(conversion, puts_the_error_in_place_of_a_value_that_does_not_convert) {
    failing const expected[] = {
        {1.5, declared::scalar(kinds::i32), v2::io_errc::value_too_large},
        {300, declared::scalar(kinds::u8), v2::io_errc::value_too_large},
        {"abc", declared::scalar(kinds::i32), v2::io_errc::incompatible_type},
        {v2::utility::array<int>{1, 300}, declared::array_of(kinds::u8),
         v2::io_errc::value_too_large},
        {v2::utility::array<int>{1}, declared::scalar(kinds::i32), v2::io_errc::incompatible_type},
        {v2::io_object(), declared::scalar(kinds::string), v2::io_errc::incompatible_type},
        {5, declared::object(7), v2::io_errc::incompatible_type},
    };
    for (auto const& [value, type, code] : expected) {
        auto const result = converted(value, type);
        EXPECT_EQ(result[0].error(), v2::io_error(code)) << type;
        EXPECT_TRUE(result[0].value().empty()) << type;
    }
}

TEST(conversion, leaves_errors_as_they_are) {
    std::vector<v2::plc_identifier> const identifiers{v2::plc_identifier("a")};
    v2::read_result result(identifiers);
    result.set(0U, v2::io_error(v2::io_errc::not_found));
    iohost::convert_values(result, declared::scalar(kinds::string));
    EXPECT_EQ(result[0].error(), v2::io_error(v2::io_errc::not_found));
}

} // namespace
