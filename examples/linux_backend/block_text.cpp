#include "block_text.hpp"

#include "text.hpp"

namespace linux_backend {

namespace {

constexpr unsigned int sector = 512;

} // namespace

unsigned long long block_size(std::string_view text) {
    return product(whole_number(first_line(text)), sector);
}

block_activity activity(std::string_view text) {
    auto const words = words_of(first_line(text), 11);
    return {whole_number(words[0]), product(whole_number(words[2]), sector), whole_number(words[4]),
            product(whole_number(words[6]), sector), whole_number(words[9])};
}

} // namespace linux_backend
