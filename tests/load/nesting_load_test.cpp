#include "measure.hpp"
#include "nesting.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>

namespace load_test {
namespace {

class NestingLoad : public NestedLoad {};

INSTANTIATE_TEST_SUITE_P(Each, NestingLoad, ::testing::ValuesIn(nestings), [](auto const& one) {
    return std::string(one.param.name);
});

// Whether what was made beside a value reaches down to its innermost one. What an aligned block
// takes of the heap varies with its place, by less than a third.
bool is_as_deep(std::size_t made, std::size_t original) {
    return made > std::size_t{depth} * sizeof(v2::io_value) && made > original * 2 / 3 &&
           made < original * 3 / 2;
}

TEST_P(NestingLoad, IsBuiltAndDestroyed) {
    measured const figures(name("built and destroyed"));
    v2::io_value const value = nested();
    EXPECT_EQ(value.data_type(), GetParam().wrap(v2::io_value()).data_type());
}

TEST_P(NestingLoad, IsCopied) {
    std::size_t const before = heap();
    auto original = std::make_unique<v2::io_value>(nested());
    std::size_t const original_heap = heap() - before;
    auto figures = std::make_unique<measured>(name("copied"));
    v2::io_value const copy(*original);
    figures.reset();
    EXPECT_TRUE(is_as_deep(heap() - before - original_heap, original_heap));
    EXPECT_EQ(copy.data_type(), original->data_type());
    auto const printed = original->printable_string(' ', 0, 0);
    original.reset();
    EXPECT_TRUE(copy.printable_string(' ', 0, 0) == printed) << "the copy outlives its source";
}

TEST_P(NestingLoad, IsComparedWithItsTwin) {
    v2::io_value const value = nested();
    v2::io_value const twin = nested();
    measured const figures(name("compared"));
    EXPECT_EQ(value == twin, GetParam().equals_its_twin);
    EXPECT_EQ(value.equals(twin), GetParam().equals_its_twin);
    EXPECT_EQ(value != twin, !GetParam().equals_its_twin);
}

TEST_P(NestingLoad, ConvertsToItsOwnTypeAsACopy) {
    std::size_t const before = heap();
    v2::io_value const value = nested();
    std::size_t const original_heap = heap() - before;
    measured const figures(name("converted to its own type"));
    v2::io_error error;
    v2::io_value const copy = value.to_variant(value.data_type(), error);
    EXPECT_TRUE(error.ok());
    EXPECT_TRUE(is_as_deep(heap() - before - original_heap, original_heap));
    EXPECT_EQ(copy.data_type(), value.data_type());
}

TEST_P(NestingLoad, IsNoNumber) {
    v2::io_value const value = nested();
    measured const figures(name("not converted to a number"));
    v2::io_error error;
    EXPECT_EQ(value.as<int>(error), 0);
    EXPECT_EQ(error, v2::io_error(v2::io_errc::incompatible_type));
    EXPECT_FALSE(value.converts_to(v2::io_data_type::scalar(v2::io_data_type::basic_types::i32)));
}

} // namespace
} // namespace load_test
