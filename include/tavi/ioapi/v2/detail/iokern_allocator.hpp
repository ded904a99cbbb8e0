#pragma once

#include "../api.hpp"

#include <new>

namespace tavi::ioapi::v2::detail {

/// The one gateway through which `utility::string` and `utility::array` get and return their
/// blocks, in whatever module their inline code was compiled: a block made in one module is freed
/// by the same allocator when another module drops it.
///
/// Never throws. As thread-safe as the standard allocation functions.
class TAVI_IOAPI_API iokern_allocator_base {
public:
    /// Allocate a block of the default alignment. Release it by plain `::operator delete(p)`:
    /// `deallocate` belongs to the form with an alignment.
    /// \param size  in bytes
    /// \return the block, or null when memory is exhausted
    [[nodiscard]] static void* allocate(unsigned int size) noexcept;

    /// Allocate an aligned block. Release it by `deallocate` with the same size and alignment.
    /// \param size   in bytes
    /// \param align  in bytes, a power of two
    /// \return the block, or null when memory is exhausted
    [[nodiscard]] static void* allocate(unsigned int size, unsigned int align) noexcept;

    /// Release a block of the aligned `allocate`.
    /// \param p      the block; null is allowed
    /// \param size   as given to `allocate`
    /// \param align  as given to `allocate`
    static void deallocate(void* p, unsigned int size, unsigned int align) noexcept;
};

/// Takes the place of an allocator in `utility::string`: never read or written, one machine word
/// wide, so that the fields behind it keep their places.
struct alignas(void*) iokern_allocator {};

/// \return the alignment of every block of `bytes` bytes: 16 below 4096 bytes, else 32.
constexpr unsigned int block_alignment(unsigned int bytes) noexcept {
    return bytes < 4096 ? 16 : 32;
}

/// \return a block of `bytes` bytes, to be released by `release_block` with the same size.
/// \throws std::bad_alloc when memory is exhausted
[[nodiscard]] inline void* allocate_block(unsigned int bytes) {
    void* const block = iokern_allocator_base::allocate(bytes, block_alignment(bytes));
    if (block == nullptr) throw std::bad_alloc();
    return block;
}

/// Release a block of `allocate_block`; null is allowed.
inline void release_block(void* block, unsigned int bytes) noexcept {
    iokern_allocator_base::deallocate(block, bytes, block_alignment(bytes));
}

} // namespace tavi::ioapi::v2::detail
