#include "text.hpp"

#include "failure.hpp"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <system_error>

namespace linux_backend {

namespace {

// A line may be as long as a file, and a message should not.
std::string quoted(std::string_view word) {
    constexpr std::size_t most = 40;
    std::string const shown(word.substr(0, most));
    return "'" + shown + (word.size() > most ? "...'" : "'");
}

template <class Number>
Number number_in(std::string_view word) {
    Number number = 0;
    char const* const end = word.data() + word.size();
    auto const [stop, error] = std::from_chars(word.data(), end, number);
    if (error == std::errc::result_out_of_range) throw bad_text(quoted(word) + " is too large");
    if (error != std::errc() || stop != end) throw bad_text(quoted(word) + " is no number");
    return number;
}

} // namespace

std::vector<std::string_view> lines_of(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        auto const end = text.find('\n');
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return lines;
}

std::vector<std::string_view> words_of(std::string_view line) {
    constexpr std::string_view blanks = " \t";
    std::vector<std::string_view> words;
    auto begin = line.find_first_not_of(blanks);
    while (begin != std::string_view::npos) {
        auto const end = line.find_first_of(blanks, begin);
        words.push_back(line.substr(begin, end - begin));
        begin = line.find_first_not_of(blanks, end);
    }
    return words;
}

std::vector<std::string_view> words_of(std::string_view line, std::size_t least) {
    auto words = words_of(line);
    if (words.size() < least) throw bad_text("too few words in " + quoted(line));
    return words;
}

std::string_view line_with(std::string_view text, std::string_view key) {
    for (auto const line : lines_of(text)) {
        bool const begins = line.substr(0, key.size()) == key;
        if (begins && (line.size() == key.size() || line[key.size()] == ' ')) return line;
    }
    throw bad_text(linux_errc::value_absent, "no line " + quoted(key));
}

std::string_view first_line(std::string_view text) {
    auto const line = text.substr(0, text.find('\n'));
    if (line.empty()) throw bad_text("the first line is empty");
    return line;
}

unsigned long long whole_number(std::string_view word) {
    return number_in<unsigned long long>(word);
}

long long signed_number(std::string_view word) {
    return number_in<long long>(word);
}

double decimal_number(std::string_view word) {
    auto const number = number_in<double>(word);
    if (!std::isfinite(number)) throw bad_text(quoted(word) + " is no number");
    return number;
}

unsigned long long product(unsigned long long count, unsigned int unit) {
    if (count > std::numeric_limits<unsigned long long>::max() / unit) {
        throw bad_text(std::to_string(count) + " units are too many");
    }
    return count * unit;
}

} // namespace linux_backend
