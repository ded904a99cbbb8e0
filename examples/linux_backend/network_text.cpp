#include "network_text.hpp"

#include "failure.hpp"
#include "text.hpp"

#include <cstddef>
#include <unordered_set>

namespace linux_backend {

namespace {

std::string_view trimmed(std::string_view text) {
    auto const begin = text.find_first_not_of(' ');
    return begin == std::string_view::npos ? std::string_view() : text.substr(begin);
}

// Of the eight counters of a direction the first four are the same for both.
traffic direction(std::vector<std::string_view> const& words, std::size_t first) {
    return {whole_number(words[first]), whole_number(words[first + 1]),
            whole_number(words[first + 2]), whole_number(words[first + 3])};
}

} // namespace

std::vector<interface_line> interface_lines(std::string_view text) {
    auto const lines = lines_of(text);
    if (lines.empty() || lines[0].find('|') == std::string_view::npos) {
        throw bad_text("no heading");
    }
    std::vector<interface_line> list;
    std::unordered_set<std::string_view> names;
    for (auto const line : lines) {
        if (line.find('|') != std::string_view::npos) continue; // the heading takes two lines
        auto const colon = line.rfind(':');
        if (colon == std::string_view::npos) throw bad_text("a line without a colon");
        auto const name = trimmed(line.substr(0, colon));
        if (names.insert(name).second) {
            list.push_back({std::string(name), std::string(line.substr(colon + 1))});
        }
    }
    return list;
}

interface_traffic traffic_in(std::string_view counters) {
    auto const words = words_of(counters, 16);
    return {direction(words, 0), direction(words, 8)};
}

} // namespace linux_backend
