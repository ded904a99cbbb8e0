#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <string>
#include <string_view>

namespace test_support {

/// A file with this text that goes away with the object.
class temporary_file {
public:
    explicit temporary_file(std::string_view text)
        : path_(::testing::TempDir() + "examples_test_" + std::to_string(::getpid()) + "_" +
                std::to_string(count_++)) {
        std::ofstream(path_, std::ios::binary) << text;
    }
    temporary_file(temporary_file const&) = delete;
    temporary_file& operator=(temporary_file const&) = delete;
    ~temporary_file() { static_cast<void>(std::remove(path_.c_str())); }

    [[nodiscard]] std::string const& path() const noexcept { return path_; }

private:
    static inline int count_ = 0;
    std::string path_;
};

} // namespace test_support
