#include "support/allocations.hpp"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace test_support {
namespace {

// Stands before each block, at the end of a prefix that keeps the block's alignment.
struct block_header {
    void* base;
    std::size_t size;
    std::size_t alignment; // 0: made by an operator without one
    std::uint64_t magic;
};
constexpr std::uint64_t alive = 0x616c697665626c6bU;
constexpr std::uint64_t released = 0x72656c6561736564U;

std::atomic<long long> live{0};
thread_local allocation_counts thread_counts;
thread_local aligned_call last_allocation;
thread_local aligned_call last_release;
thread_local std::size_t countdown = 0; // 0: nothing is to fail
thread_local bool failed = false;
thread_local bool stays_exhausted = false;

[[noreturn]] void report(char const* what, std::size_t made, std::size_t given) {
    std::fprintf(stderr, "%s: made with %zu, released with %zu\n", what, made, given);
    std::abort();
}

/// Whether it is the turn of an allocation that is to fail.
bool is_exhausted() noexcept {
    if (countdown == 0) return false;
    if (countdown > 1) {
        --countdown;
        return false;
    }
    if (!stays_exhausted) countdown = 0;
    failed = true;
    return true;
}

void* allocate(std::size_t size, std::size_t alignment) noexcept {
    ++thread_counts.allocations;
    if (is_exhausted()) return nullptr;
    std::size_t const step = std::max(alignment, alignof(std::max_align_t));
    std::size_t const prefix = (sizeof(block_header) + step - 1) / step * step;
    if (size > SIZE_MAX - prefix - step) return nullptr;
    void* base = nullptr;
    if (posix_memalign(&base, step, prefix + size) != 0) return nullptr;
    char* const block = static_cast<char*>(base) + prefix;
    ::new (block - sizeof(block_header)) block_header{base, size, alignment, alive};
    ++live;
    if (alignment != 0) last_allocation = {block, size, alignment};
    return block;
}

void* allocate_or_throw(std::size_t size, std::size_t alignment) {
    if (void* const block = allocate(size, alignment)) return block;
    throw std::bad_alloc();
}

constexpr std::size_t unknown_size = SIZE_MAX;

void release(void* block, std::size_t size, std::size_t alignment) noexcept {
    if (alignment != 0 && size != unknown_size) last_release = {block, size, alignment};
    if (block == nullptr) {
        ++thread_counts.null_releases;
        return;
    }
    auto* const header =
        reinterpret_cast<block_header*>(static_cast<char*>(block) - sizeof(block_header));
    if (header->magic != alive) report("block that is not alive", 0, 0);
    if (size != unknown_size && header->size != size) report("block size", header->size, size);
    if (header->alignment != alignment) report("block alignment", header->alignment, alignment);
    header->magic = released;
    ++thread_counts.releases;
    --live;
    std::free(header->base);
}

} // namespace

allocation_counts counts() noexcept {
    return thread_counts;
}

long long live_blocks() noexcept {
    return live.load();
}

aligned_call last_aligned_allocation() noexcept {
    return last_allocation;
}

aligned_call last_aligned_release() noexcept {
    return last_release;
}

allocation_failure::allocation_failure(std::size_t n, shortage kind) noexcept {
    countdown = n;
    stays_exhausted = kind == shortage::lasting;
    failed = false;
}

allocation_failure::~allocation_failure() {
    countdown = 0;
}

bool allocation_failure::hit() const noexcept {
    return failed;
}

} // namespace test_support

using test_support::allocate;
using test_support::allocate_or_throw;
using test_support::release;
using test_support::unknown_size;

// Each form of new has its delete here; the check looks for that within a class.
// NOLINTBEGIN(misc-new-delete-overloads)
void* operator new(std::size_t size) {
    return allocate_or_throw(size, 0);
}
void* operator new[](std::size_t size) {
    return allocate_or_throw(size, 0);
}
void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
    return allocate(size, 0);
}
void* operator new[](std::size_t size, std::nothrow_t const&) noexcept {
    return allocate(size, 0);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
    return allocate_or_throw(size, static_cast<std::size_t>(alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
    return allocate_or_throw(size, static_cast<std::size_t>(alignment));
}
void* operator new(std::size_t size, std::align_val_t alignment, std::nothrow_t const&) noexcept {
    return allocate(size, static_cast<std::size_t>(alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment, std::nothrow_t const&) noexcept {
    return allocate(size, static_cast<std::size_t>(alignment));
}
void operator delete(void* block) noexcept {
    release(block, unknown_size, 0);
}
void operator delete[](void* block) noexcept {
    release(block, unknown_size, 0);
}
void operator delete(void* block, std::nothrow_t const&) noexcept {
    release(block, unknown_size, 0);
}
void operator delete[](void* block, std::nothrow_t const&) noexcept {
    release(block, unknown_size, 0);
}
void operator delete(void* block, std::size_t size) noexcept {
    release(block, size, 0);
}
void operator delete[](void* block, std::size_t size) noexcept {
    release(block, size, 0);
}
void operator delete(void* block, std::align_val_t alignment) noexcept {
    release(block, unknown_size, static_cast<std::size_t>(alignment));
}
void operator delete[](void* block, std::align_val_t alignment) noexcept {
    release(block, unknown_size, static_cast<std::size_t>(alignment));
}
void operator delete(void* block, std::align_val_t alignment, std::nothrow_t const&) noexcept {
    release(block, unknown_size, static_cast<std::size_t>(alignment));
}
void operator delete[](void* block, std::align_val_t alignment, std::nothrow_t const&) noexcept {
    release(block, unknown_size, static_cast<std::size_t>(alignment));
}
void operator delete(void* block, std::size_t size, std::align_val_t alignment) noexcept {
    release(block, size, static_cast<std::size_t>(alignment));
}
void operator delete[](void* block, std::size_t size, std::align_val_t alignment) noexcept {
    release(block, size, static_cast<std::size_t>(alignment));
}
// NOLINTEND(misc-new-delete-overloads)
