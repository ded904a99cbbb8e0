#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace iohost {

/// Rows of cells, each as wide as the widest of its column and two blanks from the next; the last
/// one of a row is as wide as it is. Widths are counted in characters of UTF-8.
class columns {
public:
    explicit columns(std::vector<std::string> head);

    void add(std::vector<std::string> row);
    [[nodiscard]] std::vector<std::string> lines() const;

private:
    std::vector<std::vector<std::string>> rows_;
};

/// Print the lines of it.
std::ostream& operator<<(std::ostream& out, columns const& table);

} // namespace iohost
