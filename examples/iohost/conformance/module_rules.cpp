#include <tavi/ioapi/v2/io_value.hpp>

#include "../configuration.hpp"
#include "../verdict.hpp"
#include "subject.hpp"

#include <algorithm>
#include <set>

namespace iohost::conformance {

namespace {

namespace v2 = tavi::ioapi::v2;
namespace config = v2::config;
using kinds = v2::io_data_type::basic_types;
using faults = std::vector<std::string>;

constexpr char const* made_up_key = "key_that_iohost_check_has_made_up";

std::string quoted(std::string const& text) {
    return "'" + text + "'";
}

std::vector<config::option> options_of(config::config_template const& form) {
    std::vector<config::option> all;
    for (auto const& category : form.categories()) {
        all.insert(all.end(), category.options().begin(), category.options().end());
    }
    return all;
}

bool names(config::verification_result const& verdict, std::string const& key) {
    return verdict.severity_for_option(key) >= config::verification_result::severity_type::error;
}

/// Looks at each verdict besides what is asked of it.
class judge_of_configurations {
public:
    judge_of_configurations(subject const& about, config::config_template const& form)
        : about_(about), form_(form) {}

    [[nodiscard]] config::verification_result verify(config::store const& values) {
        config::verification_result verdict;
        auto const error = about_.seen.call("verify", [&](v2::io_error& outcome) {
            about_.module.operations().verify(values, verdict, outcome);
        });
        if (error) unsound_.push_back("verify: " + describe(error));
        for (auto const& issue : verdict) look_at(issue, values);
        return verdict;
    }

    [[nodiscard]] faults const& unsound() const noexcept { return unsound_; }

    /// Nothing, or why `open` does not refuse the configuration as it should.
    [[nodiscard]] std::string opened_all_the_same(config::store const& values) const {
        v2::utility::string problem;
        backend_ptr opened;
        auto const error = about_.seen.call("open", [&](v2::io_error& outcome) {
            opened.reset(about_.module.operations().open(values, v2::backend_query(about_.host),
                                                         problem, outcome));
        });
        if (opened != nullptr) return "is opened";
        if (!error) return "is refused without an error";
        if (problem.empty()) return "is refused without a line for people";
        return {};
    }

private:
    void look_at(config::verification_result::issue_type const& issue,
                 config::store const& values) {
        using severity = config::verification_result::severity_type;
        if (issue.severity < severity::none || issue.severity > severity::error) {
            unsound_.push_back("an issue of " + name_of(issue.severity));
        }
        if (issue.message.empty()) unsound_.emplace_back("an issue without a message");
        for (auto const& key : issue.options) {
            if (form_.get_option(key) == nullptr && !values.has(key)) {
                unsound_.push_back("an issue names the key " + quoted(key.str()) +
                                   ", which is neither in the form nor in the configuration");
            }
        }
    }

    subject const& about_;
    config::config_template const& form_;
    faults unsound_;
};

void judge_description(subject const& about) {
    example::module_info info;
    auto const error = about.seen.call("describe", [&](v2::io_error& outcome) {
        about.module.operations().describe(info, outcome);
    });
    faults found;
    std::string const name = info.name.str();
    std::string const summary = info.summary.str();
    if (error) found.push_back("describe: " + describe(error));
    if (name.empty() || name.find_first_of(" \t\n/") != std::string::npos) {
        found.push_back("the name " + quoted(name) + " is no word");
    }
    if (summary.empty() || summary.back() == '.' || summary.find('\n') != std::string::npos) {
        found.push_back("the summary " + quoted(summary) + " is not one line without a full stop");
    }
    about.rules.judge("module_describes_itself", found, name + ": " + summary);
}

void judge_form(subject const& about, config::config_template const& form) {
    faults found;
    std::set<std::string> keys; // of the whole form: a configuration has one value for each
    for (auto const& category : form.categories()) {
        if (category.name().empty()) found.emplace_back("a category has no name");
        for (auto const& option : category.options()) {
            auto const key = option.key().str();
            if (key.empty()) found.emplace_back("an option has no key");
            if (!keys.insert(key).second)
                found.push_back("the key " + quoted(key) + " stands twice");
            if (v2::name_of(option.value_type()) == nullptr) {
                found.push_back("option " + quoted(key) + " is of no known type");
            }
        }
    }
    about.rules.judge("form_is_sound", found,
                      std::to_string(options_of(form).size()) + " options in " +
                          std::to_string(form.categories().size()) + " categories");
}

void judge_defaults(subject const& about, std::vector<config::option> const& options) {
    faults found;
    std::size_t count = 0;
    for (auto const& option : options) {
        if (!option.has_default_value()) continue;
        ++count;
        auto const& value = option.default_value();
        auto const key = quoted(option.key().str());
        auto const choices = option.options();
        bool const among = std::any_of(choices.begin(), choices.end(),
                                       [&](auto const& choice) { return choice.value == value; });
        if (!choices.empty() && !among) {
            found.push_back("the default of " + key + " is none of its choices");
        }
    }
    about.rules.judge("defaults_fit_their_options", found, std::to_string(count) + " defaults");
}

void judge_choices(subject const& about, std::vector<config::option> const& options) {
    faults found;
    std::size_t count = 0;
    for (auto const& option : options) {
        if (v2::name_of(option.value_type()) == nullptr) continue; // which is said already
        auto const type = v2::io_data_type::scalar(option.value_type());
        for (auto const& choice : option.options()) {
            ++count;
            if (choice.value.empty() || !choice.value.converts_to(type)) {
                found.push_back("the choice " + quoted(choice.display_name.str()) + " of " +
                                quoted(option.key().str()) + " is no " +
                                v2::name_of(option.value_type()));
            }
        }
    }
    about.rules.judge("choices_fit_their_options", found, std::to_string(count) + " choices");
}

void judge_empty_configuration(subject const& about,
                               std::vector<config::option> const& options,
                               judge_of_configurations& judge) {
    constexpr char const* rule = "defaults_alone_are_accepted";
    std::string required;
    for (auto const& option : options) {
        if (!option.optional()) required += (required.empty() ? "" : ", ") + option.key().str();
    }
    if (!required.empty()) {
        about.rules.skipped(rule, "there are options without a default: " + required);
        return;
    }
    auto const verdict = judge.verify({});
    faults found;
    for (auto const& issue : verdict) {
        if (issue.severity >= config::verification_result::severity_type::error) {
            found.push_back("the configuration without any value is refused: " +
                            issue.message.str());
        }
    }
    about.rules.judge(rule, found, "the configuration without any value");
}

/// What must be refused, and under which rule.
struct wrong_configuration {
    std::string what;
    std::string key;
    config::store values;
};

std::vector<wrong_configuration> unknown_keys(subject const& about) {
    wrong_configuration wrong{"an unknown key", made_up_key, about.values};
    wrong.values.set(made_up_key, "1");
    return {wrong};
}

std::vector<wrong_configuration> missing_values(subject const& about,
                                                std::vector<config::option> const& options) {
    std::vector<wrong_configuration> all;
    for (auto const& option : options) {
        if (option.optional()) continue;
        auto const key = option.key().str();
        wrong_configuration wrong{"the configuration without " + quoted(key), key, about.values};
        wrong.values.remove(option.key());
        all.push_back(std::move(wrong));
    }
    return all;
}

/// One that does not convert. To a truth value everything does.
v2::io_value unfit_for(kinds kind) {
    if (kind == kinds::string) return v2::utility::array<int>{1, 2};
    if (kind >= kinds::u8 && kind <= kinds::dbl) return "no number";
    return {};
}

std::vector<wrong_configuration> wrong_types(subject const& about,
                                             std::vector<config::option> const& options) {
    std::vector<wrong_configuration> all;
    for (auto const& option : options) {
        auto value = unfit_for(option.value_type());
        if (value.empty() || type_of(option).is_array()) continue;
        auto const key = option.key().str();
        wrong_configuration wrong{"a value of a wrong type for " + quoted(key), key, about.values};
        wrong.values.set(option.key(), std::move(value));
        all.push_back(std::move(wrong));
    }
    return all;
}

/// \return why open does not refuse what verify does
faults judge_refusals(subject const& about,
                      std::string const& rule,
                      std::vector<wrong_configuration> const& configurations,
                      std::string const& where_none,
                      judge_of_configurations& judge) {
    if (configurations.empty()) {
        about.rules.skipped(rule, where_none);
        return {};
    }
    faults found;
    faults opened;
    for (auto const& [what, key, values] : configurations) {
        auto const verdict = judge.verify(values);
        if (!has_error(verdict)) {
            found.push_back(what + " is no error");
        } else if (!names(verdict, key)) {
            found.push_back(what + " is an error that does not name " + quoted(key));
        }
        if (!has_error(verdict)) continue;
        auto const why = judge.opened_all_the_same(values);
        if (why.empty()) continue;
        opened.push_back(what);
        opened.back().append(", an error by verify, ").append(why);
    }
    about.rules.judge(rule, found, std::to_string(configurations.size()) + " tried");
    return opened;
}

} // namespace

void judge_module(subject const& about) {
    judge_description(about);
    config::config_template form;
    auto const error = about.seen.call(
        "form", [&](v2::io_error& outcome) { about.module.operations().form(form, outcome); });
    if (error) {
        about.rules.failed("form_is_sound", "form: " + describe(error));
        return;
    }
    judge_form(about, form);
    auto const options = options_of(form);
    judge_defaults(about, options);
    judge_choices(about, options);
    judge_of_configurations judge(about, form);
    judge_empty_configuration(about, options, judge);
    auto opened = judge_refusals(about, "unknown_key_is_an_error", unknown_keys(about), "", judge);
    auto const add = [&opened](faults more) {
        opened.insert(opened.end(), more.begin(), more.end());
    };
    add(judge_refusals(about, "missing_value_is_an_error", missing_values(about, options),
                       "every option has a default", judge));
    add(judge_refusals(about, "wrong_type_is_an_error", wrong_types(about, options),
                       "there is no option of a number or a text", judge));
    about.rules.judge("open_refuses_what_verify_does", opened, "each with an error and a line");
    about.rules.judge("issues_are_sound", judge.unsound(),
                      "each has a message and names keys that there are");
}

} // namespace iohost::conformance
