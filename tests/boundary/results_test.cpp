#include "loaded_module.hpp"
#include "support/diagnostics.hpp"

#include <utility>
#include <vector>

namespace {

using namespace tavi::ioapi::v2;
using id = plc_identifier;
using quality = io_data_value::value_quality;

class ResultAcross : public boundary::WithModule {
protected:
    static constexpr unsigned int values = detail::alternatives::size;

    // One entry for each alternative and six for errors.
    static read_result asked() {
        std::vector<id> identifiers;
        for (unsigned int i = 0; i < values + 6; ++i) identifiers.emplace_back("variable", i);
        return read_result(identifiers);
    }
};

TEST_F(ResultAcross, IsFilledWithValuesOfEveryAlternative) {
    read_result result = asked();
    backend->read(result);
    for (unsigned int i = 0; i < values; ++i) {
        auto const& entry = result[i];
        EXPECT_TRUE(entry.ok()) << i;
        EXPECT_EQ(entry.identifier(), id("variable", i));
        EXPECT_EQ(entry.value().value().index(), static_cast<int>(i));
        EXPECT_EQ(entry.value().timestamp().ticks(), 1000 + static_cast<long long>(i));
        EXPECT_EQ(entry.value().quality(), quality::good);
    }
    EXPECT_EQ(*result[15].value().value().get_if<utility::string>(), "level of the tank");
    EXPECT_EQ(*result[4].value().value().get_if<int>(), 100);
}

TEST_F(ResultAcross, IsFilledWithErrorsOfEveryKind) {
    read_result result = asked();
    backend->read(result);
    for (unsigned int i = values; i < result.size(); ++i) {
        io_error const& error = result[i].error();
        EXPECT_TRUE(result[i].value().empty());
        if (i % 3 == 2) {
            EXPECT_EQ(error, make_io_error(io_errc::not_supported));
        } else {
            EXPECT_EQ(&error.category(), &backend->category());
            EXPECT_EQ(error.code(), i % 3 == 0 ? 12 : 13);
            ASSERT_NE(error.diagnostics().list(), nullptr);
            EXPECT_EQ(*error.diagnostics().list()->get("device_code").get_if<int>(),
                      100 * error.code());
        }
    }
    EXPECT_EQ(backend->living_diagnostics(), 4);
}

TEST_F(ResultAcross, IsFilledOverWhatTheHostHasStored) {
    test_support::watched_diagnostics const diagnostics;
    {
        read_result result = asked();
        for (unsigned int i = 0; i < result.size(); ++i) {
            io_error error(io_errc::todo);
            error.diagnostics(io_error_diagnostics(diagnostics.get()));
            result.set(i, std::move(error));
        }
        EXPECT_EQ(diagnostics.others(), result.size());
        backend->read(result);
        EXPECT_EQ(diagnostics.others(), 0U);
    }
}

TEST_F(ResultAcross, IsCopiedResizedAndClearedByTheHost) {
    read_result result = asked();
    backend->read(result);
    read_result const copy(result);
    result.resize(values + 1);
    result.assign({});
    EXPECT_TRUE(result.empty());
    EXPECT_EQ(*copy[4].value().value().get_if<int>(), 100);
    EXPECT_EQ(backend->living_diagnostics(), 4);
}

TEST_F(ResultAcross, LeavesUntouchedEntriesWithoutAResult) {
    read_result result;
    backend->read(result);
    EXPECT_TRUE(result.empty());
}

TEST_F(ResultAcross, TellsTheOutcomeOfAWrite) {
    std::vector<id> const identifiers{id("a"), id(), id("b", 1)};
    write_result result(identifiers);
    EXPECT_EQ(result[0].error(), io_error(io_errc::no_result));
    backend->write(result);
    EXPECT_TRUE(result[0].ok());
    EXPECT_EQ(result[1].error(), io_error(backend->category(), 12));
    EXPECT_TRUE(result[2].ok());
    EXPECT_EQ(backend->living_diagnostics(), 1);
}

} // namespace
