#include "opened.hpp"

#include <stdexcept>

namespace endurance {

backend_ptr opened(example::backend_module const& module,
                   example::v2::config::store const& values,
                   example::v2::host_interface& host) {
    example::v2::utility::string problem;
    example::v2::io_error error;
    backend_ptr made(module.open(values, example::v2::backend_query(host), problem, error));
    if (made == nullptr) throw std::runtime_error(problem.str());
    return made;
}

} // namespace endurance
