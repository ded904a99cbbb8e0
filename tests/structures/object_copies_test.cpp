#include <tavi/ioapi/v2/io_object.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include "stored.hpp"

#include <gtest/gtest.h>

#include <utility>

// Nothing that goes into an object or comes out of it stays tied to it.

namespace {

using namespace tavi::ioapi::v2;
using structures_test::holds;
using structures_test::holds_text;
using types = io_data_type::basic_types;

TEST(ObjectCopies, OfAMemberOutliveTheObject) {
    io_value value;
    {
        io_object object;
        object.set("a", "a text that is kept");
        value = object.get("a");
    }
    EXPECT_TRUE(holds_text(value, "a text that is kept"));
}

TEST(ObjectCopies, OfAMemberDoNotFollowTheObject) {
    io_object object;
    object.set("a", "first");
    io_value const value = object.get("a");
    object.set("a", "other");
    EXPECT_TRUE(holds_text(value, "first"));
}

TEST(ObjectCopies, OfAMemberDoNotReachTheObject) {
    io_object object;
    object.set("a", "first");
    io_value value = object.get("a");
    value = 5;
    EXPECT_TRUE(holds_text(object.get("a"), "first"));
}

TEST(ObjectCopies, OfANestedObjectAreIndependent) {
    io_object inner;
    inner.set("b", 1);
    io_object outer;
    outer.set("inner", inner);
    inner.set("b", 2);
    io_value const fetched = outer.get("inner");
    io_object changed = *fetched.get_if<io_object>();
    changed.set("b", 3);
    EXPECT_TRUE(holds(outer.get("inner").get_if<io_object>()->get("b"), 1));
}

TEST(ObjectCopies, HaveTheMembersAndTheStructure) {
    io_object original(7, {{"a", io_data_type::scalar(types::dbl)}});
    original.set("a", 1.5);
    io_object copy(original);
    EXPECT_TRUE(holds(copy.get("a"), 1.5));
    copy.set("a", 2);
    EXPECT_TRUE(holds(copy.get("a"), 2.0));
    EXPECT_TRUE(holds(original.get("a"), 1.5));
    EXPECT_THROW(copy.set("b", 1), io_exception);
}

TEST(ObjectCopies, AssignedReplaceAllMembers) {
    io_object target;
    target.set("gone", 1);
    target.set("kept", 1);
    io_object source;
    source.set("kept", "2");
    source.set("new", 3);
    target = source;
    EXPECT_FALSE(target.has("gone"));
    EXPECT_TRUE(holds_text(target.get("kept"), "2"));
    EXPECT_TRUE(holds(target.get("new"), 3));
    source.set("kept", 4);
    EXPECT_TRUE(holds_text(target.get("kept"), "2"));
}

TEST(ObjectCopies, AssignedToTheObjectItselfChangeNothing) {
    io_object object;
    object.set("a", "kept");
    auto const& same = object;
    object = same;
    EXPECT_TRUE(holds_text(object.get("a"), "kept"));
}

TEST(ObjectCopies, OfAMemberMayBeAssignedToTheObject) {
    io_object inner;
    inner.set("b", 1);
    io_object object;
    object.set("inner", inner);
    object = *object.get("inner").get_if<io_object>();
    EXPECT_TRUE(object.has("b"));
    EXPECT_FALSE(object.has("inner"));
}

TEST(ObjectCopies, OfTheStructureDoNotFollowTheOriginal) {
    io_structure_type structure{{"a", io_data_type::scalar(types::dbl)}};
    io_object object(7, structure);
    structure.clear();
    structure.set_member("b", io_data_type::scalar(types::i32));
    EXPECT_TRUE(object.has("a"));
    EXPECT_FALSE(object.has("b"));
}

TEST(ObjectMove, TakesTheMembersAlong) {
    io_object source;
    source.set("a", 1);
    io_object const target(std::move(source));
    EXPECT_TRUE(holds(target.get("a"), 1));
}

} // namespace
