#pragma once

#include "mishap.hpp"
#include "watched_file.hpp"

#include <linux_backend/made_up_machine.hpp>

#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <string_view>

namespace endurance {

/// A watched file where it lies, and what has become of it.
class troubled_file {
public:
    /// \param file, machine  live longer
    troubled_file(watched_file const& file, linux_test::made_up_machine const& machine)
        : file_(&file), machine_(&machine) {}

    [[nodiscard]] watched_file const& file() const noexcept { return *file_; }

    /// Whether it is one of those that may happen to this file alone.
    [[nodiscard]] bool may_meet(mishap which) const noexcept;
    /// Let one of them happen to a file that is well. \param number  what it showed
    void meet(mishap which, std::uint32_t number, std::mt19937_64& chance);
    /// From now on it can show its number again.
    void recover();
    /// Unless something is wrong with it. It is written where it shows another number.
    void show(std::uint32_t number);

    [[nodiscard]] bool is_well() const noexcept { return met_ == mishap::none; }
    [[nodiscard]] mishap met() const noexcept { return met_; }
    /// What is to be said of its variable.
    [[nodiscard]] answer said() const noexcept { return said_; }

private:
    void shrink(std::string const& text, std::mt19937_64& chance);
    void write(std::string_view text, answer said);
    void write_nonsense(std::mt19937_64& chance);
    void link_to(std::string const& target, answer said);
    [[nodiscard]] std::string aside() const;

    watched_file const* file_;
    linux_test::made_up_machine const* machine_;
    mishap met_ = mishap::none;
    answer said_ = answer::value;
    std::optional<std::uint32_t> shown_;
};

} // namespace endurance
