#pragma once

#include <iohost/conformance/footprint.hpp>

#include <algorithm>
#include <cstddef>
#include <limits>

namespace endurance {

/// What this process holds, looked at after each of many rounds that do alike. What a process keeps
/// without losing it comes to its end, and so not with every round.
class growth {
public:
    /// After a round; the first one warms up.
    void look() {
        auto const now = iohost::conformance::measured(rounds_ == 0 ? anything() : first_);
        if (rounds_++ == 0) {
            first_ = now;
        } else {
            most_descriptors_ = std::max(most_descriptors_, now.descriptors);
            auto const more = now.heap > last_.heap ? now.heap - last_.heap : 0;
            least_ = std::min(least_, more);
        }
        last_ = now;
    }

    [[nodiscard]] iohost::conformance::footprint const& first() const { return first_; }
    [[nodiscard]] iohost::conformance::footprint const& last() const { return last_; }
    /// Whether a round had more descriptors open at its end than the first one.
    [[nodiscard]] bool of_descriptors() const { return most_descriptors_ > first_.descriptors; }
    /// Bytes that came with each round, or even more, and were not given back. Takes two rounds.
    [[nodiscard]] std::size_t of_heap() const { return rounds_ > 1 ? least_ : 0; }

private:
    static iohost::conformance::footprint anything() {
        auto const any = std::numeric_limits<std::size_t>::max();
        return {any, any, any};
    }

    iohost::conformance::footprint first_;
    iohost::conformance::footprint last_;
    unsigned int rounds_ = 0;
    std::size_t most_descriptors_ = 0;
    std::size_t least_ = std::numeric_limits<std::size_t>::max();
};

} // namespace endurance
