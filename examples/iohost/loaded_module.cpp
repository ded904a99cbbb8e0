#include "loaded_module.hpp"

#include "failures.hpp"

#include <dlfcn.h>

#include <algorithm>
#include <string_view>
#include <utility>

namespace iohost {

namespace {

namespace v2 = tavi::ioapi::v2;
using sort = elf_file::sort;

std::string listed(std::vector<std::string> const& words) {
    std::string text;
    for (auto const& word : words) text += (text.empty() ? "" : ", ") + word;
    return text;
}

std::string in_words(elf_file const& found) {
    switch (found.kind) {
    case sort::none: return "no ELF file";
    case sort::object: return "an object file for " + found.machine;
    case sort::program: return "a program for " + found.machine;
    case sort::shared: return "a shared object for " + found.machine;
    case sort::other: break;
    }
    return "an ELF file of another kind for " + found.machine;
}

/// Why a file that says this of itself is not even tried; nothing where it may be.
std::string objection(elf_file const& found) {
    if (!found.damage.empty()) {
        return "it is damaged or incomplete: an ELF file, but " + found.damage +
               "; build or copy it again";
    }
    auto const own = inspect("/proc/self/exe");
    if (!found.is_module_for(own)) {
        return "a shared object for " + own.machine + " was expected, but this is " +
               in_words(found) + "; build the backend as a module for " + own.machine;
    }
    auto const revision = library_revision();
    auto const other = std::find_if(found.revisions.begin(), found.revisions.end(),
                                    [&](auto const& each) { return each != revision; });
    if (other != found.revisions.end()) {
        return "it was built for revision " + *other + " of libiokern (it asks for the symbol " +
               revision_symbol(*other) + "), but this host has revision " + revision +
               "; build it again with the headers of " + revision;
    }
    if (found.entries.empty()) {
        return std::string("it is no backend: the function ") + example::entry_name +
               " was expected, but it has none of that kind; give the file of a backend module";
    }
    for (auto const& entry : found.entries) {
        if (entry == example::entry_name) return {};
    }
    return std::string("the function ") + example::entry_name + " was expected, but it has " +
           listed(found.entries) +
           ", of another agreement of hosts and backends; build it again with the header "
           "backend_module.hpp of this host";
}

/// Words for what the loader says of a file against which there is no objection.
std::string explained(elf_file const& found, std::string const& message) {
    for (auto const& library : found.needed) {
        if (message.starts_with(library + ": ")) {
            return "it needs the library " + library + ", which was not found (" +
                   message.substr(library.size() + 2) +
                   "); install it, or name its directory in LD_LIBRARY_PATH";
        }
    }
    return "the loader says: " + message;
}

[[noreturn]] void refuse(std::filesystem::path const& file, std::string const& why) {
    throw setup_failure("cannot load '" + file.string() + "': " + why);
}

void* load(std::filesystem::path const& file, elf_file const& found) {
    if (auto const why = objection(found); !why.empty()) refuse(file, why);
    void* const handle = ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) refuse(file, explained(found, ::dlerror()));
    return handle;
}

} // namespace

void loaded_module::unload::operator()(void* handle) const noexcept {
    ::dlclose(handle);
}

loaded_module::loaded_module(std::filesystem::path file)
    : file_(std::move(file)),
      about_(inspect(file_)),
      handle_(load(file_, about_)),
      module_(nullptr) {
    auto const entry =
        reinterpret_cast<example::get_backend_module>(::dlsym(handle_.get(), example::entry_name));
    if (entry == nullptr) refuse(file_, ::dlerror());
    module_ = entry();
    if (module_ == nullptr) refuse(file_, "its entry function gives nothing; mend the module");
}

example::module_info loaded_module::describe() const {
    example::module_info info;
    v2::io_error error;
    module_->describe(info, error);
    insist("describe", error);
    return info;
}

v2::config::config_template loaded_module::form() const {
    v2::config::config_template form;
    v2::io_error error;
    module_->form(form, error);
    insist("form", error);
    return form;
}

v2::config::verification_result loaded_module::verify(v2::config::store const& values) const {
    v2::config::verification_result verdict;
    v2::io_error error;
    module_->verify(values, verdict, error);
    insist("verify", error);
    return verdict;
}

backend_ptr loaded_module::open(v2::config::store const& values, v2::backend_query host) const {
    v2::utility::string problem;
    v2::io_error error;
    backend_ptr opened(module_->open(values, host, problem, error));
    if (opened == nullptr) {
        // A configuration that is refused is to be mended; all else comes from the world outside.
        auto const verdict = verify(values);
        bool const is_refused = std::any_of(verdict.begin(), verdict.end(), [](auto const& issue) {
            return issue.severity >= v2::config::verification_result::severity_type::error;
        });
        if (is_refused) throw setup_failure(problem.empty() ? v2::describe(error) : problem.str());
        throw operation_failure("open", error, problem.str());
    }
    return opened;
}

} // namespace iohost
