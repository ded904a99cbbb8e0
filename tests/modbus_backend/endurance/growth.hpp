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
    /// After a round. The first few warm up, and nothing is made of them.
    void look() {
        bool const is_warm = ++rounds_ > warm_up;
        auto const now = iohost::conformance::measured(is_warm ? first_ : anything());
        if (is_warm) {
            most_descriptors_ = std::max(most_descriptors_, now.descriptors);
            least_ = std::min(least_, now.heap > last_.heap ? now.heap - last_.heap : 0);
        } else {
            first_ = now;
        }
        last_ = now;
    }

    /// When it was warm, and at the end.
    /// \{
    [[nodiscard]] iohost::conformance::footprint const& first() const { return first_; }
    [[nodiscard]] iohost::conformance::footprint const& last() const { return last_; }
    /// \}
    /// Whether there were more descriptors after a round than when it was warm.
    [[nodiscard]] bool of_descriptors() const { return most_descriptors_ > first_.descriptors; }
    /// Bytes that came with each round, or even more, and were not given back; the most there can
    /// be where there were too few rounds to tell.
    [[nodiscard]] std::size_t of_heap() const { return least_; }

private:
    static constexpr unsigned int warm_up = 4;

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
