#include "map_parser.hpp"

#include "map_line.hpp"
#include "map_type.hpp"
#include "map_words.hpp"

#include <algorithm>
#include <istream>
#include <memory>
#include <optional>
#include <sstream>
#include <unordered_map>
#include <utility>

namespace modbus_backend {

namespace {

using words = std::vector<std::string>;

words words_in(std::string const& line) {
    std::istringstream text(line);
    words found;
    for (std::string word; text >> word && word[0] != '#';) found.push_back(word);
    return found;
}

/// Remembers where names stand.
class name_register {
public:
    void add(std::string const& name, unsigned int line) {
        auto const [place, is_new] = lines_.try_emplace(name, line);
        if (!is_new) {
            throw bad_line(quoted(name) + " stands on line " + std::to_string(place->second) +
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
    void take(words const& line, unsigned int number) {
        if (line[0] == "structure") {
            begin_structure(line, number);
        } else if (line[0] == "end") {
            end_structure(line);
        } else if (open_) {
            add_member(line, number);
        } else {
            read_.variables.push_back(variable_in(line, read_.structures));
            variables_.add(line[0], number);
        }
    }

    map_contents finish() {
        if (open_) {
            throw map_error(open_->line,
                            "structure " + quoted(open_->described.name) + " has no end");
        }
        return std::move(read_);
    }

private:
    void begin_structure(words const& line, unsigned int number) {
        if (open_) {
            throw bad_line("structure " + quoted(open_->described.name) +
                           " has no end yet, and none stands within another");
        }
        if (line.size() != 2) throw bad_line("expected structure NAME");
        require_structure_name(line[1]);
        structures_.add(line[1], number);
        open_.emplace(open_structure{number});
        open_->described.name = line[1];
    }

    void add_member(words const& line, unsigned int number) {
        structure& described = open_->described;
        described.members.push_back(member_in(line, read_.structures));
        open_->members.add(line[0], number);
        auto const& added = described.members.back();
        described.width = std::max(described.width, added.offset + added.type.width());
    }

    void end_structure(words const& line) {
        if (!open_) throw bad_line("'end' without a structure");
        if (line.size() != 1) throw bad_line("expected end and no more");
        if (open_->described.members.empty()) {
            throw bad_line("structure " + quoted(open_->described.name) + " has no members");
        }
        read_.structures.push_back(std::make_shared<structure>(std::move(open_->described)));
        open_.reset();
    }

    map_contents read_;
    name_register variables_;
    name_register structures_;
    std::optional<open_structure> open_;
};

} // namespace

map_contents parse_map(std::istream& text) {
    parser reading;
    unsigned int number = 0;
    for (std::string line; std::getline(text, line);) {
        ++number;
        try {
            auto const found = words_in(line);
            if (!found.empty()) reading.take(found, number);
        } catch (bad_line const& error) {
            throw map_error(number, error.what());
        }
    }
    return reading.finish();
}

} // namespace modbus_backend
