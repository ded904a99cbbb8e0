#include "content.hpp"
#include "support/allocations.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <new>
#include <string>
#include <utility>
#include <vector>

// Handles that are assigned to in place: where memory runs out they hold parts of both, each of
// them whole.

namespace allocation_failure_test {
namespace {

using test_support::allocation_failure;
using v2::io_data_type;
using v2::io_object;
using v2::io_structure_type;
using v2::io_value;
using v2::plc_identifier;
using types = io_data_type::basic_types;

// Of different lengths, so that the blocks at hand do not do.
constexpr char const* old_text = "old: ";
constexpr char const* new_text = "what is new: ";

std::string numbered(char const* text, int number) {
    return text + std::to_string(number) + ", too long to stand anywhere but in a block of its own";
}

/// The texts within a description of an object.
std::vector<std::string> texts_in(std::string const& description) {
    std::vector<std::string> result;
    std::size_t at = 0;
    while ((at = description.find('"', at)) != std::string::npos) {
        std::size_t const end = description.find('"', at + 1);
        result.push_back(description.substr(at + 1, end - at - 1));
        at = end + 1;
    }
    return result;
}

io_structure_type structure(char const* text, int members, types of) {
    io_structure_type made(numbered(text, -1), {});
    for (int i = 0; i < members; ++i) {
        made.set_member(numbered(text, i), io_data_type::array_of(of));
    }
    return made;
}

/// Each of these makes a handle of `count` parts whose texts begin with `text`.
struct structures {
    static io_structure_type make(char const* text, int count) {
        return structure(text, count, types::i32);
    }
};
struct objects {
    static io_object make(char const* text, int count) {
        io_object made(7, structure(text, count, types::object));
        for (int i = 0; i < count; ++i) {
            io_object inner;
            inner.set(numbered(text, i), numbered(text, i));
            made.set(numbered(text, i), v2::utility::array<io_object>::of(inner));
        }
        return made;
    }
};
struct options {
    static config::option make(char const* text, int count) {
        std::vector<config::option::value_option> choices;
        for (int i = 0; i < count; ++i) {
            std::string const each = numbered(text, i);
            choices.push_back({each, each, io_value(each)});
        }
        std::string const key = numbered(text, -1);
        return {key, key, key, io_value(key), choices};
    }
};
struct categories {
    static config::category make(char const* text, int count) {
        std::vector<config::option> made;
        for (int i = 0; i < count; ++i) {
            made.push_back(options::make(numbered(text, i).c_str(), 1));
        }
        std::string const name = numbered(text, -1);
        return {name, name, true, true, made};
    }
};
struct templates {
    static config::config_template make(char const* text, int count) {
        std::vector<config::category> made;
        for (int i = 0; i < count; ++i) {
            made.push_back(categories::make(numbered(text, i).c_str(), 1));
        }
        return config::config_template(made);
    }
};
struct verdicts {
    static config::verification_result make(char const* text, int count) {
        config::verification_result made;
        for (int i = 0; i < count; ++i) {
            std::string const each = numbered(text, i);
            made.add_issue(
                {config::verification_result::severity_type::warning, each, {each, each}});
        }
        return made;
    }
};

template <class Kind>
class AFailedAssignmentInPlace : public ::testing::Test {};
using kinds = ::testing::Types<structures, objects, options, categories, templates, verdicts>;
TYPED_TEST_SUITE(AFailedAssignmentInPlace, kinds);

/// Assign to `old` what `fresh` makes, each of its allocations failing once, and look at what is
/// left.
template <class Kind>
void expect_whole_parts(int old, int fresh) {
    auto const source = Kind::make(new_text, fresh);
    auto allowed = texts_in(text_of(source));
    auto const replaced = texts_in(text_of(Kind::make(old_text, old)));
    allowed.insert(allowed.end(), replaced.begin(), replaced.end());
    bool failed = true;
    for (std::size_t n = 1; failed; ++n) {
        auto target = Kind::make(old_text, old);
        failed = false;
        {
            allocation_failure const failure(n);
            try {
                target = source;
            } catch (std::bad_alloc const&) {
                failed = true;
            }
        }
        if (!failed) {
            EXPECT_EQ(text_of(target), text_of(source));
            EXPECT_GT(n, 1U);
        }
        for (auto const& text : texts_in(text_of(target))) {
            EXPECT_NE(std::find(allowed.begin(), allowed.end(), text), allowed.end())
                << n << ": " << text;
        }
        target = source;
        EXPECT_EQ(text_of(target), text_of(source)) << "what is left takes another assignment";
    }
}

TYPED_TEST(AFailedAssignmentInPlace, LeavesWholePartsWhereItAdds) {
    expect_whole_parts<TypeParam>(1, 3);
}

TYPED_TEST(AFailedAssignmentInPlace, LeavesWholePartsWhereItReplacesAsMany) {
    expect_whole_parts<TypeParam>(3, 3);
}

TYPED_TEST(AFailedAssignmentInPlace, LeavesWholePartsWhereItDrops) {
    expect_whole_parts<TypeParam>(3, 1);
}

// Each text of the source takes one block, in the order of the fields.
TEST(AFailedNodeAssignment, LeavesTheFieldsBeforeItNewAndThoseBehindItOld) {
    auto const two_nodes = [](char const* text) {
        v2::browse_result made;
        for (int i = 0; i < 2; ++i) {
            made.push({v2::browsing::node_class::variable,
                       plc_identifier(numbered(text, 0), numbered(text, 1)),
                       plc_identifier(numbered(text, 2), numbered(text, 3)), numbered(text, 4),
                       io_data_type::scalar(types::i32)});
        }
        return made;
    };
    auto const source = two_nodes(new_text);
    for (std::size_t n = 1; n <= 10; ++n) {
        auto target = two_nodes(old_text);
        {
            allocation_failure const failure(n);
            EXPECT_THROW(target = source, std::bad_alloc);
        }
        std::vector<std::string> expected;
        for (std::size_t field = 1; field <= 10; ++field) {
            auto const number = static_cast<int>((field - 1) % 5);
            bool const is_part = number != 4;
            if (field < n) {
                expected.push_back(numbered(new_text, number));
            } else if (field > n || !is_part) {
                expected.push_back(numbered(old_text, number));
            } else {
                expected.emplace_back();
            }
        }
        EXPECT_EQ(texts_in(text_of(target)), expected) << n;
        target = source;
        EXPECT_EQ(text_of(target), text_of(source));
    }
}

} // namespace
} // namespace allocation_failure_test
