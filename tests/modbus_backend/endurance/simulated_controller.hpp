#pragma once

#include "fault.hpp"

#include <controller/descriptor.hpp>
#include <examples/endurance/plant.hpp>
#include <examples/endurance/simulated_time.hpp>
#include <sys/select.h>
#include <sys/time.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <random>
#include <string>
#include <vector>

namespace endurance {

/// A controller that shows a plant over Modbus TCP, and lives in simulated time: the first half of
/// the quantities stands in the holding registers from 0 on, the other one in the input registers,
/// two registers for each, high word first.
///
/// It has no thread. The library of the backend waits for its controller by `select` alone, and
/// this object takes the place of that for its own connections: whoever waits lets the controller
/// work, and time pass up to what comes next, or up to the end of his patience. All else is real:
/// the sockets, what they carry, and the ends of their connections.
///
/// There is one at a time, in a program with one backend at a time.
class simulated_controller {
public:
    using duration = simulated_time::duration;

    /// How long the bytes of a `fault::trickle` are apart, and a `fault::slow` takes at least.
    /// \{
    static constexpr duration trickle_pause = std::chrono::milliseconds(10);
    static constexpr duration slow_pause = std::chrono::milliseconds(100);
    /// \}

    simulated_controller(simulated_time& time, plant& shown, std::uint64_t seed);
    simulated_controller(simulated_controller const&) = delete;
    simulated_controller& operator=(simulated_controller const&) = delete;
    ~simulated_controller();

    [[nodiscard]] std::uint16_t port() const noexcept { return port_; }

    /// Prepare for one poll. \param which  no fault of the line
    /// \param exchange  which one it hits, 0 for the first
    void expect_poll(fault which, unsigned int exchange);

    /// The connection ends, and the next one is taken.
    void hang_up();
    /// From now on connections are refused, and the present one ends.
    void refuse();
    /// From now on nothing is answered.
    void unplug();
    /// It is as it was, for those who connect anew.
    void come_back();

    /// Requests that were heard.
    [[nodiscard]] unsigned long long requests() const noexcept { return requests_; }
    /// Connections that were taken.
    [[nodiscard]] unsigned long long connections() const noexcept { return connections_; }

    /// What is not as it should be on this side; empty as long as all is well.
    [[nodiscard]] std::string const& problem() const noexcept { return problem_; }

    /// \name What takes the place of `select`
    /// \{
    [[nodiscard]] static simulated_controller* present() noexcept;
    [[nodiscard]] bool is_reader(int socket) const;
    [[nodiscard]] bool takes_connections() const noexcept { return !is_unplugged_; }
    /// Let time pass until something has come for the client.
    /// \param[in,out] patience  what remains of it \return whether something has come in time
    [[nodiscard]] bool wait_for_answer(int client, timeval& patience);
    /// Let all of it pass.
    void wait_in_vain(timeval& patience);
    /// \}

private:
    using bytes = std::vector<std::uint8_t>;
    enum class ending { none, close, reset };
    struct step {
        duration moment;
        bytes sent;
        ending end;
    };

    [[nodiscard]] bool has_link_to(int client);
    [[nodiscard]] bool hear();
    [[nodiscard]] bytes good_answer(bytes const& request);
    void plan(bytes answer);
    void take(step const& next);
    void pause(duration shortest, duration longest);
    void then(bytes sent, ending end = ending::none);
    void then_each(bytes const& sent, duration pause);
    [[nodiscard]] std::size_t any_cut(bytes const& answer);
    void fail(char const* what);

    simulated_time& time_;
    plant& plant_;
    std::mt19937_64 chance_;
    std::uint16_t port_ = 0;
    station::descriptor reserved_;
    station::descriptor listener_;
    station::descriptor filler_; ///< takes the one place there is for who waits to be accepted
    station::descriptor link_;
    int client_ = -1; ///< the other end of the link, which is not ours
    bool is_unplugged_ = false;
    fault fault_ = fault::none;
    unsigned int hit_ = 0;
    unsigned int heard_in_poll_ = 0;
    bool is_answering_ = false; ///< or has fallen silent in the midst of it
    bool falls_silent_ = false;
    duration planned_{0};
    std::deque<step> steps_;
    unsigned long long requests_ = 0;
    unsigned long long connections_ = 0;
    std::string problem_;
};

} // namespace endurance
