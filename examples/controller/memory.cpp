#include "memory.hpp"

#include "descriptor.hpp"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <type_traits>

namespace station {

namespace {

static_assert(std::is_trivially_copyable_v<image>, "it lies in a file as it is");

[[noreturn]] void fail(std::string const& file, std::string const& why) {
    throw std::runtime_error("cannot keep the panel in '" + file + "': " + why);
}

/// Of a file that holds an image.
descriptor opened(std::string const& file) {
    descriptor kept(::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644));
    struct stat about {};
    if (kept.get() < 0 || ::fstat(kept.get(), &about) != 0) fail(file, std::strerror(errno));
    constexpr auto size = static_cast<ssize_t>(sizeof(image));
    if (about.st_size == 0) {
        image const first = image_at(0);
        if (::write(kept.get(), &first, sizeof(image)) != size) fail(file, std::strerror(errno));
    } else if (about.st_size != size) {
        fail(file, "it holds something else");
    }
    return kept;
}

void* mapped(int file, int flags) {
    return ::mmap(nullptr, sizeof(image), PROT_READ | PROT_WRITE, flags, file, 0);
}

image* image_in(std::string const& file) {
    if (file.empty()) {
        void* const place = mapped(-1, MAP_PRIVATE | MAP_ANONYMOUS);
        if (place == MAP_FAILED) throw std::runtime_error("no memory");
        return new (place) image(image_at(0));
    }
    descriptor const kept = opened(file);
    void* const place = mapped(kept.get(), MAP_SHARED);
    if (place == MAP_FAILED) fail(file, std::strerror(errno));
    return static_cast<image*>(place);
}

} // namespace

void memory::unmap::operator()(image* mapped) const noexcept {
    ::munmap(mapped, sizeof(image));
}

memory::memory(std::string const& file) : image_(image_in(file)) {}

} // namespace station
