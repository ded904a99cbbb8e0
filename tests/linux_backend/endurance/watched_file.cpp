#include "watched_file.hpp"

#include <tavi/ioapi/v2/io_object.hpp>
#include <tavi/ioapi/v2/utility/array.hpp>

#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <string_view>

namespace endurance {

namespace {

namespace v2 = tavi::ioapi::v2;
using members = std::vector<member>;
using cut_list = std::vector<shorter>;

constexpr char const* beyond_64_bits = "18446744073709551616";

v2::io_value u64(unsigned long long number) {
    return v2::io_value::from_u64(number);
}

// Load: the first three words must be there.

std::string load_text(std::uint32_t number) {
    auto const hundredths = std::to_string(100 + number % 100).substr(1);
    return std::to_string(number / 100) + '.' + hundredths + " 0.36 0.30 2/345 6789\n";
}

members load_contents(std::uint32_t number) {
    return {{"", static_cast<double>(number) / 100}};
}

cut_list load_cuts(std::string const& text) {
    return {{0, text.find(" 0.30") + 1, answer::malformed}};
}

// Uptime: two words.

std::string uptime_text(std::uint32_t number) {
    return std::to_string(number) + ".25 9000.25\n";
}

members uptime_contents(std::uint32_t number) {
    return {{"", static_cast<double>(number) + 0.25}};
}

cut_list uptime_cuts(std::string const& text) {
    return {{0, text.find(' ') + 1, answer::malformed}};
}

// Memory: a line of three words, found by the first one.

std::string memory_text(std::string const& number) {
    return "MemTotal:        2048000 kB\nMemFree:        " + number +
           " kB\nMemAvailable:    1024000 kB\n";
}

members memory_contents(std::uint32_t number) {
    return {{"", u64(number * 1024ULL)}};
}

cut_list memory_cuts(std::string const& text) {
    auto const line = text.find("MemFree:");
    return {{0, line + 7, answer::value_absent},
            {line + 8, text.find("kB", line), answer::malformed}};
}

// Processors: a line of nine words or more for each; how many there are changes, too.

constexpr std::uint32_t most_processors = 4;

std::uint32_t processors(std::uint32_t number) {
    return 1 + number % most_processors;
}

std::string processor_line(std::uint32_t processor, std::string const& user) {
    return "cpu" + std::to_string(processor) + ' ' + user + " 2 3 4 5 6 7 8 0 0\n";
}

std::string processors_text(std::uint32_t number) {
    std::string text = "cpu  3000 200 1000 40000 500 60 70 80 0 0\n";
    for (std::uint32_t i = 0; i < processors(number); ++i) {
        text += processor_line(i, std::to_string(number + i));
    }
    return text + "intr 9999 1 2 3\n";
}

members processors_contents(std::uint32_t number) {
    auto const ticks = static_cast<double>(::sysconf(_SC_CLK_TCK));
    members list{{"#", processors(number)}};
    for (std::uint32_t i = 0; i < processors(number); ++i) {
        auto const prefix = std::to_string(i) + '.';
        list.push_back({prefix + "user", static_cast<double>(number + i) / ticks});
        list.push_back({prefix + "steal", 8 / ticks});
    }
    return list;
}

cut_list processors_cuts(std::string const& text) {
    auto const line = text.find("cpu0");
    return {{0, line + 3, answer::value_absent},
            {line + 4, text.find(" 8 0 0", line) + 1, answer::malformed}};
}

// Network: two lines of heading with bars, then a line of a name, a colon and 16 words for each.

std::string network_text(std::string const& number) {
    return "Inter-|   Receive   |  Transmit\n"
           " face |bytes packets|bytes packets\n"
           "    lo: 100 10 0 0 0 0 0 0 100 10 0 0 0 0 0 0\n"
           "  eth0:" +
           number + " 50 3 4 5 6 7 8 6000 60 13 14 15 16 17 18\n";
}

members network_contents(std::uint32_t number) {
    return {{"receive.bytes", u64(number)}, {"receive.packets", u64(50)},
            {"receive.dropped", u64(4)},    {"transmit.bytes", u64(6000)},
            {"transmit.packets", u64(60)},  {"transmit.errors", u64(13)},
            {"transmit.dropped", u64(14)}};
}

cut_list network_cuts(std::string const& text) {
    auto const first_bar = text.find('|');
    auto const second = text.find('\n') + 1;
    auto const second_bar = text.find('|', second);
    auto const loopback = text.find('\n', second) + 1;
    auto const first_colon = text.find(':');
    auto const line = text.find('\n', loopback) + 1;
    auto const colon = text.find(':', line);
    return {{0, first_bar, answer::malformed},
            {first_bar + 1, second, answer::not_found},
            {second + 1, second_bar, answer::malformed},
            {second_bar + 1, loopback, answer::not_found},
            {loopback + 1, first_colon, answer::malformed},
            {first_colon + 1, line, answer::not_found},
            {line + 1, colon, answer::malformed},
            {colon + 1, text.find(" 18\n", line) + 1, answer::malformed}};
}

// What is a number alone, or a text, can only vanish from its file.

cut_list nothing_left(std::string const&) {
    return {{0, 0, answer::malformed}};
}

constexpr std::uint32_t smallest_mtu = 1500;

std::string mtu_text(std::uint32_t number) {
    return std::to_string(smallest_mtu + number) + '\n';
}

members link_contents(std::uint32_t number) {
    return {{"mtu", smallest_mtu + number}, {"state", "up"}};
}

std::string temperature_text(std::uint32_t number) {
    return '-' + std::to_string(number) + '\n';
}

members temperature_contents(std::uint32_t number) {
    return {{"", static_cast<double>(-static_cast<long long>(number)) / 1000}};
}

std::string name_text(std::uint32_t number) {
    return "station-" + std::to_string(number) + '\n';
}

members name_contents(std::uint32_t number) {
    return {{"", "station-" + std::to_string(number)}};
}

// Block devices: eleven words.

std::string block_text(std::string const& number) {
    return "  11 22 " + number + " 44 55 66 77 88 99 1500 111 0 0 0 0 0 0\n";
}

constexpr unsigned long long sector = 512;

members block_contents(std::uint32_t number) {
    return {{"size", u64(1000 * sector)},         {"reads", u64(11)},
            {"read_bytes", u64(number * sector)}, {"writes", u64(55)},
            {"written_bytes", u64(77 * sector)},  {"busy", 1.5}};
}

cut_list block_cuts(std::string const& text) {
    return {{0, text.find(" 111 0 ") + 1, answer::malformed}};
}

template <auto Text>
std::string with_number(std::uint32_t number) {
    return Text(std::to_string(number));
}

template <auto Text>
std::string too_large() {
    return Text(beyond_64_bits);
}

std::string too_large_alone() {
    return std::string(beyond_64_bits) + '\n';
}

std::string too_large_for_processors() {
    return processor_line(0, "1") + processor_line(1, beyond_64_bits);
}

constexpr watched_file files[] = {
    {"proc/loadavg", "load.one", nullptr, load_text, nullptr, load_contents, load_cuts},
    {"proc/uptime", "uptime.total", nullptr, uptime_text, nullptr, uptime_contents, uptime_cuts},
    {"proc/meminfo", "memory.free", nullptr, with_number<memory_text>, too_large<memory_text>,
     memory_contents, memory_cuts, answer::value_absent},
    {"proc/stat", "cpu.cores", nullptr, processors_text, too_large_for_processors,
     processors_contents, processors_cuts, answer::value_absent, false, most_processors},
    {"proc/net/dev", "network.eth0", nullptr, with_number<network_text>, too_large<network_text>,
     network_contents, network_cuts},
    {"proc/sys/kernel/hostname", "system.hostname", nullptr, name_text, nullptr, name_contents,
     nothing_left, answer::malformed, true},
    {"sys/class/net/eth0/mtu", "link.eth0", "sys/class/net/eth0", mtu_text, too_large_alone,
     link_contents, nothing_left},
    {"sys/block/sda/stat", "block.sda", "sys/block/sda", with_number<block_text>,
     too_large<block_text>, block_contents, block_cuts},
    {"sys/class/thermal/thermal_zone0/temp", "thermal.zone0", "sys/class/thermal/thermal_zone0",
     temperature_text, too_large_alone, temperature_contents, nothing_left},
};

v2::io_value element_of(v2::utility::array<v2::io_object> const& list, std::string_view name) {
    if (name == "#") return list.size();
    unsigned int place = 0;
    std::from_chars(name.data(), name.data() + name.size(), place);
    return place < list.size() ? v2::io_value(list[place]) : v2::io_value();
}

/// The empty value where there is no such member.
v2::io_value member_at(v2::io_value const& value, std::string_view path) {
    if (path.empty()) return value;
    auto const name = path.substr(0, path.find('.'));
    auto const rest = path.substr(std::min(path.size(), name.size() + 1));
    if (auto const* const list = value.get_if<v2::utility::array<v2::io_object>>()) {
        return member_at(element_of(*list, name), rest);
    }
    auto const* const object = value.get_if<v2::io_object>();
    if (object == nullptr || !object->has(name)) return {};
    return member_at(object->get(name), rest);
}

} // namespace

std::span<watched_file const> watched_files() {
    return files;
}

bool shows(watched_file const& file, v2::io_value const& value, std::uint32_t number) {
    auto const contents = file.contents(number);
    return std::all_of(contents.begin(), contents.end(), [&](member const& each) {
        return identical(member_at(value, each.path), each.value);
    });
}

} // namespace endurance
