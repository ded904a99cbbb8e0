#include <tavi/ioapi/v2/io_structure_dictionary.hpp>

#include "measure.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace load_test {
namespace {

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

/// \return how many of `ids`, of which it takes one in a thousand, the dictionary had; it drops
/// them
std::size_t some_removed(v2::io_structure_dictionary& dictionary,
                         std::vector<unsigned long long> const& ids) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < ids.size(); i += 1000) {
        v2::io_error error;
        dictionary.remove_structure(ids[i], error);
        count += error.ok() ? 1U : 0U;
    }
    return count;
}

// All are in the dictionary at once, so that each new one is drawn among ever more that are taken.
TEST(StructureIdLoad, NeverComesTwice) {
    unsigned int const count = share_of(10000000);
    measured const figures(std::to_string(count) + " structure ids, drawn");
    v2::io_structure_dictionary dictionary;
    auto ids = added(dictionary, count);
    ASSERT_EQ(ids.size(), count);
    std::sort(ids.begin(), ids.end());
    EXPECT_EQ(std::adjacent_find(ids.begin(), ids.end()), ids.end());
    EXPECT_EQ(some_removed(dictionary, ids), (ids.size() + 999) / 1000);
    EXPECT_EQ(some_removed(dictionary, ids), 0U);
}

} // namespace
} // namespace load_test
