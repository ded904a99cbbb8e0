#include <tavi/ioapi/v2/read_result.hpp>
#include <tavi/ioapi/v2/write_result.hpp>

#include "support/diagnostics.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace tavi::ioapi::v2;
using id = plc_identifier;
using test_support::logged_diagnostics;
using test_support::watched_diagnostics;
using calls = std::vector<std::string>;

template <class Result>
class ResultDiagnostics : public ::testing::Test {
protected:
    ResultDiagnostics() : result(std::vector<id>{id("a"), id("b"), id("c")}) {}
    ~ResultDiagnostics() noexcept override = default; // that of a result may throw

    io_error detailed() {
        io_error error(io_errc::not_found);
        error.diagnostics(io_error_diagnostics(diagnostics.get()));
        diagnostics.take_calls();
        return error;
    }

    watched_diagnostics diagnostics;
    Result result;
};

using result_classes = ::testing::Types<read_result, write_result>;
TYPED_TEST_SUITE(ResultDiagnostics, result_classes);

TYPED_TEST(ResultDiagnostics, AreMovedIn) {
    id const identifier("a");
    for (int form = 0; form < 3; ++form) {
        this->result.set(0, io_error());
        auto error = this->detailed();
        if (form == 0) this->result[0].set(std::move(error));
        if (form == 1) this->result.set(0, std::move(error));
        if (form == 2) this->result.set(identifier, std::move(error));
        EXPECT_EQ(this->diagnostics.take_calls(), calls{});
        EXPECT_EQ(this->result[0].error().diagnostics().list(), this->diagnostics.get());
        EXPECT_EQ(this->result[0].error(), io_error(io_errc::not_found));
    }
}

TYPED_TEST(ResultDiagnostics, AreReleasedWhereAnErrorReplacesThem) {
    this->result.set(0, this->detailed());
    this->result.set(0, io_errc::no_result);
    EXPECT_EQ(this->diagnostics.take_calls(), (calls{"release"}));
    EXPECT_EQ(this->result[0].error().diagnostics().list(), nullptr);
}

TYPED_TEST(ResultDiagnostics, AreReleasedWhereASuccessReplacesThem) {
    this->result.set(0, this->detailed());
    this->result.set(id("a"), io_error());
    EXPECT_EQ(this->diagnostics.others(), 0U);
    EXPECT_EQ(this->result[0].error(), io_error());
}

TYPED_TEST(ResultDiagnostics, AreReleasedWithAnErrorThatIsIgnored) {
    this->result.set(id("unknown"), this->detailed());
    EXPECT_EQ(this->diagnostics.others(), 0U);
}

TYPED_TEST(ResultDiagnostics, AreMovedWhereTheResultGrows) {
    this->result.set(0, this->detailed());
    this->result.resize(9);
    EXPECT_EQ(this->diagnostics.take_calls(), calls{});
    EXPECT_EQ(this->result[0].error().diagnostics().list(), this->diagnostics.get());
}

TYPED_TEST(ResultDiagnostics, AreReleasedWhereTheirEntryIsDropped) {
    this->result.set(2, this->detailed());
    this->result.resize(2);
    EXPECT_EQ(this->diagnostics.take_calls(), (calls{"release"}));
}

TYPED_TEST(ResultDiagnostics, AreReleasedByAssign) {
    std::vector<id> const same_size{id("x"), id("y"), id("z")};
    this->result.set(2, this->detailed());
    this->result.assign(same_size);
    EXPECT_EQ(this->diagnostics.others(), 0U);
    EXPECT_EQ(this->result[2].error().diagnostics().list(), nullptr);
    std::vector<id> const larger(4);
    this->result.set(2, this->detailed());
    this->result.assign(larger);
    EXPECT_EQ(this->diagnostics.others(), 0U);
}

TYPED_TEST(ResultDiagnostics, AreSharedByACopy) {
    this->result.set(1, this->detailed());
    {
        TypeParam const copy(this->result);
        EXPECT_EQ(copy[1].error().diagnostics().list(), this->diagnostics.get());
        EXPECT_EQ(this->diagnostics.others(), 2U);
    }
    EXPECT_EQ(this->diagnostics.others(), 1U);
}

TYPED_TEST(ResultDiagnostics, AreReleasedFromTheLastEntryToTheFirst) {
    auto const log = std::make_shared<calls>();
    auto const store = [&](unsigned int index, char const* label) {
        auto* const own = new logged_diagnostics(log, label);
        io_error error(io_errc::not_found);
        error.diagnostics(io_error_diagnostics(own));
        own->release();
        this->result.set(index, std::move(error));
    };
    store(0, "a ");
    store(1, "b ");
    store(2, "c ");
    log->clear();
    this->result.resize(1);
    EXPECT_EQ(*log, (calls{"c release", "c destroy", "b release", "b destroy"}));
    store(0, "d ");
    this->result.resize(2);
    store(1, "e ");
    log->clear();
    { TypeParam const gone(std::move(this->result)); }
    EXPECT_EQ(*log, (calls{"e release", "e destroy", "d release", "d destroy"}));
}

} // namespace
