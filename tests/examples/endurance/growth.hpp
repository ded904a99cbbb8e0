#pragma once

#include <iohost/conformance/footprint.hpp>

#include <cstddef>

namespace endurance {

/// What this process holds, looked at after each of many rounds that do alike. What a round leaves
/// behind adds up, whether it is each of them or one in a day.
class growth {
public:
    /// How many bytes there may be more at the end than when it was warm. The allocator hands out
    /// some blocks whole whose rest would be too small to be of use, and which ones these are
    /// depends on what was free: it takes tens of blocks to make so much.
    static constexpr std::size_t most_heap = 1024;

    /// After a round, in the thread that works. The first few warm up, and nothing is made of them.
    void look();
    /// The same of what somebody else has measured.
    void look(iohost::conformance::footprint const& now);

    /// When it was warm, and at the end.
    /// \{
    [[nodiscard]] iohost::conformance::footprint const& first() const { return first_; }
    [[nodiscard]] iohost::conformance::footprint const& last() const { return last_; }
    /// \}
    /// Whether there were more descriptors after a round than when it was warm, or too few rounds
    /// to tell.
    [[nodiscard]] bool of_descriptors() const;
    /// Bytes that there were more at the end than when it was warm.
    [[nodiscard]] std::size_t bytes() const;
    /// Whether these are more than `most_heap`, or there were too few rounds to tell.
    [[nodiscard]] bool of_heap() const;

private:
    static constexpr unsigned int warm_up = 4;

    iohost::conformance::footprint first_;
    iohost::conformance::footprint last_;
    unsigned int rounds_ = 0;
    std::size_t most_descriptors_ = 0;
};

} // namespace endurance
