#include "failures.hpp"

#include <tavi/ioapi/v2/io_value.hpp>

#include "json_value.hpp"

#include <utility>

namespace iohost {

namespace v2 = tavi::ioapi::v2;

operation_failure::operation_failure(std::string const& operation,
                                     v2::io_error const& error,
                                     std::string const& problem)
    : runtime_error(problem.empty() ? operation + ": " + describe(error) : problem),
      document_(document_of({{"operation", operation}, {"error", to_json(error)}})) {}

operation_failure::operation_failure(std::string const& line, std::string document)
    : runtime_error(line), document_(std::move(document)) {}

operation_failure operation_failure::of_browse(std::string const& folder,
                                               v2::io_error const& error) {
    if (folder.empty()) return {"browse", error};
    return {"browse '" + folder + "': " + describe(error),
            document_of({{"operation", "browse"}, {"folder", folder}, {"error", to_json(error)}})};
}

void insist(std::string const& operation, v2::io_error const& error) {
    if (error) throw operation_failure(operation, error);
}

} // namespace iohost
