#include "tables.hpp"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace allocation_failure_test {
namespace {

using config::category;
using config::config_template;
using config::option;
using config::store;
using config::verification_result;
using v2::io_value;
using value_option = option::value_option;
using issue_type = verification_result::issue_type;
using texts = v2::utility::array<v2::utility::string>;

constexpr char const* third_text = "a third text that takes a block of its own, too";

std::vector<value_option> choices(char const* text) {
    return {{text, text, text}, {"", "", texts{text, ""}}, {text, "", 1}};
}

option full_option(char const* key = long_text) {
    return option(key, long_text, long_text, io_value(texts{long_text, other_text}),
                  choices(long_text));
}
option bare_option() {
    return option("a", "", "", v2::io_data_type::basic_types::i32);
}
// As many choices and a default, but others.
option other_option() {
    return option(other_text, "", other_text, io_value(other_text), choices(other_text));
}

category full_category(char const* name = long_text) {
    option const options[] = {full_option(long_text), full_option(other_text)};
    return category(name, long_text, true, false, options);
}
category bare_category() {
    return category("a", "", false, false);
}
category other_category() {
    option const options[] = {other_option(), bare_option(), bare_option()};
    return category(other_text, "", false, true, options);
}

config_template full_template() {
    category const categories[] = {full_category(long_text), full_category(other_text)};
    return config_template(categories);
}
config_template other_template() {
    category const categories[] = {other_category(), bare_category(), bare_category()};
    return config_template(categories);
}

store full_store() {
    store values;
    values.set(long_text, long_text);
    values.set(other_text, texts{long_text, other_text});
    return values;
}
store other_store() {
    store values;
    values.set(long_text, texts{other_text});
    values.set("a", 1);
    values.set("b", third_text);
    return values;
}

issue_type full_issue() {
    return {verification_result::severity_type::error, long_text, {long_text, other_text}};
}
verification_result full_verdict() {
    verification_result result;
    result.add_issue(full_issue());
    result.add_issue({verification_result::severity_type::warning, other_text, {other_text}});
    return result;
}
verification_result other_verdict() {
    verification_result result;
    for (int i = 0; i < 3; ++i) {
        result.add_issue({verification_result::severity_type::none, third_text, {third_text}});
    }
    return result;
}

/// The rows of copies, for a handle that copies deep.
template <class Handle>
void add_config_handle_rows(std::vector<operation>& rows,
                            std::string const& handle,
                            Handle (*full)(),
                            Handle (*other)()) {
    using both = std::pair<Handle, Handle>;
    std::string const exported = "config::" + handle;
    std::string const constructor = exported + "::" + handle;
    std::string const assignment = exported + "::operator=";
    auto const assign = [](both& handles) { handles.first = std::as_const(handles.second); };
    rows.push_back(operation_of("ACopyOfA_" + handle, promise::unchanged, {constructor}, full,
                                [](Handle const& source) { return Handle(source); }));
    // In place, both ways: what is there is replaced, dropped or added to.
    rows.push_back(operation_of(
        "AnAssignmentToAFull_" + handle, promise::usable, {assignment},
        [=] { return both(full(), other()); }, assign));
    rows.push_back(operation_of(
        "AnAssignmentOfAFull_" + handle, promise::usable, {assignment},
        [=] { return both(other(), full()); }, assign));
    rows.push_back(operation_of(
        "AnAssignmentToAMovedFrom_" + handle, promise::unchanged, {assignment},
        [=] {
            both handles(other(), full());
            Handle const gone(std::move(handles.first));
            return handles;
        },
        assign));
    rows.push_back(operation_of("AMoveOfA_" + handle, promise::quiet, {constructor, assignment},
                                full, [](Handle& source) {
                                    Handle taken(std::move(source));
                                    source = std::move(taken);
                                }));
}

template <class Row>
void add_option_rows(Row const& row) {
    row(
        "ChoicesThatAreReplaced", promise::unchanged, {"option::options"},
        [] { return full_option(); }, [](option& target) { target.options(choices(other_text)); });
    row(
        "WhatAnOptionSays", promise::quiet,
        {"option::key", "option::display_name", "option::description", "option::value_type",
         "option::has_default_value", "option::default_value", "option::optional",
         "option::options"},
        [] { return full_option(); },
        [](option const& of) {
            bool const flags = of.has_default_value() && of.optional() &&
                               of.default_value().data_type().basic_type == of.value_type();
            return std::pair(flags, of.key().size() + of.display_name().size() +
                                        of.description().size() + of.options().size());
        });
}

template <class Row>
void add_category_rows(Row const& row) {
    auto const make = [] { return full_category(); };
    row("AnOptionThatIsAdded", promise::unchanged, {"category::add_option"}, make,
        [](category& target) { return target.add_option(full_option(third_text)); });
    row(
        "ACopyOfAnOptionThatIsAdded", promise::unchanged, {"category::add_option"},
        [] { return std::pair(full_category(), full_option(third_text)); },
        [](std::pair<category, option>& both) {
            return both.first.add_option(std::as_const(both.second));
        });
    row("AnOptionWhoseKeyIsTaken", promise::unchanged, {"category::add_option"}, make,
        [](category& target) { return target.add_option(full_option(long_text)); });
    row("WhatACategorySays", promise::quiet,
        {"category::name", "category::description", "category::wants_connection",
         "category::collapsed", "category::options x2", "category::has_option",
         "category::get_option x2", "category::remove_option"},
        make, [](category& of) {
            category const& constant = of;
            bool const flags = of.wants_connection() && !of.collapsed() && of.has_option(long_text);
            bool const same = of.get_option(long_text) == constant.get_option(long_text) &&
                              of.options().size() == constant.options().size();
            auto const length = of.name().size() + of.description().size();
            return std::pair(std::pair(flags, same), length + of.remove_option(long_text));
        });
}

template <class Row>
void add_template_rows(Row const& row) {
    row("ACategoryThatIsAdded", promise::unchanged, {"config_template::add_category"},
        full_template,
        [](config_template& target) { return target.add_category(full_category(third_text)); });
    row("ACategoryWhoseNameIsTaken", promise::unchanged, {"config_template::add_category"},
        full_template,
        [](config_template& target) { return target.add_category(full_category(long_text)); });
    row("WhatATemplateSays", promise::quiet,
        {"config_template::categories x2", "config_template::has_category",
         "config_template::get_category x2", "config_template::get_option x2",
         "config_template::has_option", "config_template::remove_category"},
        full_template, [](config_template& of) {
            config_template const& constant = of;
            bool const found = of.has_category(long_text) && of.has_option(long_text);
            bool const same = of.get_category(long_text) == constant.get_category(long_text) &&
                              of.get_option(other_text) == constant.get_option(other_text) &&
                              of.categories().size() == constant.categories().size();
            return std::pair(std::pair(found, same), of.remove_category(long_text));
        });
}

template <class Row>
void add_store_rows(Row const& row) {
    row("AValueUnderANewKey", promise::unchanged, {"store::set"}, full_store,
        [](store& values) { values.set(third_text, io_value(other_text)); });
    row("AValueInPlaceOfAnother", promise::unchanged, {"store::set"}, full_store,
        [](store& values) { values.set(long_text, io_value(texts{third_text})); });
    row("AValueThatIsCopiedOut", promise::unchanged, {"store::get"}, full_store,
        [](store const& values) { return values.get(other_text); });
    row(
        "ADefaultThatIsCopied", promise::unchanged, {"store::get"},
        [] { return std::pair(full_store(), io_value(third_text)); },
        [](std::pair<store, io_value> const& both) {
            return both.first.get("not there", both.second);
        });
    row(
        "TheValueOfAnOption", promise::unchanged, {"store::get"},
        [] { return std::pair(full_store(), full_option()); },
        [](std::pair<store, option> const& both) {
            return config::get_or_default(both.first, both.second);
        });
    row("TheKeysOfAStore", promise::unchanged, {"store::keys"}, full_store,
        [](store const& values) { return values.keys(); });
    row("WhatAStoreSays", promise::quiet, {"store::has", "store::remove"}, full_store,
        [](store& values) { return std::pair(values.has(long_text), values.remove(other_text)); });
}

template <class Row>
void add_verdict_rows(Row const& row) {
    row("AnIssueThatIsAdded", promise::unchanged, {"verification_result::add_issue"}, full_verdict,
        [](verification_result& result) { result.add_issue(full_issue()); });
    row("TheIssuesOfAnOption", promise::unchanged, {"verification_result::issues_for_option"},
        full_verdict,
        [](verification_result const& result) { return result.issues_for_option(other_text); });
    row("WhatAVerdictSays", promise::quiet,
        {"verification_result::severity_for_option", "verification_result::begin x2",
         "verification_result::end x2", "verification_result::cbegin", "verification_result::cend"},
        full_verdict, [](verification_result& result) {
            verification_result const& constant = result;
            bool const ends = result.begin() == constant.begin() &&
                              constant.begin() == result.cbegin() &&
                              result.end() == constant.end() && constant.end() == result.cend();
            return std::pair(ends, static_cast<int>(result.severity_for_option(other_text)));
        });
}

} // namespace

std::vector<operation> configuration_operations() {
    std::vector<operation> rows;
    auto const row = [&rows](std::string const& name, promise kept, std::vector<std::string> tries,
                             auto make, auto run) {
        for (std::string& tried : tries) tried = "config::" + tried;
        rows.push_back(operation_of(name, kept, std::move(tries), make, run));
    };
    auto const creation = [&rows](std::string const& name, char const* tried, auto run) {
        rows.push_back(creation_of(name, {tried}, run));
    };

    creation("ARequiredOption", "config::option::option", [] {
        return option(long_text, long_text, long_text, v2::io_data_type::basic_types::i32,
                      choices(long_text));
    });
    creation("AnOptionWithADefault", "config::option::option", [] { return full_option(); });
    creation("ACategory", "config::category::category", [] { return full_category(); });
    creation("AnEmptyTemplate", "config::config_template::config_template",
             [] { return config_template(); });
    creation("ATemplate", "config::config_template::config_template", full_template);
    creation("AStore", "config::store::store", full_store);
    creation("AVerdict", "config::verification_result::verification_result", full_verdict);

    add_config_handle_rows<option>(
        rows, "option", [] { return full_option(); }, other_option);
    add_config_handle_rows<category>(
        rows, "category", [] { return full_category(); }, other_category);
    add_config_handle_rows<config_template>(rows, "config_template", full_template, other_template);
    add_config_handle_rows<store>(rows, "store", full_store, other_store);
    add_config_handle_rows<verification_result>(rows, "verification_result", full_verdict,
                                                other_verdict);
    add_option_rows(row);
    add_category_rows(row);
    add_template_rows(row);
    add_store_rows(row);
    add_verdict_rows(row);
    return rows;
}

INSTANTIATE_TEST_SUITE_P(Configuration,
                         MemoryRunsOut,
                         ::testing::ValuesIn(configuration_operations()),
                         name_of_row());

} // namespace allocation_failure_test
