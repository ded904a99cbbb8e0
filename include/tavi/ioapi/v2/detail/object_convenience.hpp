#pragma once

#include "../io_exception.hpp"
#include "../io_object.hpp"
#include "../io_value.hpp"

#include <utility>

namespace tavi::ioapi::v2 {

inline io_value io_object::get(utility::string_view key) const {
    io_error error;
    io_value value = get(key, error);
    if (error) throw io_exception(std::move(error));
    return value;
}

inline void io_object::set(utility::string_view key, io_value value) {
    io_error error;
    set(key, std::move(value), error);
    if (error) throw io_exception(std::move(error));
}

} // namespace tavi::ioapi::v2
