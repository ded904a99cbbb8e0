#pragma once

#include <tavi/ioapi/v2/ioapi.hpp>

#include "support/input.hpp"
#include "value_model.hpp"

#include <optional>
#include <string>

/// \file
/// Errors as a code and the number that their diagnostics hold.

namespace fuzz {

struct error_model {
    int code = 0;
    std::optional<int> detail;
};

inline v2::io_error made(error_model const& model) {
    v2::io_error error{v2::io_errc{model.code}};
    if (model.detail) {
        v2::io_error_diagnostics_generic list;
        list.set("index", *model.detail);
        error.diagnostics(list);
    }
    return error;
}

inline bool same(v2::io_error const& error, error_model const& model) {
    if (error.code() != model.code || error.ok() != (model.code == 0)) return false;
    if (&error.category() != &v2::generic_io_error_category()) return false;
    std::optional<int> detail;
    for (auto const& entry : error.diagnostics()) detail = entry.value.as<int>();
    return detail == model.detail;
}

inline error_model random_error(input& script) {
    error_model model{static_cast<signed char>(script.byte()), std::nullopt};
    if (script.flag()) model.detail = static_cast<int>(script.byte());
    return model;
}

} // namespace fuzz
