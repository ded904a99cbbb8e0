#include <tavi/ioapi/v2/read_result.hpp>

#include "support/allocations.hpp"
#include "support/diagnostics.hpp"
#include "support/object_bytes.hpp"
#include "support/raw_text.hpp"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using namespace tavi::ioapi::v2;
using id = plc_identifier;
using quality = io_data_value::value_quality;
using test_support::allocation_counter;
using test_support::watched_diagnostics;
using calls = std::vector<std::string>;

io_data_value const level("level", io_timestamp(17), quality::good);

void expect_no_value(read_result::result_type const& entry) {
    EXPECT_TRUE(entry.value().empty());
    EXPECT_EQ(entry.value().value().index(), 0);
    EXPECT_EQ(entry.value().timestamp().ticks(), 0);
    EXPECT_EQ(entry.value().quality(), quality::uncertain);
}

void expect_level(read_result::result_type const& entry) {
    ASSERT_NE(entry.value().value().get_if<utility::string>(), nullptr);
    EXPECT_EQ(*entry.value().value().get_if<utility::string>(), "level");
    EXPECT_EQ(entry.value().timestamp().ticks(), 17);
    EXPECT_EQ(entry.value().quality(), quality::good);
    EXPECT_EQ(entry.error(), io_error());
    EXPECT_EQ(entry.error().diagnostics().list(), nullptr);
    EXPECT_TRUE(entry.ok());
}

class ReadResult : public ::testing::Test {
protected:
    ReadResult() : result(std::vector<id>{id("a"), id("b"), id("c")}) {}
    ~ReadResult() noexcept override = default; // that of a result may throw

    read_result result;
};

TEST_F(ReadResult, HasNoValueAtFirst) {
    for (auto const& entry : result) expect_no_value(entry);
}

TEST_F(ReadResult, StoresAValueByIndex) {
    result.set(1, level);
    expect_level(result[1]);
    EXPECT_EQ(result[1].identifier(), id("b"));
    EXPECT_EQ(result[0].error(), io_error(io_errc::no_result));
    EXPECT_EQ(result[2].error(), io_error(io_errc::no_result));
}

TEST_F(ReadResult, StoresAValueByIdentifier) {
    result.set(id("c"), level);
    expect_level(result[2]);
    EXPECT_EQ(result[1].error(), io_error(io_errc::no_result));
}

TEST_F(ReadResult, StoresAValueInAnEntry) {
    result[0].set(level);
    expect_level(result[0]);
}

TEST_F(ReadResult, IgnoresAValueForAnUnknownIdentifier) {
    result.set(id("d"), level);
    result.set(id(), level);
    for (auto const& entry : result) {
        expect_no_value(entry);
        EXPECT_EQ(entry.error(), io_error(io_errc::no_result));
    }
}

TEST_F(ReadResult, StoresAValueInTheFirstOfEqualIdentifiers) {
    read_result twice(std::vector<id>{id("a"), id("a")});
    twice.set(id("a"), level);
    expect_level(twice[0]);
    EXPECT_EQ(twice[1].error(), io_error(io_errc::no_result));
    expect_no_value(twice[1]);
}

TEST_F(ReadResult, ClearsTheValueForAnError) {
    result.set(0, level);
    result.set(0, io_errc::not_found);
    expect_no_value(result[0]);
    EXPECT_EQ(result[0].error(), io_error(io_errc::not_found));
    EXPECT_EQ(result[0].identifier(), id("a"));
}

TEST_F(ReadResult, ClearsTheValueForASuccessWithoutOne) {
    result.set(0, level);
    result.set(0, io_error());
    expect_no_value(result[0]);
    EXPECT_TRUE(result[0].ok());
}

TEST_F(ReadResult, ClearsTheErrorForAValue) {
    watched_diagnostics diagnostics;
    io_error error(io_errc::not_found);
    error.diagnostics(io_error_diagnostics(diagnostics.get()));
    result.set(0, std::move(error));
    EXPECT_EQ(result[0].error().diagnostics().list(), diagnostics.get());
    diagnostics.take_calls();
    result.set(0, level);
    expect_level(result[0]);
    EXPECT_EQ(diagnostics.take_calls(), (calls{"release"}));
    EXPECT_EQ(diagnostics.others(), 0U);
}

TEST_F(ReadResult, MovesTheValueIn) {
    for (int form = 0; form < 3; ++form) {
        io_data_value data(level);
        char const* const block = test_support::block_of(*data.value().get_if<utility::string>());
        id const identifier("a");
        allocation_counter const counter;
        if (form == 0) result[0].set(std::move(data));
        if (form == 1) result.set(0, std::move(data));
        if (form == 2) result.set(identifier, std::move(data));
        EXPECT_EQ(counter.allocations(), 0U);
        EXPECT_EQ(test_support::block_of(*result[0].value().value().get_if<utility::string>()),
                  block);
    }
}

TEST_F(ReadResult, KeepsAnErrorOfTheBackendsOwnCategory) {
    class pump_category final : public io_error_category {
        char const* name() const override { return "pump"; }
        utility::string message(int) const override { return "blocked"; }
    };
    static pump_category const category;
    result.set(1, io_error(category, 12));
    EXPECT_EQ(&result[1].error().category(), &category);
    EXPECT_EQ(result[1].error().message(), "blocked");
}

TEST_F(ReadResult, KeepsValuesWhereItGrowsAndShrinks) {
    result.set(0, level);
    result.resize(9);
    expect_level(result[0]);
    expect_no_value(result[8]);
    result.resize(1);
    expect_level(result[0]);
}

TEST_F(ReadResult, DropsValuesByAssign) {
    for (unsigned int i = 0; i < 3; ++i) result.set(i, level);
    std::vector<id> const identifiers{id("x"), id("y"), id("z")};
    result.assign(identifiers);
    for (auto const& entry : result) {
        expect_no_value(entry);
        EXPECT_EQ(entry.error(), io_error(io_errc::no_result));
    }
}

TEST_F(ReadResult, CopiesValuesDeep) {
    result.set(0, level);
    read_result const copy(result);
    result.set(0, io_errc::not_found);
    expect_level(copy[0]);
}

TEST_F(ReadResult, KeepsEveryEntryUsableWhereACopyFails) {
    result.set(0, level);
    read_result const source(result);
    int const failures = test_support::count_survived_failures([&] {
        read_result target(std::vector<id>{id("x"), id("y"), id("z")});
        target.set(0, io_data_value("old", quality::good));
        try {
            target = source;
        } catch (std::bad_alloc const&) {
            for (auto const& entry : target) {
                if (entry.value().value().index() < 0) throw 0;
            }
            throw;
        }
    });
    EXPECT_GT(failures, 4);
}

TEST(ReadEntry, MadeFromNothingIsBlank) {
    read_result::result_type const entry;
    EXPECT_EQ(entry.identifier(), id());
    EXPECT_EQ(entry.error(), io_error());
    expect_no_value(entry);
}

TEST(ReadEntry, MadeFromAnIdentifierSaysNoResult) {
    read_result::result_type const entry(id("a", 1));
    EXPECT_EQ(entry.identifier(), id("a", 1));
    EXPECT_EQ(entry.error(), io_error(io_errc::no_result));
    expect_no_value(entry);
    static_assert(!std::is_convertible_v<id, read_result::result_type>);
}

TEST(ReadEntry, StandsAsIdentifierValueError) {
    read_result::result_type const entry;
    EXPECT_EQ(test_support::offset_of(entry, entry.identifier()), 0U);
    EXPECT_EQ(test_support::offset_of(entry, entry.value()), test_support::by_word(48, 64));
    EXPECT_EQ(test_support::offset_of(entry, entry.error()), test_support::by_word(112, 136));
    static_assert(sizeof(entry) == test_support::by_word(128, 160));
}

} // namespace
