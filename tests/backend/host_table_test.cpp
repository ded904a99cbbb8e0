#include <tavi/ioapi/v2/backend_query.hpp>

#include "every_operation.hpp"
#include "recording_host.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstring>

// A host from another compiler's hand: nothing but a table of functions, in the order that host and
// backends have agreed on. Where a member function takes its object, a free function takes its
// first argument, on all our platforms.

namespace {

using namespace tavi::ioapi::v2;
using backend_test::every_operation;
using backend_test::looked_up_type;
using backend_test::places;
using backend_test::recording_host;
using backend_test::registered_type;

std::array<int, places> counted;
void const* called_object = nullptr;

void count(std::size_t place, void const* object) {
    ++counted[place];
    called_object = object;
}

void end(host_interface* object) {
    count(0, object);
}
void end_and_delete(host_interface* object) {
    count(1, object);
}
backend_version_info version(host_interface const* object) {
    count(2, object);
    return {4, 5, 6, "made by hand"};
}
template <std::size_t Place>
utility::string directory(host_interface const* object) {
    count(Place, object);
    return "/by/hand";
}
void log_record(host_interface const* object, log_severity_level, utility::string_view text) {
    count(7, object);
    EXPECT_EQ(text, "text");
}
io_data_type type_of(host_interface const* object, plc_identifier const& name, io_error&) {
    count(8, object);
    EXPECT_EQ(name, plc_identifier("pump"));
    return looked_up_type;
}
io_structure_type structure_of(host_interface const* object, io_data_type const& type, io_error&) {
    count(9, object);
    EXPECT_EQ(type, io_data_type::object(7));
    return io_structure_type("by hand");
}
io_data_type enter(host_interface* object,
                   plc_identifier const& name,
                   io_structure_type structure,
                   io_error&) {
    count(10, object);
    EXPECT_EQ(name, plc_identifier("pump"));
    EXPECT_EQ(structure.name(), "a");
    return registered_type;
}
void replace(host_interface* object,
             io_data_type const& type,
             io_structure_type structure,
             io_error&) {
    count(11, object);
    EXPECT_EQ(type, io_data_type::object(7));
    EXPECT_EQ(structure.name(), "a");
}
void drop(host_interface* object, io_data_type const& type, io_error&) {
    count(12, object);
    EXPECT_EQ(type, io_data_type::object(7));
}
void clear(host_interface* object) {
    count(13, object);
}

template <class Function>
std::uintptr_t word_of(Function* function) {
    return reinterpret_cast<std::uintptr_t>(function);
}

host_interface& as_host(void* object) {
    return *static_cast<host_interface*>(object);
}

class HostTable : public ::testing::Test {
protected:
    HostTable() {
        // In front of the functions stand the offset to the whole object and its type.
        recording_host const model;
        std::uintptr_t const* table_of_model = nullptr;
        std::memcpy(&table_of_model, static_cast<void const*>(&model), sizeof table_of_model);
        std::memcpy(words_.data(), table_of_model - 2, 2 * sizeof(std::uintptr_t));
        counted.fill(0);
        called_object = nullptr;
    }

    void const* object() const { return &object_; }

private:
    std::array<std::uintptr_t, 2 + places> words_{
        0,
        0,
        word_of(&end),
        word_of(&end_and_delete),
        word_of(&version),
        word_of(&directory<3>),
        word_of(&directory<4>),
        word_of(&directory<5>),
        word_of(&directory<6>),
        word_of(&log_record),
        word_of(&type_of),
        word_of(&structure_of),
        word_of(&enter),
        word_of(&replace),
        word_of(&drop),
        word_of(&clear),
    };
    struct {
        std::uintptr_t const* table;
        std::uintptr_t room[7]; // for whoever believes it to be a host of the model's class
    } object_{words_.data() + 2, {}};

protected:
    backend_query query{as_host(&object_)};
};

TEST_F(HostTable, IsCalledAtThePlaceOfTheOperationAndAtNoOther) {
    for (auto const& [name, place, call] : every_operation) {
        counted.fill(0);
        called_object = nullptr;
        call(query);
        std::array<int, places> expected{};
        expected[place] = 1;
        EXPECT_EQ(counted, expected) << name;
        EXPECT_EQ(called_object, object()) << name;
    }
}

TEST_F(HostTable, GivesClassesByItsResults) {
    io_error error;
    auto const found_version = query.backend_version();
    EXPECT_EQ(found_version.major_version, 4U);
    EXPECT_EQ(found_version.minor_version, 5U);
    EXPECT_EQ(found_version.patch_version, 6U);
    EXPECT_EQ(found_version.label, "made by hand");
    EXPECT_EQ(query.p_backend_data_directory(), "/by/hand");
    EXPECT_EQ(query.lookup_data_type(plc_identifier("pump"), error), looked_up_type);
    EXPECT_EQ(query.lookup_structure_type(io_data_type::object(7), error).name(), "by hand");
    EXPECT_EQ(query.register_structure_type(plc_identifier("pump"), io_structure_type("a"), error),
              registered_type);
}

} // namespace
