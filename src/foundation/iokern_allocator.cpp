#include <tavi/ioapi/v2/detail/iokern_allocator.hpp>

#include <cstddef>
#include <limits>
#include <new>

namespace tavi::ioapi::v2::detail {

void* iokern_allocator_base::allocate(unsigned int size) noexcept {
    return ::operator new(size, std::nothrow);
}

void* iokern_allocator_base::allocate(unsigned int size, unsigned int align) noexcept {
    // The standard library rounds the size up to the alignment, beyond what a 32-bit size can hold.
    if (size > std::numeric_limits<std::size_t>::max() - (align - 1)) return nullptr;
    return ::operator new(size, std::align_val_t(align), std::nothrow);
}

void iokern_allocator_base::deallocate(void* p, unsigned int size, unsigned int align) noexcept {
    ::operator delete(p, size, std::align_val_t(align));
}

} // namespace tavi::ioapi::v2::detail
