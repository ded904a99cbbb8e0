#pragma once

#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// \file
/// The tables of a guide, as its readers see them.

namespace docs_test {

using table_row = std::vector<std::string>;

/// The head, then the rows.
using markdown_table = std::vector<table_row>;

inline std::string trimmed(std::string_view text) {
    auto const first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

inline table_row cells_of(std::string const& line) {
    table_row cells;
    std::istringstream rest(line.substr(1));
    for (std::string cell; std::getline(rest, cell, '|');) cells.push_back(trimmed(cell));
    return cells;
}

/// Whether this is the line between the head of a table and its rows.
inline bool is_rule(std::string const& line) {
    return line.find_first_not_of("|-: ") == std::string::npos;
}

/// The tables of one guide, by the first cell and the second: `{"From", "`float`"}`.
class guide {
public:
    /// \param name  such as `conversions.md`
    explicit guide(std::string const& name) {
        std::ifstream file(DOCS_PATH "/" + name);
        if (!file) throw std::runtime_error("cannot read " DOCS_PATH "/" + name);
        markdown_table table;
        for (std::string line; std::getline(file, line);) {
            if (line.empty() || line.front() != '|') {
                take(table);
            } else if (!is_rule(line)) {
                table.push_back(cells_of(line));
            }
        }
        take(table);
    }

    /// The one table whose head begins with these two cells; it lives as long as the guide.
    [[nodiscard]] markdown_table const& table(std::string const& first,
                                              std::string const& second) const& {
        auto const found = tables_.find({first, second});
        if (found == tables_.end()) {
            throw std::runtime_error("no table begins with " + first + " | " + second);
        }
        return found->second;
    }

    markdown_table const& table(std::string const&, std::string const&) const&& = delete;

private:
    void take(markdown_table& table) {
        if (table.empty()) return;
        for (table_row const& row : table) {
            if (row.size() != table.front().size()) {
                throw std::runtime_error("a row of another width: " + row.front());
            }
        }
        auto const key = std::make_pair(table.front().at(0), table.front().at(1));
        if (!tables_.emplace(key, std::move(table)).second) {
            throw std::runtime_error("two tables begin with " + key.first + " | " + key.second);
        }
        table.clear();
    }

    std::map<std::pair<std::string, std::string>, markdown_table> tables_;
};

/// What a cell names, its items between commas, without the marks of code.
inline std::vector<std::string> items_of(std::string const& cell) {
    std::vector<std::string> items;
    std::istringstream rest(cell);
    for (std::string item; std::getline(rest, item, ',');) {
        std::string plain = trimmed(item);
        if (plain.size() > 2 && plain.front() == '`') plain = plain.substr(1, plain.size() - 2);
        items.push_back(plain);
    }
    return items;
}

} // namespace docs_test
