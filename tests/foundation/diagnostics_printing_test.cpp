#include <tavi/ioapi/v2/io_error.hpp>
#include <tavi/ioapi/v2/io_error_diagnostics_generic.hpp>

#include "foreign_list.hpp"
#include "listed_pairs.hpp"
#include "pump_category.hpp"
#include "support/allocations.hpp"
#include "support/printed.hpp"

#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>
#include <string>
#include <utility>

namespace {

using namespace tavi::ioapi::v2;
using foundation_test::foreign_list;
using foundation_test::list_of;
using foundation_test::pump_category;

io_error detailed(io_error error, io_error_diagnostics const& list) {
    error.diagnostics(list);
    return error;
}

// Every way to print gives one text.
void expect_printed(io_error const& error, std::string const& text) {
    EXPECT_EQ(describe(error), text);
    EXPECT_EQ(test_support::printed(error), text);
    EXPECT_EQ(test_support::printed_by_own_traits(error), text);
}

TEST(DetailedErrorText, TellsAnEntry) {
    io_error_diagnostics_generic list;
    list.set("index", 4U);
    expect_printed(detailed(io_errc::incompatible_type, list),
                   "generic:3 incompatible type {index: (u32) 4}");
}

TEST(DetailedErrorText, TellsAllEntriesInTheOrderOfTheirKeys) {
    expect_printed(detailed(io_errc::no_result, list_of({{"c", 3}, {"a", 1}, {"b", -2}})),
                   "generic:5 no result {a: (i32) 1, b: (i32) -2, c: (i32) 3}");
}

TEST(DetailedErrorText, TellsValuesOfEachKindAsTheyArePrinted) {
    for (io_value const& value :
         {io_value("a text"), io_value(true), io_value(0.5), io_value(),
          io_value(utility::array<int>{1, 2}), io_value(utility::array<int>())}) {
        io_error_diagnostics_generic list;
        list.set("key", value);
        expect_printed(detailed(io_errc::no_result, list),
                       "generic:5 no result {key: " + value.printable_string().str() + "}");
    }
}

TEST(DetailedErrorText, IsThatOfThePlainErrorWithoutEntries) {
    expect_printed(detailed(io_errc::no_result, io_error_diagnostics_generic()),
                   "generic:5 no result");
    expect_printed(detailed(io_errc::no_result, io_error_diagnostics()), "generic:5 no result");
    auto emptied = list_of({{"a", 1}});
    emptied.remove("a");
    expect_printed(detailed(io_errc::no_result, emptied), "generic:5 no result");
}

TEST(DetailedErrorText, TellsEntriesWhereThereIsNoMessage) {
    expect_printed(detailed(io_errc(10), list_of({{"a", 1}})), "generic:10 {a: (i32) 1}");
    pump_category const pump;
    expect_printed(detailed(io_error(pump, 6), list_of({{"a", 1}})), "pump:6 {a: (i32) 1}");
    expect_printed(detailed(io_error(pump, 5), list_of({{"a", 1}})), "pump:5 blocked {a: (i32) 1}");
}

TEST(DetailedErrorText, TellsEntriesBesideASuccess) {
    expect_printed(detailed(io_error(), list_of({{"a", 1}})),
                   "generic:0 succecss {a: (i32) 1}"); // sic
}

TEST(DetailedErrorText, TellsKeysWholeAndUnescaped) {
    expect_printed(detailed(io_errc(10), list_of({{"", 1}, {std::string("a\0}", 3), 2}})),
                   std::string("generic:10 {: (i32) 1, a\0}: (i32) 2}", 36));
}

TEST(DetailedErrorText, TellsTheEntriesOfAnotherModule) {
    foreign_list foreign({{"z", io_value(1)}, {"a", io_value(2)}});
    expect_printed(detailed(io_errc(10), io_error_diagnostics(&foreign)),
                   "generic:10 {z: (i32) 1, a: (i32) 2}");
    EXPECT_EQ(foreign.walks, 0);
    EXPECT_EQ(foreign.references, 1U);
}

TEST(DetailedErrorText, FollowsTheList) {
    auto list = list_of({{"a", 1}});
    io_error const error = detailed(io_errc(10), list);
    list.set("a", 2);
    EXPECT_EQ(describe(error), "generic:10 {a: (i32) 2}");
}

TEST(DetailedErrorText, IsPrintedByWidthAndFill) {
    std::ostringstream out;
    out << std::setw(26) << std::setfill('.') << std::left
        << detailed(io_errc(10), list_of({{"a", 1}})) << '|';
    EXPECT_EQ(out.str(), "generic:10 {a: (i32) 1}...|");
}

TEST(DetailedErrorText, LeavesNothingBehindWhenMemoryIsExhausted) {
    io_error const error =
        detailed(io_errc::no_result, list_of({{"a key of some length", 1}, {"b", 2}}));
    EXPECT_GT(test_support::count_survived_failures([&] { (void)describe(error); }), 1);
}

} // namespace
