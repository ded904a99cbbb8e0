#include "tcp_module.hpp"

#include <backend_module.hpp>

example::backend_module const* example_backend_module_3() noexcept {
    static modbus_backend::tcp_module const module;
    return &module;
}
