#include "linux_module.hpp"

#include <backend_module.hpp>

example::backend_module const* example_backend_module_3() noexcept {
    static linux_backend::linux_module const instance;
    return &instance;
}
