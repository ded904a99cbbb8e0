#include "deep_stack.hpp"
#include "sample_payloads.hpp"
#include "support/allocations.hpp"

#include <gtest/gtest.h>

#include <string>
#include <utility>

/// \file
/// Printing writes into one text that grows: its cost follows the length and not the depth.

namespace whole_values {
namespace {

using namespace values_test;

constexpr int depth = 10000;

io_value nested_in_arrays(io_value value, int levels) {
    for (int level = 0; level < levels; ++level) {
        array<io_value> wrapper(1);
        wrapper[0] = std::move(value);
        value = io_value(std::move(wrapper));
    }
    return value;
}

io_value nested_in_objects(io_value value, int levels) {
    for (int level = 0; level < levels; ++level) {
        io_object wrapper;
        wrapper.set("k", std::move(value));
        value = io_value(std::move(wrapper));
    }
    return value;
}

std::string repeated(std::string const& text, int count) {
    std::string result;
    for (int i = 0; i < count; ++i) result += text;
    return result;
}

std::size_t allocations_to_print(io_value const& value) {
    test_support::allocation_counter const counter;
    utility::string const text = value.printable_string(' ', 0, 0);
    return counter.allocations();
}

// A text that doubles its room as it grows allocates about as often as its length has bits.
constexpr std::size_t few = 40;

TEST(PrintingCost, OfManyElementsIsFewAllocations) {
    EXPECT_LE(allocations_to_print(array<int>(10000)), few);
    EXPECT_LE(allocations_to_print(array<double>(10000)), few);
    EXPECT_LE(allocations_to_print(array<utility::string>(10000)), few);
    EXPECT_LE(allocations_to_print(array<io_value>(10000)), few);
    EXPECT_LE(allocations_to_print(array<io_object>(2000)), few);
}

TEST(PrintingCost, OfManyMembersIsFewAllocations) {
    io_object object;
    for (int i = 0; i < 1000; ++i) {
        object.set("a key that no small text could hold " + std::to_string(i),
                   "a text that no small text could hold either");
    }
    EXPECT_LE(allocations_to_print(std::move(object)), few);
}

TEST(PrintingCost, OfManyLevelsOfArraysIsFewAllocations) {
    EXPECT_LE(allocations_to_print(nested_in_arrays("innermost", 500)), few);
}

TEST(PrintingCost, OfManyLevelsOfObjectsIsFewAllocations) {
    EXPECT_LE(allocations_to_print(nested_in_objects("innermost", 500)), few);
}

TEST(PrintingCost, OfALongTextIsTheTextAndItsCopy) {
    std::string const text(1000000, 'x');
    EXPECT_LE(allocations_to_print(text), few);
}

TEST(PrintingFailure, PassesOutWithoutALeak) {
    io_object object;
    object.set("a", array<int>(100));
    object.set("b", "text");
    io_value const value(array<io_value>::of(object, array<io_object>{object, object}));
    EXPECT_GE(test_support::count_survived_failures([&] { (void)value.printable_string(); }), 2);
}

TEST(DeepPrinting, ReachesTenThousandLevelsOfArrays) {
    long long const before = test_support::live_blocks();
    run_on_deep_stack([] {
        io_value const value = nested_in_arrays(5, depth);
        io_value const copy(value);
        EXPECT_EQ(copy.printable_string(' ', 0, 0).str(),
                  repeated("array (1) {\n", depth) + "(i32) 5" + repeated("\n}", depth));
    });
    EXPECT_EQ(test_support::live_blocks(), before);
}

TEST(DeepPrinting, ReachesTenThousandLevelsOfObjects) {
    long long const before = test_support::live_blocks();
    run_on_deep_stack([] {
        io_value const value = nested_in_objects(5, depth);
        io_value const copy(value);
        EXPECT_EQ(copy.printable_string(' ', 0, 0).str(),
                  repeated("object<?> {\n[k] =>\n", depth) + "(i32) 5" + repeated("\n}", depth));
    });
    EXPECT_EQ(test_support::live_blocks(), before);
}

TEST(DeepPrinting, ReachesTenThousandLevelsOfBoth) {
    long long const before = test_support::live_blocks();
    run_on_deep_stack([] {
        io_value value;
        for (int level = 0; level < depth / 2; ++level) {
            value = nested_in_objects(nested_in_arrays(std::move(value), 1), 1);
        }
        io_value const copy(value);
        EXPECT_EQ(copy.printable_string(' ', 0, 0).str(),
                  repeated("object<?> {\n[k] =>\narray (1) {\n", depth / 2) + "empty" +
                      repeated("\n}\n}", depth / 2));
    });
    EXPECT_EQ(test_support::live_blocks(), before);
}

TEST(DeepPrinting, IndentsEachLevel) {
    std::string expected;
    for (int level = 0; level < 200; ++level) {
        expected.append(static_cast<std::size_t>(level) * 3, '-').append("array (1) {\n");
    }
    expected.append(600, '-').append("empty");
    for (int level = 199; level >= 0; --level) {
        expected.append("\n").append(static_cast<std::size_t>(level) * 3, '-').append("}");
    }
    EXPECT_EQ(nested_in_arrays(io_value(), 200).printable_string('-', 3, 0).str(), expected);
}

} // namespace
} // namespace whole_values
