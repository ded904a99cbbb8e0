#include "map_parser.hpp"

#include "map_line.hpp"
#include "map_type.hpp"
#include "map_words.hpp"

#include <algorithm>
#include <istream>
#include <memory>
#include <optional>
#include <sstream>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace modbus_backend {

namespace {

std::string trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\v\f";
    auto const first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return std::string(text.substr(first, text.find_last_not_of(blanks) - first + 1));
}

map_line line_in(std::string const& line) {
    std::istringstream text(line);
    map_line found;
    for (std::string word; text >> word;) {
        if (word[0] == '#') {
            std::string rest;
            std::getline(text, rest);
            found.comment = trimmed(std::string_view(word + rest).substr(1));
            break;
        }
        found.words.push_back(word);
    }
    return found;
}

/// Remembers where names stand.
class name_register {
public:
    void add(std::string const& name, unsigned int line) {
        auto const [place, is_new] = lines_.try_emplace(name, line);
        if (!is_new) {
            throw bad_line(in_quotes(name) + " stands on line " + std::to_string(place->second) +
                           " already");
        }
    }

private:
    std::unordered_map<std::string, unsigned int> lines_;
};

/// A structure whose `end` is still to come.
struct open_structure {
    unsigned int line;
    structure described{};
    name_register members{};
};

class parser {
public:
    explicit parser(part_orders orders) : orders_(orders) {}

    void take(map_line const& line, unsigned int number) {
        std::string const& first = line.words[0];
        if (first == "structure") {
            begin_structure(line, number);
        } else if (first == "end") {
            end_structure(line);
        } else if (open_) {
            add_member(line, number);
        } else {
            read_.variables.push_back(variable_in(line, context()));
            variables_.add(first, number);
        }
    }

    map_contents finish() {
        if (open_) {
            throw map_error(open_->line,
                            "structure " + in_quotes(open_->described.name) + " has no end");
        }
        return std::move(read_);
    }

private:
    [[nodiscard]] line_context context() const { return {orders_, read_.structures}; }

    void begin_structure(map_line const& line, unsigned int number) {
        auto const& words = line.words;
        if (open_) {
            throw bad_line("structure " + in_quotes(open_->described.name) +
                           " has no end yet, and none stands within another");
        }
        if (words.size() != 2) throw bad_line("expected structure NAME");
        require_structure_name(words[1]);
        structures_.add(words[1], number);
        open_.emplace(open_structure{number});
        open_->described.name = words[1];
        open_->described.description = line.comment;
    }

    void add_member(map_line const& line, unsigned int number) {
        structure& described = open_->described;
        described.members.push_back(member_in(line, context()));
        open_->members.add(line.words[0], number);
        auto const& added = described.members.back();
        described.width = std::max(described.width, added.offset + added.type.width());
    }

    void end_structure(map_line const& line) {
        if (!open_) throw bad_line("'end' without a structure");
        if (line.words.size() != 1) throw bad_line("expected end and no more");
        if (open_->described.members.empty()) {
            throw bad_line("structure " + in_quotes(open_->described.name) + " has no members");
        }
        read_.structures.push_back(std::make_shared<structure>(std::move(open_->described)));
        open_.reset();
    }

    part_orders orders_;
    map_contents read_;
    name_register variables_;
    name_register structures_;
    std::optional<open_structure> open_;
};

} // namespace

map_contents parse_map(std::istream& text, part_orders orders) {
    parser reading(orders);
    unsigned int number = 0;
    for (std::string line; std::getline(text, line);) {
        ++number;
        try {
            auto const found = line_in(line);
            if (!found.words.empty()) reading.take(found, number);
        } catch (bad_line const& error) {
            throw map_error(number, error.what());
        }
    }
    return reading.finish();
}

} // namespace modbus_backend
