#include "sample_payloads.hpp"
#include "support/alternatives.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace values_test {
namespace {

enum plain_enumeration { plain_enumerator };
enum class scoped_enumeration { enumerator };

template <class... T>
constexpr bool none_makes_a_value = !(std::is_constructible_v<io_value, T> || ...);
template <class... T>
constexpr bool each_converts_to_a_value = (std::is_convertible_v<T, io_value> && ...);

TEST(ValueConstructors, RefuseNull) {
    EXPECT_FALSE((std::is_constructible_v<io_value, std::nullptr_t>));
    EXPECT_FALSE((std::is_constructible_v<io_value, std::nullptr_t, unsigned int>));
    EXPECT_FALSE((std::is_constructible_v<io_value, std::nullptr_t, int>));
}

TEST(ValueConstructors, RefuseCharactersThatAreNoNumbers) {
    EXPECT_TRUE((none_makes_a_value<wchar_t, char16_t, char32_t, char8_t>));
    EXPECT_TRUE((none_makes_a_value<wchar_t&, char16_t const&, char32_t&, char8_t const&>));
}

TEST(ValueConstructors, RefuseLongDouble) {
    EXPECT_TRUE((none_makes_a_value<long double, long double const&>));
}

TEST(ValueConstructors, RefuseOtherPointers) {
    EXPECT_TRUE((none_makes_a_value<void*, void const*, int*, bool const*, unsigned char const*,
                                    signed char*, io_value*, io_value const*>));
    EXPECT_TRUE((none_makes_a_value<void (*)(), char const**, char volatile*, int const[3]>));
}

TEST(ValueConstructors, RefuseTextsOfOtherCharacters) {
    EXPECT_TRUE((none_makes_a_value<wchar_t const*, char8_t const*, char16_t*, char32_t const*>));
    EXPECT_TRUE((none_makes_a_value<decltype(L"a"), decltype(u8"a"), std::wstring>));
}

TEST(ValueConstructors, RefuseEnumerationsAndContainers) {
    EXPECT_TRUE((none_makes_a_value<plain_enumeration, scoped_enumeration, types>));
    EXPECT_TRUE((none_makes_a_value<std::vector<int>, std::optional<int>, io_data_type>));
}

TEST(ValueConstructors, TakeEveryTextImplicitly) {
    EXPECT_TRUE((each_converts_to_a_value<char const*, char*, char const(&)[4], char(&)[4],
                                          std::string, std::string const&, std::string_view,
                                          utility::string, utility::string_view>));
}

TEST(ValueConstructors, TakeAStatedTypeOnlyExplicitly) {
    EXPECT_TRUE((std::is_constructible_v<io_value, io_data_type, int>));
    EXPECT_FALSE((std::is_convertible_v<io_data_type, io_value>));
    EXPECT_FALSE((std::is_constructible_v<io_value, io_data_type, long double>));
}

template <class T>
class ValueConstructor : public ::testing::Test {};
TYPED_TEST_SUITE(ValueConstructor,
                 test_support::every_alternative,
                 test_support::alternative_names);

TYPED_TEST(ValueConstructor, TakesEachAlternativeImplicitly) {
    if constexpr (!std::is_same_v<TypeParam, std::nullptr_t>) {
        EXPECT_TRUE((each_converts_to_a_value<TypeParam, TypeParam&, TypeParam const&>));
    }
}

TEST(ValueTraits, DestructionAndMovesMayRaise) {
    EXPECT_FALSE(std::is_nothrow_destructible_v<io_value>);
    EXPECT_FALSE(std::is_nothrow_move_constructible_v<io_value>);
    EXPECT_FALSE(std::is_nothrow_move_assignable_v<io_value>);
    EXPECT_FALSE(std::is_nothrow_destructible_v<array<io_value>>);
}

TEST(ValueTraits, ArraysOfAllElseAreDestroyedWithoutRaising) {
    EXPECT_TRUE(std::is_nothrow_destructible_v<array<int>>);
    EXPECT_TRUE(std::is_nothrow_destructible_v<array<utility::string>>);
    EXPECT_TRUE(std::is_nothrow_destructible_v<array<io_object>>);
}

TEST(ValueTraits, DefaultArgumentIsTheEmptyValue) {
    auto const index_of_default = [](io_value const& value = {}) { return value.index(); };
    EXPECT_EQ(index_of_default(), 0);
}

} // namespace
} // namespace values_test
