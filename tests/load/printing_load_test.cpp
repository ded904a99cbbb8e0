#include "measure.hpp"
#include "nesting.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace load_test {
namespace {

class PrintingLoad : public NestedLoad {};

INSTANTIATE_TEST_SUITE_P(Each, PrintingLoad, ::testing::ValuesIn(nestings), [](auto const& one) {
    return std::string(one.param.name);
});

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

TEST_P(PrintingLoad, IsPrintedWithAllItsBlanks) {
    unsigned int const width = divisor() == 1 ? 1 : 0; // blanks are quadratic in the levels
    v2::io_value const value = nested();
    std::string const expected = printed(GetParam(), width);
    measured const figures(name("printed on ") + std::to_string(expected.size()) + " bytes");
    EXPECT_TRUE(value.printable_string(' ', width, 0) == expected);
}

} // namespace
} // namespace load_test
