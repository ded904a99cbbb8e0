#include "growth.hpp"

#include <algorithm>
#include <limits>
#include <memory>
#include <vector>

namespace endurance {

namespace {

using iohost::conformance::footprint;

// The allocator keeps a few freed blocks of each small size for who asks next, and counts them as
// allocated. How many there are depends on what came before, unless there are as many as it keeps.
void fill_cache_of_allocator() {
    constexpr std::size_t smallest = 8;
    constexpr std::size_t step = 16;
    constexpr std::size_t largest = 1032;
    constexpr int kept_of_each = 7;
    std::vector<std::unique_ptr<char[]>> blocks;
    for (std::size_t size = smallest; size <= largest; size += step) {
        for (int i = 0; i < kept_of_each; ++i) blocks.push_back(std::make_unique<char[]>(size));
    }
}

footprint anything() {
    auto const any = std::numeric_limits<std::size_t>::max();
    return {any, any, any};
}

} // namespace

void growth::look() {
    fill_cache_of_allocator();
    look(iohost::conformance::measured(rounds_ < warm_up ? anything() : first_));
}

void growth::look(footprint const& now) {
    if (++rounds_ <= warm_up) first_ = now;
    if (rounds_ > warm_up) most_descriptors_ = std::max(most_descriptors_, now.descriptors);
    last_ = now;
}

bool growth::of_descriptors() const {
    return rounds_ <= warm_up || most_descriptors_ > first_.descriptors;
}

std::size_t growth::bytes() const {
    return last_.heap > first_.heap ? last_.heap - first_.heap : 0;
}

bool growth::of_heap() const {
    return rounds_ <= warm_up || bytes() > most_heap;
}

} // namespace endurance
