#include <tavi/ioapi/v2/write_result.hpp>

#include "support/object_bytes.hpp"

#include <gtest/gtest.h>

#include <type_traits>
#include <vector>

namespace {

using namespace tavi::ioapi::v2;
using id = plc_identifier;
using entry_type = write_result::result_type;

TEST(WriteResult, TellsASuccessOnlyWhereOneWasStored) {
    write_result result(std::vector<id>{id("a"), id("b")});
    EXPECT_FALSE(result[0].ok());
    result.set(0, io_error());
    EXPECT_TRUE(result[0].ok());
    EXPECT_EQ(result[1].error().message(), "no result");
}

TEST(WriteResult, TellsASuccessForAnEntryThatWasAdded) {
    write_result result;
    result.resize(1);
    EXPECT_TRUE(result[0].ok());
}

TEST(WriteEntry, StoresAnErrorAndNothingElse) {
    entry_type entry(id("a", 1));
    entry.set(io_errc::not_found);
    EXPECT_EQ(entry.identifier(), id("a", 1));
    EXPECT_EQ(entry.error(), io_error(io_errc::not_found));
    entry.set(io_error());
    EXPECT_TRUE(entry.ok());
}

TEST(WriteEntry, MadeFromNothingIsBlank) {
    entry_type const entry;
    EXPECT_EQ(entry.identifier(), id());
    EXPECT_EQ(entry.error(), io_error());
}

TEST(WriteEntry, MadeFromAnIdentifierSaysNoResult) {
    entry_type const entry(id("a", 1));
    EXPECT_EQ(entry.identifier(), id("a", 1));
    EXPECT_EQ(entry.error(), io_error(io_errc::no_result));
    static_assert(!std::is_convertible_v<id, entry_type>);
}

TEST(WriteEntry, StandsAsIdentifierError) {
    entry_type const entry;
    EXPECT_EQ(test_support::offset_of(entry, entry.identifier()), 0U);
    EXPECT_EQ(test_support::offset_of(entry, entry.error()), test_support::by_word(48, 64));
    static_assert(sizeof(entry) == test_support::by_word(64, 88));
}

} // namespace
