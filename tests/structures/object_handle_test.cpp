#include <tavi/ioapi/v2/io_object.hpp>
#include <tavi/ioapi/v2/io_value.hpp>
#include <tavi/ioapi/v2/utility/array.hpp>

#include "support/object_bytes.hpp"
#include "support/operators.hpp"

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>
#include <vector>

namespace {

using namespace tavi::ioapi::v2;
using test_support::impl_of;
using types = io_data_type::basic_types;

TEST(Object, IsOfTypeObjectWithIdZeroByDefault) {
    io_object const object;
    EXPECT_EQ(object.type(), (io_data_type{types::object, 0, 0, 0}));
}

TEST(Object, OfAStructureHasItsId) {
    io_object const object(0xFFFFFFFFFFFFFFFFULL, io_structure_type("pump", {}));
    EXPECT_EQ(object.type(), (io_data_type{types::object, 0xFFFFFFFFFFFFFFFFULL, 0, 0}));
}

TEST(Object, OfATypeKeepsItUnchecked) {
    io_data_type const odd{static_cast<types>(99), 7, 2, 5};
    EXPECT_EQ(io_object(odd, {}).type(), odd);
}

TEST(Object, GivesACopyOfItsType) {
    static_assert(std::is_same_v<decltype(std::declval<io_object const&>().type()), io_data_type>);
}

TEST(Object, OffersNoComparison) {
    static_assert(!test_support::has_equal<io_object>);
    static_assert(!test_support::has_not_equal<io_object>);
    static_assert(!test_support::has_less<io_object>);
}

TEST(Object, KeepsItsTypeAsTheFirstField) {
    io_object const object(7, {});
    auto const* const impl = static_cast<unsigned char const*>(impl_of(object));
    EXPECT_EQ(test_support::field_at<io_data_type>(*impl, 0), object.type());
}

TEST(Object, InAValueIsMovedIn) {
    io_object object(7, {});
    void const* const impl = impl_of(object);
    io_value const value(std::move(object));
    ASSERT_NE(value.get_if<io_object>(), nullptr);
    EXPECT_EQ(impl_of(*value.get_if<io_object>()), impl);
    EXPECT_EQ(value.data_type(), io_data_type::object(7));
}

TEST(Object, InAValueIsCopiedDeep) {
    io_value const value(io_object(7, {}));
    io_value const copy(value);
    EXPECT_NE(impl_of(*copy.get_if<io_object>()), impl_of(*value.get_if<io_object>()));
    EXPECT_EQ(copy.get_if<io_object>()->type(), value.get_if<io_object>()->type());
}

TEST(Object, InAnArrayOfAValueIsCopiedDeep) {
    io_value const value(utility::array<io_object>(2));
    io_value const copy(value);
    auto const& objects = *value.get_if<utility::array<io_object>>();
    auto const& copies = *copy.get_if<utility::array<io_object>>();
    for (unsigned int i = 0; i < 2; ++i) EXPECT_NE(impl_of(objects[i]), impl_of(copies[i]));
}

TEST(Object, ThatIsNullStaysNullInACopyOfItsArray) {
    utility::array<io_object> objects(2);
    io_object const taken(std::move(objects[0]));
    utility::array<io_object> const copy(objects);
    EXPECT_EQ(impl_of(copy[0]), nullptr);
    EXPECT_NE(impl_of(copy[1]), nullptr);
    EXPECT_NE(impl_of(taken), nullptr);
}

TEST(Object, IsMovedByAGrowingVector) {
    std::vector<io_object> objects;
    objects.emplace_back(7ULL, io_structure_type());
    void const* const impl = impl_of(objects[0]);
    objects.resize(objects.capacity() + 1);
    EXPECT_EQ(impl_of(objects[0]), impl);
}

} // namespace
