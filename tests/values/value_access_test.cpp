#include "sample_payloads.hpp"
#include "support/allocations.hpp"
#include "support/alternatives.hpp"
#include "support/typed_tests.hpp"
#include "value_image.hpp"

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>
#include <vector>

namespace values_test {
namespace {

/// Runs `check` on a value of every alternative. No typed tests, for a visit is compiled for all
/// alternatives already.
template <class Check>
void for_each_alternative(Check check) {
    for (std::size_t i = 0; i < make_sample.size(); ++i) {
        SCOPED_TRACE(::testing::Message() << "alternative " << i);
        io_value const value = make_sample[i]();
        check(value, static_cast<int>(i));
    }
}

template <class Payload>
using stored_type = std::remove_cv_t<std::remove_reference_t<Payload>>;

template <class... Alternatives>
std::vector<int> matches_of_get_if(io_value const& value,
                                   detail::alternative_list<Alternatives...>) {
    std::vector<int> matches;
    int index = 0;
    ((value.get_if<typename Alternatives::type>() != nullptr ? matches.push_back(index++)
                                                             : void(++index)),
     ...);
    return matches;
}

io_value with_type(io_data_type const& type, io_value const& value) {
    return value.visit([&](auto const& payload) { return io_value(type, payload); });
}

TEST(ValueAccess, GetIfMatchesTheStoredAlternativeAlone) {
    for_each_alternative([](io_value const& value, int index) {
        EXPECT_EQ(matches_of_get_if(value, detail::alternatives{}), std::vector<int>{index});
    });
}

TEST(ValueAccess, VisitCallsWithTheStoredType) {
    for_each_alternative([](io_value const& value, int index) {
        int const visited = value.visit(
            [](auto const& payload) { return detail::index_of<stored_type<decltype(payload)>>; });
        EXPECT_EQ(visited, index);
    });
}

TEST(ValueAccess, VisitCallsOnceAndGivesTheResult) {
    for_each_alternative([](io_value const& value, int) {
        int calls = 0;
        EXPECT_EQ(value.visit([&](auto const&) { return ++calls + 41; }), 42);
        EXPECT_EQ(calls, 1);
    });
}

TEST(ValueAccess, VisitMayGiveNothing) {
    for_each_alternative([](io_value const& value, int) {
        int calls = 0;
        value.visit([&](auto const&) { ++calls; });
        EXPECT_EQ(calls, 1);
    });
}

TEST(ValueAccess, VisitShowsThePayloadInPlace) {
    for_each_alternative([](io_value const& value, int index) {
        if (index < 2) return; // nothing to show, and a truth value comes as one read from a byte
        void const* const seen =
            value.visit([](auto const& payload) -> void const* { return &payload; });
        EXPECT_EQ(static_cast<unsigned char const*>(seen),
                  reinterpret_cast<unsigned char const*>(&value) + payload_offset);
    });
}

TEST(ValueAccess, IsArrayFollowsTheAlternativeWhateverTheTypeSays) {
    for_each_alternative([](io_value const& value, int index) {
        EXPECT_EQ(value.is_array(), index >= 17);
        EXPECT_EQ(with_type(io_data_type::scalar(types::i32), value).is_array(), index >= 17);
        EXPECT_EQ(with_type(io_data_type::array_of(types::i32), value).is_array(), index >= 17);
    });
}

TEST(ValueAccess, EmptyFollowsTheAlternativeWhateverTheTypeSays) {
    for_each_alternative([](io_value const& value, int index) {
        EXPECT_EQ(value.empty(), index == 0);
        EXPECT_EQ(with_type(io_data_type{}, value).empty(), index == 0);
        EXPECT_EQ(with_type(io_data_type::scalar(types::i32), value).empty(), index == 0);
    });
}

TEST(ValueAccess, EmptyArraysAndTextsAreNoEmptyValues) {
    EXPECT_TRUE(io_value(array<double>()).is_array());
    EXPECT_FALSE(io_value(array<double>()).empty());
    EXPECT_FALSE(io_value("").empty());
}

TEST(ValueAccess, ScalarsAreMadeAndEndedWithoutABlock) {
    for (int index = 0; index <= 14; ++index) {
        test_support::allocation_counter const counter;
        { io_value const value = make_sample[static_cast<std::size_t>(index)](); }
        EXPECT_EQ(counter.allocations(), 0U) << index;
        EXPECT_EQ(counter.releases(), 0U) << index;
    }
}

template <class T>
class ValueArgument : public ::testing::Test {};
TYPED_TEST_SUITE(ValueArgument, test_support::every_alternative, test_support::alternative_names);

TYPED_TEST(ValueArgument, IsMovedIn) {
    if constexpr (owns_blocks<TypeParam>) {
        TypeParam payload = sample<TypeParam>();
        void const* const block = block_of(payload);
        test_support::allocation_counter const counter;
        io_value const value(std::move(payload));
        EXPECT_EQ(counter.allocations(), 0U);
        EXPECT_EQ(block_of(value), block);
    }
}

} // namespace
} // namespace values_test
