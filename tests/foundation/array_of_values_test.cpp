#include <tavi/ioapi/v2/io_value.hpp>
#include <tavi/ioapi/v2/utility/array.hpp>

#include "support/allocations.hpp"
#include "support/raw_text.hpp"

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

namespace {

using namespace tavi::ioapi::v2;
using test_support::block_of;
using utility::array;
using values = array<io_value>;

// {{1, "level"}, 2}
values nested() {
    return values::of(values::of(1, "level"), 2);
}

values const& inner_of(values const& outer) {
    return *outer[0].get_if<values>();
}

TEST(ArrayOfValues, HasNoListConstructor) {
    static_assert(!std::is_constructible_v<values, io_value>);
    static_assert(!std::is_constructible_v<values, io_value, io_value>);
    static_assert(!std::is_convertible_v<std::initializer_list<io_value>, values>);
    static_assert(std::is_convertible_v<std::initializer_list<int>, array<int>>);
}

TEST(ArrayOfValues, CopiesItselfWithBraces) {
    values const outer = nested();
    values const copy{outer}; // not an array that holds it
    EXPECT_EQ(copy.size(), 2U);
}

TEST(ArrayOfValues, IsCopiedDeepThroughAllLevels) {
    values const outer = nested();
    values const copy(outer);
    EXPECT_NE(inner_of(copy).data(), inner_of(outer).data());
    EXPECT_NE(block_of(*inner_of(copy)[1].get_if<utility::string>()),
              block_of(*inner_of(outer)[1].get_if<utility::string>()));
    EXPECT_EQ(*inner_of(copy)[1].get_if<utility::string>(), "level");
}

TEST(ArrayOfValues, IsAssignedFromAnArrayInsideItself) {
    values outer = nested();
    outer = inner_of(outer); // of the same count
    ASSERT_EQ(outer.size(), 2U);
    EXPECT_EQ(*outer[0].get_if<int>(), 1);
    EXPECT_EQ(*outer[1].get_if<utility::string>(), "level");
}

TEST(ArrayOfValues, IsAssignedFromAnArrayOfAnotherCountInsideItself) {
    values outer = values::of(0, values::of(values::of(1, 2, "level")));
    outer = *(*outer[1].get_if<values>())[0].get_if<values>();
    ASSERT_EQ(outer.size(), 3U);
    EXPECT_EQ(*outer[2].get_if<utility::string>(), "level");
}

TEST(ArrayOfValues, IsMoveAssignedFromAnArrayInsideItself) {
    values outer = nested();
    // The elements are no constants; only the access to them is.
    outer = std::move(const_cast<values&>(inner_of(outer)));
    ASSERT_EQ(outer.size(), 2U);
    EXPECT_EQ(*outer[0].get_if<int>(), 1);
    EXPECT_EQ(*outer[1].get_if<utility::string>(), "level");
}

TEST(ArrayOfValues, TakesAnElementOfItselfForAnElement) {
    values outer = nested();
    outer[0] = outer[1];
    EXPECT_EQ(*outer[0].get_if<int>(), 2);
    outer = nested();
    outer[1] = outer[0];
    ASSERT_NE(outer[1].get_if<values>(), nullptr);
    EXPECT_EQ(outer[1].get_if<values>()->size(), 2U);
}

TEST(ArrayOfValues, KnowsWhatLiesInItsBlocks) {
    values const outer = nested();
    EXPECT_TRUE(outer.holds_address(&outer[0]));
    EXPECT_TRUE(outer.holds_address(&outer[1]));
    EXPECT_TRUE(outer.holds_address(&inner_of(outer)));
    EXPECT_TRUE(outer.holds_address(&inner_of(outer)[1]));
    EXPECT_FALSE(outer.holds_address(outer.end()));
    EXPECT_FALSE(outer.holds_address(&outer));
    EXPECT_FALSE(outer.holds_address(nullptr));
    EXPECT_FALSE(values().holds_address(nullptr));
    values const other = nested();
    EXPECT_FALSE(outer.holds_address(&other[0]));
}

TEST(ArrayOfValues, KeepsEveryElementUsableWhenAnAssignmentFails) {
    values const source = values::of("a text", "another text", "a third text");
    int const failures = test_support::count_survived_failures([&] {
        values target = values::of("x", "yy", "zzz");
        try {
            target = source;
        } catch (std::bad_alloc const&) {
            for (io_value const& value : target) {
                if (value.index() != 15) throw 0; // no element may be left without a payload
            }
            throw;
        }
    });
    EXPECT_GE(failures, 4); // that of the target's block and three texts at least
}

TEST(ArrayOfValues, SurvivesExhaustedMemoryWhileItIsCopied) {
    values const source = values::of(values::of(1, "level"), io_object(), array<int>{1, 2});
    EXPECT_GE(test_support::count_survived_failures([&] { values const copy(source); }), 5);
}

} // namespace
