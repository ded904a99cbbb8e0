#include "tables.hpp"

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace allocation_failure_test {
namespace {

using v2::io_object;
using v2::io_value;
using v2::plc_identifier;
using v2::plc_identifier_part;
using v2::detail::iokern_allocator_base;
using v2::utility::array;
using v2::utility::string;

/// The rows that arrays of any element have.
template <class T>
void add_array_rows(std::vector<operation>& rows, std::string const& of, array<T> (*make)()) {
    std::vector<std::string> const tries{"detail::iokern_allocator_base::allocate"};
    rows.push_back(creation_of("DefaultElementsOf" + of, tries, [] { return array<T>(3); }));
    rows.push_back(creation_of("ListedElementsOf" + of, tries, make));
    rows.push_back(operation_of("ACopyOf" + of, promise::unchanged, tries, make,
                                [](array<T> const& list) { return array<T>(list); }));
    rows.push_back(operation_of("ACopyOfAVectorOf" + of, promise::unchanged, tries, make,
                                [](array<T> const& list) { return array<T>(list.to_vector()); }));
    rows.push_back(operation_of("AMoveOf" + of, promise::quiet,
                                {"detail::iokern_allocator_base::deallocate"}, make,
                                [](array<T>& list) {
                                    array<T> taken(std::move(list));
                                    list = std::move(taken);
                                }));
    // Into fewer, as many and more elements.
    for (unsigned int const count : {0U, 3U, 5U}) {
        auto const target = [make, count] { return std::pair(array<T>(count), make()); };
        bool const is_quiet = count == 3 && std::is_arithmetic_v<T>;
        rows.push_back(operation_of(
            "AnAssignmentTo" + std::to_string(count) + of,
            is_quiet ? promise::quiet : promise::usable, tries, target,
            [](std::pair<array<T>, array<T>>& both) { both.first = std::as_const(both.second); }));
    }
}

io_object an_object() {
    io_object object;
    object.set(long_text, long_text);
    return object;
}

} // namespace

std::vector<operation> container_operations() {
    std::vector<operation> rows;
    row_adder const row{rows};
    creation_adder const creation{rows};
    auto const gateway = std::vector<std::string>{"detail::iokern_allocator_base::allocate"};

    creation("AText", gateway, [] { return string(long_text); });
    creation("AnEmptyTextWithABlock", gateway, [] { return string(nullptr, 0); });
    creation("ATextOfAView", gateway, [] { return string(std::string_view(long_text)); });
    row(
        "ACopyOfAPlainText", promise::unchanged, gateway, [] { return string(long_text); },
        [](string const& source) { return string(source); });
    row(
        "AStandardCopyOfAText", promise::unchanged, {}, [] { return string(long_text); },
        [](string const& source) { return source.str(); });
    row(
        "AnAssignmentOfAnotherLength", promise::unchanged, gateway,
        [] { return string(long_text); }, [](string& target) { target = other_text; });
    row(
        "AnAssignmentOfTheSameLength", promise::quiet, {},
        [] { return std::pair(string(long_text), string(long_text)); },
        [](std::pair<string, string>& both) { both.first = std::as_const(both.second); });
    row(
        "AnAssignmentOfAnEmptyText", promise::quiet, {"detail::iokern_allocator_base::deallocate"},
        [] { return string(long_text); }, [](string& target) { target = string(); });

    add_array_rows<int>(rows, "Numbers", [] { return array<int>{1, 2, 3}; });
    add_array_rows<double>(rows, "WideNumbers", [] { return array<double>{1, 2, 3}; });
    add_array_rows<string>(rows, "TextsInAnArray", [] {
        return array<string>{long_text, "", other_text};
    });
    add_array_rows<io_value>(rows, "ValuesInAnArray",
                             [] { return array<io_value>::of(long_text, 5, an_object()); });
    add_array_rows<io_object>(rows, "ObjectsInAnArray", [] {
        return array<io_object>::of(an_object(), io_object(), an_object());
    });

    creation("AnIdentifierOfTexts", gateway, [] { return plc_identifier(long_text, other_text); });
    creation("AnIdentifierOfAnEmptyText", gateway, [] { return plc_identifier("", 4); });
    auto const identifier = [] { return plc_identifier(long_text, other_text); };
    row("ACopyOfAnIdentifier", promise::unchanged, gateway, identifier,
        [](plc_identifier const& source) { return plc_identifier(source); });
    row("AMoveOfAnIdentifier", promise::quiet, {}, identifier, [](plc_identifier& source) {
        plc_identifier taken(std::move(source));
        source = std::move(taken);
    });
    row("AnIdentifierOfNumbers", promise::quiet, {}, identifier,
        [](plc_identifier& target) { target = plc_identifier(4, 5); });
    row("AComparisonOfIdentifiers", promise::quiet, {}, identifier,
        [](plc_identifier const& one) { return one == one && !(one < one); });
    // The old payload goes first: the part can be read and be given another one.
    row(
        "AnAssignmentOfAnIdentifier", promise::usable, gateway,
        [] { return std::pair(plc_identifier("a", 4), plc_identifier(long_text, other_text)); },
        [](std::pair<plc_identifier, plc_identifier>& both) {
            both.first = std::as_const(both.second);
        });
    row(
        "AnAssignmentOfAPart", promise::usable, gateway,
        [] { return std::pair(plc_identifier_part(7), plc_identifier_part(long_text)); },
        [](std::pair<plc_identifier_part, plc_identifier_part>& both) {
            both.first = std::as_const(both.second);
        });

    // The gateway itself says it by a null pointer.
    auto const block_row = [&](char const* name, auto allocate) {
        row(
            name, promise::reported, std::vector<std::string>{gateway.front()},
            [] { return std::monostate(); }, allocate, std::string("0"));
    };
    block_row("APlainBlock", [](std::monostate) {
        void* const block = iokern_allocator_base::allocate(100);
        ::operator delete(block);
        return block != nullptr;
    });
    block_row("AnAlignedBlock", [](std::monostate) {
        void* const block = iokern_allocator_base::allocate(100, 32);
        iokern_allocator_base::deallocate(block, 100, 32);
        return block != nullptr;
    });
    return rows;
}

INSTANTIATE_TEST_SUITE_P(Containers,
                         MemoryRunsOut,
                         ::testing::ValuesIn(container_operations()),
                         name_of_row());

} // namespace allocation_failure_test
