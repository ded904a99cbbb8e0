#include "declared_type_targets.hpp"
#include "support/allocations.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

/// \file
/// Every alternative at its bound values against every data type: what `converts_to`, `to_variant`
/// and `get_as` say, each against the tables and all against one another.

namespace whole_values {
namespace {

std::vector<io_data_type> convertible_types(unsigned int array_kind) {
    std::vector<io_data_type> result;
    for (unsigned int code = first_target; code <= last_target; ++code) {
        result.push_back({types{code}, 0, array_kind, 0});
    }
    return result;
}

std::vector<io_data_type> other_types() {
    std::vector<io_data_type> result;
    for (types const element : every_element_type()) {
        if (is_target(io_data_type::scalar(element)) && element <= types::string) continue;
        for (unsigned int const array_kind : {0U, 1U, 2U}) {
            result.push_back({element, 0, array_kind, 0});
            result.push_back({element, 7, array_kind, 5});
        }
    }
    return result;
}

int code_to(io_value const& value, io_data_type const& type) {
    io_error error(io_errc::not_found);
    (void)value.to_variant(type, error);
    return error.code();
}

/// The code of the exported conversion that serves the type.
int code_of_get_as(io_value const& value, io_data_type const& type) {
    auto const [element, is_array] = target_of(type);
    return with_target(element, [&, is_array = is_array](auto* pointer) {
        using T = std::remove_pointer_t<decltype(pointer)>;
        io_error error(io_errc::not_found);
        if (is_array) {
            (void)detail::get_as<array<T>>(value, error);
        } else {
            (void)detail::get_as<T>(value, error);
        }
        return error.code();
    });
}

/// What the value answers to a type that is not its own.
struct answers {
    declared_source const* from;
    io_data_type type;
    bool fits;
    int code;
    std::size_t allocations; // while it was asked whether it fits
};

std::string name_of(answers const& pair) {
    std::ostringstream out;
    out << pair.from->name << " to " << pair.type << " kind " << pair.type.array_kind;
    return out.str();
}

std::vector<io_data_type> all_types() {
    std::vector<io_data_type> result = other_types();
    for (unsigned int const kind : {0U, 1U, 2U}) {
        for (io_data_type const& type : convertible_types(kind)) result.push_back(type);
    }
    return result;
}

/// Asked once, judged by many tests.
std::vector<answers> const& every_answer() {
    static std::vector<answers> const all = [] {
        std::vector<answers> result;
        std::vector<io_data_type> const targets = all_types();
        for (declared_source const& from : every_declared_source()) {
            for (io_data_type const& type : targets) {
                if (from.value.data_type() == type) continue;
                test_support::allocation_counter const counter;
                bool const fits = from.value.converts_to(type);
                std::size_t const allocations = counter.allocations();
                result.push_back({&from, type, fits, code_to(from.value, type), allocations});
            }
        }
        return result;
    }();
    return all;
}

/// Call `judge` with every answer, until the first failure, which says enough.
template <class Judge>
void for_each_answer(Judge judge) {
    for (answers const& pair : every_answer()) {
        judge(pair);
        if (::testing::Test::HasFailure()) return;
    }
}

TEST(DeclaredTypeAnswers, FitAsTheTableSays) {
    for_each_answer([](answers const& pair) {
        EXPECT_EQ(pair.fits, fits_by_table(pair.from->content, pair.type)) << name_of(pair);
    });
}

TEST(DeclaredTypeAnswers, ReportTheCodesOfTheTables) {
    for_each_answer([](answers const& pair) {
        EXPECT_EQ(pair.code, static_cast<int>(code_by_table(pair.from->content, pair.type)))
            << name_of(pair);
    });
}

TEST(DeclaredTypeAnswers, ReportTheCodesOfTheCompiledTypes) {
    for_each_answer([](answers const& pair) {
        bool const is_repetition = pair.type.array_kind == 1;
        if (!is_target(pair.type) || is_repetition) return;
        EXPECT_EQ(pair.code, code_of_get_as(pair.from->value, pair.type)) << name_of(pair);
    });
}

TEST(DeclaredTypeAnswers, CostNoAllocation) {
    for_each_answer([](answers const& pair) { EXPECT_EQ(pair.allocations, 0U) << name_of(pair); });
}

TEST(DeclaredTypeAnswers, AreNoWhereNothingConverts) {
    for_each_answer([](answers const& pair) {
        if (is_target(pair.type)) return;
        EXPECT_FALSE(pair.fits) << name_of(pair);
        EXPECT_EQ(pair.code, pair.type.type_code() == 0 ? 0 : 3) << name_of(pair);
    });
}

// --- where fitting and converting differ ---

enum class reason { none, empty_value, empty_element, empty_type };

reason reason_to_differ(declared_source const& from, io_data_type const& type) {
    if (type.basic_type == types::empty && type.array_kind == 0) return reason::empty_type;
    if (!is_target(type)) return reason::none;
    if (!target_of(type).is_array)
        return from.value.index() == 0 ? reason::empty_value : reason::none;
    auto const& elements = from.content.elements;
    bool const has_empty = std::any_of(elements.begin(), elements.end(), is_nothing);
    return has_empty ? reason::empty_element : reason::none;
}

TEST(DeclaredTypeDisagreement, IsNeverThatAFittingValueFailsToConvert) {
    for_each_answer([](answers const& pair) {
        if (!pair.fits) return;
        EXPECT_EQ(pair.code, 0) << name_of(pair);
    });
}

TEST(DeclaredTypeDisagreement, HasNoOtherReasonsThanThree) {
    for_each_answer([](answers const& pair) {
        if (reason_to_differ(*pair.from, pair.type) != reason::none) return;
        EXPECT_EQ(pair.fits, pair.code == 0) << name_of(pair);
    });
}

TEST(DeclaredTypeDisagreement, IsThatWhatIsEmptyFitsNothing) {
    for_each_answer([](answers const& pair) {
        if (reason_to_differ(*pair.from, pair.type) == reason::none) return;
        EXPECT_FALSE(pair.fits) << name_of(pair);
    });
}

TEST(DeclaredTypeDisagreement, OfAnEmptyElementIsItsAlone) {
    for_each_answer([](answers const& pair) {
        if (reason_to_differ(*pair.from, pair.type) != reason::empty_element) return;
        std::vector<io_value> others;
        for (io_value const& each : *pair.from->value.get_if<array<io_value>>()) {
            if (each.index() != 0) others.push_back(each);
        }
        io_value const rest{array<io_value>(others)};
        EXPECT_EQ(rest.converts_to(pair.type), pair.code == 0) << name_of(pair);
    });
}

TEST(DeclaredTypeDisagreement, HappensForEachOfTheReasons) {
    auto const i32 = io_data_type::scalar(types::i32);
    EXPECT_FALSE(io_value().converts_to(i32));
    EXPECT_EQ(code_to(io_value(), i32), 0);
    io_value const holed(array<io_value>::of(1, io_value()));
    EXPECT_FALSE(holed.converts_to(io_data_type::array_of(types::i32)));
    EXPECT_EQ(code_to(holed, io_data_type::array_of(types::i32)), 0);
    EXPECT_FALSE(io_value(1).converts_to({}));
    EXPECT_EQ(code_to(io_value(1), {}), 0);
}

TEST(DeclaredTypeDisagreement, IsNoneBetweenAnEmptyValueAndAnArray) {
    for (io_data_type const& type : convertible_types(2)) {
        EXPECT_FALSE(io_value().converts_to(type));
        EXPECT_EQ(code_to(io_value(), type), 3);
    }
}

// --- the cost of asking ---

TEST(DeclaredTypeQuestion, IsAnsweredWhereMemoryIsExhausted) {
    io_value const value(array<utility::string>{"1", "200"});
    test_support::allocation_failure const failure(1);
    bool const narrow = value.converts_to(io_data_type::array_of(types::i8));
    bool const wide = value.converts_to(io_data_type::array_of(types::u8));
    EXPECT_FALSE(failure.hit());
    EXPECT_FALSE(narrow);
    EXPECT_TRUE(wide);
}

} // namespace
} // namespace whole_values
