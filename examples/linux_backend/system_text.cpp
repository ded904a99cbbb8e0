#include "system_text.hpp"

#include "failure.hpp"
#include "text.hpp"

#include <string>

namespace linux_backend {

double load_average(std::string_view text, unsigned int which) {
    return decimal_number(words_of(first_line(text), 3)[which]);
}

task_count tasks(std::string_view text) {
    auto const counts = words_of(first_line(text), 4)[3];
    auto const slash = counts.find('/');
    if (slash == std::string_view::npos) throw bad_text("no '/' between the counts of tasks");
    return {whole_number(counts.substr(0, slash)), whole_number(counts.substr(slash + 1))};
}

double uptime(std::string_view text, unsigned int which) {
    return decimal_number(words_of(first_line(text), 2)[which]);
}

unsigned long long memory(std::string_view text, std::string_view key) {
    auto const words = words_of(line_with(text, std::string(key) + ":"), 3);
    if (words[2] != "kB") throw bad_text("'" + std::string(key) + "' is not in kB");
    return product(whole_number(words[1]), 1024);
}

unsigned long long counter(std::string_view text, std::string_view key) {
    return whole_number(words_of(line_with(text, key), 2)[1]);
}

} // namespace linux_backend
