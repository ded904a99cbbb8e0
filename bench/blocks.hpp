#pragma once

#include <tavi/ioapi/v2/detail/iokern_allocator.hpp>

#include <cstdlib>
#include <cstring>
#include <string_view>
#include <utility>

/// \file
/// Where a limit takes its memory from: from malloc, or as the library must, through the memory
/// gateway, which gives aligned blocks.

namespace bench {

struct plain_memory {
    static constexpr char const* name = "limit";
    static void* allocate(unsigned int bytes) { return std::malloc(bytes); }
    static void release(void* block, unsigned int) { std::free(block); }
};

struct gateway_memory {
    static constexpr char const* name = "limit[gateway]";
    static void* allocate(unsigned int bytes) {
        return tavi::ioapi::v2::detail::allocate_block(bytes);
    }
    static void release(void* block, unsigned int bytes) {
        tavi::ioapi::v2::detail::release_block(block, bytes);
    }
};

/// A block of uninitialised elements.
template <class T, class Memory>
class block {
public:
    explicit block(std::size_t count)
        : size_(count), data_(static_cast<T*>(Memory::allocate(bytes()))) {}
    block(block&& other) noexcept
        : size_(other.size_), data_(std::exchange(other.data_, nullptr)) {}
    block(block const&) = delete;
    block& operator=(block const&) = delete;
    block& operator=(block&&) = delete;
    ~block() {
        if (data_ != nullptr) Memory::release(data_, bytes());
    }

    [[nodiscard]] T* data() const noexcept { return data_; }
    [[nodiscard]] std::size_t size() const noexcept { return size_; }

private:
    [[nodiscard]] unsigned int bytes() const {
        return static_cast<unsigned int>(size_ * sizeof(T));
    }

    std::size_t size_;
    T* data_;
};

/// A text in a block of its own, closed by a zero byte.
template <class Memory>
class block_text {
public:
    explicit block_text(std::string_view text) : block_(text.size() + 1) {
        std::memcpy(block_.data(), text.data(), text.size());
        block_.data()[text.size()] = '\0';
    }
    [[nodiscard]] std::string_view view() const noexcept {
        return {block_.data(), block_.size() - 1};
    }

private:
    block<char, Memory> block_;
};

/// Call `call` with each kind of memory.
template <class Call>
void for_each_memory(Call call) {
    call(plain_memory{});
    call(gateway_memory{});
}

} // namespace bench
