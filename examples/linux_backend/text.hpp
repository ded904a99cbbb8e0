#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace linux_backend {

/// What the texts of the system are made of: lines, and words between blanks. All raise `bad_text`
/// for what is not as it should be.

/// Without line feeds; the last line may have none.
[[nodiscard]] std::vector<std::string_view> lines_of(std::string_view text);

[[nodiscard]] std::vector<std::string_view> words_of(std::string_view line);

/// At least this many. \throws bad_text
[[nodiscard]] std::vector<std::string_view> words_of(std::string_view line, std::size_t least);

/// The first line whose first word is `key`. \throws bad_text  of `value_absent` without one
[[nodiscard]] std::string_view line_with(std::string_view text, std::string_view key);

/// The first line, which must not be empty. \throws bad_text
[[nodiscard]] std::string_view first_line(std::string_view text);

/// Decimal digits and nothing else. \throws bad_text, also for a number beyond 64 bits
[[nodiscard]] unsigned long long whole_number(std::string_view word);

/// The same with a sign or without. \throws bad_text
[[nodiscard]] long long signed_number(std::string_view word);

/// A finite number with or without decimals. \throws bad_text
[[nodiscard]] double decimal_number(std::string_view word);

/// \throws bad_text  where the product is beyond 64 bits
[[nodiscard]] unsigned long long product(unsigned long long count, unsigned int unit);

} // namespace linux_backend
