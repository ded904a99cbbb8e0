#pragma once

#include "simulated_time.hpp"

#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

namespace endurance {

/// Quantities of a plant, each of which counts its own changes. They come by chance, to some of the
/// quantities every few tenths of a second and to others about once a minute.
class plant {
public:
    using duration = simulated_time::duration;

    /// One change of a quantity.
    struct change {
        std::uint32_t number; ///< the value since then, 1 for the first
        duration begin;
        duration end; ///< when the next one came; the longest time for the newest
    };

    /// \param size  how many quantities there are, at least two
    plant(std::size_t size, std::uint64_t seed);

    [[nodiscard]] std::size_t size() const noexcept { return quantities_.size(); }

    /// Let all changes up to a moment happen.
    void advance_to(duration moment);

    [[nodiscard]] std::uint32_t value(std::size_t index) const { return quantities_[index].value; }

    /// The changes of a quantity up to the one that led to `value`, each of them once.
    [[nodiscard]] std::vector<change> take_changes(std::size_t index, std::uint32_t value);

    /// All that there have been.
    [[nodiscard]] unsigned long long changes() const noexcept { return changes_; }

private:
    struct quantity {
        std::uint32_t value = 0;
        duration next{0};
        std::vector<duration> begins{}; ///< of the changes that nobody has taken, oldest first
    };

    [[nodiscard]] duration pause(std::size_t index);

    std::mt19937_64 chance_;
    std::vector<quantity> quantities_;
    unsigned long long changes_ = 0;
};

} // namespace endurance
