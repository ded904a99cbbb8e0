#include "restarts.hpp"

#include "panel_variable.hpp"
#include "sockets.hpp"

#include <examples/endurance/opened.hpp>
#include <examples/support/opened_module.hpp>
#include <examples/support/running_station.hpp>
#include <examples/support/temporary_file.hpp>
#include <iohost/host_services.hpp>
#include <signal.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace endurance {

namespace {

namespace v2 = tavi::ioapi::v2;

constexpr unsigned int patience_ms = 30'000;
constexpr int not_connected = 256;

/// What one variable may hold.
class belief {
public:
    /// There is nobody else who writes.
    void told(std::uint32_t number) { possible_.assign(1, number); }
    /// It may have been heard all the same.
    void failed(std::uint32_t number) { possible_.push_back(number); }

    [[nodiscard]] std::vector<std::uint32_t> const& possible() const { return possible_; }

private:
    std::vector<std::uint32_t> possible_;
};

class restarting {
public:
    restarting(std::uint64_t seed, char const* module)
        : chance_(seed),
          reserved_(reserved_port(port_)),
          module_(module),
          station_(start()),
          backend_(opened(*module_, settings(), host_)) {
        for (auto const which : all_panel_variables) variables_.emplace_back(name_of(which));
    }

    restart_figures run(unsigned int times) {
        v2::subscription_result subscribed;
        v2::io_error error;
        backend_->subscribe(variables_, subscribed, error);
        if (error) wrong("no subscription");
        while (!write_all()) wrong("the first write fails");
        unsigned int const round = std::max(1U, times / looks);
        for (; figures_.restarts < times; ++figures_.restarts) {
            work_until_the_end();
            work_in_vain();
            station_ = start();
            return_to_work();
            if (figures_.restarts % round == 0) figures_.held.look();
        }
        return std::move(figures_);
    }

private:
    void wrong(std::string const& what) {
        figures_.wrong.add("restart " + std::to_string(figures_.restarts) + ": " + what);
    }

    [[nodiscard]] std::unique_ptr<test_support::running_station> start() const {
        return std::make_unique<test_support::running_station>(port_, memory_.path());
    }

    [[nodiscard]] v2::config::store settings() const {
        v2::config::store values;
        values.set("map", map_.path());
        values.set("host", "127.0.0.1");
        values.set("port", static_cast<int>(port_));
        values.set("timeout_ms", patience_ms);
        return values;
    }

    /// The next number to all variables. \return whether all of it succeeded
    bool write_all() {
        ++number_;
        std::vector<v2::io_value> values;
        values.reserve(variables_.size());
        for (auto const which : all_panel_variables) values.push_back(value_of(which, number_));
        v2::write_result result(variables_);
        v2::io_error error;
        backend_->write(values, result, error);
        if (error) wrong("the write fails as a whole");
        bool is_told = true;
        for (unsigned int i = 0; i < result.size(); ++i) {
            if (result[i].ok()) {
                ++figures_.told;
                beliefs_[i].told(number_);
            } else {
                ++figures_.failed;
                is_told = false;
                // Without a connection nobody can have heard it.
                if (result[i].error().code() != not_connected) beliefs_[i].failed(number_);
            }
        }
        return is_told;
    }

    [[nodiscard]] bool is_possible(std::size_t index, v2::io_value const& value) const {
        auto const& numbers = beliefs_[index].possible();
        return std::any_of(numbers.begin(), numbers.end(), [&](std::uint32_t number) {
            return identical(value, value_of(all_panel_variables[index], number));
        });
    }

    /// \return whether all could be read
    bool read_all() {
        v2::read_result result(variables_);
        v2::io_error error;
        backend_->read(result, error);
        if (error) wrong("the read fails as a whole");
        bool is_read = true;
        for (unsigned int i = 0; i < result.size(); ++i) {
            is_read = is_read && result[i].ok();
            if (!result[i].ok()) continue;
            ++figures_.read;
            if (!is_possible(i, result[i].value().value())) {
                wrong(std::string(name_of(all_panel_variables[i])) + " reads as another value");
            }
        }
        return is_read;
    }

    /// \return whether the last that is known of all variables is a value
    bool poll() {
        v2::read_result changes;
        v2::io_error error;
        backend_->poll(changes, error);
        if (error) wrong("the poll fails as a whole");
        for (auto const& entry : changes) {
            auto const place = std::find(variables_.begin(), variables_.end(), entry.identifier());
            auto& known = known_.at(static_cast<std::size_t>(place - variables_.begin()));
            known.reset();
            if (!entry.ok()) continue;
            ++figures_.delivered;
            known = entry.value().value();
        }
        bool is_known = true;
        for (std::size_t i = 0; i < known_.size(); ++i) {
            is_known = is_known && known_[i].has_value();
            if (known_[i] && !is_possible(i, *known_[i])) {
                wrong(std::string(name_of(all_panel_variables[i])) + " is not delivered anew");
            }
        }
        return is_known;
    }

    /// The signal comes at any moment.
    void work_until_the_end() {
        std::uniform_int_distribution<int> any_moment(0, 3000);
        std::chrono::microseconds const moment(any_moment(chance_));
        bool const is_killed = chance_() % 2 == 0;
        figures_.killed += is_killed ? 1 : 0;
        std::thread ending([&] {
            std::this_thread::sleep_for(moment);
            station_->send(is_killed ? SIGKILL : SIGTERM);
        });
        while (write_all() && read_all() && poll()) {
        }
        ending.join();
        static_cast<void>(station_->finish());
    }

    /// Nobody listens.
    void work_in_vain() {
        auto const told = figures_.told;
        static_cast<void>(write_all());
        if (figures_.told != told) wrong("a write without a controller succeeds");
        if (read_all()) wrong("a read without a controller succeeds");
        if (poll()) wrong("a poll without a controller delivers values");
    }

    void return_to_work() {
        for (std::size_t i = 0; i < variables_.size(); ++i) compare_memory(i);
        if (!poll()) wrong("a subscription stays without a value");
        ++number_;
        for (std::size_t i = 0; i < variables_.size(); ++i) {
            set_by_hand(port_, all_panel_variables[i], number_);
            beliefs_[i].told(number_);
        }
        if (!poll()) wrong("a subscription has lost its value");
        if (!write_all() || !read_all()) wrong("the controller that has returned cannot be used");
        for (std::size_t i = 0; i < variables_.size(); ++i) compare_memory(i);
    }

    /// What stands there was told or may have been heard; from now on it is known.
    void compare_memory(std::size_t index) {
        auto const which = all_panel_variables[index];
        auto const contents = contents_in(port_, which);
        auto const numbers = beliefs_[index].possible();
        auto const found = std::find_if(numbers.begin(), numbers.end(), [&](std::uint32_t number) {
            return contents_of(which, number) == contents;
        });
        if (found != numbers.end()) {
            beliefs_[index].told(*found);
        } else {
            ++figures_.lost;
            wrong(std::string("a write of ") + name_of(which) + " is lost");
        }
    }

    static constexpr unsigned int looks = 24;

    std::mt19937_64 chance_;
    std::uint16_t port_ = 0;
    station::descriptor reserved_;
    test_support::temporary_file const memory_{""};
    test_support::temporary_file const map_{map_of_panel()};
    iohost::host_services host_{[](auto, auto) {}};
    test_support::opened_module const module_;
    std::unique_ptr<test_support::running_station> station_;
    backend_ptr backend_;

    std::vector<v2::plc_identifier> variables_;
    std::uint32_t number_ = 0;
    std::array<belief, all_panel_variables.size()> beliefs_;
    std::array<std::optional<v2::io_value>, all_panel_variables.size()> known_;
    restart_figures figures_;
};

} // namespace

restart_figures restart(unsigned int times, std::uint64_t seed, char const* module) {
    return restarting(seed, module).run(times);
}

} // namespace endurance
