#include "file_days.hpp"

#include "troubled_file.hpp"
#include "watched_file.hpp"

#include <examples/endurance/opened.hpp>
#include <examples/endurance/plant.hpp>
#include <examples/endurance/simulated_time.hpp>
#include <iohost/host_services.hpp>
#include <iohost/polling.hpp>
#include <linux_backend/linux_module.hpp>
#include <linux_backend/made_up_machine.hpp>

#include <array>
#include <filesystem>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace endurance {

namespace {

namespace v2 = tavi::ioapi::v2;
using namespace std::chrono_literals;
using duration = simulated_time::duration;

constexpr unsigned int interval_ms = 1000;
constexpr duration interval = std::chrono::milliseconds(interval_ms);

/// Between two mishaps that have their turn.
constexpr unsigned int polls_of_a_turn = 4;
constexpr int read_only = 5;

answer answer_of(v2::io_error const& error) {
    if (!error) return answer::value;
    if (error == v2::io_errc::not_found) return answer::not_found;
    bool const is_own = std::string_view(error.category().name()) == "linux";
    return static_cast<answer>(is_own ? error.code() : -1);
}

/// What the host was told last of one variable.
struct known {
    bool is_told = false;
    answer said = answer::value;
    std::uint32_t number = 0; ///< that of a value
};

/// The polls since the last value that could give none.
struct gap {
    duration first;
    duration last;
};

/// One of the folders that all files are below.
struct mounted_folder {
    char const* name;
    std::optional<duration> away_until{};
};

class watching_files {
public:
    watching_files(std::chrono::seconds span, std::uint64_t seed)
        : chance_(seed), plant_(watched_files().size(), seed + 1) {
        figures_.span = span;
        for (auto const& file : watched_files()) {
            places_.emplace(v2::plc_identifier(file.variable), files_.size());
            variables_.emplace_back(file.variable);
            files_.emplace_back(file, machine_);
        }
        known_.resize(files_.size());
        gaps_.resize(files_.size());
        until_.resize(files_.size());
        ids_.resize(files_.size());
        line_up();
    }

    file_figures run() {
        auto values = machine_.options();
        values.set("poll_interval_ms", interval_ms);
        auto const backend = opened(module_, values, host_);
        for (std::size_t i = 0; i < files_.size(); ++i) {
            files_[i].show(0);
            subscribe(*backend, i);
        }
        host_time clock(time_);
        auto const begin = clock.now();
        iohost::poll_regularly(clock, {begin, begin + figures_.span, 1ms * interval_ms}, [&] {
            if (time_.passed() >= next_look_) look();
            plant_.advance_to(time_.passed());
            end_mishaps();
            begin_mishaps();
            for (std::size_t i = 0; i < files_.size(); ++i) {
                if (!is_away(i)) files_[i].show(plant_.value(i));
            }
            poll(*backend);
            do_something_else(*backend);
            return true;
        });
        finish();
        return std::move(figures_);
    }

private:
    /// A mishap of one file, whose turn it is.
    struct turn {
        std::size_t file;
        mishap which;
    };

    void wrong(std::string const& what) {
        figures_.wrong.add("at " + std::to_string(time_.passed() / 1ms) + " ms: " + what);
    }

    bool happens_once_in(unsigned int times) {
        return std::uniform_int_distribution<unsigned int>(1, times)(chance_) == 1;
    }
    std::size_t any_file() {
        return std::uniform_int_distribution<std::size_t>(0, files_.size() - 1)(chance_);
    }

    void line_up() {
        for (std::size_t which = 0; which < mishap_count; ++which) {
            for (std::size_t i = 0; i < files_.size(); ++i) {
                auto const each = static_cast<mishap>(which);
                if (files_[i].may_meet(each)) turns_.push_back({i, each});
            }
        }
    }

    mounted_folder& folder_of(std::size_t index) {
        bool const is_first = std::string_view(files_[index].file().name).starts_with("proc/");
        return folders_[is_first ? 0 : 1];
    }
    bool is_away(std::size_t index) { return folder_of(index).away_until.has_value(); }

    answer due(std::size_t index) { return is_away(index) ? answer::absent : files_[index].said(); }

    // What has vanished with a folder comes back as it was.
    void end_mishaps() {
        for (auto& folder : folders_) {
            if (!folder.away_until || *folder.away_until > time_.passed()) continue;
            std::filesystem::rename(aside(folder), machine_.path(folder.name));
            folder.away_until.reset();
        }
        for (std::size_t i = 0; i < files_.size(); ++i) {
            if (is_away(i) || files_[i].is_well() || until_[i] > time_.passed()) continue;
            files_[i].recover();
        }
    }

    void begin_mishaps() {
        if (figures_.polls == 0) return;
        if (next_turn_ < turns_.size()) {
            auto const [file, which] = turns_[next_turn_];
            if (figures_.polls % polls_of_a_turn != 0) return;
            ++next_turn_;
            begin(file, which);
            return;
        }
        for (auto& folder : folders_) {
            if (!folder.away_until && (!was_away_once_ || happens_once_in(2000))) take_away(folder);
        }
        was_away_once_ = true;
        for (std::size_t i = 0; i < files_.size(); ++i) {
            if (is_away(i) || !files_[i].is_well() || !happens_once_in(400)) continue;
            auto const any =
                std::uniform_int_distribution<std::size_t>(1, mishap_count - 1)(chance_);
            auto const which = static_cast<mishap>(any);
            if (files_[i].may_meet(which)) begin(i, which);
        }
    }

    void begin(std::size_t index, mishap which) {
        files_[index].meet(which, plant_.value(index), chance_);
        ++figures_.met[static_cast<std::size_t>(which)];
        // Each poll reads megabytes of what has no end.
        bool const is_short = which == mishap::endless || next_turn_ < turns_.size();
        until_[index] = time_.passed() + (is_short ? interval : any_pause());
    }

    void take_away(mounted_folder& folder) {
        std::filesystem::rename(machine_.path(folder.name), aside(folder));
        folder.away_until = time_.passed() + any_pause();
        ++figures_.met[static_cast<std::size_t>(mishap::unmounted)];
    }

    std::string aside(mounted_folder const& folder) const {
        return machine_.path(std::string("aside_") + folder.name);
    }

    duration any_pause() {
        return std::chrono::seconds(std::uniform_int_distribution<int>(1, 20)(chance_));
    }

    void subscribe(example::backend& backend, std::size_t index) {
        v2::subscription_result result;
        v2::io_error error(v2::io_errc::todo); // must be cleared
        backend.subscribe({&variables_[index], 1}, result, error);
        if (error || !result.has(variables_[index]) || !result[variables_[index]].ok()) {
            wrong(std::string("no subscription to ") + files_[index].file().variable);
            return;
        }
        ids_[index] = result[variables_[index]].id.number();
        known_[index].is_told = false;
    }

    /// With the same state of all variables each time, but for their values.
    void look() {
        for (std::size_t i = 0; i < files_.size(); ++i) {
            if (!known_[i].is_told || known_[i].said != answer::value) return;
            if (known_[i].number % files_[i].file().lengths != 0) return;
        }
        figures_.held.look();
        next_look_ = time_.passed() + figures_.span / looks;
    }

    void poll(example::backend& backend) {
        v2::read_result changes;
        v2::io_error error(v2::io_errc::todo); // must be cleared
        backend.poll(changes, error);
        if (error) wrong("the poll fails as a whole");
        ++figures_.polls;
        auto const before = known_;
        std::vector<bool> told(files_.size());
        for (auto const& entry : changes) {
            auto const place = places_.find(entry.identifier());
            if (place == places_.end() || told[place->second]) {
                wrong("an entry that nobody waits for");
                continue;
            }
            told[place->second] = true;
            take(place->second, entry);
        }
        for (std::size_t i = 0; i < files_.size(); ++i) judge(i, before[i], told[i]);
    }

    void take(std::size_t index, v2::read_result::result_type const& entry) {
        auto& now = known_[index];
        now.is_told = true;
        now.said = answer_of(entry.error());
        if (!entry.ok()) {
            ++figures_.faulty;
            return;
        }
        ++figures_.delivered;
        check_value(index, entry.value());
        now.number = plant_.value(index);
        count_skipped(index, now.number);
        gaps_[index].reset();
    }

    /// Nothing but what the file shows now, and of this time.
    void check_value(std::size_t index, v2::io_data_value const& value) {
        auto const& file = files_[index].file();
        if (!shows(file, value.value(), plant_.value(index))) {
            wrong(std::string(file.variable) + " is not what " + file.name +
                  " shows: " + value.value().printable_string().str());
        }
        if (value.timestamp() != backend_time::at(time_.passed())) {
            wrong("a value is not of the time of its poll");
        }
    }

    void count_skipped(std::size_t index, std::uint32_t number) {
        for (auto const& change : plant_.take_changes(index, number)) {
            if (change.number == number) continue;
            if (could_be_seen(index, change)) {
                ++figures_.missed;
                wrong("change " + std::to_string(change.number) + " of " +
                      files_[index].file().variable + " was missed");
            } else {
                ++figures_.brief;
            }
        }
    }

    /// Whether it stood at the time of a poll that could give a value.
    [[nodiscard]] bool could_be_seen(std::size_t index, plant::change const& change) const {
        auto const& out = gaps_[index];
        auto moment = (change.begin + interval - duration(1)) / interval * interval;
        for (; moment < change.end; moment += interval) {
            if (!out || moment < out->first || moment > out->last) return true;
        }
        return false;
    }

    void judge(std::size_t index, known const& before, bool is_told) {
        auto const& now = known_[index];
        auto const wanted = due(index);
        bool const is_value = wanted == answer::value;
        std::string const name = files_[index].file().variable;
        if (!now.is_told || now.said != wanted) {
            wrong(name + " answers " + std::to_string(static_cast<int>(now.said)) +
                  " in place of " + std::to_string(static_cast<int>(wanted)) + " with " +
                  mishap_names[static_cast<std::size_t>(files_[index].met())]);
        }
        bool const is_change = !before.is_told || before.said != wanted ||
                               (is_value && before.number != plant_.value(index));
        if (is_told != is_change) wrong(name + ": what is no change is delivered, or none is");
        if (is_value) return;
        auto& out = gaps_[index];
        if (!out) out = gap{time_.passed(), time_.passed()};
        out->last = time_.passed();
    }

    void do_something_else(example::backend& backend) {
        if (happens_once_in(16)) read_all(backend);
        if (happens_once_in(16)) browse(backend);
        if (happens_once_in(64)) write(backend);
        if (happens_once_in(64)) subscribe_anew(backend, any_file());
    }

    void read_all(example::backend& backend) {
        v2::read_result result(variables_);
        v2::io_error error(v2::io_errc::todo); // must be cleared
        backend.read(result, error);
        if (error) wrong("the read fails as a whole");
        for (unsigned int i = 0; i < result.size(); ++i) {
            if (answer_of(result[i].error()) != due(i)) wrong("a read has another answer");
            if (!result[i].ok()) continue;
            ++figures_.read;
            check_value(i, result[i].value());
        }
    }

    /// The one device is there, or there is no folder of such devices.
    void browse(example::backend& backend) {
        auto const device = places_.at(v2::plc_identifier("block.sda"));
        bool const is_there = !is_away(device) && files_[device].met() != mishap::unplugged;
        v2::browse_result result;
        v2::io_error error(v2::io_errc::todo); // must be cleared
        backend.browse(v2::plc_identifier("block"), result, error);
        bool const is_found = !error && result.size() == 1;
        bool const is_absent = error == v2::io_errc::not_found && result.empty();
        if (is_there ? !is_found : !is_absent) wrong("the devices are others");
    }

    void write(example::backend& backend) {
        v2::write_result result(variables_);
        v2::io_error error(v2::io_errc::todo); // must be cleared
        backend.write(std::vector<v2::io_value>(variables_.size(), 5), result, error);
        if (error) wrong("the write fails as a whole");
        for (unsigned int i = 0; i < result.size(); ++i) {
            bool const is_refused = static_cast<int>(answer_of(result[i].error())) == read_only;
            if (result[i].ok() || (due(i) == answer::value && !is_refused)) {
                wrong("a write is not refused");
            }
        }
    }

    void subscribe_anew(example::backend& backend, std::size_t index) {
        if (due(index) != answer::value) return;
        v2::io_error error(v2::io_errc::todo); // must be cleared
        backend.unsubscribe(v2::subscription_id::from_number(ids_[index]), error);
        if (error) wrong("a subscription does not end");
        subscribe(backend, index);
    }

    void finish() {
        figures_.changes = plant_.changes();
        if (figures_.polls != static_cast<unsigned long long>(figures_.span / interval)) {
            wrong(std::to_string(figures_.polls) + " polls are not as many as the intervals");
        }
        for (std::size_t i = 1; i < mishap_count; ++i) {
            if (figures_.met[i] == 0) wrong(std::string(mishap_names[i]) + " does not occur");
        }
    }

    static constexpr int looks = 24;

    std::mt19937_64 chance_;
    simulated_time time_;
    backend_time const backend_time_{time_};
    plant plant_;
    linux_test::made_up_machine const machine_;
    iohost::host_services host_{[](auto, auto) {}};
    linux_backend::linux_module const module_{backend_time_};

    std::vector<troubled_file> files_;
    std::vector<v2::plc_identifier> variables_;
    std::unordered_map<v2::plc_identifier, std::size_t> places_;
    std::vector<unsigned long long> ids_; ///< numbers of the subscriptions
    std::vector<known> known_;
    std::vector<std::optional<gap>> gaps_;
    std::vector<duration> until_; ///< when the present mishap of each file ends
    std::array<mounted_folder, 2> folders_{{{"proc"}, {"sys"}}};
    std::vector<turn> turns_;
    std::size_t next_turn_ = 0;
    bool was_away_once_ = false;
    duration next_look_{0};
    file_figures figures_;
};

} // namespace

file_figures watch_files_for(std::chrono::seconds span, std::uint64_t seed) {
    return watching_files(span, seed).run();
}

} // namespace endurance
