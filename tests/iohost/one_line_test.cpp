#include <gtest/gtest.h>
#include <iohost/one_line.hpp>

#include <string>

namespace {

namespace v2 = tavi::ioapi::v2;
using iohost::one_line;
using v2::io_object;
using v2::io_value;
using v2::utility::array;

TEST(one_line, of_a_number_or_a_text_is_its_text) {
    EXPECT_EQ(one_line(2.5), "2.5");
    EXPECT_EQ(one_line(true), "true");
    EXPECT_EQ(one_line("Pump \"7\""), "Pump \"7\"");
    EXPECT_EQ(one_line("a\nb"), "a\\x0ab");
    EXPECT_EQ(one_line(io_value()), "");
}

TEST(one_line, of_an_array_is_its_elements) {
    EXPECT_EQ(one_line(array<int>{1, -2}), "[1, -2]");
    EXPECT_EQ(one_line(array<float>{1.5F}), "[1.5]");
    EXPECT_EQ(one_line(array<bool>{true, false}), "[true, false]");
    EXPECT_EQ(one_line(array<int>()), "[]");
}

TEST(one_line, of_characters_is_their_numbers) {
    EXPECT_EQ(one_line(array<char>{'A', '\xC8'}), "[65, 200]");
    EXPECT_EQ(one_line(array<char>()), "[]");
}

TEST(one_line, texts_within_are_quoted) {
    EXPECT_EQ(one_line(array<v2::utility::string>{"a, b", "c\"d\\e", "f\ng", ""}),
              R"(["a, b", "c\"d\\e", "f\x0ag", ""])");
}

TEST(one_line, of_an_object_is_what_is_set_by_key) {
    io_object object;
    EXPECT_EQ(one_line(object), "{}");
    object.set("name", "north");
    object.set("levels", array<double>{2.0, 2.5});
    EXPECT_EQ(one_line(object), R"({levels: [2, 2.5], name: "north"})");
}

TEST(one_line, nests) {
    io_object inner;
    inner.set("a\nb", 1);
    io_object outer;
    outer.set("inner", inner);
    outer.set("nothing", io_value());
    auto const values = array<io_value>::of(io_value(), array<int>{1}, outer, "x");
    EXPECT_EQ(one_line(values), R"([empty, [1], {inner: {a\x0ab: 1}, nothing: empty}, "x"])");
    EXPECT_EQ(one_line(array<io_object>{inner, io_object()}), R"([{a\x0ab: 1}, {}])");
}

} // namespace
