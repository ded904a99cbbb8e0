#pragma once

#include "elf_file.hpp"

#include <backend_module.hpp>

#include <filesystem>
#include <memory>

namespace iohost {

struct release_backend {
    void operator()(example::backend* opened) const noexcept { opened->release(); }
};
using backend_ptr = std::unique_ptr<example::backend, release_backend>;

/// A loaded backend module. It must outlive its backends, their errors, and results with those.
class loaded_module {
public:
    /// \throws setup_failure  for a file that does not load or is no backend for this host: what
    ///     was expected, what was found and what to do about it, in one sentence
    explicit loaded_module(std::filesystem::path file);

    [[nodiscard]] std::filesystem::path const& file() const noexcept { return file_; }
    /// What the file says of itself.
    [[nodiscard]] elf_file const& about() const noexcept { return about_; }

    /// What the module itself answers, for operations that need no connection.
    [[nodiscard]] example::backend_module const& operations() const noexcept { return *module_; }

    /// \throws operation_failure  with what the module says, as the two below
    [[nodiscard]] example::module_info describe() const;
    [[nodiscard]] tavi::ioapi::v2::config::config_template form() const;
    [[nodiscard]] tavi::ioapi::v2::config::verification_result verify(
        tavi::ioapi::v2::config::store const& values) const;

    /// \throws operation_failure  with the line by which the module says what prevented it;
    ///     setup_failure  where its verdict on the values has an error
    [[nodiscard]] backend_ptr open(tavi::ioapi::v2::config::store const& values,
                                   tavi::ioapi::v2::backend_query host) const;

private:
    struct unload {
        void operator()(void* handle) const noexcept;
    };

    std::filesystem::path file_;
    elf_file about_;
    std::unique_ptr<void, unload> handle_;
    example::backend_module const* module_;
};

} // namespace iohost
