#pragma once

#include "conversion_samples.hpp"
#include "markdown_table.hpp"
#include "type_names.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// \file
/// What the cells of the conversion tables say, as code. Nothing here asks the library.

namespace docs_test {

/// What a conversion must give.
template <class T>
struct conversion_outcome {
    T value{};
    int code = 0;
};

inline whole_number parsed_number(std::string const& text) {
    bool const negative = text.front() == '-';
    return {negative, std::stoull(text.substr(negative ? 1 : 0))};
}

/// The two ends of a cell such as `-128..127`.
inline std::pair<whole_number, whole_number> range_of(std::string const& text) {
    auto const dots = text.find("..");
    if (dots == std::string::npos) throw std::runtime_error("no range: " + text);
    return {parsed_number(text.substr(0, dots)), parsed_number(text.substr(dots + 2))};
}

inline bool starts_with(std::string const& text, std::string_view start) {
    return text.compare(0, start.size(), start) == 0;
}

/// The code of a cell such as `no (4)`, 0 for every other.
inline int refusal_of(std::string const& cell) {
    return starts_with(cell, "no (") ? std::stoi(cell.substr(4)) : 0;
}

/// All tables of the guide, by the names of this platform.
class conversion_rules {
public:
    conversion_rules() : guide_("conversions.md") {
        for (table_row const& row : guide_.table("Word", "Stands for")) {
            words_[row[0]] = items_of(row[1]);
        }
        read_matrix("`signed char`");
        read_matrix("`unsigned char`, `char`");
        read_matrix("`float`");
        read_matrix("`bool`");
        read_matrix("`array<bool>`");
        read_list(guide_.table("To", "What becomes of the whole number"), 1, fittings_);
        read_list(guide_.table("To", "Form"), 1, forms_);
        read_list(guide_.table("To", "Form"), 2, text_ranges_);
    }

    [[nodiscard]] guide const& tables() const { return guide_; }

    /// How often the tables speak of a source and a target.
    [[nodiscard]] std::size_t count(std::string const& source, std::string const& target) const {
        return cells_.count({source, target});
    }
    [[nodiscard]] std::size_t pairs() const { return cells_.size(); }

    [[nodiscard]] std::string const& cell(std::string const& source,
                                          std::string const& target) const {
        auto const found = cells_.find({source, target});
        if (found == cells_.end()) throw std::runtime_error("no cell: " + source + ", " + target);
        return found->second;
    }

    /// What the tables promise for one source value.
    template <class T>
    [[nodiscard]] conversion_outcome<T> expected(conversion_sample const& sample) const {
        std::string const& says = cell(sample.source, name_of_type<T>());
        if (int const code = refusal_of(says); code != 0) return {T(), code};
        if constexpr (std::is_same_v<T, bool>) {
            return {truth(says, sample)};
        } else if constexpr (std::is_same_v<T, v2::utility::string>) {
            return {v2::utility::string(text(says, sample))};
        } else {
            return number<T>(says, sample);
        }
    }

    /// What becomes of a whole number in floating point on its way to `T`.
    template <class T>
    [[nodiscard]] T fitted(double real) const {
        std::string const& says = fittings_.at(name_of_type<T>());
        whole_number number{real < 0, static_cast<unsigned long long>(std::fabs(real))};
        if (starts_with(says, "clamped to ")) {
            auto const comma = says.find(',');
            auto const [lowest, highest] = range_of(says.substr(11, comma - 11));
            if (!(lowest <= number)) number = lowest;
            if (!(number <= highest)) number = highest;
            if (comma != std::string::npos) {
                auto const width = says.find("low ");
                if (std::stoul(says.substr(width + 4)) != 8 * sizeof(T)) throw_unknown(says);
            }
        } else if (says != "itself") {
            throw_unknown(says);
        }
        return number_as<T>(number);
    }

private:
    [[noreturn]] static void throw_unknown(std::string const& cell) {
        throw std::runtime_error("a cell that means nothing: " + cell);
    }

    /// What a cell stands for, group words resolved, without the names of other platforms.
    std::vector<std::string> names_in(std::string const& cell) const {
        std::vector<std::string> names;
        for (std::string const& item : items_of(cell)) {
            auto const word = words_.find(item);
            auto const& meant = word != words_.end() ? word->second : std::vector{item};
            for (std::string const& name : meant) {
                if (!is_of_other_model(name)) names.push_back(name);
            }
        }
        return names;
    }

    void read_matrix(std::string const& second_head) {
        auto const& table = guide_.table("From", second_head);
        for (std::size_t row = 1; row < table.size(); ++row) {
            for (std::size_t column = 1; column < table[row].size(); ++column) {
                for (auto const& source : names_in(table[row][0])) {
                    for (auto const& target : names_in(table[0][column])) {
                        auto const key = std::make_pair(source, target);
                        if (!cells_.emplace(key, table[row][column]).second) {
                            throw std::runtime_error("twice: " + source + ", " + target);
                        }
                    }
                }
            }
        }
    }

    void read_list(markdown_table const& table,
                   std::size_t column,
                   std::map<std::string, std::string>& list) const {
        for (std::size_t row = 1; row < table.size(); ++row) {
            for (auto const& name : names_in(table[row][0])) list[name] = table[row][column];
        }
    }

    // --- to numbers ---

    template <class T>
    conversion_outcome<T> number(std::string const& says, conversion_sample const& sample) const {
        if (says == "0") return {};
        if (says == "parsed") return parsed<T>(sample.text);
        if (says == "all") return {all<T>(sample)};
        if (starts_with(says, "whole to ")) return whole<T>(std::stoull(says.substr(9)), sample);
        if (starts_with(says, "rounded to ")) {
            bool const within = std::fabs(sample.real) <= std::stod(says.substr(11));
            if (!within) return {T(), 4};
            return {static_cast<T>(sample.real)};
        }
        auto const [lowest, highest] = range_of(says);
        bool const within = lowest <= sample.number && sample.number <= highest;
        if (!within) return {T(), 4};
        return {number_as<T>(sample.number)};
    }

    template <class T>
    static T all(conversion_sample const& sample) {
        if (sample.source == "float" || sample.source == "double") {
            return static_cast<T>(sample.real);
        }
        return number_as<T>(sample.number);
    }

    template <class T>
    conversion_outcome<T> whole(unsigned long long limit, conversion_sample const& sample) const {
        bool const passes = std::fabs(sample.real) <= static_cast<double>(limit) &&
                            std::floor(sample.real) == sample.real;
        if (!passes) return {T(), 4};
        if constexpr (std::is_integral_v<T>) return {fitted<T>(sample.real)};
        return {T(), -1};
    }

    // --- texts to numbers ---

    template <class T>
    conversion_outcome<T> parsed(std::string const& text) const {
        if (text.empty()) return {};
        std::string const& form = forms_.at(name_of_type<T>());
        if constexpr (std::is_floating_point_v<T>) {
            if (form != "`std::from_chars`, general") throw_unknown(form);
            return parsed_real<T>(text);
        } else {
            bool const with_sign = form == "digits, `-` allowed";
            if (!with_sign && form != "digits") throw_unknown(form);
            return parsed_digits<T>(text, with_sign);
        }
    }

    template <class T>
    conversion_outcome<T> parsed_digits(std::string const& text, bool with_sign) const {
        bool const negative = with_sign && text.front() == '-';
        std::string digits = text.substr(negative ? 1 : 0);
        bool const all_digits =
            !digits.empty() && digits.find_first_not_of("0123456789") == std::string::npos;
        if (!all_digits) return {T(), 3};
        digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size() - 1));
        // One digit more than 2^64 - 1 has, or a text above it, is beyond every range.
        bool const beyond =
            digits.size() > 20 || (digits.size() == 20 && digits > "18446744073709551615");
        if (beyond) return {T(), 3};
        whole_number const number{negative, std::stoull(digits)};
        auto const [lowest, highest] = range_of(text_ranges_.at(name_of_type<T>()));
        bool const within = lowest <= number && number <= highest;
        if (!within) return {T(), 3};
        return {number_as<T>(number)};
    }

    /// The samples are few: what each one is stands here, not with a parser.
    template <class T>
    conversion_outcome<T> parsed_real(std::string const& text) const {
        static std::map<std::string, double> const known{
            {"1e3", 1000}, {".5", 0.5},       {"-2.5", -2.5},      {"4.25", 4.25},
            {"0.0", 0},    {"inf", HUGE_VAL}, {"-inf", -HUGE_VAL}, {"nan", NAN}};
        if (auto const found = known.find(text); found != known.end()) {
            return {static_cast<T>(found->second)};
        }
        long double const largest =
            std::strtold(text_ranges_.at(name_of_type<T>()).c_str(), nullptr);
        for (auto const& [power, exponent] : {std::pair{"1e39", 39}, std::pair{"1e400", 400}}) {
            if (text != power) continue;
            if (std::log10(largest) < exponent) return {T(), 3};
            return {static_cast<T>(std::strtold(power, nullptr))};
        }
        std::string const digits = text.substr(text.front() == '-' ? 1 : 0);
        bool const all_digits =
            !digits.empty() && digits.find_first_not_of("0123456789") == std::string::npos;
        if (!all_digits) return {T(), 3};
        // A number of digits alone, rounded once.
        return {static_cast<T>(std::strtold(text.c_str(), nullptr))};
    }

    // --- to truth values and texts ---

    bool truth(std::string const& says, conversion_sample const& sample) const {
        if (says == "false" || says == "true") return says == "true";
        if (says == "itself" || says == "whether it has elements") return sample.flag;
        if (says == "whether it is not 0") {
            return sample.number.magnitude != 0 || !(sample.real == 0);
        }
        if (says == "false for a text that is empty or a number equal to 0") {
            auto const read = parsed<double>(sample.text);
            return read.code != 0 || !(read.value == 0);
        }
        throw_unknown(says);
    }

    static std::string text(std::string const& says, conversion_sample const& sample) {
        if (says == "an empty text") return "";
        if (says == "itself") return sample.text;
        if (says == "\"true\" or \"false\"") return sample.flag ? "true" : "false";
        if (says == "decimal digits") {
            return (sample.number.negative ? "-" : "") + std::to_string(sample.number.magnitude);
        }
        if (says == "the shortest text that reads back") {
            char buffer[100];
            char* const last = buffer + sizeof(buffer);
            auto const end = sample.source == "float"
                                 ? std::to_chars(buffer, last, static_cast<float>(sample.real)).ptr
                                 : std::to_chars(buffer, last, sample.real).ptr;
            return {buffer, end};
        }
        throw_unknown(says);
    }

    guide guide_;
    std::map<std::string, std::vector<std::string>> words_;
    std::map<std::pair<std::string, std::string>, std::string> cells_;
    std::map<std::string, std::string> fittings_;
    std::map<std::string, std::string> forms_;
    std::map<std::string, std::string> text_ranges_;
};

} // namespace docs_test
