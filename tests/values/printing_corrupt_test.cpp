#include "raw_value.hpp"

#include <gtest/gtest.h>

#include <sstream>

namespace whole_values {
namespace {

using namespace values_test;

TEST(PrintingOfACorruptValue, RaisesTheEmptyText) {
    for (int const index : {-1, 34, 1000}) {
        raw_value value(5);
        corrupt_index(*value, index);
        EXPECT_TRUE(raises_empty_text([&] { (void)value->printable_string(); })) << index;
        std::ostringstream out;
        EXPECT_TRUE(raises_empty_text([&] { out << *value; })) << index;
        corrupt_index(*value, 4);
        value.destroy();
    }
}

} // namespace
} // namespace whole_values
