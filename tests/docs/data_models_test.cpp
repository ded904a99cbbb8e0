#include <tavi/ioapi/v2/ioapi.hpp>

#include "markdown_table.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <string>

namespace docs_test {
namespace {

namespace v2 = tavi::ioapi::v2;
using listed_numbers = std::map<std::string, unsigned long long>;

/// The column of this platform, by the names of the rows.
listed_numbers listed_in(std::string const& first_head) {
    listed_numbers numbers;
    guide const document("data_models.md");
    auto const& table = document.table(first_head, "32-bit ARM");
    std::size_t const column = sizeof(void*) == 4 ? 1 : 2;
    for (std::size_t row = 1; row < table.size(); ++row) {
        numbers[items_of(table[row][0])[0]] = std::stoull(table[row][column]);
    }
    return numbers;
}

TEST(data_models, have_the_types_of_the_table) {
    listed_numbers const sizes{{"void*", sizeof(void*)},
                               {"int", sizeof(int)},
                               {"long", sizeof(long)},
                               {"long long", sizeof(long long)},
                               {"std::int64_t", sizeof(std::int64_t)},
                               {"std::size_t", sizeof(std::size_t)},
                               {"long double", sizeof(long double)},
                               {"char", sizeof(char)}};
    EXPECT_EQ(listed_in("Type"), sizes);
}

TEST(data_models, have_classes_of_the_sizes_in_the_table) {
    listed_numbers const sizes{
        {"utility::string", sizeof(v2::utility::string)},
        {"utility::string_view", sizeof(v2::utility::string_view)},
        {"utility::array", sizeof(v2::utility::array<int>)},
        {"utility::data_view", sizeof(v2::utility::data_view<int>)},
        {"io_data_type", sizeof(v2::io_data_type)},
        {"io_timestamp", sizeof(v2::io_timestamp)},
        {"io_value", sizeof(v2::io_value)},
        {"io_data_value", sizeof(v2::io_data_value)},
        {"io_error", sizeof(v2::io_error)},
        {"io_exception", sizeof(v2::io_exception)},
        {"io_error_diagnostics", sizeof(v2::io_error_diagnostics)},
        {"io_error_diagnostics_generic", sizeof(v2::io_error_diagnostics_generic)},
        {"io_structure_type", sizeof(v2::io_structure_type)},
        {"io_object", sizeof(v2::io_object)},
        {"io_structure_dictionary", sizeof(v2::io_structure_dictionary)},
        {"plc_identifier_part", sizeof(v2::plc_identifier_part)},
        {"plc_identifier", sizeof(v2::plc_identifier)},
        {"browsing::node", sizeof(v2::browsing::node)},
        {"browse_result", sizeof(v2::browse_result)},
        {"read_result", sizeof(v2::read_result)},
        {"read_result::result_type", sizeof(v2::read_result::result_type)},
        {"write_result", sizeof(v2::write_result)},
        {"write_result::result_type", sizeof(v2::write_result::result_type)},
        {"subscription_id", sizeof(v2::subscription_id)},
        {"subscription_result", sizeof(v2::subscription_result)},
        {"subscription_result::variable_result", sizeof(v2::subscription_result::variable_result)},
        {"config::option", sizeof(v2::config::option)},
        {"config::option::value_option", sizeof(v2::config::option::value_option)},
        {"config::category", sizeof(v2::config::category)},
        {"config::config_template", sizeof(v2::config::config_template)},
        {"config::store", sizeof(v2::config::store)},
        {"config::verification_result", sizeof(v2::config::verification_result)},
        {"config::verification_result::issue_type",
         sizeof(v2::config::verification_result::issue_type)},
        {"backend_query", sizeof(v2::backend_query)},
        {"backend_version_info", sizeof(v2::backend_version_info)}};
    EXPECT_EQ(listed_in("Class"), sizes);
}

TEST(data_models, have_the_limits_of_the_table) {
    listed_numbers const limits{
        {"bool", v2::utility::array<bool>::max_size()},
        {"int", v2::utility::array<int>::max_size()},
        {"double", v2::utility::array<double>::max_size()},
        {"utility::string", v2::utility::array<v2::utility::string>::max_size()},
        {"io_value", v2::utility::array<v2::io_value>::max_size()}};
    EXPECT_EQ(listed_in("Array of"), limits);
}

} // namespace
} // namespace docs_test
