#include <tavi/ioapi/v2/io_object.hpp>
#include <tavi/ioapi/v2/io_structure_dictionary.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include "member_types.hpp"
#include "reports.hpp"
#include "stored.hpp"
#include "support/allocations.hpp"
#include "support/operators.hpp"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <type_traits>
#include <utility>

namespace {

using namespace tavi::ioapi::v2;
using structures_test::dbl;
using structures_test::holds;
using structures_test::i32;
using structures_test::reports;
using structures_test::succeeds;
using types = io_data_type::basic_types;

class StructureDictionary : public ::testing::Test {
protected:
    unsigned long long add(io_structure_type structure) {
        io_error error;
        return dictionary.add_structure(std::move(structure), error).structure_id;
    }
    io_structure_type get(unsigned long long id) {
        io_error error;
        auto structure = dictionary.get_structure(id, error);
        EXPECT_TRUE(error.ok()) << error;
        return structure;
    }
    bool has(unsigned long long id) {
        io_error error;
        (void)dictionary.get_structure(id, error);
        return error.ok();
    }

    io_structure_dictionary dictionary;
};

TEST_F(StructureDictionary, IsNeitherCopiedNorMovedIntoANewOne) {
    static_assert(!std::is_copy_constructible_v<io_structure_dictionary>);
    static_assert(!std::is_move_constructible_v<io_structure_dictionary>);
    static_assert(std::is_copy_assignable_v<io_structure_dictionary>);
    static_assert(std::is_move_assignable_v<io_structure_dictionary>);
    static_assert(!test_support::has_equal<io_structure_dictionary>);
}

TEST_F(StructureDictionary, GivesATypeOfObjectsForAStructure) {
    io_data_type type;
    EXPECT_TRUE(succeeds([&](io_error& error) {
        type = dictionary.add_structure(io_structure_type("pump", {{"a", dbl}}), error);
    }));
    EXPECT_EQ(type.basic_type, types::object);
    EXPECT_EQ(type.array_kind, 0U);
    EXPECT_EQ(type.array_extent, 0U);
    EXPECT_TRUE(has(type.structure_id));
}

TEST_F(StructureDictionary, GivesBackWhatWasAdded) {
    auto const id = add(io_structure_type("pump", {{"a", dbl}, {"b", i32}}));
    io_structure_type structure;
    EXPECT_TRUE(
        succeeds([&](io_error& error) { structure = dictionary.get_structure(id, error); }));
    EXPECT_EQ(structure.name(), "pump");
    EXPECT_EQ(structure.get_member("a"), dbl);
    EXPECT_EQ(structure.get_member("b"), i32);
}

TEST_F(StructureDictionary, TakesAStructureWithoutNameAndMembers) {
    auto const id = add(io_structure_type());
    EXPECT_EQ(get(id).name(), "");
    EXPECT_TRUE(get(id).empty());
}

TEST_F(StructureDictionary, GivesAStructureThatIsAddedTwiceTwoIds) {
    io_structure_type const pump("pump", {{"a", dbl}});
    auto const first = add(pump);
    auto const second = add(pump);
    EXPECT_NE(first, second);
    EXPECT_EQ(get(first).get_member("a"), dbl);
    EXPECT_EQ(get(second).get_member("a"), dbl);
    EXPECT_EQ(get(first).name(), get(second).name());
}

TEST_F(StructureDictionary, DrawsIdsThatAreNotCounted) {
    unsigned long long seen = 0;
    unsigned long long last = add({});
    bool steps = true;
    for (int i = 0; i < 64; ++i) {
        auto const id = add({});
        steps = steps && id == last + 1;
        seen |= id;
        last = id;
    }
    EXPECT_FALSE(steps);
    EXPECT_NE(seen >> 56, 0ULL) << "all 64 bits are drawn";
    EXPECT_NE(seen & 0xFFULL, 0ULL);
}

TEST_F(StructureDictionary, GivesEachStructureItsOwnId) {
    std::set<unsigned long long> ids;
    for (int i = 0; i < 1000; ++i) ids.insert(add({}));
    EXPECT_EQ(ids.size(), 1000U);
}

TEST_F(StructureDictionary, DoesNotFindAnUnusedId) {
    io_structure_type structure("old", {{"a", dbl}});
    EXPECT_TRUE(reports(io_errc::not_found,
                        [&](io_error& error) { structure = dictionary.get_structure(7, error); }));
    EXPECT_EQ(structure.name(), "");
    EXPECT_TRUE(structure.empty());
}

TEST_F(StructureDictionary, DoesNotFindAnUnusedIdAmongOthers) {
    io_error ignored;
    dictionary.replace_structure(6, {}, ignored);
    dictionary.replace_structure(8, {}, ignored);
    EXPECT_TRUE(reports(io_errc::not_found,
                        [&](io_error& error) { (void)dictionary.get_structure(7, error); }));
    EXPECT_TRUE(reports(io_errc::not_found,
                        [&](io_error& error) { dictionary.remove_structure(7, error); }));
    EXPECT_TRUE(has(6));
    EXPECT_TRUE(has(8));
}

TEST_F(StructureDictionary, GivesAUsableStructureForAnUnusedId) {
    io_error error;
    auto structure = dictionary.get_structure(7, error);
    structure.set_member("a", dbl);
    EXPECT_TRUE(structure.has_member("a"));
    EXPECT_FALSE(has(7));
}

TEST_F(StructureDictionary, GivesCopiesThatDoNotReachIt) {
    auto const id = add(io_structure_type("pump", {{"a", dbl}}));
    auto structure = get(id);
    structure.set_member("a", i32);
    structure.set_member("b", i32);
    EXPECT_EQ(get(id).get_member("a"), dbl);
    EXPECT_FALSE(get(id).has_member("b"));
}

TEST_F(StructureDictionary, GivesCopiesThatDoNotFollowIt) {
    auto const id = add(io_structure_type("pump", {{"a", dbl}}));
    auto const structure = get(id);
    io_error error;
    dictionary.remove_structure(id, error);
    EXPECT_EQ(structure.name(), "pump");
    EXPECT_EQ(structure.get_member("a"), dbl);
}

TEST_F(StructureDictionary, KeepsACopyOfWhatIsAdded) {
    io_structure_type pump("pump", {{"a", dbl}});
    auto const id = add(pump);
    pump.clear();
    EXPECT_TRUE(get(id).has_member("a"));
}

TEST_F(StructureDictionary, RemovesOnce) {
    auto const id = add({});
    EXPECT_TRUE(succeeds([&](io_error& error) { dictionary.remove_structure(id, error); }));
    EXPECT_FALSE(has(id));
    EXPECT_TRUE(reports(io_errc::not_found,
                        [&](io_error& error) { dictionary.remove_structure(id, error); }));
}

TEST_F(StructureDictionary, DoesNotRemoveWithoutEntries) {
    EXPECT_TRUE(reports(io_errc::not_found,
                        [&](io_error& error) { dictionary.remove_structure(0, error); }));
}

TEST_F(StructureDictionary, RemovesTheEntryAlone) {
    auto const first = add({});
    io_structure_type nested;
    nested.set_member("inner", io_data_type::object(first));
    auto const second = add(nested);
    EXPECT_TRUE(succeeds([&](io_error& error) { dictionary.remove_structure(first, error); }));
    EXPECT_EQ(get(second).get_member("inner"), io_data_type::object(first));
}

TEST_F(StructureDictionary, ReplacesAnEntry) {
    auto const id = add(io_structure_type("pump", {{"a", dbl}}));
    EXPECT_TRUE(succeeds([&](io_error& error) {
        dictionary.replace_structure(id, io_structure_type("valve", {{"b", i32}}), error);
    }));
    EXPECT_EQ(get(id).name(), "valve");
    EXPECT_FALSE(get(id).has_member("a"));
    EXPECT_TRUE(get(id).has_member("b"));
}

TEST_F(StructureDictionary, AddsByReplacingWhatIsNotThere) {
    for (auto const id : {7ULL, 0ULL, 0xFFFFFFFFFFFFFFFFULL}) {
        EXPECT_TRUE(succeeds([&](io_error& error) {
            dictionary.replace_structure(id, io_structure_type("pump", {}), error);
        }));
        EXPECT_EQ(get(id).name(), "pump");
    }
}

TEST_F(StructureDictionary, HasOneEntryAfterReplacingTwice) {
    for (auto const* const name : {"a", "b"}) {
        io_error error;
        dictionary.replace_structure(7, io_structure_type(name, {}), error);
    }
    EXPECT_EQ(get(7).name(), "b");
    EXPECT_TRUE(succeeds([&](io_error& error) { dictionary.remove_structure(7, error); }));
    EXPECT_FALSE(has(7));
}

TEST_F(StructureDictionary, DoesNotReachObjectsMadeFromAStructure) {
    auto const id = add(io_structure_type{{"a", dbl}});
    io_object object(id, get(id));
    io_error error;
    dictionary.replace_structure(id, io_structure_type{{"b", i32}}, error);
    EXPECT_TRUE(object.has("a"));
    EXPECT_FALSE(object.has("b"));
    dictionary.remove_structure(id, error);
    EXPECT_TRUE(succeeds([&](io_error& e) { object.set("a", 5, e); }));
    EXPECT_TRUE(holds(object.get("a"), 5.0));
}

TEST_F(StructureDictionary, GivesATypeThatObjectsFit) {
    io_error error;
    io_structure_type const pump{{"a", dbl}};
    auto const type = dictionary.add_structure(pump, error);
    EXPECT_EQ(io_value(io_object(type.structure_id, pump)).data_type(), type);
    io_object outer(7, {{"pump", type}});
    EXPECT_TRUE(
        succeeds([&](io_error& e) { outer.set("pump", io_object(type.structure_id, pump), e); }));
}

TEST_F(StructureDictionary, IsIndependentOfOthers) {
    io_structure_dictionary other;
    auto const id = add({});
    EXPECT_TRUE(reports(io_errc::not_found,
                        [&](io_error& error) { (void)other.get_structure(id, error); }));
}

// Each scenario locks again after the failure, so that a lock that is kept would never end.
TEST_F(StructureDictionary, ReleasesItsLockWhenMemoryIsExhausted) {
    io_structure_type const pump("a structure whose name is longer than small buffers are",
                                 {{"a member whose name is longer than small buffers", dbl}});
    auto const id = add(pump);
    EXPECT_GE(test_support::count_survived_failures([&] {
                  io_error error;
                  (void)dictionary.get_structure(id, error);
              }),
              4);
    EXPECT_GE(test_support::count_survived_failures([&] {
                  io_error error;
                  auto const type = dictionary.add_structure(pump, error);
                  dictionary.remove_structure(type.structure_id, error);
              }),
              5);
    EXPECT_GE(test_support::count_survived_failures([&] {
                  io_error error;
                  dictionary.replace_structure(7, pump, error);
                  dictionary.remove_structure(7, error);
              }),
              5);
    EXPECT_EQ(get(id).get_member("a member whose name is longer than small buffers"), dbl);
}

TEST_F(StructureDictionary, KeepsTheOldStructureWhereTheNewOneCannotBeCopied) {
    auto const id = add(io_structure_type("pump", {}));
    io_structure_type const valve("valve", {});
    {
        io_error error;
        test_support::allocation_failure const failure(1);
        EXPECT_THROW(dictionary.replace_structure(id, valve, error), std::bad_alloc);
    }
    EXPECT_EQ(get(id).name(), "pump");
}

TEST_F(StructureDictionary, HasNoEntryWhereTheNodeCannotBeMade) {
    io_structure_type pump("pump", {});
    {
        io_error error;
        test_support::allocation_failure const failure(1);
        EXPECT_THROW(dictionary.replace_structure(7, std::move(pump), error), std::bad_alloc);
    }
    EXPECT_FALSE(has(7));
}

TEST_F(StructureDictionary, SurvivesExhaustedMemoryWhenMade) {
    EXPECT_EQ(test_support::count_survived_failures([] { io_structure_dictionary const made; }), 1);
}

} // namespace
