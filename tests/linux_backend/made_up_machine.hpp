#pragma once

#include <tavi/ioapi/v2/config/store.hpp>

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace linux_test {

/// Folders with the texts of a machine that does not exist, whose numbers are all known. They go
/// away with the object.
class made_up_machine {
public:
    made_up_machine()
        : root_(::testing::TempDir() + "linux_backend_test_" + std::to_string(::getpid()) + "_" +
                std::to_string(count_++)) {
        write("proc/loadavg", "0.42 0.36 0.30 2/345 6789\n");
        write("proc/uptime", "5025.50 9000.25\n");
        write("proc/meminfo", "MemTotal:        2048000 kB\n"
                              "MemFree:          512000 kB\n"
                              "MemAvailable:    1024000 kB\n"
                              "Buffers:           64000 kB\n"
                              "Cached:           256000 kB\n"
                              "SwapCached:            7 kB\n"
                              "HugePages_Total:       0\n"
                              "SwapTotal:        128000 kB\n"
                              "SwapFree:         100000 kB\n");
        write("proc/stat", "cpu  3000 200 1000 40000 500 60 70 80 0 0\n"
                           "cpu0 1000 150 400 20000 300 10 20 30 0 0\n"
                           "cpu2 2000 50 600 20000 200 50 50 50 0 0\n"
                           "intr 9999 1 2 3\n"
                           "ctxt 123456789\n"
                           "btime 1700000000\n"
                           "processes 4321\n"
                           "procs_running 3\n");
        write("proc/sys/kernel/hostname", "station-7\n");
        write("proc/sys/kernel/osrelease", "6.1.0-made-up\n");
        write("proc/net/dev",
              "Inter-|   Receive                            |  Transmit\n"
              " face |bytes packets errs drop fifo frame compressed multicast|bytes packets errs "
              "drop fifo colls carrier compressed\n"
              "    lo: 100 10 0 0 0 0 0 0 100 10 0 0 0 0 0 0\n"
              "  eth0:5000 50 3 4 5 6 7 8 6000 60 13 14 15 16 17 18\n"
              "eth0.20: 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16\n");
        write("sys/class/net/eth0/operstate", "up\n");
        write("sys/class/net/eth0/mtu", "1500\n");
        write("sys/class/net/lo/operstate", "unknown\n");
        write("sys/class/net/lo/mtu", "65536\n");
        write("sys/class/net/bonding_masters", "\n");
        write("sys/block/sda/size", "1000\n");
        write("sys/block/sda/stat", "  11 22 33 44 55 66 77 88 99 1500 111 0 0 0 0 0 0\n");
        write("sys/class/thermal/thermal_zone0/temp", "-1500\n");
        write("sys/class/thermal/cooling_device0/type", "fan\n");
    }
    made_up_machine(made_up_machine const&) = delete;
    made_up_machine& operator=(made_up_machine const&) = delete;
    ~made_up_machine() {
        std::error_code ignored;
        std::filesystem::remove_all(root_, ignored);
    }

    [[nodiscard]] std::string path(std::string const& name) const { return root_ + '/' + name; }
    [[nodiscard]] std::string proc() const { return path("proc"); }
    [[nodiscard]] std::string sys() const { return path("sys"); }

    /// Put a file in place of the one that may be there, with the folders above it.
    void write(std::string const& name, std::string_view text) const {
        std::filesystem::create_directories(std::filesystem::path(path(name)).parent_path());
        std::ofstream(path(name), std::ios::binary) << text;
    }
    /// Remove a file, or a folder with all that is in it.
    void remove(std::string const& name) const { std::filesystem::remove_all(path(name)); }

    /// The configuration of a backend that looks here.
    [[nodiscard]] tavi::ioapi::v2::config::store options() const {
        tavi::ioapi::v2::config::store values;
        values.set("proc", proc());
        values.set("sys", sys());
        return values;
    }

private:
    static inline int count_ = 0;
    std::string root_;
};

} // namespace linux_test
