#include <tavi/ioapi/v2/io_object.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include "measure.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>
#include <utility>

/// \file
/// Values in values, on the stack that a program has by default: these tests run on the first
/// thread.

namespace load_test {
namespace {

namespace v2 = tavi::ioapi::v2;

// In no run fewer: it is the depth that counts.
constexpr int depth = 10000;

v2::io_value in_array(v2::io_value inner) {
    v2::utility::array<v2::io_value> wrapper(1);
    wrapper[0] = std::move(inner);
    return v2::io_value(std::move(wrapper));
}

v2::io_value in_object(v2::io_value inner) {
    v2::io_object wrapper;
    wrapper.set("k", std::move(inner));
    return v2::io_value(std::move(wrapper));
}

v2::io_value in_array_of_objects(v2::io_value inner) {
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

nesting const nestings[] = {
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

class NestingLoad : public ::testing::TestWithParam<nesting> {
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

INSTANTIATE_TEST_SUITE_P(Each, NestingLoad, ::testing::ValuesIn(nestings), [](auto const& one) {
    return std::string(one.param.name);
});

TEST_P(NestingLoad, IsBuiltAndDestroyed) {
    measured const figures(name("built and destroyed"));
    v2::io_value const value = nested();
    EXPECT_EQ(value.data_type(), GetParam().wrap(v2::io_value()).data_type());
}

TEST_P(NestingLoad, IsCopied) {
    auto original = std::make_unique<v2::io_value>(nested());
    measured const figures(name("copied"));
    v2::io_value const copy(*original);
    original.reset();
    // The copy is whole without the original: its text goes down to the innermost value.
    EXPECT_NE(copy.printable_string(' ', 0, 0).str().find("(i32) 5"), std::string::npos);
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
    v2::io_value const value = nested();
    measured const figures(name("converted to its own type"));
    v2::io_error error;
    v2::io_value const copy = value.to_variant(value.data_type(), error);
    EXPECT_TRUE(error.ok());
    EXPECT_EQ(copy.printable_string(' ', 0, 0), value.printable_string(' ', 0, 0));
}

TEST_P(NestingLoad, IsNoNumber) {
    v2::io_value const value = nested();
    measured const figures(name("not converted to a number"));
    v2::io_error error;
    EXPECT_EQ(value.as<int>(error), 0);
    EXPECT_EQ(error, v2::io_error(v2::io_errc::incompatible_type));
    EXPECT_FALSE(value.converts_to(v2::io_data_type::scalar(v2::io_data_type::basic_types::i32)));
}

/// What is printed at `width` blanks for each level.
std::string printed(nesting const& way, unsigned int width) {
    std::string text;
    auto const line = [&](int level, char const* words) {
        text.append(static_cast<std::size_t>(level) * width, ' ').append(words);
    };
    for (int level = 0; level < depth; ++level) {
        for (int i = 0; i < 3 && way.first_lines[i] != nullptr; ++i) {
            line(level * way.inner_levels + way.line_levels[i], way.first_lines[i]);
            text += '\n';
        }
    }
    line(depth * way.inner_levels, "(i32) 5");
    for (int level = depth - 1; level >= 0; --level) {
        for (int i = 0; i < 2 && way.last_lines[i] != nullptr; ++i) {
            text += '\n';
            line(level * way.inner_levels + way.last_levels[i], way.last_lines[i]);
        }
    }
    return text;
}

TEST_P(NestingLoad, IsPrintedWithAllItsBlanks) {
    unsigned int const width = divisor() == 1 ? 1 : 0; // blanks are quadratic in the levels
    v2::io_value const value = nested();
    std::string const expected = printed(GetParam(), width);
    measured const figures(name("printed on ") + std::to_string(expected.size()) + " bytes");
    EXPECT_TRUE(value.printable_string(' ', width, 0) == expected);
}

} // namespace
} // namespace load_test
