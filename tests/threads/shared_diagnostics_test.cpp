#include <tavi/ioapi/v2/ioapi.hpp>

#include "crowd.hpp"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <thread>
#include <utility>
#include <vector>

/// \file
/// The reference counts of diagnostics, from more threads than there are processors.

namespace threads_test {
namespace {

namespace v2 = tavi::ioapi::v2;

constexpr int owners = 8;

v2::io_error shared_error() {
    v2::io_error_diagnostics_generic list;
    list.set(v2::diagnostics_key::address, "a text that no small buffer could hold");
    v2::io_error error(v2::io_errc::not_found);
    error.diagnostics(list);
    return error;
}

/// \return the references to the list of `error`, by the count that the list itself gives.
unsigned int references(v2::io_error const& error) {
    auto* const list = error.diagnostics().list();
    list->add_ref();
    return list->release();
}

TEST(shared_diagnostics, are_held_once_when_eight_threads_have_dropped_their_copies) {
    v2::io_error const error = shared_error();
    EXPECT_EQ(failures_of_crowd(
                  [&](int, int) {
                      v2::io_error copy(error);
                      v2::io_error again;
                      again = copy;
                      copy.reset();
                      v2::io_error const moved(std::move(again));
                      return moved.diagnostics().contains("address");
                  },
                  owners),
              0);
    EXPECT_EQ(references(error), 1U);
    EXPECT_EQ(error.diagnostics().size(), 1U);
}

TEST(shared_diagnostics, are_counted_while_eight_threads_keep_copies) {
    v2::io_error const error = shared_error();
    std::array<v2::io_error, owners> kept;
    EXPECT_EQ(failures_of_crowd(
                  [&](int thread, int) {
                      kept[static_cast<std::size_t>(thread)] = error;
                      return true;
                  },
                  owners),
              0);
    EXPECT_EQ(references(error), 1U + owners);
}

// Each thread drops the copy that was made for it: whichever comes last destroys the list.
TEST(shared_diagnostics, are_destroyed_by_the_last_of_eight_threads) {
    for (int list = 0; list < 100; ++list) {
        std::array<v2::io_error, owners> copies;
        copies.fill(shared_error());
        ASSERT_EQ(references(copies[0]), static_cast<unsigned int>(owners));
        std::atomic<int> waiting{owners};
        std::vector<std::thread> threads;
        threads.reserve(owners);
        for (v2::io_error& own : copies) {
            threads.emplace_back([&] {
                --waiting;
                while (waiting > 0) std::this_thread::yield();
                own.reset();
            });
        }
        for (auto& each : threads) each.join();
        for (v2::io_error const& own : copies) ASSERT_EQ(own.diagnostics().list(), nullptr);
    }
}

} // namespace
} // namespace threads_test
