#pragma once

#include "module_test.hpp"
#include "server_process.hpp"

#include <examples/support/temporary_file.hpp>
#include <gtest/gtest.h>

#include <string>

namespace test_support {

/// Registers of a controller that nobody here wrote, in the order of reading: `first` and `second`
/// with one request, `third` with another. Nobody expects anything of those that end the list but
/// who writes them.
inline constexpr char const* proxied_map = "first holding 62 u16\n"
                                           "second holding 60 u32\n"
                                           "third input 0 u16\n"
                                           "several holding 60 u16[4]\n"
                                           "shown input 0 u16[4]\n"
                                           "lamps coil 0 boolean[10]\n"
                                           "contacts discrete 0 boolean[10]\n"
                                           "word holding 280 u16\n"
                                           "words holding 282 u16[3]\n"
                                           "switch coil 1900 boolean\n"
                                           "switches coil 1904 boolean[10]\n";

/// How long the backend waits, in ms.
inline constexpr unsigned int proxied_timeout_ms = 600;

/// Uses the module through a proxy to a controller, one for all tests.
class proxied_test : public module_test {
protected:
    /// Starts with the first test that needs it, and ends with the program.
    [[nodiscard]] static server_process const& controller() {
        static server_process const started(foreign_server());
        return started;
    }

    [[nodiscard]] static server_process proxy_with(std::string const& fault, int skipped = 0) {
        return server_process(faulty_proxy(controller().port(), fault, skipped));
    }

    [[nodiscard]] opened_backend open_through(server_process const& proxy) const {
        return module.open(settings_for(proxy.port(), map_.path(), proxied_timeout_ms));
    }

    /// A read with both requests gives what the controller holds.
    static void expect_good(example::backend& backend) {
        auto const result = read(backend, {"first", "second", "third"});
        ASSERT_EQ(summaries(result), texts(3, "ok"));
        EXPECT_EQ(result[0].value().value().as<int>(), 62);
        EXPECT_EQ(result[1].value().value().as<int>(), 60 << 16 | 61);
        EXPECT_EQ(result[2].value().value().as<int>(), 4321);
    }

    temporary_file const map_{proxied_map};
};

} // namespace test_support
