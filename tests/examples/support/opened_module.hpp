#pragma once

#include "recording_host.hpp"

#include <backend_module.hpp>
#include <dlfcn.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

namespace test_support {

struct release_backend {
    void operator()(example::backend* opened) const noexcept { opened->release(); }
};

/// A backend and the host that it was opened with.
class opened_backend {
public:
    opened_backend(std::unique_ptr<recording_host> host,
                   std::unique_ptr<example::backend, release_backend> opened) noexcept
        : host_(std::move(host)), backend_(std::move(opened)) {}

    [[nodiscard]] example::backend* operator->() const noexcept { return backend_.get(); }
    [[nodiscard]] example::backend& operator*() const noexcept { return *backend_; }
    [[nodiscard]] recording_host& host() const noexcept { return *host_; }

    /// Release the backend; the host stays, to be asked what it was told.
    void close() noexcept { backend_.reset(); }

private:
    std::unique_ptr<recording_host> host_; ///< outlives the backend
    std::unique_ptr<example::backend, release_backend> backend_;
};

/// A backend module, loaded from its file. It must outlive its backends, their errors, and results
/// with those.
class opened_module {
public:
    /// \param path  with a slash \throws std::runtime_error  where it does not load
    explicit opened_module(std::string const& path)
        : handle_(::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) {
        if (handle_ == nullptr) throw std::runtime_error(::dlerror());
        void* const entry = ::dlsym(handle_.get(), example::entry_name);
        if (entry == nullptr) throw std::runtime_error("no entry function in " + path);
        module_ = reinterpret_cast<example::get_backend_module>(entry)();
    }

    [[nodiscard]] example::backend_module const& operator*() const noexcept { return *module_; }
    [[nodiscard]] example::backend_module const* operator->() const noexcept { return module_; }

    /// Open a backend with a host of its own. \throws std::runtime_error  with the text of the
    /// problem, or of the error where the module gives none
    [[nodiscard]] opened_backend open(example::v2::config::store const& values) const {
        auto host = std::make_unique<recording_host>();
        example::v2::utility::string problem;
        example::v2::io_error error;
        std::unique_ptr<example::backend, release_backend> opened(
            module_->open(values, example::v2::backend_query(*host), problem, error));
        if (opened == nullptr) {
            throw std::runtime_error(problem.empty() ? describe(error) : problem.str());
        }
        return {std::move(host), std::move(opened)};
    }

private:
    struct unload {
        void operator()(void* handle) const noexcept { ::dlclose(handle); }
    };

    std::unique_ptr<void, unload> handle_;
    example::backend_module const* module_ = nullptr;
};

} // namespace test_support
