#include "snapshot.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <system_error>
#include <utility>

namespace linux_backend {

namespace {

// Far beyond any of these files: where a folder of somebody's own is given, a file may have no end.
constexpr std::size_t longest_file = std::size_t{16} << 20;

[[noreturn]] void fail(std::string const& path, int system_code) {
    bool const is_absent = system_code == ENOENT || system_code == ENOTDIR;
    throw file_failure(is_absent ? linux_errc::file_absent : linux_errc::file_unreadable, path,
                       std::system_category().message(system_code), system_code);
}

class open_file {
public:
    // Not to wait for who writes to a pipe.
    explicit open_file(std::string const& path)
        : descriptor_(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {
        if (descriptor_ < 0) fail(path, errno);
    }
    open_file(open_file const&) = delete;
    open_file& operator=(open_file const&) = delete;
    ~open_file() { ::close(descriptor_); }

    /// \return how many bytes were added, 0 at the end, below 0 with `errno` set
    [[nodiscard]] ::ssize_t append_to(std::string& text) const {
        char block[16384];
        ::ssize_t count = 0;
        do {
            count = ::read(descriptor_, block, sizeof(block));
        } while (count < 0 && errno == EINTR);
        if (count > 0) text.append(block, static_cast<std::size_t>(count));
        return count;
    }

private:
    int descriptor_;
};

std::string read_file(std::string const& path) {
    open_file const file(path);
    std::string text;
    ::ssize_t count = 0;
    while ((count = file.append_to(text)) > 0) {
        if (text.size() > longest_file) {
            throw file_failure(linux_errc::file_malformed, path, "the file does not end");
        }
    }
    if (count < 0) fail(path, errno);
    return text;
}

} // namespace

snapshot::snapshot(std::string proc, std::string sys, tavi::ioapi::v2::io_timestamp time)
    : proc_(std::move(proc)), sys_(std::move(sys)), time_(time) {}

file_text const& snapshot::proc(std::string const& name) {
    return read_once(proc_ + '/' + name);
}

file_text const& snapshot::sys(std::string const& name) {
    return read_once(sys_ + '/' + name);
}

file_text const& snapshot::read_once(std::string path) {
    auto const known = files_.find(path);
    if (known != files_.end()) return known->second;
    file_text file{path, read_file(path)};
    return files_.emplace(std::move(path), std::move(file)).first->second;
}

std::vector<std::string> snapshot::devices(std::string const& name) const {
    std::string const path = sys_ + '/' + name;
    std::vector<std::string> list;
    std::error_code error;
    std::filesystem::directory_iterator at(path, error);
    for (; !error && at != std::filesystem::directory_iterator(); at.increment(error)) {
        std::error_code ignored; // a link whose device has just gone
        if (at->is_directory(ignored)) list.push_back(at->path().filename().string());
    }
    if (error) fail(path, error.value());
    std::sort(list.begin(), list.end());
    return list;
}

} // namespace linux_backend
