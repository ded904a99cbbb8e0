#include "iokern_mutants.hpp"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>

// It is the only source of the mutated library that was not there before. Nothing here may
// allocate: tests count what the library asks for.

namespace iokern_mutants {

namespace {

constexpr unsigned long most_places = 65536;
unsigned char nobody_reads[most_places];

} // namespace

int chosen = 0;
unsigned char* reached = nobody_reads;

namespace {

// Before any other initialiser of the library, which may well pass by a mutated place.
[[gnu::constructor(101)]] void choose() {
    if (char const* const number = std::getenv("IOKERN_MUTANT")) {
        chosen = static_cast<int>(std::strtol(number, nullptr, 10));
    }
    char const* const name = std::getenv("IOKERN_MUTANTS_REACHED");
    if (name == nullptr) return;
    int const file = ::open(name, O_RDWR | O_CLOEXEC);
    if (file < 0) std::abort();
    void* const shared = ::mmap(nullptr, most_places, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    if (shared == MAP_FAILED) std::abort();
    ::close(file);
    reached = static_cast<unsigned char*>(shared);
}

} // namespace

} // namespace iokern_mutants
