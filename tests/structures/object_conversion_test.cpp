#include <tavi/ioapi/v2/io_object.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include "reports.hpp"
#include "stored.hpp"

#include <gtest/gtest.h>

#include <string_view>
#include <utility>

// What `set` does with a value of another type than the declared one.

namespace {

using namespace tavi::ioapi::v2;
using structures_test::holds;
using structures_test::holds_text;
using structures_test::is_blank;
using structures_test::reports;
using structures_test::succeeds;
using types = io_data_type::basic_types;
template <class T>
using list = utility::array<T>;

class ObjectConversion : public ::testing::Test {
protected:
    // The value under a key of this type after `value` was set, which must have succeeded.
    static io_value set(io_data_type const& declared, io_value value) {
        io_object object(7, {{"a", declared}});
        EXPECT_TRUE(succeeds([&](io_error& error) { object.set("a", std::move(value), error); }));
        return object.get("a");
    }

    static ::testing::AssertionResult refuses(io_data_type const& declared, io_value value) {
        io_object object(7, {{"a", declared}});
        auto const result = reports(io_errc::incompatible_type, [&](io_error& error) {
            object.set("a", std::move(value), error);
        });
        if (result && !object.empty()) return ::testing::AssertionFailure() << "and yet it is set";
        return result;
    }

    static io_value set(types declared, io_value value) {
        return set(io_data_type::scalar(declared), std::move(value));
    }
    static ::testing::AssertionResult refuses(types declared, io_value value) {
        return refuses(io_data_type::scalar(declared), std::move(value));
    }
};

TEST_F(ObjectConversion, MakesAnIntegerADouble) {
    EXPECT_TRUE(holds(set(types::dbl, 5), 5.0));
}

TEST_F(ObjectConversion, MakesANumberOfAText) {
    EXPECT_TRUE(holds(set(types::i32, "12"), 12));
    EXPECT_TRUE(holds(set(types::u8, ""), static_cast<unsigned char>(0)));
}

TEST_F(ObjectConversion, MakesATextOfANumberOrATruthValue) {
    EXPECT_TRUE(holds_text(set(types::string, 300), "300"));
    EXPECT_TRUE(holds_text(set(types::string, true), "true"));
}

TEST_F(ObjectConversion, MakesATruthValueOfAnythingThatIsNotEmpty) {
    EXPECT_TRUE(holds(set(types::boolean, 0), false));
    EXPECT_TRUE(holds(set(types::boolean, "abc"), true));
    EXPECT_TRUE(holds(set(types::boolean, io_object()), true));
    EXPECT_TRUE(holds(set(types::boolean, list<int>{}), false));
    EXPECT_TRUE(refuses(types::boolean, io_value()));
}

TEST_F(ObjectConversion, ConvertsAnArrayWhole) {
    auto const bytes = io_data_type::array_of(types::u8);
    EXPECT_TRUE(holds(set(bytes, list<int>{1, 2}), (list<unsigned char>{1, 2})));
    EXPECT_TRUE(refuses(bytes, list<int>{1, 300}));
    EXPECT_TRUE(refuses(bytes, 1));
}

TEST_F(ObjectConversion, RefusesANumberOutOfRange) {
    EXPECT_TRUE(refuses(types::u8, 300));
    EXPECT_TRUE(refuses(types::u32, -1));
    EXPECT_TRUE(refuses(types::i32, 1.5));
}

TEST_F(ObjectConversion, ClampsARealThatIsWhole) {
    EXPECT_TRUE(holds(set(types::u8, 300.0F), static_cast<unsigned char>(44)));
    EXPECT_TRUE(holds(set(types::u32, -3.0), 0U));
}

TEST_F(ObjectConversion, RefusesATruthValueForANumber) {
    EXPECT_TRUE(refuses(types::i32, true));
    EXPECT_TRUE(refuses(types::dbl, false));
}

TEST_F(ObjectConversion, RefusesATextThatIsNoNumber) {
    EXPECT_TRUE(refuses(types::dbl, "x"));
    EXPECT_TRUE(refuses(types::i32, "12 "));
}

TEST_F(ObjectConversion, RefusesTheEmptyValue) {
    for (auto const type : {types::i32, types::string, types::object}) {
        EXPECT_TRUE(refuses(type, io_value())) << name_of(type);
    }
    EXPECT_TRUE(refuses(io_data_type::array_of(types::i32), io_value()));
}

TEST_F(ObjectConversion, TakesAnObjectOfExactlyTheDeclaredStructure) {
    auto const nine = io_data_type::object(9);
    io_value const value = set(nine, io_object(9, io_structure_type()));
    EXPECT_EQ(value.data_type(), nine);
    EXPECT_NE(value.get_if<io_object>(), nullptr);
    EXPECT_TRUE(refuses(nine, io_object(8, io_structure_type())));
    EXPECT_TRUE(refuses(nine, io_object()));
    EXPECT_TRUE(refuses(nine, 5));
}

TEST_F(ObjectConversion, RefusesAnObjectForAScalarButATruthValue) {
    EXPECT_TRUE(refuses(types::string, io_object()));
    EXPECT_TRUE(refuses(types::i32, io_object()));
}

TEST_F(ObjectConversion, FitsNothingButTheOwnTypeUnderAnUnknownOne) {
    io_data_type const unknown{static_cast<types>(99), 0, 0, 0};
    EXPECT_TRUE(refuses(unknown, 5));
    io_value const value = set(unknown, io_value(unknown, 5));
    EXPECT_EQ(value.data_type(), unknown);
    EXPECT_EQ(value.index(), detail::index_of<int>);
}

TEST_F(ObjectConversion, TakesTheEmptyValueAloneUnderTheAllZeroType) {
    EXPECT_TRUE(refuses(io_data_type(), 5));
    EXPECT_TRUE(is_blank(set(io_data_type(), io_value())));
}

TEST_F(ObjectConversion, KeepsTheAlternativeOfAValueOfTheDeclaredType) {
    EXPECT_TRUE(holds(set(types::i32, 5L), 5L));
    EXPECT_TRUE(holds(set(types::i8, 'A'), 'A'));
    EXPECT_TRUE(holds(set(io_data_type::array_of(types::u32), list<unsigned long>{5}),
                      list<unsigned long>{5}));
}

TEST_F(ObjectConversion, DoesNotLookAtTheNumberOfAWideLongOfTheDeclaredType) {
    if constexpr (sizeof(long) == 8) {
        long const wide = static_cast<long>(5000000000LL);
        EXPECT_TRUE(holds(set(types::i32, wide), wide));
    }
}

TEST_F(ObjectConversion, ConvertsWhereOnlyTheExtentDiffers) {
    io_data_type const declared{types::i32, 0, 0, 3};
    EXPECT_TRUE(holds(set(declared, 5L), 5));
}

TEST_F(ObjectConversion, GivesTheLibrarysKindOfArray) {
    io_data_type const declared{types::i32, 0, 1, 4};
    EXPECT_TRUE(holds(set(declared, list<int>{1, 2}), (list<int>{1, 2})));
}

TEST_F(ObjectConversion, KeepsTheOldValueWhereItRefuses) {
    io_object object(7, {{"a", io_data_type::scalar(types::dbl)}});
    object.set("a", 1.5);
    EXPECT_TRUE(
        reports(io_errc::incompatible_type, [&](io_error& error) { object.set("a", "x", error); }));
    EXPECT_TRUE(holds(object.get("a"), 1.5));
}

TEST_F(ObjectConversion, ReplacesTheOldValueWhereItSucceeds) {
    io_object object(7, {{"a", io_data_type::scalar(types::dbl)}});
    object.set("a", 1.5);
    EXPECT_TRUE(succeeds([&](io_error& error) { object.set("a", "2.5", error); }));
    EXPECT_TRUE(holds(object.get("a"), 2.5));
}

TEST_F(ObjectConversion, RaisesWhereTheOtherFormRefuses) {
    io_object object(7, {{"a", io_data_type::scalar(types::dbl)}});
    try {
        object.set("a", "x");
        FAIL() << "nothing raised";
    } catch (io_exception const& exception) {
        EXPECT_EQ(exception.code(), static_cast<int>(io_errc::incompatible_type));
    }
}

} // namespace
