#include "map_parser.hpp"

#include "map_line.hpp"

#include <istream>
#include <sstream>
#include <unordered_map>

namespace modbus_backend {

namespace {

std::vector<std::string> words_in(std::string const& line) {
    std::istringstream text(line);
    std::vector<std::string> found;
    for (std::string word; text >> word && word[0] != '#';) found.push_back(word);
    return found;
}

/// Remembers where names stand.
class name_register {
public:
    void add(std::string const& name, unsigned int line) {
        auto const [place, is_new] = lines_.try_emplace(name, line);
        if (!is_new) {
            throw bad_line("'" + name + "' stands on line " + std::to_string(place->second) +
                           " already");
        }
    }

private:
    std::unordered_map<std::string, unsigned int> lines_;
};

} // namespace

std::vector<variable> parse_map(std::istream& text) {
    std::vector<variable> variables;
    name_register names;
    unsigned int number = 0;
    for (std::string line; std::getline(text, line);) {
        ++number;
        try {
            auto const found = words_in(line);
            if (found.empty()) continue;
            variables.push_back(variable_in(found));
            names.add(found[0], number);
        } catch (bad_line const& error) {
            throw map_error(number, error.what());
        }
    }
    return variables;
}

} // namespace modbus_backend
