#include <tavi/ioapi/v2/io_value.hpp>

#include "../batches.hpp"
#include "../entry_name.hpp"
#include "../failures.hpp"
#include "../type_names.hpp"
#include "subject.hpp"

#include <algorithm>

namespace iohost::conformance {

namespace {

namespace v2 = tavi::ioapi::v2;
using faults = std::vector<std::string>;

constexpr std::size_t few = 10;

void judge_empty_read(subject const& about, example::backend& backend) {
    v2::read_result result;
    faults found;
    if (auto const error = about.read(backend, result)) found.push_back(describe(error));
    if (!result.empty()) found.emplace_back("entries come into being");
    about.rules.judge("read_of_nothing", found, "is no error");
}

void judge_unknown(subject const& about,
                   example::backend& backend,
                   std::string const& rule,
                   v2::plc_identifier const& variable) {
    auto const entry = about.read_one(backend, variable);
    faults found;
    if (entry.ok()) found.push_back("'" + name_of(variable) + "' has a value");
    if (untouched(entry.error())) found.push_back("'" + name_of(variable) + "' has no answer");
    about.rules.judge(rule, found, describe(entry.error()));
}

/// Every variable, by batches, as they would be read; what is said of them is kept.
void judge_all(subject& about, example::backend& backend) {
    faults found;
    std::vector<v2::plc_identifier> identifiers;
    identifiers.reserve(about.variables.size());
    for (auto const& node : about.variables) identifiers.push_back(node.identifier);
    for (std::size_t first = 0; first < identifiers.size(); first += batch_size) {
        auto const size = std::min<std::size_t>(batch_size, identifiers.size() - first);
        v2::read_result batch(v2::utility::data_view<v2::plc_identifier const>(
            identifiers.data() + first, static_cast<unsigned int>(size)));
        if (auto const error = about.read(backend, batch)) {
            throw operation_failure("read", error);
        }
        about.entries.insert(about.entries.end(), batch.begin(), batch.end());
    }
    for (auto const& entry : about.entries) {
        if (untouched(entry.error())) {
            found.push_back("'" + name_of(entry.identifier()) + "' has no answer");
        }
    }
    auto const good = std::count_if(about.entries.begin(), about.entries.end(),
                                    [](auto const& entry) { return entry.ok(); });
    about.rules.judge("every_variable_is_answered_for", found,
                      std::to_string(good) + " have values, " +
                          std::to_string(about.entries.size() - static_cast<std::size_t>(good)) +
                          " say why not");
}

void judge_types(subject const& about) {
    faults found;
    std::size_t compared = 0;
    for (std::size_t i = 0; i < about.entries.size(); ++i) {
        auto const& entry = about.entries[i];
        auto const& browsed = about.variables[i].data_type;
        if (!entry.ok() || browsed == v2::io_data_type()) continue;
        ++compared;
        auto const& read = entry.value().value().data_type();
        if (read == browsed) continue;
        auto& structures = about.host.structures();
        found.push_back("'" + name_of(entry.identifier()) + "' is " + name_of(browsed, structures) +
                        " by browse and " + name_of(read, structures) + " by read");
    }
    about.rules.judge("types_of_browse_and_read_agree", found,
                      std::to_string(compared) + " compared");
}

void judge_repeated(subject const& about, example::backend& backend) {
    constexpr char const* rule = "read_of_the_same_twice";
    auto const known = about.readable(1);
    if (known.empty()) {
        about.rules.skipped(rule, "no variable has a value");
        return;
    }
    auto const& variable = known.front().identifier;
    std::vector<v2::plc_identifier> const wanted{variable, variable};
    v2::read_result result(wanted);
    faults found;
    if (auto const error = about.read(backend, result)) found.push_back(describe(error));
    for (auto const& entry : result) {
        if (!entry.ok()) {
            found.push_back("'" + name_of(variable) + "' gives " + describe(entry.error()));
        }
    }
    about.rules.judge(rule, found, "both entries have the value");
}

/// What has values, what is unknown, and what is of bad quality or in error by itself.
std::vector<v2::plc_identifier> mixed(subject const& about) {
    std::vector<v2::plc_identifier> wanted;
    auto const add_some = [&](auto fits) {
        std::size_t left = few;
        for (auto const& entry : about.entries) {
            if (left != 0 && !untouched(entry.error()) && fits(entry)) {
                wanted.push_back(entry.identifier());
                --left;
            }
        }
    };
    add_some([](auto const& entry) { return entry.ok() && !entry.value().bad(); });
    wanted.push_back(unknown_variable());
    if (!about.variables.empty()) {
        wanted.push_back(unknown_member(about.variables.front().identifier));
    }
    add_some([](auto const& entry) { return !entry.ok() || entry.value().bad(); });
    return wanted;
}

void judge_mixed(subject const& about, example::backend& backend) {
    auto const wanted = mixed(about);
    v2::read_result result(wanted);
    faults found;
    if (auto const error = about.read(backend, result)) found.push_back(describe(error));
    if (result.size() != wanted.size()) {
        found.emplace_back("the number of entries is another than before");
    } else {
        for (unsigned int i = 0; i < result.size(); ++i) {
            if (result[i].identifier() != wanted[i]) {
                found.push_back("'" + name_of(wanted[i]) + "' stands no longer in its place");
            } else if (untouched(result[i].error())) {
                found.push_back("'" + name_of(wanted[i]) + "' has no answer");
            }
        }
    }
    about.rules.judge("mixed_read_answers_every_entry", found,
                      std::to_string(wanted.size()) + " entries");
}

} // namespace

void judge_reading(subject& about) {
    auto& backend = about.connection();
    judge_empty_read(about, backend);
    judge_unknown(about, backend, "read_of_the_unknown", unknown_variable());
    judge_all(about, backend);
    judge_types(about);
    judge_repeated(about, backend);
    if (about.variables.empty()) {
        about.rules.skipped("read_of_an_unknown_member", "there is no variable");
    } else {
        judge_unknown(about, backend, "read_of_an_unknown_member",
                      unknown_member(about.variables.front().identifier));
    }
    judge_mixed(about, backend);
}

} // namespace iohost::conformance
