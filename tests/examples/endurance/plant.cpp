#include "plant.hpp"

#include <algorithm>
#include <cmath>

namespace endurance {

namespace {

// Beyond what comes in the longest outages, so that the memory of a run does not grow with them.
constexpr std::size_t most_untaken = 1024;

// Times from one change to the next, in s.
constexpr double shortest_mean = 0.4;
constexpr double longest_mean = 70;

} // namespace

plant::plant(std::size_t size, std::uint64_t seed) : chance_(seed), quantities_(size) {
    for (std::size_t i = 0; i < size; ++i) {
        quantities_[i].next = pause(i);
        quantities_[i].begins.reserve(most_untaken);
    }
}

plant::duration plant::pause(std::size_t index) {
    double const place = static_cast<double>(index) / static_cast<double>(size() - 1);
    double const mean = shortest_mean * std::pow(longest_mean / shortest_mean, place);
    std::exponential_distribution<double> seconds(1 / mean);
    auto const exact = std::chrono::duration<double>(seconds(chance_));
    return std::max(duration(1), std::chrono::duration_cast<duration>(exact));
}

void plant::advance_to(duration moment) {
    for (std::size_t i = 0; i < size(); ++i) {
        auto& changing = quantities_[i];
        while (changing.next <= moment) {
            ++changing.value;
            ++changes_;
            changing.begins.push_back(changing.next);
            changing.next += pause(i);
        }
    }
}

std::vector<plant::change> plant::take_changes(std::size_t index, std::uint32_t value) {
    auto& begins = quantities_[index].begins;
    auto number = quantities_[index].value - static_cast<std::uint32_t>(begins.size());
    std::vector<change> taken;
    std::size_t count = 0;
    for (; count < begins.size() && number < value; ++count) {
        bool const is_newest = count + 1 == begins.size();
        taken.push_back({++number, begins[count], is_newest ? duration::max() : begins[count + 1]});
    }
    begins.erase(begins.begin(), begins.begin() + static_cast<std::ptrdiff_t>(count));
    return taken;
}

} // namespace endurance
