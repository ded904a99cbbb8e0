#include "array_conversion_oracle.hpp"
#include "array_conversion_sources.hpp"
#include "array_conversion_targets.hpp"
#include "support/allocations.hpp"

#include <gtest/gtest.h>

namespace whole_values {
namespace {

using test_support::allocation_counter;
using test_support::allocation_failure;
using test_support::live_blocks;

/// The allocations of a conversion that succeeds.
template <class T>
std::size_t allocations_to(io_value const& source) {
    io_error error;
    allocation_counter const counter;
    array<T> const result = detail::get_as<array<T>>(source, error);
    std::size_t const count = counter.allocations();
    EXPECT_EQ(error.code(), 0);
    return count;
}

/// Fail each allocation of a conversion in turn.
/// \return how many failed
template <class T>
std::size_t fail_each_allocation_to(io_value const& source) {
    for (std::size_t n = 1;; ++n) {
        SCOPED_TRACE(n);
        long long const before = live_blocks();
        bool hit = false;
        {
            io_error error;
            allocation_failure const failure(n);
            array<T> const result = detail::get_as<array<T>>(source, error);
            hit = failure.hit();
            EXPECT_EQ(error.code(), hit ? 8 : 0);
            EXPECT_EQ(error.diagnostics().list(), nullptr);
            if (hit) {
                EXPECT_EQ(result.size(), 0U);
                EXPECT_EQ(result.data(), nullptr);
            }
        }
        EXPECT_EQ(live_blocks(), before);
        if (!hit) return n - 1;
    }
}

template <class S>
io_value ones() {
    if constexpr (std::is_same_v<S, utility::string>) {
        return array<utility::string>{"1", "1", "1"};
    } else if constexpr (std::is_same_v<S, io_object>) {
        return array<io_object>(3);
    } else {
        return array<S>{S(1), S(1), S(1)};
    }
}

/// Three ones of every kind of element, or as many objects.
std::vector<io_value> ones_of_every_kind() {
    std::vector<io_value> result;
    for_each_element_type(
        [&](auto* element) { result.push_back(ones<std::remove_pointer_t<decltype(element)>>()); });
    return result;
}

TEST(ArrayConversionAllocations, AreOneForNumbers) {
    std::vector<io_value> const sources = ones_of_every_kind();
    for_each_array_target([&](auto* target) {
        using T = std::remove_pointer_t<decltype(target)>;
        if constexpr (std::is_arithmetic_v<T>) {
            for (io_value const& value : sources) {
                if (!value.try_as<array<T>>().has_value()) continue;
                EXPECT_EQ(allocations_to<T>(value), 1U) << value;
            }
        }
    });
}

TEST(ArrayConversionAllocations, AreOneForNumbersFromAnArrayOfValues) {
    io_value const value(array<io_value>::of(1, 2.0, "3"));
    EXPECT_EQ(allocations_to<int>(value), 1U);
    EXPECT_EQ(allocations_to<double>(value), 1U);
    EXPECT_EQ(allocations_to<bool>(value), 1U);
}

TEST(ArrayConversionAllocations, AreOneMoreForEachText) {
    for (io_value const& value : ones_of_every_kind()) {
        if (value.index() == detail::index_of<array<io_object>>) continue;
        EXPECT_EQ(allocations_to<utility::string>(value), 4U) << value;
    }
    EXPECT_EQ(allocations_to<utility::string>(array<io_value>::of(1, "two", 3.0, true)), 5U);
}

TEST(ArrayConversionAllocations, AreNoneForAnArrayWithoutElements) {
    for_each_array_target([](auto* target) {
        using T = std::remove_pointer_t<decltype(target)>;
        for (element_kind const& kind : element_kinds()) {
            bool const is_pair_of_texts =
                kind.index == detail::index_of<char> && std::is_same_v<T, io_value>;
            if (!is_pair_of_texts) {
                EXPECT_EQ(allocations_to<T>(kind.make({})), 0U) << kind.index;
            }
        }
    });
}

TEST(ArrayConversionAllocations, AreOneForValuesOfNumbers) {
    for (io_value const& value : ones_of_every_kind()) {
        if (value.index() > detail::index_of<array<double>>) continue;
        EXPECT_EQ(allocations_to<io_value>(value), 1U) << value;
    }
    EXPECT_EQ(allocations_to<io_value>(ones<utility::string>()), 4U);
    EXPECT_EQ(allocations_to<io_value>(array<io_value>::of(1, "two", 3.0)), 2U);
}

TEST(ArrayConversionAllocations, EndAsUnhandledExceptionWhereOneFails) {
    std::vector<io_value> const sources = ones_of_every_kind();
    for_each_array_target([&](auto* target) {
        using T = std::remove_pointer_t<decltype(target)>;
        for (io_value const& value : sources) {
            if (!value.try_as<array<T>>().has_value()) continue;
            EXPECT_GE(fail_each_allocation_to<T>(value), 1U) << value;
        }
    });
}

TEST(ArrayConversionAllocations, EndAsUnhandledExceptionOnEveryLevelOfAnArrayOfValues) {
    io_object object;
    object.set("a", "first");
    object.set("b", array<int>{1, 2});
    io_value const value(array<io_value>::of(1, "two", array<utility::string>{"3", "4"}, object));
    EXPECT_GE(fail_each_allocation_to<io_value>(value), 6U);
    EXPECT_EQ(fail_each_allocation_to<bool>(value), 1U);
    io_value const texts(array<io_value>::of(1, "two", 3.5, io_value(), true));
    EXPECT_GE(fail_each_allocation_to<utility::string>(texts), 5U);
}

TEST(ArrayConversionAllocations, OfObjectsEndAsUnhandledException) {
    io_object object(5, io_structure_type(utility::string("pump")));
    io_value const value(array<io_object>{object, object});
    EXPECT_GE(fail_each_allocation_to<io_value>(value), 3U);
}

// Where the elements do not fit either, their code may be told without any allocation.
TEST(ArrayConversionAllocations, NeverTurnARefusalIntoASuccessOrALeak) {
    for_each_array_target([](auto* target) {
        using T = std::remove_pointer_t<decltype(target)>;
        if constexpr (!std::is_same_v<T, bool> && !std::is_same_v<T, io_value>) {
            io_value const value(array<io_value>::of(1, "2", array<int>{3}));
            for (std::size_t n = 1; n <= 8; ++n) {
                long long const before = live_blocks();
                io_error error;
                {
                    allocation_failure const failure(n);
                    array<T> const result = detail::get_as<array<T>>(value, error);
                    EXPECT_EQ(result.data(), nullptr);
                }
                EXPECT_TRUE(error.code() == 8 || error.code() == 3) << error.code();
                EXPECT_EQ(live_blocks(), before);
            }
        }
    });
}

TEST(ArrayConversionAllocations, AreGivenBackAfterARefusal) {
    for_each_array_target([](auto* target) {
        using T = std::remove_pointer_t<decltype(target)>;
        if constexpr (!std::is_same_v<T, bool> && !std::is_same_v<T, io_value>) {
            for (io_value const& value : {io_value(array<io_value>::of("1", "2", array<int>{3})),
                                          io_value(array<io_object>(2)), io_value("no array")}) {
                long long const before = live_blocks();
                EXPECT_TRUE(refuses_array<T>(value, io_errc::incompatible_type));
                EXPECT_EQ(live_blocks(), before);
            }
        }
    });
}

} // namespace
} // namespace whole_values
