#pragma once

#include <tavi/ioapi/v2/io_data_type.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include "snapshot.hpp"

#include <functional>
#include <string>
#include <vector>

namespace linux_backend {

/// One thing that the machine tells about itself.
struct variable {
    std::string name;
    std::string description; ///< with the unit
    tavi::ioapi::v2::io_data_type data_type;
    /// Gives the value, of that type. \throws file_failure
    std::function<tavi::ioapi::v2::io_value(snapshot&)> read;
};

using variable_list = std::vector<variable>;

/// Give a variable that comes from one file below the kernel folder. \param parse  makes the value
/// of the text, or raises `bad_text`
template <class Parse>
[[nodiscard]] auto from_proc(std::string const& name, Parse parse) {
    return [name, parse](snapshot& files) -> tavi::ioapi::v2::io_value {
        return parsed(files.proc(name), parse);
    };
}

} // namespace linux_backend
