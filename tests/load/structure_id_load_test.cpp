#include <tavi/ioapi/v2/io_structure_dictionary.hpp>

#include "measure.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace load_test {
namespace {

namespace v2 = tavi::ioapi::v2;

/// Adds `count` structures without a name. \return their ids
std::vector<unsigned long long> added(v2::io_structure_dictionary& dictionary, unsigned int count) {
    std::vector<unsigned long long> ids;
    ids.reserve(count);
    for (unsigned int i = 0; i < count; ++i) {
        v2::io_error error(v2::io_errc::not_found);
        v2::io_data_type const type = dictionary.add_structure(v2::io_structure_type(), error);
        if (error.failed() || type != v2::io_data_type::object(type.structure_id)) break;
        ids.push_back(type.structure_id);
    }
    return ids;
}

/// \return how many of `ids` the dictionary had, each of which it drops
unsigned int removed(v2::io_structure_dictionary& dictionary,
                     std::vector<unsigned long long> const& ids) {
    unsigned int count = 0;
    for (unsigned long long const id : ids) {
        v2::io_error error;
        dictionary.remove_structure(id, error);
        count += error.ok() ? 1U : 0U;
    }
    return count;
}

// All are in the dictionary at once. An id that came twice would name one entry for two, and so
// could be removed only once.
TEST(StructureIdLoad, NeverComesTwice) {
    unsigned int const count = share_of(10000000);
    measured const figures(std::to_string(count) + " structure ids, drawn and removed");
    v2::io_structure_dictionary dictionary;
    auto const ids = added(dictionary, count);
    ASSERT_EQ(ids.size(), count);
    EXPECT_EQ(removed(dictionary, ids), count);
    EXPECT_EQ(removed(dictionary, ids), 0U);
}

} // namespace
} // namespace load_test
