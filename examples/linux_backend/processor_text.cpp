#include "processor_text.hpp"

#include "failure.hpp"
#include "text.hpp"

#include <cstddef>

namespace linux_backend {

namespace {

processor_ticks ticks_in(std::string_view line) {
    processor_ticks ticks{};
    auto const words = words_of(line, ticks.size() + 1);
    for (std::size_t i = 0; i < ticks.size(); ++i) ticks[i] = whole_number(words[i + 1]);
    return ticks;
}

bool is_one_processor(std::string_view line) {
    return line.starts_with("cpu") && line.size() > 3 && line[3] >= '0' && line[3] <= '9';
}

} // namespace

processor_ticks all_processors(std::string_view text) {
    return ticks_in(line_with(text, "cpu"));
}

std::vector<processor_ticks> each_processor(std::string_view text) {
    std::vector<processor_ticks> list;
    for (auto const line : lines_of(text)) {
        if (is_one_processor(line)) list.push_back(ticks_in(line));
    }
    if (list.empty()) throw bad_text(linux_errc::value_absent, "no line of a single processor");
    return list;
}

} // namespace linux_backend
