#pragma once

#include <charconv>
#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace modbus_backend {

/// The words of a line, and the text behind `#`, without the blanks around it.
struct map_line {
    std::vector<std::string> words;
    std::string comment;
};

/// What is wrong with a line, whose number the caller knows.
struct bad_line : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// A word of the map and what it stands for.
template <class Value>
struct choice {
    std::string_view name;
    Value value;
};

template <class Value, std::size_t Count>
[[nodiscard]] std::optional<Value> find(choice<Value> const (&choices)[Count],
                                        std::string_view name) {
    for (auto const& choice : choices) {
        if (choice.name == name) return choice.value;
    }
    return std::nullopt;
}

[[nodiscard]] inline std::string in_quotes(std::string_view word) {
    return "'" + std::string(word) + "'";
}

/// Decimal digits and nothing else, up to `most`.
[[nodiscard]] inline std::optional<unsigned int> number_in(std::string_view word,
                                                           unsigned int most) {
    unsigned int number = 0;
    char const* const end = word.data() + word.size();
    auto const [stop, error] = std::from_chars(word.data(), end, number);
    if (error != std::errc() || stop != end || number > most) return std::nullopt;
    return number;
}

} // namespace modbus_backend
