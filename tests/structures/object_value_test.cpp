#include <tavi/ioapi/v2/io_object.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include "reports.hpp"
#include "stored.hpp"
#include "support/object_bytes.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

// Objects as the payload of values: copies, conversions and comparison.

namespace {

using namespace tavi::ioapi::v2;
using structures_test::holds;
using structures_test::is_blank;
using structures_test::reports;
using structures_test::succeeds;
using test_support::impl_of;
using types = io_data_type::basic_types;
template <class T>
using list = utility::array<T>;

io_object make_object(unsigned long long id = 0) {
    io_object object(id, {{"a", io_data_type::scalar(types::i32)}});
    object.set("a", 1);
    return object;
}

io_object const& object_in(io_value const& value) {
    return *value.get_if<io_object>();
}

TEST(ObjectValue, IsOfTheTypeOfTheObject) {
    EXPECT_EQ(io_value(make_object(7)).data_type(), io_data_type::object(7));
    EXPECT_EQ(io_value(make_object()).data_type(), io_data_type::object(0));
}

TEST(ObjectValue, KeepsTheMembersOfItsCopies) {
    io_value const value(make_object(7));
    io_value const copy(value);
    EXPECT_NE(impl_of(object_in(copy)), impl_of(object_in(value)));
    EXPECT_TRUE(holds(object_in(copy).get("a"), 1));
}

TEST(ObjectValue, DoesNotSeeChangesMadeThroughACopy) {
    io_value const value(make_object(7));
    io_object changed = object_in(value);
    changed.set("a", 2);
    EXPECT_TRUE(holds(object_in(value).get("a"), 1));
    EXPECT_TRUE(holds(changed.get("a"), 2));
}

TEST(ObjectValue, IsCopiedDeepAtEveryLevel) {
    io_object outer;
    outer.set("inner", make_object());
    io_value const value(outer);
    io_value const copy(value);
    outer.set("inner", 5);
    EXPECT_TRUE(holds(object_in(object_in(copy).get("inner")).get("a"), 1));
}

TEST(ObjectValue, GivesWayToAMemberOfItself) {
    io_object outer;
    outer.set("inner", make_object());
    io_value value(outer);
    value = object_in(value).get("inner");
    EXPECT_TRUE(object_in(value).has("a"));
}

TEST(ObjectValue, IsTrue) {
    EXPECT_TRUE(io_value(make_object()).as<bool>());
    EXPECT_TRUE(io_value(io_object()).as<bool>());
}

TEST(ObjectValue, IsNoNumberAndNoText) {
    io_value const value(make_object());
    for (auto const type : {types::i8, types::u64, types::flt, types::dbl, types::string}) {
        auto const target = io_data_type::scalar(type);
        EXPECT_FALSE(value.converts_to(target)) << target;
        io_value result;
        EXPECT_TRUE(reports(io_errc::incompatible_type,
                            [&](io_error& error) { result = value.to_variant(target, error); }));
        EXPECT_EQ(result.data_type(), target);
    }
    EXPECT_FALSE(value.try_as<int>().has_value());
    EXPECT_FALSE(value.try_as<std::string>().has_value());
}

TEST(ObjectValue, ConvertsToATruthValue) {
    io_value const value(make_object());
    auto const target = io_data_type::scalar(types::boolean);
    EXPECT_TRUE(value.converts_to(target));
    EXPECT_TRUE(holds(value.to_variant(target), true));
}

TEST(ObjectValue, IsNoArray) {
    io_value const value(make_object());
    for (auto const element : {types::boolean, types::i32, types::string, types::object}) {
        auto const target = io_data_type::array_of(element);
        EXPECT_FALSE(value.converts_to(target)) << target;
        EXPECT_TRUE(reports(io_errc::incompatible_type,
                            [&](io_error& error) { (void)value.to_variant(target, error); }));
    }
}

TEST(ObjectValue, ConvertsToItsOwnTypeAsACopy) {
    io_value const value(make_object(7));
    auto const own = io_data_type::object(7);
    EXPECT_TRUE(value.converts_to(own));
    io_value result;
    EXPECT_TRUE(succeeds([&](io_error& error) { result = value.to_variant(own, error); }));
    EXPECT_EQ(result.data_type(), own);
    ASSERT_NE(result.get_if<io_object>(), nullptr);
    EXPECT_NE(impl_of(object_in(result)), impl_of(object_in(value)));
    EXPECT_TRUE(holds(object_in(result).get("a"), 1));
}

TEST(ObjectValue, DoesNotConvertToAnotherStructure) {
    io_value const value(make_object(7));
    for (auto const id : {0ULL, 8ULL}) {
        EXPECT_FALSE(value.converts_to(io_data_type::object(id)));
        io_value result(5);
        EXPECT_TRUE(reports(io_errc::incompatible_type, [&](io_error& error) {
            result = value.to_variant(io_data_type::object(id), error);
        }));
        EXPECT_TRUE(is_blank(result));
    }
}

TEST(ObjectValue, IsNeverEqualToAnother) {
    io_value const value(make_object(7));
    io_value const copy(value);
    auto const& same = value;
    EXPECT_FALSE(value == same);
    EXPECT_TRUE(value != same);
    EXPECT_FALSE(value == copy);
    EXPECT_FALSE(value.equals(copy));
    EXPECT_FALSE(value.equals_same_type(copy));
}

TEST(ObjectValue, EqualsTrue) {
    io_value const value(make_object(7));
    EXPECT_TRUE(value == io_value(true));
    EXPECT_TRUE(io_value(true) == value);
    EXPECT_TRUE(io_value(true).equals(value));
    EXPECT_FALSE(value.equals(true));
    EXPECT_FALSE(value == io_value(false));
}

TEST(ObjectValue, EqualsNoNumberNoTextAndNotTheEmptyValue) {
    io_value const value(make_object(7));
    for (auto const& other : {io_value(), io_value(1), io_value("true"), io_value(list<int>{1})}) {
        EXPECT_FALSE(value == other) << other;
        EXPECT_FALSE(other == value) << other;
    }
}

TEST(ObjectValue, InAnArrayOfValuesMakesItUnequalToItsCopy) {
    auto const values = list<io_value>::of(io_value(1), io_value(make_object()));
    io_value const value(values);
    io_value const copy(value);
    EXPECT_FALSE(value == copy);
    EXPECT_TRUE(io_value(list<io_value>::of(io_value(1))) ==
                io_value(list<io_value>::of(io_value(1))));
}

// The values are not direct members, for a value's destructor may throw and that of a test may not.
class ObjectArrayValue : public ::testing::Test {
protected:
    std::unique_ptr<io_value const> const held_some =
        std::make_unique<io_value>(list<io_object>{make_object(7), make_object(8), make_object()});
    std::unique_ptr<io_value const> const held_none = std::make_unique<io_value>(list<io_object>{});
    io_value const& some = *held_some;
    io_value const& none = *held_none;
};

TEST_F(ObjectArrayValue, ConvertsToTruthValues) {
    EXPECT_EQ(some.as<std::vector<bool>>(), std::vector<bool>(3, true));
    EXPECT_TRUE(none.as<list<bool>>().empty());
}

TEST_F(ObjectArrayValue, ConvertsToNumbersAndTextsOnlyWithoutElements) {
    for (auto const element : {types::u8, types::i64, types::dbl, types::string}) {
        auto const target = io_data_type::array_of(element);
        EXPECT_FALSE(some.converts_to(target)) << target;
        EXPECT_TRUE(reports(io_errc::incompatible_type,
                            [&](io_error& error) { (void)some.to_variant(target, error); }));
        EXPECT_TRUE(none.converts_to(target)) << target;
        EXPECT_TRUE(succeeds([&](io_error& error) { (void)none.to_variant(target, error); }));
    }
}

TEST_F(ObjectArrayValue, ConvertsToValuesThatHoldCopies) {
    auto const values = some.as<list<io_value>>();
    ASSERT_EQ(values.size(), 3U);
    unsigned long long const ids[] = {7, 8, 0};
    auto const& objects = *some.get_if<list<io_object>>();
    for (unsigned int i = 0; i < 3; ++i) {
        EXPECT_EQ(values[i].data_type(), io_data_type::object(ids[i]));
        ASSERT_NE(values[i].get_if<io_object>(), nullptr);
        EXPECT_NE(impl_of(object_in(values[i])), impl_of(objects[i]));
        EXPECT_TRUE(holds(object_in(values[i]).get("a"), 1));
    }
}

TEST_F(ObjectArrayValue, EqualsOnlyTheTruthOfItsCount) {
    EXPECT_TRUE(some == io_value(true));
    EXPECT_TRUE(none == io_value(false));
    EXPECT_FALSE(some == io_value(false));
    EXPECT_FALSE(none == io_value(true));
}

TEST_F(ObjectArrayValue, EqualsNoArray) {
    io_value const others[] = {some,
                               none,
                               io_value(list<bool>{}),
                               io_value(list<bool>{true, true, true}),
                               io_value(list<int>{}),
                               io_value(list<utility::string>{}),
                               io_value(list<io_value>()),
                               io_value(some.as<list<io_value>>())};
    for (auto const& other : others) {
        for (auto const* const value : {&some, &none}) {
            EXPECT_FALSE(*value == other) << other;
            EXPECT_FALSE(other == *value) << other;
            EXPECT_FALSE(value->equals(other)) << other;
            EXPECT_FALSE(other.equals(*value)) << other;
        }
    }
}

} // namespace
