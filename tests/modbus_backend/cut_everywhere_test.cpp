#include "support/proxied_test.hpp"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

// The connection is cut behind every single byte of one exchange.

namespace {

namespace v2 = tavi::ioapi::v2;

/// Head of a frame, unit and function; then address and count, or a count of bytes and contents.
constexpr unsigned int cut_request_size = 8 + 4;
constexpr unsigned int cut_answer_size = 8 + 1 + 4 * 2;
constexpr unsigned int cut_exchange_size = cut_request_size + cut_answer_size;

/// How many descriptors this process has open.
std::ptrdiff_t open_descriptors() {
    std::filesystem::directory_iterator const entries("/proc/self/fd");
    return std::distance(begin(entries), end(entries));
}

class cut_connection : public test_support::proxied_test,
                       public ::testing::WithParamInterface<char const*> {
protected:
    static void expect_all(example::backend& backend) {
        auto const result = read(backend, {"several"});
        ASSERT_EQ(test_support::summary(result[0].error()), "ok");
        EXPECT_EQ(result[0].value().value().as<std::vector<int>>(),
                  (std::vector<int>{60, 61, 62, 63}));
    }

    static void expect_lost(example::backend& backend) {
        auto const result = read(backend, {"several"});
        ASSERT_EQ(test_support::summary(result[0].error()), "modbus:257 connection lost");
        EXPECT_EQ(test_support::detail_of(result[0].error(), "variable"), v2::io_value("several"));
        EXPECT_EQ(test_support::detail_of(result[0].error(), "address"), v2::io_value(60U));
    }
};

TEST_P(cut_connection, behind_any_byte_fails_one_read_at_once_and_leaks_nothing) {
    test_support::server_process const proxy = proxy_with(GetParam());
    auto const opened = open_through(proxy);
    expect_all(*opened);
    auto const connected = open_descriptors();
    auto const before = std::chrono::steady_clock::now();
    for (unsigned int passed = 0; passed < cut_exchange_size; ++passed) {
        SCOPED_TRACE(::testing::Message() << "cut behind " << passed << " bytes");
        ASSERT_NO_FATAL_FAILURE(expect_lost(*opened));
        ASSERT_EQ(open_descriptors(), connected - 1);
        ASSERT_NO_FATAL_FAILURE(expect_all(*opened));
        ASSERT_EQ(open_descriptors(), connected);
    }
    // An end is seen at once: not one of the reads above has waited for its timeout.
    std::chrono::milliseconds const timeout(test_support::proxied_timeout_ms);
    EXPECT_LT(std::chrono::steady_clock::now() - before, cut_exchange_size * timeout / 2);
    // Connected, and each time down and connected again.
    EXPECT_EQ(opened.host().log().size(), 1U + 2U * cut_exchange_size);
}

INSTANTIATE_TEST_SUITE_P(all,
                         cut_connection,
                         ::testing::Values("cut-everywhere", "reset-everywhere"),
                         [](auto const& tested) {
                             std::string name = tested.param;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

} // namespace
