#include <tavi/ioapi/v2/ioapi.hpp>

#include <gtest/gtest.h>

namespace {

namespace v2 = tavi::ioapi::v2;

template <class... Classes>
constexpr bool all_complete = ((sizeof(Classes) > 0) && ...);

TEST(UmbrellaHeader, BringsTheWholeInterface) {
    static_assert(
        all_complete<v2::utility::string, v2::utility::string_view, v2::utility::array<int>,
                     v2::utility::data_view<int const>, v2::utility::pair<int, int>>);
    static_assert(all_complete<v2::io_errc, v2::io_error, v2::io_exception, v2::io_error_category,
                               v2::io_error_generic_category, v2::interfaces::object,
                               v2::interfaces::io_error_diagnostics_impl,
                               v2::interfaces::io_error_diagnostics_impl::iterator_impl>);
    static_assert(all_complete<v2::io_data_type, v2::io_value, v2::io_data_value, v2::io_timestamp,
                               v2::io_structure_type, v2::io_object>);
    static_assert(all_complete<v2::plc_identifier, v2::plc_identifier_part, v2::plc_identifier_kind,
                               v2::browsing::node, v2::read_result, v2::write_result>);
}

TEST(UmbrellaHeader, BringsWhatARoundOfAReadNeeds) {
    v2::plc_identifier const identifiers[] = {v2::plc_identifier("level"),
                                              v2::plc_identifier("flow")};
    v2::read_result result{v2::utility::data_view<v2::plc_identifier const>(identifiers)};
    result.set(v2::plc_identifier("level"),
               v2::io_data_value(21.5, v2::io_data_value::value_quality::good));
    v2::io_error error;
    EXPECT_EQ(v2::detail::get_as<double>(result[0].value().value(), error), 21.5);
    EXPECT_TRUE(error.ok());
    EXPECT_EQ(result[1].error().message(), "no result");
}

} // namespace
