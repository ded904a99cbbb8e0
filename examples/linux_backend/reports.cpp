#include "reports.hpp"

#include <tavi/ioapi/v2/io_error_diagnostics_generic.hpp>

namespace linux_backend {

namespace {

namespace v2 = tavi::ioapi::v2;

v2::io_error_diagnostics_generic what_was_tried(std::string_view operation,
                                                std::string_view variable) {
    v2::io_error_diagnostics_generic list;
    list.set(v2::diagnostics_key::operation, operation);
    list.set("variable", variable);
    return list;
}

} // namespace

v2::io_error report(file_failure const& failure,
                    std::string_view operation,
                    std::string_view variable) {
    auto list = what_was_tried(operation, variable);
    list.set("file", failure.file());
    list.set("reason", failure.what());
    if (failure.system_code() != 0) {
        list.set(v2::diagnostics_key::device_code, failure.system_code());
    }
    auto error = make_linux_error(failure.code());
    error.diagnostics(list);
    return error;
}

v2::io_error report_read_only(std::string_view variable) {
    auto error = make_linux_error(linux_errc::read_only);
    error.diagnostics(what_was_tried("write", variable));
    return error;
}

} // namespace linux_backend
