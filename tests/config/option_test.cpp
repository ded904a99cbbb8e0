#include <tavi/ioapi/v2/config/option.hpp>

#include "samples.hpp"
#include "support/alternatives.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

// What an option is made of, and what it tells of it.

namespace {

using namespace tavi::ioapi::v2;
using namespace std::string_view_literals;
using config::option;
using config_test::is_blank;
using config_test::long_text;
using types = io_data_type::basic_types;

TEST(Option, OfABasicTypeIsRequiredAndHasNoDefault) {
    for (unsigned int number = 0; number <= 14; ++number) {
        option const made("key", "name", "text", types{number});
        EXPECT_EQ(made.value_type(), types{number});
        EXPECT_FALSE(made.optional()) << number;
        EXPECT_FALSE(made.has_default_value()) << number;
        EXPECT_TRUE(is_blank(made.default_value())) << number;
        EXPECT_TRUE(made.options().empty()) << number;
    }
}

TEST(Option, KeepsABasicTypeThatNobodyKnows) {
    EXPECT_EQ(option("", "", "", types{0xFFFFFFFFU}).value_type(), types{0xFFFFFFFFU});
}

template <class T>
class OptionDefault : public ::testing::Test {};
TYPED_TEST_SUITE(OptionDefault, test_support::every_alternative, test_support::alternative_names);

TYPED_TEST(OptionDefault, GivesItsTypeAndMakesTheOptionOptional) {
    constexpr bool is_empty = std::is_same_v<TypeParam, std::nullptr_t>;
    io_value value;
    if constexpr (!is_empty) value = io_value(TypeParam());
    option const made("key", "name", "text", value);
    EXPECT_EQ(made.value_type(), value.data_type().basic_type);
    EXPECT_TRUE(made.optional());
    EXPECT_EQ(made.has_default_value(), !is_empty);
    EXPECT_EQ(made.default_value().index(), value.index());
    EXPECT_EQ(made.default_value().data_type(), value.data_type());
}

TEST(Option, OfAnIntegerHasThatDefault) {
    option const made("key", "name", "text", io_value(42));
    EXPECT_EQ(made.value_type(), types::i32);
    EXPECT_TRUE(made.optional());
    EXPECT_TRUE(made.has_default_value());
    EXPECT_TRUE(identical(made.default_value(), io_value(42)));
}

TEST(Option, OfAnEmptyValueIsOptionalWithoutADefault) {
    option const made("key", "name", "text", io_value());
    EXPECT_EQ(made.value_type(), types::empty);
    EXPECT_TRUE(made.optional());
    EXPECT_FALSE(made.has_default_value());
    EXPECT_TRUE(is_blank(made.default_value()));
}

TEST(Option, HasADefaultWhereAnyFieldOfItsTypeIsNotZero) {
    for (io_data_type const& type :
         {io_data_type{types::i32, 0, 0, 0}, io_data_type{types::empty, 1, 0, 0},
          io_data_type{types::empty, 1ULL << 32, 0, 0}, io_data_type{types::empty, 0, 1, 0},
          io_data_type{types::empty, 0, 0, 1}, io_data_type{types{99}, 0, 0, 0}}) {
        option const made("key", "", "", io_value(type, nullptr));
        EXPECT_TRUE(made.has_default_value()) << type;
        EXPECT_EQ(made.value_type(), type.basic_type) << type;
        EXPECT_TRUE(made.optional()) << type;
    }
}

TEST(Option, HasNoDefaultWhereTheTypeSaysNothingOfThePayload) {
    option const made("key", "", "", io_value(io_data_type(), 42));
    EXPECT_FALSE(made.has_default_value());
    EXPECT_EQ(made.value_type(), types::empty);
    ASSERT_NE(made.default_value().get_if<int>(), nullptr);
    EXPECT_EQ(*made.default_value().get_if<int>(), 42);
}

TEST(Option, TakesTheTypeOfTheElementsOfAnArray) {
    option const made("key", "", "", io_value(utility::array<double>{1.5}));
    EXPECT_EQ(made.value_type(), types::dbl);
    EXPECT_TRUE(made.has_default_value());
}

TEST(Option, TakesOverTheBlockOfItsDefault) {
    io_value value(utility::array<int>{1, 2, 3});
    auto const* const block = value.get_if<utility::array<int>>()->data();
    option const made("key", "", "", std::move(value));
    EXPECT_EQ(made.default_value().get_if<utility::array<int>>()->data(), block);
}

TEST(Option, KeepsAnyTexts) {
    for (std::string_view const text :
         {""sv, std::string_view(), "a"sv, "a\0b"sv, "\xFF\x80"sv, std::string_view(long_text)}) {
        option const required(text, "n", "d", types::i32);
        EXPECT_EQ(required.key(), text);
        EXPECT_EQ(required.display_name(), "n");
        EXPECT_EQ(required.description(), "d");
        option const optional("k", text, text, io_value(1));
        EXPECT_EQ(optional.key(), "k");
        EXPECT_EQ(optional.display_name(), text);
        EXPECT_EQ(optional.description(), text);
    }
    option const made("k", "n", long_text, types::i32);
    EXPECT_EQ(made.description(), long_text);
}

TEST(Option, CopiesItsTexts) {
    auto key = std::make_unique<std::string>("key");
    auto name = std::make_unique<std::string>("name");
    auto text = std::make_unique<std::string>(long_text);
    option const required(*key, *name, *text, types::i32);
    option const optional(*key, *name, *text, io_value(1));
    for (auto* const source : {&key, &name, &text}) {
        (*source)->assign((*source)->size(), '#');
        source->reset();
    }
    for (option const* const made : {&required, &optional}) {
        EXPECT_EQ(made->key(), "key");
        EXPECT_EQ(made->display_name(), "name");
        EXPECT_EQ(made->description(), long_text);
    }
}

TEST(Option, GivesViewsOfItsOwnTexts) {
    option made("key", "name", "text", types::i32);
    auto const* const key = made.key().data();
    auto const* const name = made.display_name().data();
    auto const* const description = made.description().data();
    option::value_option const list[] = {{"one", "", 1}};
    made.options(list);
    EXPECT_EQ(made.key().data(), key);
    EXPECT_EQ(made.display_name().data(), name);
    EXPECT_EQ(made.description().data(), description);
}

TEST(Option, AsksForNoMemoryWhenItIsRead) {
    option const made(long_text, long_text, long_text, io_value(long_text));
    test_support::allocation_counter const counter;
    (void)made.key();
    (void)made.display_name();
    (void)made.description();
    (void)made.value_type();
    (void)made.has_default_value();
    (void)made.default_value();
    (void)made.optional();
    (void)made.options();
    EXPECT_EQ(counter.allocations(), 0U);
}

TEST(Option, IsMovedByContainersThatGrow) {
    std::vector<option> list;
    for (int i = 0; i < 4; ++i) list.push_back(option(long_text, "", "", types::i32));
    test_support::allocation_counter const counter;
    list.reserve(list.capacity() + 1);
    EXPECT_EQ(counter.allocations(), 1U);
    EXPECT_EQ(list.back().key(), long_text);
}

} // namespace
