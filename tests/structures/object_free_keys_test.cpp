#include <tavi/ioapi/v2/io_object.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include "member_types.hpp"
#include "reports.hpp"
#include "stored.hpp"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

// Objects with the id 0: every key is taken, and one that is absent is an error.

namespace {

using namespace tavi::ioapi::v2;
using namespace std::string_view_literals;
using structures_test::dbl;
using structures_test::holds;
using structures_test::holds_text;
using structures_test::is_blank;
using structures_test::reports;
using structures_test::succeeds;
using types = io_data_type::basic_types;

TEST(ObjectFreeKeys, HasNothingAtFirst) {
    io_object const object;
    EXPECT_TRUE(object.empty());
    EXPECT_TRUE(object.begin() == object.end());
    EXPECT_FALSE(object.has("a"));
    EXPECT_FALSE(object.has(""));
}

TEST(ObjectFreeKeys, TakesAnyKey) {
    io_object object;
    EXPECT_TRUE(succeeds([&](io_error& error) { object.set("a", 1, error); }));
    EXPECT_TRUE(object.has("a"));
    EXPECT_FALSE(object.empty());
    EXPECT_EQ(object.get_type("a"), io_data_type::scalar(types::i32));
    EXPECT_TRUE(holds(object.get("a"), 1));
}

TEST(ObjectFreeKeys, DoesNotFindWhatIsAbsent) {
    io_object const object;
    io_value value(5);
    EXPECT_TRUE(
        reports(io_errc::not_found, [&](io_error& error) { value = object.get("a", error); }));
    EXPECT_TRUE(is_blank(value));
}

TEST(ObjectFreeKeys, RemovesOnce) {
    io_object object;
    object.set("a", 1);
    EXPECT_TRUE(succeeds([&](io_error& error) { object.remove("a", error); }));
    EXPECT_FALSE(object.has("a"));
    EXPECT_TRUE(reports(io_errc::not_found, [&](io_error& error) { object.remove("a", error); }));
}

TEST(ObjectFreeKeys, RemovesTheKeyAlone) {
    io_object object;
    for (auto const* const key : {"a", "aa", "b"}) object.set(key, 1);
    EXPECT_TRUE(succeeds([&](io_error& error) { object.remove("aa", error); }));
    EXPECT_TRUE(object.has("a"));
    EXPECT_FALSE(object.has("aa"));
    EXPECT_TRUE(object.has("b"));
}

TEST(ObjectFreeKeys, GivesTheAllZeroTypeOfWhatIsAbsent) {
    EXPECT_EQ(io_object().get_type("a"), io_data_type());
}

TEST(ObjectFreeKeys, GivesTheTypeOfTheValueThatIsSet) {
    io_data_type const odd{static_cast<types>(99), 7, 3, 5};
    io_object object;
    object.set("a", io_value(odd, 1));
    EXPECT_EQ(object.get_type("a"), odd);
}

TEST(ObjectFreeKeys, ReplacesAValueByOneOfAnotherType) {
    io_object object;
    object.set("a", "a text that is gone afterwards");
    EXPECT_TRUE(succeeds([&](io_error& error) { object.set("a", 5, error); }));
    EXPECT_TRUE(holds(object.get("a"), 5));
    EXPECT_EQ(std::distance(object.begin(), object.end()), 1);
}

TEST(ObjectFreeKeys, TakesAnyValueAsItIs) {
    io_object object;
    object.set("char", 'A');
    object.set("long", 5L);
    object.set("none", io_value());
    object.set("list", utility::array<char>{'x'});
    EXPECT_TRUE(holds(object.get("char"), 'A'));
    EXPECT_TRUE(holds(object.get("long"), 5L));
    EXPECT_TRUE(holds(object.get("list"), (utility::array<char>{'x'})));
    io_value value(5);
    EXPECT_TRUE(succeeds([&](io_error& error) { value = object.get("none", error); }));
    EXPECT_TRUE(is_blank(value));
    EXPECT_TRUE(object.has("none")) << "the empty value is a value";
}

TEST(ObjectFreeKeys, AreFoundByExactlyTheirBytes) {
    io_object object;
    std::string_view const keys[] = {""sv, "a"sv, "a\0"sv, "a\0b"sv, "A"sv, "\xFF"sv};
    for (int i = 0; i < 6; ++i) object.set(keys[i], i);
    for (int i = 0; i < 6; ++i) EXPECT_TRUE(holds(object.get(keys[i]), i)) << i;
    EXPECT_FALSE(object.has("a\0\0"sv));
    EXPECT_FALSE(object.has("\x7F"sv));
}

TEST(ObjectFreeKeys, AreFoundByAViewThatIsNotTerminated) {
    char const buffer[] = {'k', 'e', 'y', 's', 'X'};
    io_object object;
    object.set(utility::string_view(buffer, 3), 1);
    EXPECT_TRUE(object.has("key"));
    EXPECT_TRUE(object.has(utility::string_view(buffer, 3)));
    EXPECT_FALSE(object.has(utility::string_view(buffer, 4)));
    EXPECT_TRUE(
        succeeds([&](io_error& error) { object.remove(utility::string_view(buffer, 3), error); }));
}

TEST(ObjectFreeKeys, TakeTheNullViewAsTheEmptyKey) {
    io_object object;
    object.set(utility::string_view(), 1);
    EXPECT_TRUE(object.has(""));
    EXPECT_TRUE(object.has(utility::string_view()));
}

TEST(ObjectFreeKeys, AreCopied) {
    io_object object;
    std::string key = "a key that is longer than small buffers are";
    object.set(key, 1);
    key = "another key that is longer than small buffers are";
    EXPECT_TRUE(object.has("a key that is longer than small buffers are"));
    EXPECT_FALSE(object.has(key));
}

TEST(ObjectFreeKeys, MayBeTheTextOfTheValueItself) {
    io_object object;
    io_value value("a text that is its own key");
    utility::string_view const key = *value.get_if<utility::string>();
    EXPECT_TRUE(succeeds([&](io_error& error) { object.set(key, std::move(value), error); }));
    EXPECT_TRUE(holds_text(object.get("a text that is its own key"), "a text that is its own key"));
}

TEST(ObjectFreeKeys, DoNotCountTheDeclaredOnesThatAreNotSet) {
    io_object object(0, {{"a", dbl}});
    EXPECT_FALSE(object.has("a"));
    EXPECT_EQ(object.get_type("a"), io_data_type());
    EXPECT_TRUE(
        reports(io_errc::not_found, [&](io_error& error) { (void)object.get("a", error); }));
    EXPECT_TRUE(reports(io_errc::not_found, [&](io_error& error) { object.remove("a", error); }));
}

TEST(ObjectFreeKeys, ConvertADeclaredOneAndKeepOthers) {
    io_object object(0, {{"a", dbl}});
    EXPECT_TRUE(succeeds([&](io_error& error) { object.set("a", 5, error); }));
    EXPECT_TRUE(succeeds([&](io_error& error) { object.set("b", 5, error); }));
    EXPECT_TRUE(holds(object.get("a"), 5.0));
    EXPECT_TRUE(holds(object.get("b"), 5));
    EXPECT_EQ(object.get_type("a"), dbl);
}

TEST(ObjectFreeKeys, RefuseADeclaredOneThatDoesNotConvert) {
    io_object object(0, {{"a", dbl}});
    EXPECT_TRUE(
        reports(io_errc::incompatible_type, [&](io_error& error) { object.set("a", "x", error); }));
    EXPECT_TRUE(object.empty());
}

TEST(ObjectFreeKeys, FollowTheIdAloneWhateverTheKind) {
    io_object object(io_data_type{types::u8, 0, 2, 9}, io_structure_type());
    EXPECT_TRUE(succeeds([&](io_error& error) { object.set("a", 1, error); }));
    EXPECT_TRUE(object.has("a"));
}

TEST(ObjectFreeKeys, RaiseWhatTheOtherFormReports) {
    io_object const object;
    try {
        (void)object.get("a");
        FAIL() << "nothing raised";
    } catch (io_exception const& exception) {
        EXPECT_EQ(exception.code(), static_cast<int>(io_errc::not_found));
    }
}

TEST(ObjectFreeKeys, MayHoldTheObjectItselfAsACopy) {
    io_object object;
    object.set("a", 1);
    object.set("self", io_value(object));
    io_value const inner = object.get("self");
    ASSERT_NE(inner.get_if<io_object>(), nullptr);
    EXPECT_TRUE(inner.get_if<io_object>()->has("a"));
    EXPECT_FALSE(inner.get_if<io_object>()->has("self"));
}

} // namespace
