#include "columns.hpp"

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <utility>

namespace iohost {

namespace {

constexpr std::size_t gap = 2;

std::size_t width_of(std::string const& text) {
    auto const begins = [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
    };
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), begins));
}

std::string line_of(std::vector<std::string> const& row, std::vector<std::size_t> const& widths) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
        line += row[i];
        if (i + 1 < row.size()) line.append(widths[i] - width_of(row[i]) + gap, ' ');
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

} // namespace

columns::columns(std::vector<std::string> head) {
    add(std::move(head));
}

void columns::add(std::vector<std::string> row) {
    rows_.push_back(std::move(row));
}

std::vector<std::string> columns::lines() const {
    std::vector<std::size_t> widths;
    for (auto const& row : rows_) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], width_of(row[i]));
        }
    }
    std::vector<std::string> lines;
    lines.reserve(rows_.size());
    for (auto const& row : rows_) lines.push_back(line_of(row, widths));
    return lines;
}

std::ostream& operator<<(std::ostream& out, columns const& table) {
    for (auto const& line : table.lines()) out << line << '\n';
    return out;
}

} // namespace iohost
