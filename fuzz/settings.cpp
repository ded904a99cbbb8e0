#include <tavi/ioapi/v2/ioapi.hpp>

#include "model/library_value.hpp"
#include "model/random_value.hpp"
#include "support/check.hpp"
#include "support/target.hpp"

#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <optional>
#include <utility>
#include <vector>

/// \file
/// A script of operations on stores of settings and on verdicts on them.

namespace {

using namespace fuzz;
using v2::config::store;
using v2::config::verification_result;
using issue_type = verification_result::issue_type;

struct issue_model {
    int severity = 0;
    std::string message;
    std::vector<std::string> options;
};

using store_model = std::map<std::string, value_model>;
using verdict_model = std::vector<issue_model>;

issue_model random_issue(input& script) {
    issue_model model{static_cast<signed char>(script.byte()) % 5, random_text(script), {}};
    for (unsigned int i = script.below(4); i > 0; --i) model.options.push_back(random_key(script));
    return model;
}

issue_type made(issue_model const& model) {
    issue_type issue{
        verification_result::severity_type{model.severity}, v2::utility::string(model.message),
        v2::utility::array<v2::utility::string>(static_cast<unsigned int>(model.options.size()))};
    unsigned int next = 0;
    for (std::string const& each : model.options) issue.options[next++] = each;
    return issue;
}

bool same_issue(issue_type const& issue, issue_model const& model) {
    return static_cast<int>(issue.severity) == model.severity &&
           same_text(issue.message, model.message) &&
           std::equal(issue.options.begin(), issue.options.end(), model.options.begin(),
                      model.options.end(), [](auto const& one, std::string const& other) {
                          return same_text(one, other);
                      });
}

bool concerns(issue_model const& issue, std::string const& key) {
    return std::find(issue.options.begin(), issue.options.end(), key) != issue.options.end();
}

template <class Issues>
bool same_issues(Issues const& issues, verdict_model const& model) {
    return std::equal(issues.begin(), issues.end(), model.begin(), model.end(), same_issue);
}

bool same_store(store const& given, store_model const& model) {
    auto const keys = given.keys();
    unsigned int next = 0;
    for (auto const& [key, value] : model) {
        if (next == keys.size() || !same_text(keys[next++], key)) return false;
        if (!given.has(key) || !same(given.get(key), value)) return false;
    }
    return next == keys.size();
}

/// Two handles of one kind; without a model a handle is null.
template <class Handle, class Model>
class handles {
public:
    struct pair {
        Handle handle;
        std::optional<Model> model = Model();
    };

    pair& at(unsigned int index) { return pairs_.at(index); }

    void replace(input& script, pair& target, pair& source) {
        switch (script.below(4)) {
        case 0:
            target.handle = Handle();
            target.model = Model();
            break;
        case 1:
            target.handle = source.handle; // the two may be one
            if (&target != &source) target.model = source.model;
            break;
        case 2:
            if (&target == &source) break;
            target.handle = std::move(source.handle);
            target.model = std::exchange(source.model, std::nullopt);
            break;
        default: {
            Handle copy(source.handle);
            std::optional<Model> model = source.model;
            target.handle = std::move(copy);
            target.model = std::move(model);
        }
        }
    }

private:
    std::array<pair, 2> pairs_;
};

void use_store(input& script, store& values, store_model& model) {
    std::string const key = random_key(script);
    auto const found = model.find(key);
    bool const known = found != model.end();
    switch (script.below(4)) {
    case 0: {
        check(values.remove(key) == known, "remove tells whether there was a value");
        model.erase(key);
        break;
    }
    case 1: {
        value_model const fallback = random_value(script, {1, 2});
        check(values.has(key) == known, "has tells whether there is a value");
        check(same(values.get(key), known ? found->second : value_model()), "get gives the value");
        check(same(values.get(key, made(fallback)), known ? found->second : fallback),
              "get gives the value or the other one");
        break;
    }
    default: {
        value_model value = random_value(script, {2, 3});
        values.set(key, fuzz::made(value));
        model[key] = std::move(value);
    }
    }
}

void use_verdict(input& script, verification_result& verdict, verdict_model& model) {
    if (script.flag()) {
        issue_model issue = random_issue(script);
        verdict.add_issue(made(issue));
        model.push_back(std::move(issue));
        return;
    }
    std::string const key = random_key(script);
    verdict_model expected;
    std::copy_if(model.begin(), model.end(), std::back_inserter(expected),
                 [&](issue_model const& each) { return concerns(each, key); });
    int worst = 0;
    for (issue_model const& each : expected) worst = std::max(worst, each.severity);
    check(same_issues(verdict.issues_for_option(key), expected), "an option has its issues");
    check(static_cast<int>(verdict.severity_for_option(key)) == worst, "the worst issue counts");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    input script(data, size);
    handles<store, store_model> stores;
    handles<verification_result, verdict_model> verdicts;
    for (int step = 0; step < 64 && !script.empty(); ++step) {
        auto& values = stores.at(script.below(2));
        auto& verdict = verdicts.at(script.below(2));
        switch (script.below(6)) {
        case 0: stores.replace(script, values, stores.at(script.below(2))); break;
        case 1: verdicts.replace(script, verdict, verdicts.at(script.below(2))); break;
        case 2:
        case 3:
            if (values.model) use_store(script, values.handle, *values.model);
            break;
        default:
            if (verdict.model) use_verdict(script, verdict.handle, *verdict.model);
        }
        for (unsigned int i = 0; i < 2; ++i) {
            if (auto const& each = stores.at(i); each.model) {
                check(same_store(each.handle, *each.model), "a store holds what was set");
            }
            if (auto const& each = verdicts.at(i); each.model) {
                check(same_issues(each.handle, *each.model), "a verdict holds what was added");
            }
        }
    }
    return 0;
}
