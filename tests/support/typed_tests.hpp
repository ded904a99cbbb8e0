#pragma once

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <typeinfo>
#include <vector>

/// \file
/// GoogleTest's macros for typed tests, made anew upon its function to register a test. Its own
/// give each type of each test several functions and a class beside the test itself: half of the
/// code of our tests, and nearly half of the time to compile them.

namespace test_support {

struct typed_name {
    std::string name; ///< behind that of the suite
    std::type_info const* type;
};

/// One test and where it stands.
struct typed_test {
    char const* suite;
    char const* name;
    char const* file;
    int line;
};

using test_maker = ::testing::Test* (*)();

/// Register a test for each of `types`, in that order.
void register_typed_test(typed_test const& test,
                         std::vector<typed_name> const& types,
                         test_maker const* makers);

template <class Test>
::testing::Test* make_test() {
    static_assert(&Test::SetUpTestSuite == &::testing::Test::SetUpTestSuite &&
                      &Test::TearDownTestSuite == &::testing::Test::TearDownTestSuite,
                  "what a suite does once is not called here");
    return new Test;
}

/// The types of a suite, and the class that names them, as `GetName<T>(index)`; by default they
/// have numbers.
template <class List, class Names = void>
struct typed_suite;

template <template <class...> class List, class... Types, class Names>
struct typed_suite<List<Types...>, Names> {
    template <template <class> class Test>
    static bool add(typed_test const& test) {
        static constexpr test_maker makers[] = {&make_test<Test<Types>>...};
        register_typed_test(test, names(), makers);
        return true;
    }

private:
    static std::vector<typed_name> names() {
        int index = 0;
        return {typed_name{name<Types>(index++), &typeid(Types)}...};
    }
    template <class T>
    static std::string name(int index) {
        if constexpr (std::is_void_v<Names>) {
            return std::to_string(index);
        } else {
            return Names::template GetName<T>(index);
        }
    }
};

} // namespace test_support

#undef TYPED_TEST_SUITE
#undef TYPED_TEST

/// TYPED_TEST_SUITE(suite, types [, names]): `suite` is a class template of one parameter.
#define TYPED_TEST_SUITE(suite, ...)                                                               \
    using suite##_typed_suite = ::test_support::typed_suite<__VA_ARGS__>

/// What follows is the body, for each type, which is `TypeParam` there; `TestFixture` is the
/// fixture.
#define TYPED_TEST(suite, test)                                                                    \
    template <class Tested>                                                                        \
    class suite##_##test##_Test : public suite<Tested> {                                           \
        using TestFixture [[maybe_unused]] = suite<Tested>;                                        \
        using TypeParam [[maybe_unused]] = Tested;                                                 \
        void TestBody() override;                                                                  \
    };                                                                                             \
    [[maybe_unused]] static bool const suite##_##test##_added =                                    \
        suite##_typed_suite::add<suite##_##test##_Test>({#suite, #test, __FILE__, __LINE__});      \
    template <class Tested>                                                                        \
    void suite##_##test##_Test<Tested>::TestBody()
