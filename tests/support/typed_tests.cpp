#include "support/typed_tests.hpp"

#include <cxxabi.h>

#include <cstddef>
#include <cstdlib>
#include <memory>

namespace test_support {
namespace {

std::string name_of(std::type_info const& type) {
    int status = 0;
    std::unique_ptr<char, decltype(&std::free)> const text(
        abi::__cxa_demangle(type.name(), nullptr, nullptr, &status), &std::free);
    return text ? text.get() : type.name();
}

} // namespace

void register_typed_test(typed_test const& test,
                         std::vector<typed_name> const& types,
                         test_maker const* makers) {
    for (std::size_t i = 0; i < types.size(); ++i) {
        std::string const suite = test.suite + ("/" + types[i].name);
        ::testing::RegisterTest(suite.c_str(), test.name, name_of(*types[i].type).c_str(), nullptr,
                                test.file, test.line, makers[i]);
    }
}

} // namespace test_support
