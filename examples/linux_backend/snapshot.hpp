#pragma once

#include <tavi/ioapi/v2/io_timestamp.hpp>

#include "failure.hpp"

#include <map>
#include <string>
#include <vector>

namespace linux_backend {

/// A file as it was read.
struct file_text {
    std::string path;
    std::string text;
};

/// The files that one operation looks into, each read once, so that what comes from one file
/// belongs together.
class snapshot {
public:
    /// \param proc, sys  the folders below which files are looked for \param time  when it begins
    snapshot(std::string proc, std::string sys, tavi::ioapi::v2::io_timestamp time);

    /// When this began.
    [[nodiscard]] tavi::ioapi::v2::io_timestamp time() const noexcept { return time_; }

    /// A file by its name below the folder, such as `net/dev`. Lives as long as this object.
    /// \throws file_failure
    [[nodiscard]] file_text const& proc(std::string const& name);
    [[nodiscard]] file_text const& sys(std::string const& name);

    /// The folders in a folder of devices, links to folders included, in the order of their names.
    /// \throws file_failure  where it is no folder
    [[nodiscard]] std::vector<std::string> devices(std::string const& name) const;

private:
    file_text const& read_once(std::string path);

    std::string proc_;
    std::string sys_;
    tavi::ioapi::v2::io_timestamp time_;
    std::map<std::string, file_text> files_;
};

/// \return what `parse` makes of the text. \throws file_failure  where it raises `bad_text`
template <class Parse>
[[nodiscard]] auto parsed(file_text const& file, Parse parse) {
    try {
        return parse(file.text);
    } catch (bad_text const& failure) {
        throw file_failure(failure.code(), file.path, failure.what());
    }
}

} // namespace linux_backend
