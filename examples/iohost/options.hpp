#pragma once

#include <optional>
#include <string>
#include <vector>

namespace iohost {

/// What the command line says, unchecked beyond its form.
struct options {
    std::string command; ///< the name of the command

    std::optional<std::string> backend;     ///< a path, or the word of a backend
    std::optional<std::string> config_file; ///< with the configuration
    std::vector<std::string> settings;      ///< each `KEY=VALUE`
    bool json = false;
    bool verbose = false;

    std::string folder;                      ///< of browse; empty for the top
    std::vector<std::string> names;          ///< of read and watch
    bool print = false;                      ///< of read
    std::string type;                        ///< of read; empty to convert nothing
    std::vector<std::string> assignments;    ///< of write and check, each `NAME[:TYPE]=VALUE`
    std::optional<unsigned long long> polls; ///< of watch
    std::optional<double> seconds;           ///< of watch
    bool allow_writes = false;               ///< of check
};

} // namespace iohost
