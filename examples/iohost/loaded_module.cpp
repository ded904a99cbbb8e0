#include "loaded_module.hpp"

#include <dlfcn.h>

#include <filesystem>

namespace iohost {

namespace {

namespace v2 = tavi::ioapi::v2;

void* load(std::string const& file) {
    // A bare name would be looked for among the system's libraries.
    std::string const path = std::filesystem::absolute(file).string();
    void* const handle = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr)
        throw setup_failure(std::string("cannot load the backend: ") + ::dlerror());
    return handle;
}

} // namespace

void loaded_module::unload::operator()(void* handle) const noexcept {
    ::dlclose(handle);
}

loaded_module::loaded_module(std::string const& file)
    : handle_(load(file)),
      entry_(reinterpret_cast<example::open_backend>(
          ::dlsym(handle_.get(), example::open_backend_name))) {
    if (entry_ == nullptr) {
        throw setup_failure("'" + file + "' is no backend: it has no function " +
                            example::open_backend_name);
    }
}

backend_ptr loaded_module::open(v2::utility::data_view<example::setting const> settings) const {
    v2::utility::string problem;
    v2::io_error error;
    backend_ptr opened(entry_(settings, problem, error));
    if (opened == nullptr) throw setup_failure(problem.empty() ? describe(error) : problem.str());
    return opened;
}

} // namespace iohost
