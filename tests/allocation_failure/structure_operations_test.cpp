#include "tables.hpp"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace allocation_failure_test {
namespace {

using v2::io_data_type;
using v2::io_error;
using v2::io_object;
using v2::io_structure_dictionary;
using v2::io_structure_type;
using v2::io_value;
using v2::utility::array;
using types = io_data_type::basic_types;

constexpr unsigned long long known_id = 7;

io_structure_type pump() {
    return io_structure_type(long_text, {{long_text, io_data_type::scalar(types::string)},
                                         {other_text, io_data_type::array_of(types::string)}});
}

io_object declared() {
    io_object object(known_id, pump());
    object.set(long_text, long_text);
    return object;
}

io_object free_keys() {
    io_object object;
    object.set(long_text, long_text);
    object.set("inner", io_value(declared()));
    return object;
}

/// A dictionary of one known id, as far as that id shows it.
struct known_dictionary {
    known_dictionary() {
        io_error error;
        all.replace_structure(known_id, pump(), error);
    }
    friend std::string text_of(known_dictionary const& dictionary) {
        io_error error;
        std::string const first = text_of(dictionary.all.get_structure(known_id, error));
        return first + text_of(dictionary.all.get_structure(known_id + 1, error));
    }
    mutable io_structure_dictionary all; // to look up takes its lock
};

template <class Handle>
using two = std::pair<Handle, Handle>;

/// The rows of copies, for a handle that copies deep.
template <class Handle>
void add_handle_rows(std::vector<operation>& rows,
                     std::string const& handle,
                     std::string const& exported,
                     Handle (*full)(),
                     Handle (*bare)()) {
    std::string const constructor = exported + "::" + handle;
    std::string const assignment = exported + "::operator=";
    auto const assign = [](two<Handle>& both) { both.first = std::as_const(both.second); };
    rows.push_back(operation_of("ACopyOfA_" + handle, promise::unchanged, {constructor}, full,
                                [](Handle const& source) { return Handle(source); }));
    rows.push_back(operation_of(
        "AnAssignmentToABare_" + handle, promise::usable, {assignment},
        [=] { return two<Handle>(bare(), full()); }, assign));
    rows.push_back(operation_of(
        "AnAssignmentToAMovedFrom_" + handle, promise::unchanged, {assignment},
        [=] {
            two<Handle> both(bare(), full());
            Handle const gone(std::move(both.first));
            return both;
        },
        assign));
    rows.push_back(operation_of("AMoveOfA_" + handle, promise::quiet, {constructor, assignment},
                                full, [](Handle& source) {
                                    Handle taken(std::move(source));
                                    source = std::move(taken);
                                }));
}

/// The rows of its iterators, which give copies.
template <class Handle>
void add_iterator_rows(std::vector<operation>& rows, std::string const& handle, Handle (*make)()) {
    std::string const iterator = handle + "::const_iterator::";
    rows.push_back(operation_of("TheEndsOfA_" + handle, promise::unchanged,
                                {handle + "::begin", handle + "::end", iterator + "const_iterator"},
                                make, [](Handle const& of) { return of.begin() == of.end(); }));
    rows.push_back(operation_of("AWalkThroughA_" + handle, promise::unchanged,
                                {iterator + "operator*", iterator + "operator++"}, make,
                                [](Handle const& of) {
                                    unsigned int count = 0;
                                    for (auto const& [key, value] : of) count += key.size();
                                    return count;
                                }));
    rows.push_back(operation_of("AStepThroughA_" + handle, promise::unchanged,
                                {iterator + "operator++", iterator + "const_iterator"}, make,
                                [](Handle const& of) {
                                    auto at = of.begin();
                                    auto const before = at++;
                                    return before == of.begin() && before != at;
                                }));
    rows.push_back(operation_of("APlaceInA_" + handle, promise::unchanged,
                                {iterator + "operator= x2", iterator + "operator==",
                                 iterator + "operator!=", iterator + "const_iterator"},
                                make, [](Handle const& of) {
                                    auto at = of.begin();
                                    auto const last = of.end();
                                    at = last;
                                    auto moved = std::move(at);
                                    at = std::move(moved);
                                    return at == last && !(at != last);
                                }));
}

} // namespace

std::vector<operation> structure_operations() {
    std::vector<operation> rows;
    row_adder const row{rows};
    creation_adder const creation{rows};

    std::vector<std::string> const type_made{"io_structure_type::io_structure_type"};
    creation("AStructureType", type_made, [] { return io_structure_type(); });
    creation("AStructureTypeWithAName", type_made, [] { return io_structure_type(long_text); });
    creation("AStructureTypeWithMembers", type_made, [] {
        return io_structure_type({{long_text, io_data_type()}, {other_text, io_data_type()}});
    });
    creation("AStructureTypeWithNameAndMembers", type_made, pump);
    add_handle_rows<io_structure_type>(rows, "io_structure_type", "io_structure_type", pump,
                                       [] { return io_structure_type(); });
    add_iterator_rows<io_structure_type>(rows, "io_structure_type", pump);
    row("AMemberThatIsAdded", promise::unchanged, {"io_structure_type::set_member"}, pump,
        [](io_structure_type& type) {
            type.set_member("a new member with a name that takes a block", io_data_type());
        });
    row("AMemberThatIsReplaced", promise::quiet, {"io_structure_type::set_member"}, pump,
        [](io_structure_type& type) { type.set_member(long_text, io_data_type()); });
    row("WhatAStructureTypeSays", promise::quiet,
        {"io_structure_type::has_member", "io_structure_type::get_member",
         "io_structure_type::name", "io_structure_type::clear"},
        pump, [](io_structure_type& type) {
            auto const found = std::pair(type.has_member(long_text), type.get_member(other_text));
            type.clear();
            return std::pair(found, type.name().size());
        });

    std::vector<std::string> const object_made{"io_object::io_object"};
    creation("AnObject", object_made, [] { return io_object(); });
    creation("AnObjectOfAStructure", object_made, [] { return io_object(known_id, pump()); });
    creation("AnObjectOfAType", object_made,
             [] { return io_object(io_data_type::object(known_id), pump()); });
    add_handle_rows<io_object>(rows, "io_object", "io_object", free_keys,
                               [] { return io_object(); });
    add_iterator_rows<io_object>(rows, "io_object", free_keys);
    row("AMemberOfAnObjectThatIsAdded", promise::unchanged, {"io_object::set"}, free_keys,
        [](io_object& object) {
            io_error error;
            object.set("a new key that is long enough for a block", io_value(other_text), error);
        });
    row("AMemberOfAnObjectThatIsReplaced", promise::unchanged, {"io_object::set"}, declared,
        [](io_object& object) {
            io_error error;
            object.set(long_text, io_value(other_text), error);
            return error;
        });
    row("AMemberOfAnObjectThatIsConverted", promise::unchanged, {"io_object::set"}, declared,
        [](io_object& object) {
            io_error error;
            object.set(other_text, io_value(array<int>{1, 2}), error);
            return error;
        });
    row("AMemberOfAnObjectThatIsRefused", promise::unchanged, {"io_object::set"}, declared,
        [](io_object& object) {
            io_error error;
            object.set("a key that no structure has declared so far", io_value(1), error);
            return error;
        });
    row("AMemberOfAnObject", promise::unchanged, {"io_object::get"}, free_keys,
        [](io_object const& object) {
            io_error error;
            return object.get(long_text, error);
        });
    row("AMemberOfAnObjectThatIsNotThere", promise::unchanged, {"io_exception::io_exception"},
        free_keys, [](io_object const& object) {
            try {
                return object.get(other_text).index();
            } catch (v2::io_exception const& absent) {
                return -absent.code();
            }
        });
    row("WhatAnObjectSays", promise::quiet,
        {"io_object::has", "io_object::get_type", "io_object::type", "io_object::remove"},
        free_keys, [](io_object& object) {
            io_error error;
            auto const found = std::pair(object.has(long_text), object.get_type(long_text));
            object.remove(other_text, error);
            object.remove(long_text, error);
            return std::pair(found, object.type());
        });

    creation("ADictionary", {"io_structure_dictionary::io_structure_dictionary"},
             [] { io_structure_dictionary const dictionary; });
    auto const dictionary = [] { return known_dictionary(); };
    row("AStructureThatIsAdded", promise::unchanged, {"io_structure_dictionary::add_structure"},
        dictionary, [](known_dictionary& known) {
            io_error error;
            return known.all.add_structure(pump(), error).basic_type == types::object;
        });
    row("AStructureUnderANewId", promise::unchanged, {"io_structure_dictionary::replace_structure"},
        dictionary, [](known_dictionary& known) {
            io_error error;
            known.all.replace_structure(known_id + 1, pump(), error);
        });
    row("AStructureThatIsReplaced", promise::unchanged,
        {"io_structure_dictionary::replace_structure"}, dictionary, [](known_dictionary& known) {
            io_error error;
            known.all.replace_structure(known_id, io_structure_type(other_text), error);
        });
    row("AStructureThatIsAskedFor", promise::unchanged, {"io_structure_dictionary::get_structure"},
        dictionary, [](known_dictionary const& known) {
            io_error error;
            return known.all.get_structure(known_id, error);
        });
    row("AStructureThatIsRemoved", promise::quiet, {"io_structure_dictionary::remove_structure"},
        dictionary, [](known_dictionary& known) {
            io_error error;
            known.all.remove_structure(known_id + 1, error);
            known.all.remove_structure(known_id, error);
            return error;
        });
    row("ADictionaryThatIsAssignedToItself", promise::quiet,
        {"io_structure_dictionary::operator= x2"}, dictionary, [](known_dictionary& known) {
            auto& same = known.all;
            known.all = std::as_const(same);
            known.all = std::move(same);
        });
    return rows;
}

INSTANTIATE_TEST_SUITE_P(Structures,
                         MemoryRunsOut,
                         ::testing::ValuesIn(structure_operations()),
                         name_of_row());

} // namespace allocation_failure_test
