#include "simulated_controller.hpp"

#include "sockets.hpp"

#include <modbus_backend/function_code.hpp>
#include <poll.h>
#include <sys/socket.h>

#include <span>
#include <utility>

namespace endurance {

namespace {

using namespace std::chrono_literals;

constexpr int usual_backlog = 16;
constexpr std::size_t head_size = 6;
constexpr std::size_t request_size = 12;
constexpr std::size_t function_place = 7;
constexpr std::uint8_t exception_bit = 0x80;
constexpr std::uint8_t device_busy = 6;

simulated_controller* the_present_one = nullptr;

unsigned int word_at(std::vector<std::uint8_t> const& frame, std::size_t place) {
    return static_cast<unsigned int>(frame[place] << 8 | frame[place + 1]);
}

simulated_time::duration span_of(timeval const& time) {
    return std::chrono::seconds(time.tv_sec) + std::chrono::microseconds(time.tv_usec);
}

void set_span(timeval& time, simulated_time::duration span) {
    time.tv_sec = static_cast<decltype(time.tv_sec)>(span / 1s);
    time.tv_usec = static_cast<decltype(time.tv_usec)>((span % 1s).count());
}

std::vector<std::uint8_t> doubled(std::vector<std::uint8_t> data) {
    auto const once = data;
    data.insert(data.end(), once.begin(), once.end());
    return data;
}

/// Exactly so many bytes, or none.
std::vector<std::uint8_t> received(int socket, std::size_t count) {
    std::vector<std::uint8_t> data(count);
    std::size_t size = 0;
    while (size < count) {
        if (!comes_to_pass(socket, POLLIN)) return {};
        auto const more = ::recv(socket, data.data() + size, count - size, 0);
        if (more <= 0) return {};
        size += static_cast<std::size_t>(more);
    }
    return data;
}

} // namespace

simulated_controller::simulated_controller(simulated_time& time, plant& shown, std::uint64_t seed)
    : time_(time),
      plant_(shown),
      chance_(seed),
      reserved_(reserved_port(port_)),
      listener_(listening_on(port_, usual_backlog)) {
    the_present_one = this;
}

simulated_controller::~simulated_controller() {
    the_present_one = nullptr;
}

simulated_controller* simulated_controller::present() noexcept {
    return the_present_one;
}

void simulated_controller::fail(char const* what) {
    if (problem_.empty()) problem_ = what;
}

void simulated_controller::expect_poll(fault which, unsigned int exchange) {
    fault_ = which;
    hit_ = exchange;
    heard_in_poll_ = 0;
}

void simulated_controller::hang_up() {
    if (link_.get() < 0) return;
    link_ = station::descriptor();
    if (!is_reader(client_)) return; // it has gone before
    if (!comes_to_pass(client_, POLLRDHUP)) fail("the client does not learn of the end");
}

void simulated_controller::refuse() {
    listener_ = station::descriptor();
    hang_up();
}

void simulated_controller::unplug() {
    is_unplugged_ = true;
    listener_ = station::descriptor();
    listener_ = listening_on(port_, 0);
    filler_ = connecting_to(port_);
    if (!comes_to_pass(filler_.get(), POLLOUT)) fail("the queue does not fill");
}

void simulated_controller::come_back() {
    is_unplugged_ = false;
    link_ = station::descriptor();
    filler_ = station::descriptor();
    listener_ = station::descriptor();
    listener_ = listening_on(port_, usual_backlog);
}

bool simulated_controller::is_reader(int socket) const {
    return port_there(socket) == port_;
}

// One who connects anew has given up the connection before.
bool simulated_controller::has_link_to(int client) {
    auto const wanted = port_here(client);
    while (link_.get() < 0 || port_there(link_.get()) != wanted) {
        link_ = station::descriptor();
        if (!comes_to_pass(listener_.get(), POLLIN)) return false;
        link_ = station::descriptor(::accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC));
        ++connections_;
        is_answering_ = false;
        steps_.clear();
    }
    client_ = client;
    return true;
}

bool simulated_controller::hear() {
    auto const request = received(link_.get(), request_size);
    if (request.empty()) return false;
    ++requests_;
    is_answering_ = true;
    falls_silent_ = is_unplugged_;
    if (!is_unplugged_) plan(good_answer(request));
    ++heard_in_poll_;
    return true;
}

simulated_controller::bytes simulated_controller::good_answer(bytes const& request) {
    using modbus_backend::function_code;
    auto const function = static_cast<function_code>(request[function_place]);
    bool const is_input = function == function_code::read_input_registers;
    if (!is_input && function != function_code::read_holding_registers) fail("an odd function");
    auto const first = word_at(request, function_place + 1);
    auto const count = word_at(request, function_place + 3);
    plant_.advance_to(time_.passed());

    bytes answer(request.begin(), request.begin() + function_place + 1);
    answer.push_back(static_cast<std::uint8_t>(2 * count));
    for (unsigned int place = first; place < first + count; ++place) {
        std::size_t const index = place / 2 + (is_input ? plant_.size() / 2 : 0);
        auto const value = plant_.value(index % plant_.size());
        unsigned int const word = place % 2 == 0 ? value >> 16 : value & 0xFFFFU;
        answer.push_back(static_cast<std::uint8_t>(word >> 8));
        answer.push_back(static_cast<std::uint8_t>(word & 0xFFU));
    }
    answer[head_size - 1] = static_cast<std::uint8_t>(answer.size() - head_size);
    return answer;
}

void simulated_controller::pause(duration shortest, duration longest) {
    std::uniform_int_distribution<duration::rep> any(shortest.count(), longest.count());
    planned_ += duration(any(chance_));
}

void simulated_controller::then(bytes sent, ending end) {
    steps_.push_back({planned_, std::move(sent), end});
}

void simulated_controller::then_each(bytes const& sent, duration pause) {
    for (auto const byte : sent) {
        planned_ += pause;
        then({byte});
    }
}

std::size_t simulated_controller::any_cut(bytes const& answer) {
    return std::uniform_int_distribution<std::size_t>(1, answer.size() - 1)(chance_);
}

void simulated_controller::plan(bytes answer) {
    planned_ = time_.passed();
    pause(2ms, 10ms);
    auto const head = [&] {
        auto const cut = static_cast<std::ptrdiff_t>(any_cut(answer));
        return bytes(answer.begin(), answer.begin() + cut);
    };
    switch (heard_in_poll_ == hit_ ? fault_ : fault::none) {
    case fault::slow:
        pause(slow_pause, 2000ms);
        then(answer);
        break;
    case fault::trickle: then_each(answer, trickle_pause); break;
    case fault::late:
        pause(2600ms, 5000ms);
        then(answer);
        break;
    case fault::mute: falls_silent_ = true; break;
    case fault::stub:
        then(head());
        falls_silent_ = true;
        break;
    case fault::late_bytes: then_each(answer, 80ms); break;
    case fault::cut: then(head(), ending::close); break;
    case fault::reset: then(head(), ending::reset); break;
    case fault::transaction:
        answer[1] ^= 1U;
        then(answer);
        break;
    case fault::busy:
        answer.resize(function_place + 1);
        answer[function_place] |= exception_bit;
        answer[head_size - 1] = 3;
        answer.push_back(device_busy);
        then(answer);
        break;
    case fault::doubled: then(doubled(answer)); break;
    default: then(answer); break;
    }
}

void simulated_controller::take(step const& next) {
    time_.advance_to(next.moment);
    auto const size = static_cast<ssize_t>(next.sent.size());
    if (::send(link_.get(), next.sent.data(), next.sent.size(), MSG_NOSIGNAL) != size) {
        fail("the client does not take the answer");
    }
    if (!comes_to_pass(client_, POLLIN)) fail("the answer does not come");
    if (next.end == ending::none) return;
    if (next.end == ending::reset) reset_at_end(link_.get());
    link_ = station::descriptor();
    if (!comes_to_pass(client_, POLLRDHUP)) fail("the end does not come");
}

bool simulated_controller::wait_for_answer(int client, timeval& patience) {
    pollfd ready{client, POLLIN, 0};
    if (::poll(&ready, 1, 0) > 0) return true;
    if (!has_link_to(client) || (!is_answering_ && !hear())) {
        fail("the client waits and asks for nothing");
        return false;
    }
    auto const begin = time_.passed();
    if (steps_.empty() || steps_.front().moment >= begin + span_of(patience)) {
        wait_in_vain(patience);
        return false;
    }
    auto const next = std::move(steps_.front());
    steps_.pop_front();
    take(next);
    is_answering_ = !steps_.empty() || falls_silent_;
    set_span(patience, span_of(patience) - (time_.passed() - begin));
    return true;
}

void simulated_controller::wait_in_vain(timeval& patience) {
    time_.advance_to(time_.passed() + span_of(patience));
    set_span(patience, {});
}

} // namespace endurance
