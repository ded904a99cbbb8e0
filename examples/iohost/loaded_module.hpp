#pragma once

#include <backend_module.hpp>

#include <memory>
#include <stdexcept>
#include <string>

namespace iohost {

/// Why a read cannot even begin; its text is one line for people.
class setup_failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct release_backend {
    void operator()(example::backend* opened) const noexcept { opened->release(); }
};
using backend_ptr = std::unique_ptr<example::backend, release_backend>;

/// A loaded backend module. It must outlive its backends, their errors, and results with those.
class loaded_module {
public:
    /// \throws setup_failure  for a file that does not load or has no entry function
    explicit loaded_module(std::string const& file);

    /// \throws setup_failure  with what the backend says
    [[nodiscard]] backend_ptr open(
        tavi::ioapi::v2::utility::data_view<example::setting const> settings) const;

private:
    struct unload {
        void operator()(void* handle) const noexcept;
    };

    std::unique_ptr<void, unload> handle_;
    example::open_backend entry_;
};

} // namespace iohost
