#include <tavi/ioapi/v2/io_object.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include "member_types.hpp"
#include "reports.hpp"
#include "stored.hpp"

#include <gtest/gtest.h>

#include <string_view>

// Objects of a registered structure: only what the structure declares may be touched.

namespace {

using namespace tavi::ioapi::v2;
using namespace std::string_view_literals;
using structures_test::dbl;
using structures_test::holds;
using structures_test::holds_text;
using structures_test::is_blank;
using structures_test::reports;
using structures_test::succeeds;
using structures_test::text;
using types = io_data_type::basic_types;

io_object make_pump() {
    return io_object(7, {{"a", dbl}, {"label", text}});
}

TEST(ObjectKnownKeys, HasWhatIsDeclaredBeforeItIsSet) {
    EXPECT_TRUE(make_pump().has("a"));
}

TEST(ObjectKnownKeys, HasWhatIsDeclaredAfterItIsSetAndRemoved) {
    auto pump = make_pump();
    pump.set("a", 1.0);
    EXPECT_TRUE(pump.has("a"));
    EXPECT_TRUE(succeeds([&](io_error& error) { pump.remove("a", error); }));
    EXPECT_TRUE(pump.has("a"));
}

TEST(ObjectKnownKeys, DoesNotHaveWhatIsNotDeclared) {
    auto const pump = make_pump();
    for (std::string_view const key : {"b"sv, "A"sv, "aa"sv, ""sv, "a\0"sv}) {
        EXPECT_FALSE(pump.has(key)) << key;
    }
}

TEST(ObjectKnownKeys, GivesTheEmptyValueForADeclaredMemberThatIsNotSet) {
    auto const pump = make_pump();
    io_value value(5);
    EXPECT_TRUE(succeeds([&](io_error& error) { value = pump.get("a", error); }));
    EXPECT_TRUE(is_blank(value));
}

TEST(ObjectKnownKeys, GivesWhatIsSet) {
    auto pump = make_pump();
    EXPECT_TRUE(succeeds([&](io_error& error) { pump.set("a", 1.5, error); }));
    io_value value;
    EXPECT_TRUE(succeeds([&](io_error& error) { value = pump.get("a", error); }));
    EXPECT_TRUE(holds(value, 1.5));
}

TEST(ObjectKnownKeys, RefusesToGiveWhatIsNotDeclared) {
    auto const pump = make_pump();
    io_value value(5);
    EXPECT_TRUE(
        reports(io_errc::invalid_property, [&](io_error& error) { value = pump.get("b", error); }));
    EXPECT_TRUE(is_blank(value));
}

TEST(ObjectKnownKeys, RefusesToSetWhatIsNotDeclared) {
    auto pump = make_pump();
    EXPECT_TRUE(
        reports(io_errc::invalid_property, [&](io_error& error) { pump.set("b", 5, error); }));
    EXPECT_TRUE(pump.empty());
}

TEST(ObjectKnownKeys, RefusesAnUndeclaredKeyBeforeItLooksAtTheValue) {
    auto pump = make_pump();
    EXPECT_TRUE(reports(io_errc::invalid_property,
                        [&](io_error& error) { pump.set("b", io_value(), error); }));
}

TEST(ObjectKnownKeys, RefusesToRemoveWhatIsNotDeclared) {
    auto pump = make_pump();
    pump.set("a", 1.5);
    EXPECT_TRUE(
        reports(io_errc::invalid_property, [&](io_error& error) { pump.remove("b", error); }));
    EXPECT_TRUE(holds(pump.get("a"), 1.5));
}

TEST(ObjectKnownKeys, RemovesWhatIsSet) {
    auto pump = make_pump();
    pump.set("a", 1.5);
    pump.set("label", "x");
    EXPECT_TRUE(succeeds([&](io_error& error) { pump.remove("a", error); }));
    EXPECT_TRUE(is_blank(pump.get("a")));
    EXPECT_TRUE(holds_text(pump.get("label"), "x"));
}

TEST(ObjectKnownKeys, RemovesWhatIsNotSetWithSuccessEachTime) {
    auto pump = make_pump();
    EXPECT_TRUE(succeeds([&](io_error& error) { pump.remove("a", error); }));
    EXPECT_TRUE(succeeds([&](io_error& error) { pump.remove("a", error); }));
    EXPECT_TRUE(pump.empty());
}

TEST(ObjectKnownKeys, GivesTheDeclaredTypeWhetherSetOrNot) {
    auto pump = make_pump();
    EXPECT_EQ(pump.get_type("a"), dbl);
    pump.set("a", 5);
    EXPECT_EQ(pump.get_type("a"), dbl);
}

TEST(ObjectKnownKeys, GivesTheDeclaredTypeWhereTheStoredOneDiffers) {
    io_data_type const reals{types::dbl, 0, 1, 4};
    io_object object(7, {{"a", reals}});
    object.set("a", utility::array<int>{1});
    EXPECT_EQ(object.get_type("a"), reals);
    EXPECT_EQ(object.get("a").data_type(), io_data_type::array_of(types::dbl));
}

TEST(ObjectKnownKeys, GivesTheAllZeroTypeOfWhatIsNotDeclared) {
    EXPECT_EQ(make_pump().get_type("b"), io_data_type());
}

TEST(ObjectKnownKeys, RefusesEveryKeyWithoutMembers) {
    io_object object(io_data_type::object(7), io_structure_type());
    EXPECT_FALSE(object.has("a"));
    EXPECT_TRUE(
        reports(io_errc::invalid_property, [&](io_error& error) { object.set("a", 1, error); }));
    EXPECT_TRUE(
        reports(io_errc::invalid_property, [&](io_error& error) { object.set("", 1, error); }));
    EXPECT_TRUE(
        reports(io_errc::invalid_property, [&](io_error& error) { (void)object.get("a", error); }));
    EXPECT_TRUE(
        reports(io_errc::invalid_property, [&](io_error& error) { object.remove("a", error); }));
}

TEST(ObjectKnownKeys, DependsOnTheIdAloneAndNotOnTheKind) {
    io_object object(io_data_type{types::i32, 1, 2, 3}, {{"a", dbl}});
    EXPECT_TRUE(object.has("a"));
    EXPECT_TRUE(
        reports(io_errc::invalid_property, [&](io_error& error) { object.set("b", 1, error); }));
}

TEST(ObjectKnownKeys, HoldsForAnIdWithHighBitsAlone) {
    io_object object(0x8000000000000000ULL, io_structure_type());
    EXPECT_TRUE(
        reports(io_errc::invalid_property, [&](io_error& error) { object.set("a", 1, error); }));
}

TEST(ObjectKnownKeys, TakesADeclaredEmptyKey) {
    io_object object(7, {{"", dbl}});
    EXPECT_TRUE(object.has(utility::string_view()));
    EXPECT_TRUE(succeeds([&](io_error& error) { object.set("", 1.5, error); }));
    EXPECT_TRUE(holds(object.get(utility::string_view()), 1.5));
}

TEST(ObjectKnownKeys, ChangesWithTheObjectAssigned) {
    auto object = make_pump();
    object.set("a", 1.5);
    object = io_object();
    EXPECT_FALSE(object.has("a"));
    EXPECT_TRUE(succeeds([&](io_error& error) { object.set("b", 5, error); }));
    object = make_pump();
    EXPECT_TRUE(
        reports(io_errc::invalid_property, [&](io_error& error) { object.set("b", 5, error); }));
}

TEST(ObjectKnownKeys, RaisesWhatTheOtherFormReports) {
    auto pump = make_pump();
    try {
        pump.set("b", 5);
        FAIL() << "nothing raised";
    } catch (io_exception const& exception) {
        EXPECT_EQ(exception.code(), static_cast<int>(io_errc::invalid_property));
    }
    EXPECT_THROW((void)pump.get("b"), io_exception);
    EXPECT_NO_THROW((void)pump.get("a"));
}

} // namespace
