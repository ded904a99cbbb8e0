#include <tavi/ioapi/v2/io_object.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include "../entry_name.hpp"
#include "../type_names.hpp"
#include "../write_request.hpp"
#include "subject.hpp"

#include <optional>
#include <set>

namespace iohost::conformance {

namespace {

namespace v2 = tavi::ioapi::v2;
using kinds = v2::io_data_type::basic_types;
using faults = std::vector<std::string>;

constexpr char const* not_allowed =
    "controllers move machines; --allow-writes writes back what was read";

v2::io_error write_one(subject const& about,
                       example::backend& backend,
                       v2::plc_identifier const& variable,
                       v2::io_value const& value) {
    v2::plc_identifier const variables[] = {variable};
    v2::write_result result(variables);
    v2::io_value const values[] = {value};
    auto const error = about.write(backend, values, result);
    return error ? error : result[0].error();
}

void judge_empty_write(subject const& about, example::backend& backend) {
    v2::write_result result;
    faults found;
    if (auto const error = about.write(backend, {}, result)) found.push_back(describe(error));
    if (!result.empty()) found.emplace_back("entries come into being");
    about.rules.judge("write_of_nothing", found, "is no error");
}

void judge_unknown(subject const& about, example::backend& backend) {
    std::vector<v2::plc_identifier> const wanted{unknown_variable(), unknown_variable()};
    v2::write_result result(wanted);
    v2::io_value const values[] = {1, 1};
    faults found;
    if (auto const error = about.write(backend, values, result)) found.push_back(describe(error));
    for (auto const& entry : result) {
        if (entry.ok()) found.emplace_back("a variable that is none is written");
        if (untouched(entry.error())) found.emplace_back("a variable that is none has no answer");
    }
    about.rules.judge("write_of_the_unknown", found, describe(result[0].error()));
}

/// A variable that was written once, with what it holds.
struct writable {
    v2::plc_identifier identifier;
    v2::io_value value;
};

/// Write the value of one variable of each type back. \return those that took it
std::vector<writable> judge_write_back(subject const& about, example::backend& backend) {
    constexpr char const* rule = "write_of_what_was_read";
    if (!about.allow_writes) {
        about.rules.skipped(rule, not_allowed);
        return {};
    }
    std::vector<writable> taken;
    std::set<std::string> types;
    std::size_t refused = 0;
    faults found;
    for (auto const& entry : about.entries) {
        if (!entry.ok() || entry.value().bad()) continue;
        auto const& value = entry.value().value();
        auto const type = name_of(value.data_type(), about.host.structures());
        if (types.count(type) != 0) continue;
        auto const error = write_one(about, backend, entry.identifier(), value);
        if (untouched(error)) {
            found.push_back("'" + name_of(entry.identifier()) + "' has no answer");
        } else if (error) {
            ++refused;
        } else {
            types.insert(type);
            taken.push_back({entry.identifier(), value});
        }
    }
    std::string detail = std::to_string(taken.size()) + " types are taken";
    for (auto const& type : types) detail += (type == *types.begin() ? ": " : ", ") + type;
    about.rules.judge(rule, found,
                      detail + "; " + std::to_string(refused) + " variables refuse and say why");
    return taken;
}

/// Whether a variable holds this value; nothing where it cannot be told.
std::optional<bool> holds(subject const& about,
                          example::backend& backend,
                          v2::plc_identifier const& variable,
                          v2::io_value const& value) {
    auto const entry = about.read_one(backend, variable);
    if (!entry.ok()) return std::nullopt;
    return identical(entry.value().value(), value);
}

/// One attempt that must fail and change nothing.
void attempt(subject const& about,
             example::backend& backend,
             writable const& known,
             v2::plc_identifier const& target,
             v2::io_value const& value,
             faults& found,
             std::size_t& tried) {
    // One that changes by itself tells nothing.
    if (holds(about, backend, known.identifier, known.value) != true) return;
    ++tried;
    auto const error = write_one(about, backend, target, value);
    auto const name = "'" + name_of(target) + "'";
    if (!error) {
        found.push_back(name + " takes " + value.printable_string().str());
        (void)write_one(about, backend, known.identifier, known.value);
    } else if (untouched(error)) {
        found.push_back(name + " has no answer");
    } else if (holds(about, backend, known.identifier, known.value) == false) {
        found.push_back(name + " refuses a value, but is changed");
        (void)write_one(about, backend, known.identifier, known.value);
    }
}

bool is_number(v2::io_data_type const& type) {
    return !type.is_array() && type.basic_type >= kinds::u8 && type.basic_type <= kinds::dbl;
}

v2::io_value too_large_for(kinds kind) {
    switch (kind) {
    case kinds::u8: return 256;
    case kinds::u16: return 65536;
    case kinds::u32: return 4294967296LL;
    case kinds::i8: return 128;
    case kinds::i16: return 32768;
    case kinds::i32: return 2147483648LL;
    case kinds::i64: return 9223372036854775808ULL;
    case kinds::u64: return -1;
    case kinds::flt: return 1e300;
    default: return {};
    }
}

void judge_attempts(subject const& about,
                    std::string const& rule,
                    faults const& found,
                    std::size_t tried,
                    std::string const& where_none) {
    if (tried == 0) {
        about.rules.skipped(rule, where_none);
    } else {
        about.rules.judge(rule, found, std::to_string(tried) + " tried");
    }
}

bool is_plain_scalar(v2::io_data_type const& type) {
    return !type.is_array() && type.basic_type != kinds::object;
}

v2::io_object with_made_up_member(v2::plc_identifier const& variable) {
    v2::io_object object;
    object.set(unknown_member(variable).secondary().text(), 1);
    return object;
}

/// A value that a variable must refuse, or the empty value where this one may take it.
using unfit_value = v2::io_value (*)(writable const& known);

v2::io_value text_for_a_number(writable const& known) {
    return is_number(known.value.data_type()) ? v2::io_value("no number") : v2::io_value();
}

v2::io_value too_large_a_number(writable const& known) {
    auto const& type = known.value.data_type();
    return is_number(type) ? too_large_for(type.basic_type) : v2::io_value();
}

v2::io_value array_for_a_scalar(writable const& known) {
    if (!is_plain_scalar(known.value.data_type())) return {};
    return v2::utility::array<int>{1, 2};
}

v2::io_value scalar_for_an_array(writable const& known) {
    return known.value.is_array() ? v2::io_value(1) : v2::io_value();
}

v2::io_value object_for_a_scalar(writable const& known) {
    if (!is_plain_scalar(known.value.data_type())) return {};
    return with_made_up_member(known.identifier);
}

v2::io_value wrong_member_of_a_structure(writable const& known) {
    if (known.value.get_if<v2::io_object>() == nullptr) return {};
    return with_made_up_member(known.identifier);
}

struct refusal_rule {
    char const* name;
    unfit_value unfit;
    char const* where_none;
};

constexpr refusal_rule refusal_rules[] = {
    {"text_for_a_number_is_refused", text_for_a_number, "no number can be written"},
    {"too_large_a_number_is_refused", too_large_a_number,
     "no number can be written that has an end"},
    {"array_for_a_scalar_is_refused", array_for_a_scalar, "no scalar can be written"},
    {"scalar_for_an_array_is_refused", scalar_for_an_array, "no array can be written"},
    {"object_for_a_scalar_is_refused", object_for_a_scalar, "no scalar can be written"},
    {"wrong_member_is_refused", wrong_member_of_a_structure, "no structure can be written"},
};

void judge_refusals(subject const& about,
                    example::backend& backend,
                    std::vector<writable> const& variables) {
    bool const may_write = about.allow_writes || !about.writes.empty();
    auto const why = [may_write](char const* where_none) {
        return may_write ? where_none : not_allowed;
    };
    for (auto const& rule : refusal_rules) {
        faults found;
        std::size_t tried = 0;
        for (auto const& known : variables) {
            auto const unfit = rule.unfit(known);
            if (unfit.empty()) continue;
            attempt(about, backend, known, known.identifier, unfit, found, tried);
        }
        judge_attempts(about, rule.name, found, tried, why(rule.where_none));
    }
    faults empties;
    faults members;
    std::size_t empty_count = 0;
    std::size_t member_count = 0;
    for (auto const& known : variables) {
        attempt(about, backend, known, known.identifier, {}, empties, empty_count);
        attempt(about, backend, known, unknown_member(known.identifier), 1, members, member_count);
    }
    judge_attempts(about, "empty_value_is_refused", empties, empty_count,
                   why("nothing can be written"));
    judge_attempts(about, "unknown_member_is_refused", members, member_count,
                   why("nothing can be written"));
}

/// The value that a variable has, twice in one request.
void judge_repeated(subject const& about,
                    example::backend& backend,
                    std::vector<writable> const& variables) {
    constexpr char const* rule = "write_of_the_same_twice";
    if (variables.empty()) {
        bool const may_write = about.allow_writes || !about.writes.empty();
        about.rules.skipped(rule, may_write ? "nothing can be written" : not_allowed);
        return;
    }
    auto const& [identifier, value] = variables.front();
    auto const name = "'" + name_of(identifier) + "'";
    std::vector<v2::plc_identifier> const wanted{identifier, identifier};
    v2::write_result result(wanted);
    v2::io_value const values[] = {value, value};
    faults found;
    if (auto const error = about.write(backend, values, result)) found.push_back(describe(error));
    if (result.size() != wanted.size()) {
        found.emplace_back("the number of entries is another than before");
    }
    for (auto const& entry : result) {
        if (untouched(entry.error())) {
            found.push_back(name + " has no answer");
        } else if (!entry.ok()) {
            found.push_back(name + " gives " + describe(entry.error()));
        }
    }
    about.rules.judge(rule, found, "both entries are written");
}

/// One of `--write`: written, read, and the former value put back.
void judge_given(subject const& about,
                 example::backend& backend,
                 assignment const& given,
                 faults& found,
                 std::vector<writable>& taken) {
    auto const name = "'" + name_of(given.identifier) + "'";
    auto const before = about.read_one(backend, given.identifier);
    v2::io_error error;
    auto const value = value_of(given, backend, about.host.structures(), error);
    if (!error) error = write_one(about, backend, given.identifier, value);
    if (error) {
        found.push_back(name + " is not written: " + describe(error));
        return;
    }
    auto const after = about.read_one(backend, given.identifier);
    if (!after.ok()) {
        found.push_back(name + " cannot be read back: " + describe(after.error()));
    } else if (value.get_if<v2::io_object>() == nullptr && after.value().value() != value) {
        found.push_back(name + " reads as " + after.value().value().printable_string().str() +
                        " after " + value.printable_string().str() + " was written");
    }
    if (!before.ok()) return;
    error = write_one(about, backend, given.identifier, before.value().value());
    if (error) {
        found.push_back(name + " does not take its former value back: " + describe(error));
    } else {
        taken.push_back({given.identifier, before.value().value()});
    }
}

void judge_all_given(subject const& about,
                     example::backend& backend,
                     std::vector<writable>& taken) {
    constexpr char const* rule = "write_of_what_was_given";
    if (about.writes.empty()) {
        about.rules.skipped(rule, "nothing is given by --write");
        return;
    }
    faults found;
    for (auto const& given : about.writes) judge_given(about, backend, given, found, taken);
    about.rules.judge(rule, found,
                      std::to_string(about.writes.size()) + " written, read and put back");
}

} // namespace

void judge_writing(subject& about) {
    auto& backend = about.connection();
    judge_empty_write(about, backend);
    judge_unknown(about, backend);
    auto taken = judge_write_back(about, backend);
    judge_all_given(about, backend, taken);
    judge_repeated(about, backend, taken);
    judge_refusals(about, backend, taken);
}

} // namespace iohost::conformance
