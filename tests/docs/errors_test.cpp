#include <tavi/ioapi/v2/ioapi.hpp>

#include "markdown_table.hpp"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace docs_test {
namespace {

namespace v2 = tavi::ioapi::v2;
using v2::io_errc;

std::map<std::string, io_errc> const& codes_by_name() {
    static std::map<std::string, io_errc> const codes{
        {"success", io_errc::success},
        {"not_found", io_errc::not_found},
        {"invalid_property", io_errc::invalid_property},
        {"incompatible_type", io_errc::incompatible_type},
        {"value_too_large", io_errc::value_too_large},
        {"no_result", io_errc::no_result},
        {"not_supported", io_errc::not_supported},
        {"not_implemented", io_errc::not_implemented},
        {"unhandled_exception", io_errc::unhandled_exception},
        {"invalid_backend_context", io_errc::invalid_backend_context},
        {"todo", io_errc::todo}};
    return codes;
}

TEST(error_table, has_the_codes_and_messages_of_the_library) {
    guide const document("errors.md");
    auto const& table = document.table("Code", "`io_errc`");
    EXPECT_EQ(table.size() - 1, codes_by_name().size());
    for (std::size_t row = 1; row < table.size(); ++row) {
        int const code = std::stoi(table[row][0]);
        std::string const name = items_of(table[row][1])[0];
        EXPECT_EQ(code, static_cast<int>(codes_by_name().at(name))) << name;
        EXPECT_EQ(v2::io_error(io_errc(code)).message(), table[row][2]) << name;
    }
}

TEST(error_table, leaves_out_no_code_that_has_a_message) {
    for (int code = -10; code < 1000; ++code) {
        bool const listed = code >= 0 && code <= 9;
        EXPECT_EQ(v2::io_error(io_errc(code)).message().empty(), !listed) << code;
    }
}

TEST(diagnostics_table, has_the_keys_of_the_library) {
    namespace keys = v2::diagnostics_key;
    std::map<std::string, std::string> const stated{{"operation", keys::operation},
                                                    {"address", keys::address},
                                                    {"index", keys::index},
                                                    {"source_type", keys::source_type},
                                                    {"target_type", keys::target_type},
                                                    {"device_code", keys::device_code},
                                                    {"device_text", keys::device_text}};
    guide const document("errors.md");
    auto const& table = document.table("Key", "Constant in `diagnostics_key`");
    std::map<std::string, std::string> listed;
    for (std::size_t row = 1; row < table.size(); ++row) {
        listed[items_of(table[row][1])[0]] = items_of(table[row][0])[0];
    }
    EXPECT_EQ(listed, stated);
}

} // namespace
} // namespace docs_test
