#include <tavi/ioapi/v2/ioapi.hpp>

#include "model/library_value.hpp"
#include "model/random_value.hpp"
#include "support/check.hpp"
#include "support/target.hpp"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <utility>
#include <vector>

/// \file
/// A script of operations on a form of categories and options.

namespace {

using namespace fuzz;
using v2::config::category;
using v2::config::config_template;
using v2::config::option;

struct choice_model {
    std::string display_name;
    std::string description;
    value_model value;
};

struct option_model {
    std::string key;
    std::string display_name;
    std::string description;
    types value_type = types::empty;
    value_model default_value;
    bool optional = false;
    std::vector<choice_model> choices;
};

struct category_model {
    std::string name;
    std::string description;
    bool wants_connection = false;
    bool collapsed = false;
    std::vector<option_model> options;
};

using form_model = std::vector<category_model>;

// --- from the script ---

std::vector<choice_model> random_choices(input& script) {
    std::vector<choice_model> choices(script.below(4));
    for (choice_model& each : choices) {
        each = {random_key(script), random_key(script), random_value(script, {1, 2})};
    }
    return choices;
}

option_model random_option(input& script) {
    option_model model;
    model.key = random_key(script);
    model.display_name = random_key(script);
    model.description = random_text(script);
    model.optional = script.flag();
    if (model.optional) {
        model.default_value = random_value(script, {1, 2});
        model.value_type = model.default_value.type.basic_type;
    } else {
        model.value_type = random_type(script).basic_type;
    }
    model.choices = random_choices(script);
    return model;
}

category_model random_category(input& script) {
    category_model model{random_key(script), random_text(script), script.flag(), script.flag(), {}};
    for (unsigned int i = script.below(4); i > 0; --i) {
        model.options.push_back(random_option(script));
    }
    return model;
}

// --- to the library ---

std::vector<option::value_option> made_all(std::vector<choice_model> const& models) {
    std::vector<option::value_option> choices;
    choices.reserve(models.size());
    for (choice_model const& each : models) {
        choices.push_back({v2::utility::string(each.display_name),
                           v2::utility::string(each.description), fuzz::made(each.value)});
    }
    return choices;
}

option made(option_model const& model) {
    auto const choices = made_all(model.choices);
    if (model.optional) {
        return {model.key, model.display_name, model.description, fuzz::made(model.default_value),
                choices};
    }
    return {model.key, model.display_name, model.description, model.value_type, choices};
}

category made(category_model const& model) {
    std::vector<option> options;
    options.reserve(model.options.size());
    for (option_model const& each : model.options) options.push_back(made(each));
    return {model.name, model.description, model.wants_connection, model.collapsed, options};
}

// --- and back ---

template <class Given, class Model>
bool same_all(Given const& given, std::vector<Model> const& models) {
    return std::equal(given.begin(), given.end(), models.begin(), models.end(),
                      [](auto const& one, Model const& model) { return same_part(one, model); });
}

bool same_part(option::value_option const& choice, choice_model const& model) {
    return same_text(choice.display_name, model.display_name) &&
           same_text(choice.description, model.description) && same(choice.value, model.value);
}

bool same_part(option const& given, option_model const& model) {
    return same_text(given.key(), model.key) &&
           same_text(given.display_name(), model.display_name) &&
           same_text(given.description(), model.description) &&
           given.value_type() == model.value_type && given.optional() == model.optional &&
           given.has_default_value() == (model.default_value.type != io_data_type()) &&
           same(given.default_value(), model.default_value) &&
           same_all(given.options(), model.choices);
}

bool same_part(category const& given, category_model const& model) {
    return same_text(given.name(), model.name) &&
           same_text(given.description(), model.description) &&
           given.wants_connection() == model.wants_connection &&
           given.collapsed() == model.collapsed && same_all(given.options(), model.options);
}

/// The first of its key or name, or null.
option_model* first_of(std::vector<option_model>& models, std::string const& key) {
    auto const found = std::find_if(models.begin(), models.end(),
                                    [&](option_model const& each) { return each.key == key; });
    return found == models.end() ? nullptr : &*found;
}

category_model* first_of(form_model& models, std::string const& name) {
    auto const found = std::find_if(models.begin(), models.end(),
                                    [&](category_model const& each) { return each.name == name; });
    return found == models.end() ? nullptr : &*found;
}

option_model* first_option_of(form_model& models, std::string const& key) {
    for (category_model& each : models) {
        if (option_model* const found = first_of(each.options, key)) return found;
    }
    return nullptr;
}

/// Without a model the handle is null.
struct pair {
    config_template form;
    std::optional<form_model> model = form_model();
};

class machine {
public:
    explicit machine(input& script) : script_(script) {}

    void run() {
        for (int step = 0; step < 40 && !script_.empty(); ++step) {
            pair& target = slot();
            if (target.model && script_.below(4) != 0) {
                use(target.form, *target.model);
            } else {
                replace(target, slot());
            }
            for (pair const& each : slots_) {
                if (!each.model) continue;
                check(same_all(each.form.categories(), *each.model), "a form is as it was made");
            }
        }
    }

private:
    pair& slot() { return slots_.at(script_.below(2)); }

    void replace(pair& target, pair& source) {
        switch (script_.below(4)) {
        case 0: return build(target);
        case 1:
            target.form = source.form; // the two may be one
            if (&target != &source) target.model = source.model;
            break;
        case 2:
            if (&target == &source) break;
            target.form = std::move(source.form);
            target.model = std::exchange(source.model, std::nullopt);
            break;
        default: {
            config_template copy(source.form);
            std::optional<form_model> model = source.model;
            target.form = std::move(copy);
            target.model = std::move(model);
        }
        }
    }

    void build(pair& target) {
        form_model model(script_.below(4));
        std::vector<category> categories;
        for (category_model& each : model) {
            each = random_category(script_);
            categories.push_back(made(each));
        }
        target.form = config_template(categories);
        target.model = std::move(model);
    }

    void use(config_template& form, form_model& model) {
        switch (script_.below(6)) {
        case 0: return add_category(form, model);
        case 1: return remove_category(form, model);
        case 2: return ask(form, model);
        case 3: return change_option(form, model);
        default: return use_category(form, model);
        }
    }

    void add_category(config_template& form, form_model& model) {
        category_model added = random_category(script_);
        bool const is_new = first_of(model, added.name) == nullptr;
        check(form.add_category(made(added)) == is_new, "a name is taken once");
        if (is_new) model.push_back(std::move(added));
    }

    void remove_category(config_template& form, form_model& model) {
        std::string const name = random_key(script_);
        category_model* const found = first_of(model, name);
        check(form.remove_category(name) == (found != nullptr), "remove_category tells of it");
        if (found != nullptr) model.erase(model.begin() + (found - model.data()));
    }

    void ask(config_template& form, form_model& model) {
        std::string const key = random_key(script_);
        category_model* const found = first_of(model, key);
        bool const known = found != nullptr;
        check(form.has_category(key) == known, "has_category is as the rules");
        check(form.has_option(key) == known, "has_option tells of categories");
        category const* const given = std::as_const(form).get_category(key);
        check(given == form.get_category(key), "both forms of get_category agree");
        check(given == (known ? form.categories().data() + (found - model.data()) : nullptr),
              "get_category gives the first");
        option_model const* const wanted = first_option_of(model, key);
        option const* const setting = std::as_const(form).get_option(key);
        check(setting == form.get_option(key), "both forms of get_option agree");
        check((setting != nullptr) == (wanted != nullptr), "get_option looks at all categories");
        if (setting != nullptr) check(same_part(*setting, *wanted), "get_option gives the first");
    }

    void change_option(config_template& form, form_model& model) {
        std::string const key = random_key(script_);
        option* const setting = form.get_option(key);
        option_model* const wanted = first_option_of(model, key);
        check((setting != nullptr) == (wanted != nullptr), "get_option finds what there is");
        if (setting == nullptr) return;
        if (script_.flag()) {
            wanted->choices = random_choices(script_);
            setting->options(made_all(wanted->choices));
        } else if (script_.flag()) {
            setting->options(setting->options()); // its own
        } else {
            *wanted = random_option(script_);
            *setting = made(*wanted);
        }
    }

    void use_category(config_template& form, form_model& model) {
        if (model.empty()) return;
        auto const at = script_.byte() % static_cast<unsigned int>(model.size());
        category& group = form.categories()[at];
        category_model& expected = model[at];
        std::string const key = random_key(script_);
        switch (script_.below(4)) {
        case 0: {
            option_model* const found = first_of(expected.options, key);
            check(group.has_option(key) == (found != nullptr), "has_option of a category is so");
            check(group.remove_option(key) == (found != nullptr), "remove_option tells of it");
            if (found != nullptr) {
                expected.options.erase(expected.options.begin() +
                                       (found - expected.options.data()));
            }
            break;
        }
        case 1: add_own_option(group, expected); break;
        default: add_option(group, expected);
        }
    }

    void add_option(category& group, category_model& expected) {
        option_model added = random_option(script_);
        bool const is_new = first_of(expected.options, added.key) == nullptr;
        option const setting = made(added);
        bool const taken =
            script_.flag() ? group.add_option(setting) : group.add_option(option(setting));
        check(taken == is_new, "a key is taken once");
        if (is_new) expected.options.push_back(std::move(added));
    }

    /// Its key is always taken.
    static void add_own_option(category& group, category_model const& expected) {
        if (expected.options.empty()) return;
        check(!group.add_option(std::as_const(group).options()[0]), "an option is there once");
    }

    input& script_;
    std::array<pair, 2> slots_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    input script(data, size);
    machine(script).run();
    return 0;
}
