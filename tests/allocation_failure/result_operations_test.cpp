#include "tables.hpp"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace allocation_failure_test {
namespace {

using v2::browse_result;
using v2::io_data_value;
using v2::io_error;
using v2::plc_identifier;
using v2::read_result;
using v2::write_result;
using v2::browsing::node;
using v2::browsing::node_class;

std::vector<plc_identifier> identifiers(std::size_t count) {
    std::vector<plc_identifier> result;
    for (std::size_t i = 0; i < count; ++i) result.emplace_back(long_text, i);
    return result;
}

plc_identifier const asked(long_text, 1);
plc_identifier const unknown(other_text);

io_data_value long_reading() {
    return {v2::io_value(other_text), v2::io_timestamp(5), io_data_value::value_quality::good};
}

template <class Result>
Result three_answers() {
    Result result(identifiers(3));
    if constexpr (std::is_same_v<Result, read_result>) {
        result.set(0, long_reading());
    } else {
        result.set(0, io_error());
    }
    return result;
}

/// A result and the identifiers that it is to start anew with.
template <class Result>
using with_identifiers = std::pair<Result, std::vector<plc_identifier>>;

/// The rows that the answers to a read and those to a write have in common.
template <class Result>
void add_answer_rows(std::vector<operation>& rows, std::string const& result) {
    auto const row = [&rows, &result](std::string const& name, promise kept,
                                      std::vector<std::string> tries, auto make, auto run) {
        for (std::string& tried : tries) tried = result + "::" + tried;
        rows.push_back(operation_of(name + '_' + result, kept, std::move(tries), make, run));
    };
    auto const make = &three_answers<Result>;
    row(
        "EntriesFor", promise::unchanged, {result}, [] { return identifiers(3); },
        [](std::vector<plc_identifier> const& wanted) { return Result(wanted); });
    row("ACopyOf", promise::unchanged, {}, make,
        [](Result const& source) { return Result(source); });
    row("AMoveOf", promise::quiet, {}, make, [](Result& source) {
        Result taken(std::move(source));
        source = std::move(taken);
    });
    // The entries go where there are not as many; else they are replaced one behind the other.
    for (std::size_t const count : {2U, 3U, 4U}) {
        row(
            "AnAssignmentTo" + std::to_string(count) + "EntriesOf", promise::usable, {},
            [make, count] { return std::pair(Result(identifiers(count)), make()); },
            [](std::pair<Result, Result>& both) { both.first = std::as_const(both.second); });
    }
    for (std::size_t const count : {2U, 4U}) {
        row(
            "AnotherStartWith" + std::to_string(count) + "Entries", promise::unchanged, {"assign"},
            [make, count] { return with_identifiers<Result>(make(), identifiers(count)); },
            [](with_identifiers<Result>& both) { both.first.assign(both.second); });
    }
    // Entries are reset one behind the other.
    row(
        "AnotherStartWithAsManyEntries", promise::usable, {"assign"},
        [make] {
            return with_identifiers<Result>(
                make(), {plc_identifier(other_text), unknown, plc_identifier(5)});
        },
        [](with_identifiers<Result>& both) { both.first.assign(both.second); });
    for (unsigned int const size : {2U, 4U}) {
        row("AResizeTo" + std::to_string(size), promise::unchanged, {"resize"}, make,
            [size](Result& target) { target.resize(size); });
    }
    row("AResizeToNothing", promise::quiet, {"resize"}, make, [](Result& target) {
        target.resize(3);
        target.resize(0);
    });
    row("AnError", promise::quiet, {"set x2", "result_type::set"}, make, [](Result& target) {
        target.set(0, io_error(v2::io_errc::not_found));
        target.set(asked, io_error(v2::io_errc::not_found));
        target.set(unknown, io_error(v2::io_errc::not_found));
        target[2].set(io_error(v2::io_errc::not_found));
    });
    row("WhatIsThereOf", promise::quiet,
        {"find x2", "size", "operator[] x2", "begin x2", "end x2", "cbegin", "cend"}, make,
        [](Result& target) {
            Result const& constant = target;
            bool const found = constant.find(asked) == target.find(asked) &&
                               target.find(unknown) == nullptr && &target[1] == &constant[1];
            bool const ends = target.begin() == constant.begin() &&
                              constant.begin() == target.cbegin() &&
                              target.end() == constant.end() && constant.end() == target.cend();
            return std::pair(target.size(), found && ends);
        });
}

browse_result three_nodes() {
    browse_result result;
    for (unsigned int i = 0; i < 3; ++i) {
        result.push({i == 1 ? node_class::folder : node_class::variable,
                     plc_identifier(long_text, i), plc_identifier(other_text), long_text,
                     v2::io_data_type::object(i)});
    }
    return result;
}

node full_node() {
    return {node_class::folder, plc_identifier(other_text), plc_identifier(4), other_text, {}};
}

} // namespace

std::vector<operation> result_operations() {
    std::vector<operation> rows;
    row_adder const row{rows};
    creation_adder const creation{rows};
    add_answer_rows<read_result>(rows, "read_result");
    add_answer_rows<write_result>(rows, "write_result");
    row("AReadingThatIsMadeAndSet", promise::unchanged,
        {"read_result::set", "read_result::result_type::set"}, three_answers<read_result>,
        [](read_result& result) { result.set(1, long_reading()); });
    row("AReadingThatIsFoundAndSet", promise::unchanged, {"read_result::set"},
        three_answers<read_result>, [](read_result& result) { result.set(asked, long_reading()); });
    row(
        "AReadingThatIsMovedIn", promise::quiet,
        {"read_result::set", "read_result::result_type::set"},
        [] { return std::pair(three_answers<read_result>(), long_reading()); },
        [](std::pair<read_result, io_data_value>& both) {
            both.first[1].set(std::move(both.second));
            both.first.set(2, io_data_value());
            both.first.set(asked, io_data_value());
        });

    std::vector<std::string> const made{"browse_result::browse_result"};
    creation("ABrowseResult", made, [] { return browse_result(); });
    creation("ABrowseResultOfASize", made, [] { return browse_result(3); });
    row(
        "ABrowseResultOfAView", promise::unchanged, made,
        [] {
            return std::vector<node>{full_node(), node(), full_node()};
        },
        [](std::vector<node> const& nodes) { return browse_result(nodes); });
    row("ACopyOfABrowseResult", promise::unchanged, made, three_nodes,
        [](browse_result const& source) { return browse_result(source); });
    row("AMoveOfABrowseResult", promise::quiet,
        {"browse_result::browse_result", "browse_result::operator="}, three_nodes,
        [](browse_result& source) {
            browse_result taken(std::move(source));
            source = std::move(taken);
        });
    row(
        "AnAssignmentToFewerNodes", promise::unchanged, {"browse_result::operator="},
        [] { return std::pair(browse_result(1), three_nodes()); },
        [](std::pair<browse_result, browse_result>& both) {
            both.first = std::as_const(both.second);
        });
    row(
        "AnAssignmentToMoreNodes", promise::usable, {"browse_result::operator="},
        [] { return std::pair(browse_result(5), three_nodes()); },
        [](std::pair<browse_result, browse_result>& both) {
            both.first = std::as_const(both.second);
        });
    row("ANodeThatIsPushed", promise::unchanged, {"browse_result::push"}, three_nodes,
        [](browse_result& result) { result.push(full_node()); });
    row(
        "ANodeThatTakesMoreRoom", promise::unchanged, {"browse_result::push"},
        [] { return browse_result(1); }, [](browse_result& result) { result.push(full_node()); });
    row("MoreNodes", promise::unchanged, {"browse_result::resize"}, three_nodes,
        [](browse_result& result) { result.resize(9); });
    row("RoomForMoreNodes", promise::unchanged, {"browse_result::reserve"}, three_nodes,
        [](browse_result& result) { result.reserve(9); });
    row("FewerNodes", promise::quiet, {"browse_result::resize", "browse_result::clear"},
        three_nodes, [](browse_result& result) {
            result.resize(1);
            result.clear();
        });
    row("WhatABrowseResultSays", promise::quiet,
        {"browse_result::get_node", "browse_result::get_node_by_browse_name", "browse_result::size",
         "browse_result::begin x2", "browse_result::end x2", "browse_result::cbegin",
         "browse_result::cend"},
        three_nodes, [](browse_result& result) {
            browse_result const& constant = result;
            bool const found = result.get_node(asked) == result.begin() + 1 &&
                               result.get_node_by_browse_name(unknown) == result.begin();
            bool const ends = constant.begin() == result.cbegin() &&
                              constant.end() == result.cend() &&
                              result.begin() + result.size() == result.end();
            return std::pair(found, ends);
        });
    row("NoNodesOfAClass", promise::unchanged, {"browse_result::get_nodes_by_class"}, three_nodes,
        [](browse_result const& result) { return result.get_nodes_by_class(node_class::type); });
    return rows;
}

INSTANTIATE_TEST_SUITE_P(Results,
                         MemoryRunsOut,
                         ::testing::ValuesIn(result_operations()),
                         name_of_row());

} // namespace allocation_failure_test
