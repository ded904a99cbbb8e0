#include "form_listing.hpp"

#include "columns.hpp"
#include "configuration.hpp"
#include "one_line.hpp"
#include "printable.hpp"

#include <ostream>
#include <sstream>
#include <string>
#include <utility>

namespace iohost {

namespace {

namespace v2 = tavi::ioapi::v2;
namespace config = v2::config;

std::string type_name(config::option const& option) {
    std::ostringstream name;
    name << type_of(option);
    return name.str();
}

std::string quoted_if_text(v2::io_value const& value) {
    auto const* const text = value.get_if<v2::utility::string>();
    return text != nullptr ? '"' + one_line(value) + '"' : one_line(value);
}

std::string need_of(config::option const& option) {
    if (!option.optional()) return "required";
    if (!option.has_default_value()) return "optional";
    return "default " + quoted_if_text(option.default_value());
}

/// `display name: description`, or the one of the two that there is.
std::string explanation(v2::utility::string_view name, v2::utility::string_view description) {
    std::string text = name.str();
    if (!text.empty() && !description.empty()) text += ": ";
    return printable(text + description.str());
}

std::string flags_of(config::category const& category) {
    std::string words;
    if (category.wants_connection()) words = "its values are best chosen with a connection";
    if (category.collapsed()) words += std::string(words.empty() ? "" : "; ") + "folded at first";
    return words.empty() ? "" : " (" + words + ")";
}

void print_option(std::ostream& out, config::option const& option, std::string const& head) {
    out << "  " << head << '\n';
    auto const text = explanation(option.display_name(), option.description());
    if (!text.empty()) out << "      " << text << '\n';
    for (auto const& choice : option.options()) {
        auto const meaning = explanation(choice.display_name, choice.description);
        out << "      choice " << quoted_if_text(choice.value)
            << (meaning.empty() ? "" : "  " + meaning) << '\n';
    }
}

void print_category(std::ostream& out, config::category const& category) {
    out << explanation(category.name(), category.description()) << flags_of(category) << '\n';
    auto const options = category.options();
    if (options.empty()) {
        out << "  (no options)\n";
        return;
    }
    columns heads({});
    for (auto const& option : options) {
        heads.add({printable(option.key()), type_name(option), need_of(option)});
    }
    auto const lines = heads.lines();
    for (unsigned int i = 0; i < options.size(); ++i) print_option(out, options[i], lines[i + 1]);
}

json choices_of(config::option const& option) {
    json choices = json::array();
    for (auto const& choice : option.options()) {
        choices.push_back({{"value", to_json(choice.value)},
                           {"display_name", choice.display_name.str()},
                           {"description", choice.description.str()}});
    }
    return choices;
}

json option_json(config::option const& option) {
    return {{"key", option.key().str()},
            {"display_name", option.display_name().str()},
            {"description", option.description().str()},
            {"type", type_name(option)},
            {"required", !option.optional()},
            {"default", iohost::to_json(option.default_value())},
            {"choices", choices_of(option)}};
}

} // namespace

void print_form(std::ostream& out, config::config_template const& form) {
    char const* before = "";
    for (auto const& category : form.categories()) {
        out << before;
        print_category(out, category);
        before = "\n";
    }
    if (form.categories().empty()) out << "nothing to configure\n";
}

json to_json(config::config_template const& form) {
    json categories = json::array();
    for (auto const& category : form.categories()) {
        json options = json::array();
        for (auto const& option : category.options()) options.push_back(option_json(option));
        categories.push_back({{"name", category.name().str()},
                              {"description", category.description().str()},
                              {"wants_connection", category.wants_connection()},
                              {"collapsed", category.collapsed()},
                              {"options", std::move(options)}});
    }
    return {{"categories", std::move(categories)}};
}

} // namespace iohost
