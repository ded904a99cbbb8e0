#include "simulated_days.hpp"

#include <tavi/ioapi/v2/io_value.hpp>

#include "simulated_controller.hpp"

#include <examples/endurance/opened.hpp>
#include <examples/endurance/plant.hpp>
#include <examples/endurance/simulated_time.hpp>
#include <examples/support/temporary_file.hpp>
#include <iohost/host_services.hpp>
#include <iohost/polling.hpp>
#include <modbus_backend/tcp_module.hpp>

#include <optional>
#include <random>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace endurance {

namespace {

namespace v2 = tavi::ioapi::v2;
using namespace std::chrono_literals;
using duration = simulated_time::duration;

constexpr unsigned int interval_ms = 1000;
constexpr unsigned int timeout_ms = 2500;
constexpr duration interval = std::chrono::milliseconds(interval_ms);
constexpr duration timeout = std::chrono::milliseconds(timeout_ms);

/// Of a poll that is not held up.
constexpr duration most_of_a_good_poll = 20ms;
/// Of one with an answer that is slow, and good all the same.
constexpr duration most_of_a_slow_poll = 2100ms;

/// How long it is remembered when changes may be lost, which none of them takes to come.
constexpr duration remembered = 1h;

constexpr unsigned int requests_of_a_poll = 2;
constexpr std::size_t quantities = 24;
constexpr std::size_t half = quantities / 2;

/// Of one that comes byte by byte: head, unit, function and count, and two registers for each.
constexpr duration least_of_a_trickle =
    static_cast<int>(9 + 4 * half) * simulated_controller::trickle_pause;

/// Between two faults that have their turn, so that each begins with a line that works.
constexpr unsigned int polls_of_a_turn = 8;

std::string name_of_quantity(std::size_t index) {
    return "quantity" + std::to_string(index);
}

std::string map_of_quantities() {
    std::string map;
    for (std::size_t i = 0; i < quantities; ++i) {
        map += name_of_quantity(i) + (i < half ? " holding " : " input ") +
               std::to_string(i % half * 2) + " u32\n";
    }
    return map;
}

/// What the host was told last of one quantity.
struct known {
    bool is_told = false;
    int error = 0; ///< 0 for a value
    std::uint32_t value = 0;
};

/// What is to come of a poll.
struct outlook {
    std::array<int, requests_of_a_poll> errors{}; ///< of the variables of each request, 0: values
    unsigned int requests = 0;                    ///< that are heard
    unsigned int connections = 0;                 ///< that are taken
    duration shortest{0};
    duration longest = most_of_a_good_poll;
};

class watching {
public:
    watching(std::chrono::seconds span, std::uint64_t seed)
        : chance_(seed), plant_(quantities, seed + 1), controller_(time_, plant_, seed + 2) {
        figures_.span = span;
        // As many as there are polls in it, so that the memory of a run does not grow by them.
        bad_times_.reserve(remembered / interval);
    }

    day_figures run() {
        auto const backend = opened(module_, settings(), host_);
        subscribe(*backend);
        host_time clock(time_);
        auto const begin = clock.now();
        if (backend->poll_interval() != interval_ms) wrong("another interval");
        iohost::poll_regularly(
            clock, {begin, begin + figures_.span, std::chrono::milliseconds(interval_ms)}, [&] {
                if (time_.passed() >= next_look_) look();
                poll(*backend);
                return true;
            });
        finish();
        return std::move(figures_);
    }

private:
    void wrong(std::string const& what) {
        figures_.wrong.add("at " + std::to_string(time_.passed() / 1ms) + " ms: " + what);
    }

    [[nodiscard]] v2::config::store settings() const {
        v2::config::store values;
        values.set("map", map_.path());
        values.set("host", "127.0.0.1");
        values.set("port", static_cast<int>(controller_.port()));
        values.set("timeout_ms", timeout_ms);
        values.set("poll_interval_ms", interval_ms);
        return values;
    }

    void subscribe(example::backend& backend) {
        std::vector<v2::plc_identifier> variables;
        for (std::size_t i = 0; i < quantities; ++i) {
            variables.emplace_back(name_of_quantity(i));
            places_.emplace(variables.back(), i);
        }
        v2::subscription_result result;
        v2::io_error error;
        backend.subscribe(variables, result, error);
        if (error) wrong("the subscription fails as a whole");
        for (auto const& variable : variables) {
            if (!result.has(variable) || result[variable].error) wrong("no subscription");
        }
    }

    /// With the same state of all variables each time, but for their values.
    void look() {
        for (auto const& each : known_) {
            if (!each.is_told || each.error != 0) return;
        }
        figures_.held.look();
        next_look_ = time_.passed() + figures_.span / looks;
    }

    fault any_fault() {
        if (figures_.polls == 0 || leaves_answer_) return fault::none;
        if (in_turn_ < fault_count) {
            bool const is_due = figures_.polls % polls_of_a_turn == 0;
            return is_due ? static_cast<fault>(in_turn_++) : fault::none;
        }
        auto place = std::uniform_int_distribution<unsigned int>(0, 9999)(chance_);
        for (std::size_t i = 0; i < fault_count; ++i) {
            if (place < fault_rules[i].share) return static_cast<fault>(i);
            place -= fault_rules[i].share;
        }
        return fault::none;
    }

    duration any_outage() {
        return std::chrono::seconds(std::uniform_int_distribution<int>(1, 90)(chance_));
    }

    /// Begin or end what concerns the whole line, and prepare the exchanges.
    outlook prepare() {
        if (line_is_down_until_ && time_.passed() >= *line_is_down_until_) {
            controller_.come_back();
            line_is_down_until_.reset();
            line_fault_ = fault::none;
        }
        fault_ = line_is_down_until_ ? line_fault_ : any_fault();
        hit_ = std::uniform_int_distribution<unsigned int>(0, 1)(chance_);
        if (rule_of(fault_).is_of_last) hit_ = requests_of_a_poll - 1;
        controller_.expect_poll(fault_, hit_);
        bool const is_left_alone = !std::exchange(leaves_answer_, fault_ == fault::doubled);
        if (fault_ == fault::hang_up) controller_.hang_up();
        if (fault_ == fault::refusing || fault_ == fault::unplugged) return outlook_of_outage();
        bool const stays = is_connected_ && is_left_alone && fault_ != fault::hang_up;
        is_connected_ = true;
        auto expected = outlook_of_exchanges();
        if (!stays || figures_.polls == 0) expected.connections = 1;
        return expected;
    }

    outlook outlook_of_outage() {
        if (!line_is_down_until_) {
            line_is_down_until_ = time_.passed() + any_outage();
            line_fault_ = fault_;
            fault_ == fault::refusing ? controller_.refuse() : controller_.unplug();
        }
        outlook expected;
        bool const was_connected = std::exchange(is_connected_, false);
        if (fault_ == fault::refusing) {
            // Who was connected learns of the end before he is refused.
            expected.errors.fill(was_connected ? 257 : 256);
        } else {
            expected.errors.fill(was_connected ? 258 : 256);
            expected.requests = was_connected ? 1 : 0;
            expected.shortest = expected.longest = timeout;
        }
        return expected;
    }

    outlook outlook_of_exchanges() {
        auto const& rule = rule_of(fault_);
        outlook expected;
        expected.requests = rule.ends_connection ? hit_ + 1 : requests_of_a_poll;
        for (unsigned int i = hit_; i < requests_of_a_poll; ++i) {
            if (i == hit_ || rule.ends_connection) expected.errors[i] = rule.error;
        }
        if (rule.ends_connection) is_connected_ = false;
        if (rule.takes_timeout) {
            expected.shortest = timeout;
            expected.longest = timeout + most_of_a_good_poll;
        } else if (fault_ == fault::slow) {
            expected.shortest = simulated_controller::slow_pause;
            expected.longest = most_of_a_slow_poll;
        } else if (fault_ == fault::trickle) {
            expected.shortest = least_of_a_trickle;
            expected.longest = least_of_a_trickle + most_of_a_good_poll;
        }
        return expected;
    }

    void poll(example::backend& backend) {
        auto const begin = time_.passed();
        auto const expected = prepare();
        plant_.advance_to(begin);
        std::array<std::uint32_t, quantities> oldest{};
        for (std::size_t i = 0; i < quantities; ++i) oldest[i] = plant_.value(i);

        v2::read_result changes;
        v2::io_error error(v2::io_errc::todo); // must be cleared
        backend.poll(changes, error);
        if (error) wrong("the poll fails as a whole");
        plant_.advance_to(time_.passed());

        count(expected, time_.passed() - begin);
        remember(expected, begin);
        auto const before = known_;
        std::array<bool, quantities> told{};
        for (auto const& entry : changes) {
            auto const place = places_.find(entry.identifier());
            if (place == places_.end() || std::exchange(told[place->second], true)) {
                wrong("an entry that nobody waits for");
            } else {
                take(place->second, entry, begin);
            }
        }
        for (std::size_t i = 0; i < quantities; ++i) {
            judge(i, expected.errors[i / half], before[i], told[i], oldest[i]);
        }
    }

    void count(outlook const& expected, duration taken) {
        ++figures_.polls;
        ++figures_.met[static_cast<std::size_t>(fault_)];
        figures_.requests_due += expected.requests;
        figures_.connections_due += expected.connections;
        overtime_ += std::exchange(overtime_of_last_, std::max(taken, interval) - interval);
        if (taken < expected.shortest || taken > expected.longest) {
            wrong(std::string("a poll with ") + rule_of(fault_).name + " takes " +
                  std::to_string(taken / 1ms) + " ms");
        }
        compare("requests", controller_.requests(), figures_.requests_due);
        compare("connections", controller_.connections(), figures_.connections_due);
    }

    void compare(char const* what, unsigned long long met, unsigned long long& due) {
        if (met == due) return;
        wrong(std::string("with ") + rule_of(fault_).name + " the controller has met " +
              std::to_string(met) + ' ' + what + " in place of " + std::to_string(due));
        due = met;
    }

    void take(std::size_t index, v2::read_result::result_type const& entry, duration begin) {
        auto& now = known_[index];
        now.is_told = true;
        now.error = entry.error().code();
        if (!entry.ok()) {
            ++figures_.faulty;
            return;
        }
        ++figures_.delivered;
        now.value = entry.value().value().as<std::uint32_t>();
        auto const stamp = entry.value().timestamp();
        if (stamp < backend_time::at(begin) || stamp > backend_time::at(time_.passed())) {
            wrong("a value is not of the time of its poll");
        }
        count_skipped(index, now.value);
    }

    /// What came between the last value and this one was missed, unless it was brief.
    void count_skipped(std::size_t index, std::uint32_t value) {
        for (auto const& change : plant_.take_changes(index, value)) {
            if (change.number == value) continue;
            if (stood_long_enough(change)) {
                ++figures_.missed;
                wrong("change " + std::to_string(change.number) + " of " + name_of_quantity(index) +
                      " was missed");
            } else {
                ++figures_.brief;
            }
        }
    }

    /// Whether a whole poll without a fault fell into it, wherever the polls stood.
    [[nodiscard]] bool stood_long_enough(plant::change const& change) const {
        auto const enough = change.begin + interval + most_of_a_good_poll;
        if (change.end < enough) return false;
        for (auto const& [begin, end] : bad_times_) {
            if (begin < enough && end > change.begin) return false;
        }
        return true;
    }

    void judge(
        std::size_t index, int error, known const& before, bool is_told, std::uint32_t oldest) {
        auto const& now = known_[index];
        if (!now.is_told || now.error != error) {
            wrong(name_of_quantity(index) + " has the error " + std::to_string(now.error) +
                  " and should have " + std::to_string(error) + " with " + rule_of(fault_).name);
            return;
        }
        bool const is_value_again = before.is_told && before.error == 0 && error == 0;
        bool const is_news = !is_value_again && (!before.is_told || before.error != error);
        bool const is_change = is_value_again && now.value != before.value;
        if (is_told != (is_news || is_change)) wrong("what is no change is delivered, or none is");
        if (error != 0) return;
        if (now.value < before.value) wrong("an older value comes after a newer one");
        if (now.value < oldest || now.value > plant_.value(index)) {
            wrong(name_of_quantity(index) + " is not the newest value");
        }
    }

    /// Those times that changes may be lost in.
    void remember(outlook const& expected, duration begin) {
        auto const now = time_.passed();
        std::erase_if(bad_times_, [&](auto const& time) { return time.second + remembered < now; });
        bool const is_good = expected.errors == decltype(expected.errors){};
        if (is_good && now - begin <= most_of_a_good_poll) return;
        // The next poll comes at once, or at its time.
        bad_times_.emplace_back(begin, std::max(now, begin + interval));
    }

    void finish() {
        figures_.requests = controller_.requests();
        figures_.connections = controller_.connections();
        figures_.changes = plant_.changes();
        for (std::size_t i = 0; i < fault_count; ++i) {
            if (figures_.met[i] == 0) wrong(std::string(fault_rules[i].name) + " does not occur");
        }
        if (!controller_.problem().empty()) wrong(controller_.problem());
        // One poll for each interval, but for the time that slow ones took beyond theirs. The last
        // one begins before the end, and another would not.
        auto const before_last = interval * (figures_.polls - 1) + overtime_;
        if (before_last >= figures_.span ||
            before_last + interval + overtime_of_last_ < figures_.span) {
            wrong(std::to_string(figures_.polls) + " polls are not as many as the intervals");
        }
    }

    static constexpr int looks = 24;

    std::mt19937_64 chance_;
    simulated_time time_;
    backend_time const backend_time_{time_};
    plant plant_;
    simulated_controller controller_;
    test_support::temporary_file const map_{map_of_quantities()};
    iohost::host_services host_{[](auto, auto) {}};
    modbus_backend::tcp_module const module_{backend_time_};

    std::unordered_map<v2::plc_identifier, std::size_t> places_;
    std::array<known, quantities> known_{};
    std::vector<std::pair<duration, duration>> bad_times_;
    fault fault_ = fault::none;
    unsigned int hit_ = 0;
    std::size_t in_turn_ = 1; ///< behind `fault::none`
    fault line_fault_ = fault::none;
    std::optional<duration> line_is_down_until_;
    bool is_connected_ = true;
    bool leaves_answer_ = false; ///< that the next poll finds, and so begins with a connection
    duration overtime_{0};       ///< of all polls but the last
    duration overtime_of_last_{0};
    duration next_look_{0};
    day_figures figures_;
};

} // namespace

day_figures watch_for(std::chrono::seconds span, std::uint64_t seed) {
    return watching(span, seed).run();
}

} // namespace endurance
