#include <tavi/ioapi/v2/ioapi.hpp>

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace {

using namespace tavi::ioapi::v2;

template <class From, class To>
constexpr bool becomes = std::is_convertible_v<From, To>;

template <class From, class To>
constexpr bool becomes_on_request = std::is_constructible_v<To, From> && !becomes<From, To>;

template <class From, class To>
constexpr bool never_becomes = !std::is_constructible_v<To, From>;

TEST(Constructors, TakeTextsForTextsSilently) {
    static_assert(becomes<char const*, utility::string>);
    static_assert(becomes<char const(&)[6], utility::string>);
    static_assert(becomes<std::string, utility::string>);
    static_assert(becomes<std::string_view, utility::string>);
    static_assert(becomes<utility::string_view, utility::string>);
    static_assert(becomes<char const*, utility::string_view>);
    static_assert(becomes<std::string const&, utility::string_view>);
    static_assert(becomes<std::string_view, utility::string_view>);
    static_assert(becomes<utility::string const&, utility::string_view>);
    static_assert(becomes<utility::string, std::string_view>);
    static_assert(becomes<utility::string_view, std::string_view>);
}

TEST(Constructors, TakeNoNullPointerForATextOrNumber) {
    static_assert(never_becomes<std::nullptr_t, utility::string>);
    static_assert(never_becomes<std::nullptr_t, utility::string_view>);
    static_assert(never_becomes<std::nullptr_t, plc_identifier_part>);
    static_assert(never_becomes<std::nullptr_t, io_value>);
    static_assert(!std::is_assignable_v<utility::string&, std::nullptr_t>);
    static_assert(!std::is_constructible_v<io_value, std::nullptr_t, unsigned int>);
}

TEST(Constructors, TakeNoNumberForAText) {
    static_assert(never_becomes<int, utility::string>);
    static_assert(never_becomes<char, utility::string>);
    static_assert(never_becomes<int, utility::string_view>);
}

TEST(Constructors, TakeCountsOnRequestOnly) {
    static_assert(becomes_on_request<unsigned int, utility::array<int>>);
    static_assert(becomes_on_request<std::vector<int>, utility::array<int>>);
    static_assert(becomes_on_request<utility::data_view<int const>, utility::array<int>>);
    static_assert(becomes_on_request<utility::data_view<plc_identifier const>, read_result>);
    static_assert(becomes_on_request<utility::data_view<plc_identifier const>, write_result>);
    static_assert(never_becomes<int, read_result>);
    static_assert(never_becomes<unsigned int, write_result>);
}

TEST(Constructors, TakeContainersForViewsSilently) {
    static_assert(becomes<std::vector<int> const&, utility::data_view<int const>>);
    static_assert(becomes<std::vector<int>&, utility::data_view<int>>);
    static_assert(becomes<utility::array<int> const&, utility::data_view<int const>>);
    static_assert(becomes<utility::data_view<int>, utility::data_view<int const>>);
    static_assert(never_becomes<utility::data_view<int const>, utility::data_view<int>>);
    static_assert(never_becomes<std::vector<int> const&, utility::data_view<int>>);
}

TEST(Constructors, TakeCodesForErrorsSilently) {
    static_assert(becomes<io_errc, io_error>);
    static_assert(never_becomes<int, io_error>);
    static_assert(std::is_constructible_v<io_error, io_error_category const&, int>);
    static_assert(std::is_constructible_v<io_exception, io_error>);
}

TEST(Constructors, TakeNumbersForIdentifiersAndTimesOnRequestOnly) {
    static_assert(becomes_on_request<int, plc_identifier>);
    static_assert(becomes_on_request<char const*, plc_identifier>);
    static_assert(becomes_on_request<plc_identifier_part, plc_identifier>);
    static_assert(becomes_on_request<long long, io_timestamp>);
    static_assert(becomes<int, plc_identifier_part>);
    static_assert(becomes<char const*, plc_identifier_part>);
}

TEST(Constructors, TakeEachAlternativeForAValueSilently) {
    static_assert(becomes<int, io_value>);
    static_assert(becomes<bool, io_value>);
    static_assert(becomes<double, io_value>);
    static_assert(becomes<char const*, io_value>);
    static_assert(becomes<std::string, io_value>);
    static_assert(becomes<utility::array<int>, io_value>);
    static_assert(becomes<io_object, io_value>);
    static_assert(never_becomes<long double, io_value>);
    static_assert(never_becomes<wchar_t, io_value>);
    static_assert(never_becomes<void*, io_value>);
}

TEST(Constructors, OfHandlesTakeWhatTheyDescribe) {
    static_assert(std::is_default_constructible_v<io_structure_type>);
    static_assert(std::is_default_constructible_v<io_object>);
    static_assert(std::is_constructible_v<io_structure_type, utility::string>);
    static_assert(std::is_constructible_v<io_structure_type,
                                          std::initializer_list<io_structure_type::member const>>);
    static_assert(std::is_constructible_v<io_object, unsigned long long, io_structure_type>);
    static_assert(std::is_constructible_v<io_object, io_data_type, io_structure_type>);
}

TEST(Constructors, OfPlainRecordsAreAggregates) {
    static_assert(std::is_aggregate_v<io_data_type>);
    static_assert(std::is_aggregate_v<browsing::node>);
    static_assert(std::is_aggregate_v<utility::pair<int, int>>);
}

} // namespace
