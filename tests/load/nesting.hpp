#pragma once

#include <tavi/ioapi/v2/io_object.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include "measure.hpp"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <utility>

/// \file
/// Values in values, on the stack that a program has by default: the tests run on the first thread.

namespace load_test {

// In no run fewer: it is the depth that counts.
inline constexpr int depth = 10000;

inline v2::io_value in_array(v2::io_value inner) {
    v2::utility::array<v2::io_value> wrapper(1);
    wrapper[0] = std::move(inner);
    return v2::io_value(std::move(wrapper));
}

inline v2::io_value in_object(v2::io_value inner) {
    v2::io_object wrapper;
    wrapper.set("k", std::move(inner));
    return v2::io_value(std::move(wrapper));
}

inline v2::io_value in_array_of_objects(v2::io_value inner) {
    v2::utility::array<v2::io_object> wrapper(1);
    wrapper[0].set("k", std::move(inner));
    return v2::io_value(std::move(wrapper));
}

/// One way to put a value into another, and how each level is printed around the one below it,
/// which stands `inner_levels` deeper.
struct nesting {
    char const* name;
    v2::io_value (*wrap)(v2::io_value);
    char const* first_lines[3];
    int line_levels[3];
    int inner_levels;
    char const* last_lines[2];
    int last_levels[2];
    bool equals_its_twin; // an object equals none

    friend std::ostream& operator<<(std::ostream& out, nesting const& one) {
        return out << one.name;
    }
};

inline nesting const nestings[] = {
    {"array", in_array, {"array (1) {"}, {0}, 1, {"}"}, {0}, true},
    {"object", in_object, {"object<?> {", "[k] =>"}, {0, 0}, 1, {"}"}, {0}, false},
    {"array_of_objects",
     in_array_of_objects,
     {"array (1) {", "object<?> {", "[k] =>"},
     {0, 1, 1},
     2,
     {"}", "}"},
     {1, 0},
     false},
};

/// A value nested in one of these ways.
class NestedLoad : public ::testing::TestWithParam<nesting> {
protected:
    [[nodiscard]] static v2::io_value nested() {
        v2::io_value value(5);
        for (int level = 0; level < depth; ++level) value = GetParam().wrap(std::move(value));
        return value;
    }
    [[nodiscard]] static std::string name(char const* step) {
        return std::to_string(depth) + " levels of " + GetParam().name + ", " + step;
    }
};

} // namespace load_test
