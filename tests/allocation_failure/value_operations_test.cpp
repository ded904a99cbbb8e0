#include "tables.hpp"

#include <gtest/gtest.h>

#include <ostream>
#include <streambuf>
#include <string>
#include <utility>
#include <vector>

namespace allocation_failure_test {
namespace {

using v2::io_data_type;
using v2::io_data_value;
using v2::io_value;
using v2::utility::array;
using values = array<io_value>;
using quality = io_data_value::value_quality;
using types = io_data_type::basic_types;

io_value nested() {
    v2::io_object object;
    object.set(long_text, long_text);
    return io_value(values::of(5, long_text, array<v2::utility::string>{long_text, "", other_text},
                               values::of(io_value(), std::move(object), array<int>{1, 2})));
}

io_value long_value() {
    return io_value(long_text);
}

/// Takes all that is printed and keeps none of it.
class deaf_buffer : public std::streambuf {
    int_type overflow(int_type byte) override { return traits_type::not_eof(byte); }
};

} // namespace

std::vector<operation> value_operations() {
    std::vector<operation> rows;
    row_adder const row{rows};
    creation_adder const creation{rows};

    creation("AValueOfATextAndItsLength", {"io_value::io_value"},
             [] { return io_value(long_text, 7); });
    creation("AValueOfAText", {"io_value::io_value"}, [] { return io_value(long_text); });
    creation("AValueOfAStandardText", {"io_value::io_value"},
             [] { return io_value(std::string_view(long_text)); });
    creation("AValueOfAnArray", {"io_value::io_value"}, [] {
        return io_value(array<double>{1, 2});
    });
    creation("AValueOfAnObject", {"io_value::io_value"}, [] { return io_value(v2::io_object()); });
    creation("AValueUnderAType", {"io_value::io_value"},
             [] { return io_value(io_data_type::array_of(types::i32), values::of(1, long_text)); });

    row("ACopyOfAText", promise::unchanged, {"io_value::io_value"}, long_value,
        [](io_value const& value) { return io_value(value); });
    row("ACopyOfANestedValue", promise::unchanged, {"io_value::io_value"}, nested,
        [](io_value const& value) { return io_value(value); });
    row("AMoveOfANestedValue", promise::quiet, {"io_value::io_value", "io_value::operator="},
        nested, [](io_value& value) {
            io_value taken(std::move(value));
            value = std::move(taken);
        });
    row("AnAssignmentByMove", promise::quiet, {"io_value::assign"}, nested, [](io_value& value) {
        io_value taken;
        taken.assign(std::move(value));
        value.assign(std::move(taken));
    });
    row("AnAssignmentOfAScalar", promise::quiet, {"io_value::assign", "io_value::operator="},
        nested, [](io_value& value) {
            io_value const number(5);
            value = number;
            value.assign(number);
        });
    row("AnAssignmentToItself", promise::quiet, {"io_value::assign", "io_value::operator="}, nested,
        [](io_value& value) {
            io_value const& same = value;
            value = same;
            value.assign(same);
        });
    // What it holds would go with its payload, so that a copy comes first.
    row("AnAssignmentOfAnElementToItsHolder", promise::unchanged,
        {"io_value::assign", "io_value::operator="}, nested,
        [](io_value& value) { value = (*value.get_if<values>())[1]; });

    row("TheTypeCode", promise::quiet, {"io_value::p_basic_type x2"}, nested,
        [](io_value const& value) {
            return std::pair(value.p_basic_type(), io_value::p_basic_type(value.data_type()));
        });
    row("APrintedText", promise::unchanged, {"io_value::printable_string"}, long_value,
        [](io_value const& value) { return value.printable_string(); });
    row("APrintedNestedValue", promise::unchanged, {"io_value::printable_string"}, nested,
        [](io_value const& value) { return value.printable_string('.', 40, 2); });
    row("AValueIntoAStream", promise::unchanged, {"io_value::printable_string"}, nested,
        [](io_value const& value) {
            deaf_buffer buffer;
            std::ostream out(&buffer);
            out << value;
        });

    row(
        "AComparisonOfOneType", promise::quiet,
        {"io_value::equals", "io_value::equals_same_type",
         "io_value::operator==", "io_value::operator!="},
        [] { return std::pair(nested(), nested()); },
        [](std::pair<io_value, io_value> const& both) {
            auto const& [left, right] = both;
            return std::pair(std::pair(left == right, left != right),
                             std::pair(left.equals(right), left.equals_same_type(right)));
        });
    row(
        "AComparisonOfATextWithANumber", promise::quiet,
        {"io_value::equals", "io_value::operator=="},
        [] { return std::pair(io_value("5000000000000000"), io_value(5e15)); },
        [](std::pair<io_value, io_value> const& both) {
            return std::pair(both.first == both.second, both.second.equals(both.first));
        });
    // It is the one that builds something: an array of values of the other's elements. Without
    // that, nothing is known to be equal.
    row(
        "AComparisonOfValuesWithNumbers", promise::reported, {"io_value::equals"},
        [] {
            return std::pair(io_value(values::of(1, 2)), io_value(array<int>{1, 2}));
        },
        [](std::pair<io_value, io_value> const& both) { return both.first.equals(both.second); },
        "0");

    creation("ADataValue", {"io_data_value::io_data_value"}, [] {
        return std::pair(io_data_value(long_text, quality::good),
                         io_data_value(long_text, v2::io_timestamp(7), quality::bad));
    });
    auto const data_value = [] {
        return io_data_value(nested(), v2::io_timestamp(7), quality::good);
    };
    row("ACopyOfADataValue", promise::unchanged, {"io_data_value::io_data_value"}, data_value,
        [](io_data_value const& value) { return io_data_value(value); });
    row("AStampedDataValue", promise::unchanged, {"io_data_value::value"}, data_value,
        [](io_data_value& value) {
            value.value(io_value(long_text), quality::bad);
            value.timestamp(v2::io_timestamp(8));
        });
    row("ADataValueWithItsTime", promise::unchanged, {"io_data_value::value"}, data_value,
        [](io_data_value& value) {
            value.value(io_value(long_text), v2::io_timestamp(9), quality::bad);
        });
    row("ADataValueThatIsMovedIn", promise::quiet, {"io_data_value::value"}, data_value,
        [](io_data_value& value) {
            value.value(std::move(value).value(), v2::io_timestamp(9), quality::bad);
        });
    row("WhatADataValueSays", promise::quiet,
        {"io_data_value::value", "io_data_value::timestamp x2", "io_data_value::quality",
         "io_data_value::bad", "io_data_value::good", "io_data_value::empty"},
        data_value, [](io_data_value& value) {
            value.timestamp(value.timestamp());
            return std::pair(std::pair(value.value().index(), static_cast<int>(value.quality())),
                             std::pair(value.bad() || value.good(), value.empty()));
        });
    row("AComparisonOfDataValues", promise::quiet, {"operator== x3", "operator!= x3"}, data_value,
        [](io_data_value const& value) {
            bool const same = value == value && value == value.value() && value.value() == value;
            bool const other = value != value || value != value.value() || value.value() != value;
            return std::pair(same, other);
        });
    return rows;
}

INSTANTIATE_TEST_SUITE_P(Values,
                         MemoryRunsOut,
                         ::testing::ValuesIn(value_operations()),
                         name_of_row());

} // namespace allocation_failure_test
