#include "support/proxied_test.hpp"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <iterator>
#include <string>
#include <tuple>
#include <vector>

// The connection is cut behind every single byte of one exchange: of each kind of read and write,
// and of the poll of a subscription. First the request is cut on its way to the controller, then
// the answer on its way back.

namespace {

namespace v2 = tavi::ioapi::v2;
using cut_clock = std::chrono::steady_clock;
using test_support::detail_of;
using test_support::summaries;
using test_support::summary;

/// An exchange in bytes.
struct cut_sizes {
    unsigned int request;
    unsigned int answer;

    [[nodiscard]] unsigned int all() const { return request + answer; }
};

constexpr char const* cut_error = "modbus:257 connection lost";

/// How many descriptors this process has open.
std::ptrdiff_t open_descriptors() {
    std::filesystem::directory_iterator const entries("/proc/self/fd");
    return std::distance(begin(entries), end(entries));
}

std::string cut_name(std::string name) {
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

class cut_test : public test_support::proxied_test {
protected:
    /// An end is seen at once: not one of the operations has waited for its timeout.
    static void expect_no_waiting(cut_clock::time_point begin, cut_sizes const& sizes) {
        std::chrono::milliseconds const timeout(test_support::proxied_timeout_ms);
        EXPECT_LT(cut_clock::now() - begin, sizes.all() * timeout / 2);
    }

    /// Connected, and each time down and connected again.
    static void expect_each_logged(test_support::opened_backend const& opened,
                                   cut_sizes const& sizes) {
        EXPECT_EQ(opened.host().log().size(), 1U + 2U * sizes.all());
    }

    /// Past the line.
    [[nodiscard]] test_support::opened_backend open_directly() const {
        return module.open(settings_for(controller().port(), map_.path()));
    }
};

template <class Element, class Function>
v2::utility::array<Element> cut_list(unsigned int size, Function element) {
    v2::utility::array<Element> list(size);
    for (unsigned int i = 0; i < size; ++i) list[i] = static_cast<Element>(element(i));
    return list;
}

/// A variable that is read with one exchange, of a kind that has a function of its own.
struct cut_source {
    char const* variable;
    unsigned int first; ///< address
    cut_sizes sizes;
    v2::io_value (*contents)(); ///< gives what the controller shows there
};

v2::io_value shown_holdings() {
    return cut_list<unsigned short>(4, [](auto i) { return 60 + i; });
}

v2::io_value shown_inputs() {
    constexpr unsigned short contents[] = {4321, 65534, 0, 0};
    return cut_list<unsigned short>(4, [&](auto i) { return contents[i]; });
}

v2::io_value shown_coils() {
    return cut_list<bool>(10, [](auto i) { return i % 3 == 0; });
}

v2::io_value shown_discretes() {
    return cut_list<bool>(10, [](auto i) { return i % 2 == 1; });
}

/// Of a frame the head, unit and function; then address and count, or a count of bytes and
/// contents.
constexpr cut_source cut_sources[] = {
    {"several", 60, {8 + 4, 8 + 1 + 4 * 2}, shown_holdings},
    {"shown", 0, {8 + 4, 8 + 1 + 4 * 2}, shown_inputs},
    {"lamps", 0, {8 + 4, 8 + 1 + 2}, shown_coils},
    {"contacts", 0, {8 + 4, 8 + 1 + 2}, shown_discretes},
};

class cut_read : public cut_test,
                 public ::testing::WithParamInterface<std::tuple<char const*, cut_source>> {
protected:
    [[nodiscard]] static cut_source const& source() { return std::get<1>(GetParam()); }

    static void expect_all(example::backend& backend) {
        auto const result = read(backend, {source().variable});
        ASSERT_EQ(summary(result[0].error()), "ok");
        auto const& seen = result[0].value().value();
        EXPECT_TRUE(identical(seen, source().contents())) << seen;
    }

    static void expect_lost(example::backend& backend) {
        auto const result = read(backend, {source().variable});
        ASSERT_EQ(summary(result[0].error()), cut_error);
        EXPECT_EQ(detail_of(result[0].error(), "variable"), v2::io_value(source().variable));
        EXPECT_EQ(detail_of(result[0].error(), "address"), v2::io_value(source().first));
    }
};

TEST_P(cut_read, behind_any_byte_fails_one_read_at_once_and_leaks_nothing) {
    test_support::server_process const proxy = proxy_with(std::get<0>(GetParam()));
    auto const opened = open_through(proxy);
    expect_all(*opened);
    auto const connected = open_descriptors();
    auto const before = cut_clock::now();
    for (unsigned int passed = 0; passed < source().sizes.all(); ++passed) {
        SCOPED_TRACE(::testing::Message() << "cut behind " << passed << " bytes");
        ASSERT_NO_FATAL_FAILURE(expect_lost(*opened));
        ASSERT_EQ(open_descriptors(), connected - 1);
        ASSERT_NO_FATAL_FAILURE(expect_all(*opened));
        ASSERT_EQ(open_descriptors(), connected);
    }
    expect_no_waiting(before, source().sizes);
    expect_each_logged(opened, source().sizes);
}

INSTANTIATE_TEST_SUITE_P(all,
                         cut_read,
                         ::testing::Combine(::testing::Values("cut-everywhere", "reset-everywhere"),
                                            ::testing::ValuesIn(cut_sources)),
                         [](auto const& tested) {
                             return cut_name(std::get<0>(tested.param)) + "_of_" +
                                    std::get<1>(tested.param).variable;
                         });

/// A variable that is written with one exchange.
struct cut_target {
    char const* variable;
    unsigned int elements; ///< 0 for one that is no array
    bool is_bit;
    cut_sizes sizes;

    /// A value of the variable's own type that depends on the number; neighbours differ.
    [[nodiscard]] v2::io_value value(unsigned int number) const {
        if (elements == 0 && is_bit) return number % 2 == 1;
        if (elements == 0) return static_cast<unsigned short>(number);
        if (is_bit) return cut_list<bool>(elements, [&](auto i) { return number >> i & 1U; });
        return cut_list<unsigned short>(elements, [&](auto i) { return number + i; });
    }
};

/// Behind unit and function an address, then a value, or a count, a count of bytes and contents;
/// the answer has address and value, or address and count.
constexpr cut_target cut_targets[] = {
    {"word", 0, false, {8 + 4, 8 + 4}},
    {"words", 3, false, {8 + 5 + 3 * 2, 8 + 4}},
    {"switch", 0, true, {8 + 4, 8 + 4}},
    {"switches", 10, true, {8 + 5 + 2, 8 + 4}},
};

class cut_write : public cut_test,
                  public ::testing::WithParamInterface<std::tuple<char const*, cut_target>> {
protected:
    [[nodiscard]] static cut_target const& target() { return std::get<1>(GetParam()); }

    [[nodiscard]] static std::string write_number(example::backend& backend, unsigned int number) {
        return summary(write_one(backend, target().variable, target().value(number)));
    }

    static void expect_number(example::backend& backend, unsigned int number) {
        auto const seen = read_value(backend, target().variable);
        ASSERT_TRUE(identical(seen, target().value(number))) << seen << " is not " << number;
    }
};

TEST_P(cut_write, behind_any_byte_is_no_success_and_the_next_write_is_in_the_controller) {
    test_support::server_process const proxy = proxy_with(std::get<0>(GetParam()));
    auto const opened = open_through(proxy);
    auto const direct = open_directly();
    unsigned int number = 0;
    ASSERT_EQ(write_number(*opened, number), "ok");
    auto const connected = open_descriptors();
    auto const before = cut_clock::now();
    for (unsigned int passed = 0; passed < target().sizes.all(); ++passed) {
        SCOPED_TRACE(::testing::Message() << "cut behind " << passed << " bytes");
        ASSERT_EQ(write_number(*opened, number + 1), cut_error);
        ASSERT_EQ(open_descriptors(), connected - 1);
        // What the controller has heard to its end is done, though nobody learns of it.
        bool const was_heard = passed >= target().sizes.request;
        ASSERT_NO_FATAL_FAILURE(expect_number(*direct, was_heard ? number + 1 : number));
        number += 3;
        ASSERT_EQ(write_number(*opened, number), "ok");
        ASSERT_EQ(open_descriptors(), connected);
        ASSERT_NO_FATAL_FAILURE(expect_number(*direct, number));
    }
    expect_no_waiting(before, target().sizes);
    expect_each_logged(opened, target().sizes);
}

INSTANTIATE_TEST_SUITE_P(all,
                         cut_write,
                         ::testing::Combine(::testing::Values("cut-everywhere", "reset-everywhere"),
                                            ::testing::ValuesIn(cut_targets)),
                         [](auto const& tested) {
                             return cut_name(std::get<0>(tested.param)) + "_of_" +
                                    std::get<1>(tested.param).variable;
                         });

class cut_poll : public cut_test, public ::testing::WithParamInterface<char const*> {
protected:
    [[nodiscard]] static v2::read_result poll(example::backend& backend) {
        v2::read_result changes;
        v2::io_error error(v2::io_errc::todo); // must be cleared
        backend.poll(changes, error);
        EXPECT_EQ(error, v2::io_error());
        return changes;
    }

    /// Of the one variable, whose elements count upwards from there.
    static void expect_delivered(example::backend& backend, int first) {
        auto const changes = poll(backend);
        ASSERT_EQ(summaries(changes), texts{"ok"});
        EXPECT_EQ(changes[0].value().value().as<std::vector<int>>(),
                  (std::vector<int>{first, first + 1, first + 2}));
    }

    static v2::io_value counting_from(int first) {
        return {v2::utility::array<int>({first, first + 1, first + 2})};
    }
};

constexpr cut_sizes cut_poll_sizes{8 + 4, 8 + 1 + 3 * 2};

TEST_P(cut_poll, behind_any_byte_delivers_the_loss_and_then_the_newest_value) {
    test_support::server_process const proxy = proxy_with(GetParam());
    auto const direct = open_directly();
    ASSERT_EQ(summary(write_one(*direct, "words", counting_from(7))), "ok");
    auto const opened = open_through(proxy);
    v2::subscription_result subscribed;
    v2::io_error error;
    opened->subscribe(test_support::identifiers_of({"words"}), subscribed, error);
    ASSERT_NO_FATAL_FAILURE(expect_delivered(*opened, 7));
    auto const connected = open_descriptors();
    auto const before = cut_clock::now();
    for (unsigned int passed = 0; passed < cut_poll_sizes.all(); ++passed) {
        SCOPED_TRACE(::testing::Message() << "cut behind " << passed << " bytes");
        auto const first = static_cast<int>(100 + passed);
        ASSERT_EQ(summary(write_one(*direct, "words", counting_from(first))), "ok");
        ASSERT_EQ(summaries(poll(*opened)), texts{cut_error});
        ASSERT_EQ(open_descriptors(), connected - 1);
        ASSERT_NO_FATAL_FAILURE(expect_delivered(*opened, first));
        ASSERT_EQ(open_descriptors(), connected);
    }
    expect_no_waiting(before, cut_poll_sizes);
    expect_each_logged(opened, cut_poll_sizes);
}

INSTANTIATE_TEST_SUITE_P(all,
                         cut_poll,
                         ::testing::Values("cut-everywhere", "reset-everywhere"),
                         [](auto const& tested) { return cut_name(tested.param); });

} // namespace
