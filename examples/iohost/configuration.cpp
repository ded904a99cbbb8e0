#include "configuration.hpp"

#include "assignment.hpp"
#include "failures.hpp"
#include "value_syntax.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <set>
#include <sstream>
#include <string_view>
#include <system_error>

namespace iohost {

namespace {

namespace v2 = tavi::ioapi::v2;
using kinds = v2::io_data_type::basic_types;

constexpr std::string_view blanks = " \t\r";

struct close_file {
    void operator()(std::FILE* file) const noexcept {
        (void)std::fclose(file); // it was only read
    }
};

[[noreturn]] void refuse_file(std::string const& path, int error) {
    throw setup_failure("cannot read the configuration '" + path +
                        "': " + std::generic_category().message(error));
}

std::string contents_of(std::string const& path) {
    if (path.empty()) throw setup_failure("--config is empty; give a file");
    std::unique_ptr<std::FILE, close_file> const file(std::fopen(path.c_str(), "re"));
    if (file == nullptr) refuse_file(path, errno);
    std::string text;
    std::array<char, 4096> buffer{};
    while (auto const size = std::fread(buffer.data(), 1, buffer.size(), file.get())) {
        text.append(buffer.data(), size);
    }
    if (std::ferror(file.get()) != 0) refuse_file(path, errno);
    return text;
}

std::string_view trimmed(std::string_view text) {
    auto const first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string_view without_comment(std::string_view text) {
    for (auto at = text.find('#'); at != std::string_view::npos; at = text.find('#', at + 1)) {
        bool const begins = at == 0 || blanks.find(text[at - 1]) != std::string_view::npos;
        if (begins) return text.substr(0, at);
    }
    return text;
}

/// The place behind the quote that ends the text, or none.
std::size_t end_of_quoted(std::string_view text) {
    for (std::size_t at = 1; at < text.size(); ++at) {
        if (text[at] == '\\') {
            ++at;
        } else if (text[at] == '"') {
            return at + 1;
        }
    }
    return std::string_view::npos;
}

struct line_error {
    std::string why;
};

std::string value_in(std::string_view text) {
    text = trimmed(text);
    if (!text.starts_with('"')) return std::string(trimmed(without_comment(text)));
    auto const end = end_of_quoted(text);
    if (end == std::string_view::npos) throw line_error{"the quote of the value is not closed"};
    auto const behind = text.substr(end);
    if (!trimmed(without_comment(behind)).empty()) {
        throw line_error{"something stands behind the quoted value"};
    }
    auto const value = json::parse(text.substr(0, end), nullptr, false);
    if (value.is_discarded()) throw line_error{"the quoted value is no text of JSON"};
    return value.get<std::string>();
}

std::pair<std::string, std::string> setting_in(std::string_view line) {
    auto const sign = line.find('=');
    if (sign == std::string_view::npos) throw line_error{"it has no '=' behind a key"};
    std::string key(trimmed(line.substr(0, sign)));
    if (key.empty()) throw line_error{"it has no key in front of its '='"};
    return {key, value_in(line.substr(sign + 1))};
}

std::string refusal(std::string const& text, v2::io_data_type type) {
    std::ostringstream line;
    line << "the value '" << text << "' is no " << type;
    return line.str();
}

/// Of two texts for one key the later, in the place of the former.
setting_texts counting(setting_texts const& texts) {
    setting_texts kept;
    for (auto const& each : texts) {
        auto const same_key = [&each](auto const& other) { return other.first == each.first; };
        auto const former = std::find_if(kept.begin(), kept.end(), same_key);
        if (former == kept.end()) {
            kept.push_back(each);
        } else {
            *former = each;
        }
    }
    return kept;
}

/// What a byte order mark says is known: there is no other order of UTF-8.
std::string_view without_mark(std::string_view text) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    return text.starts_with(mark) ? text.substr(mark.size()) : text;
}

} // namespace

setting_texts read_settings(std::string const& file) {
    std::istringstream lines{std::string(without_mark(contents_of(file)))};
    setting_texts texts;
    std::set<std::string> keys;
    std::size_t number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        auto const content = trimmed(line);
        try {
            if (content.find('\0') != std::string_view::npos) {
                throw line_error{"it has a zero byte, as no text has"};
            }
            if (content.empty() || content[0] == '#') continue;
            texts.push_back(setting_in(content));
            if (!keys.insert(texts.back().first).second) {
                throw line_error{"the key '" + texts.back().first + "' stands above, too"};
            }
        } catch (line_error const& error) {
            throw setup_failure(file + ": line " + std::to_string(number) + ": " + error.why);
        }
    }
    return texts;
}

setting_texts parsed_settings(std::vector<std::string> const& words) {
    setting_texts texts;
    texts.reserve(words.size());
    for (auto const& word : words) texts.push_back(split_assignment("--set KEY=VALUE", word));
    return texts;
}

v2::io_data_type type_of(v2::config::option const& option) {
    if (option.has_default_value()) return option.default_value().data_type();
    return v2::io_data_type::scalar(option.value_type());
}

converted_settings convert_settings(v2::config::config_template const& form,
                                    setting_texts const& texts) {
    converted_settings made;
    for (auto const& [key, text] : counting(texts)) {
        auto const* const option = form.get_option(key);
        auto const type = option != nullptr ? type_of(*option) : v2::io_data_type();
        if (type.basic_type == kinds::empty || type.basic_type == kinds::object) {
            made.values.set(key, text);
        } else if (auto value = text_as(text, type)) {
            made.values.set(key, std::move(*value));
        } else {
            made.values.set(key, text);
            made.unfit.emplace_back(key, refusal(text, type));
        }
    }
    return made;
}

v2::config::store configuration(v2::config::config_template const& form,
                                setting_texts const& texts) {
    auto made = convert_settings(form, texts);
    if (made.unfit.empty()) return std::move(made.values);
    std::string line;
    for (auto const& [key, why] : made.unfit) {
        line.append(line.empty() ? "option '" : "; option '").append(key).append("': ").append(why);
    }
    throw setup_failure(line);
}

} // namespace iohost
