#include <tavi/ioapi/v2/ioapi.hpp>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <exception>

namespace {

using namespace tavi::ioapi::v2;

// The place of a virtual function in its class's table, as the platform's binary interface puts it
// into a pointer to the member. The two destructors take the places 0 and 1.
template <class Member>
std::size_t slot_of(Member member) {
    struct {
        std::ptrdiff_t pointer;
        std::ptrdiff_t adjustment;
    } parts;
    static_assert(sizeof parts == sizeof member);
    std::memcpy(&parts, &member, sizeof parts);
#if defined(__arm__) || defined(__aarch64__)
    EXPECT_EQ(parts.adjustment & 1, 1) << "not virtual";
    std::ptrdiff_t const offset = parts.pointer;
#else
    EXPECT_EQ(parts.pointer & 1, 1) << "not virtual";
    std::ptrdiff_t const offset = parts.pointer - 1;
#endif
    return static_cast<std::size_t>(offset) / sizeof(void*);
}

TEST(Table, OfCategoriesHasNameThenMessage) {
    EXPECT_EQ(slot_of(&io_error_category::name), 2U);
    EXPECT_EQ(slot_of(&io_error_category::message), 3U);
    EXPECT_EQ(slot_of(&io_error_generic_category::name), 2U);
    EXPECT_EQ(slot_of(&io_error_generic_category::message), 3U);
}

TEST(Table, OfCountedObjectsHasAddRefThenRelease) {
    EXPECT_EQ(slot_of(&interfaces::object::add_ref), 2U);
    EXPECT_EQ(slot_of(&interfaces::object::release), 3U);
}

TEST(Table, OfDiagnosticsGoesOnWithItsQueries) {
    using diagnostics = interfaces::io_error_diagnostics_impl;
    EXPECT_EQ(slot_of(&diagnostics::add_ref), 2U);
    EXPECT_EQ(slot_of(&diagnostics::release), 3U);
    EXPECT_EQ(slot_of(&diagnostics::size), 4U);
    EXPECT_EQ(slot_of(&diagnostics::has), 5U);
    EXPECT_EQ(slot_of(&diagnostics::get), 6U);
    EXPECT_EQ(slot_of(&diagnostics::make_iterator), 7U);
}

TEST(Table, OfCountedDiagnosticsAddsNothing) {
    using counted = make_object_implementation<interfaces::io_error_diagnostics_impl>;
    EXPECT_EQ(slot_of(&counted::add_ref), 2U);
    EXPECT_EQ(slot_of(&counted::release), 3U);
    EXPECT_EQ(slot_of(&counted::make_iterator), 7U);
}

TEST(Table, OfIteratorsHasTheirFiveOperations) {
    using iterator = interfaces::io_error_diagnostics_impl::iterator_impl;
    EXPECT_EQ(slot_of(&iterator::advance), 2U);
    EXPECT_EQ(slot_of(&iterator::equal_to), 3U);
    EXPECT_EQ(slot_of(&iterator::get), 4U);
    EXPECT_EQ(slot_of(&iterator::clone), 5U);
    EXPECT_EQ(slot_of(&iterator::release), 6U);
}

TEST(Table, OfExceptionsIsThatOfTheirBase) {
    EXPECT_EQ(slot_of(&std::exception::what), 2U);
    EXPECT_EQ(slot_of(&io_exception::what), 2U);
    static_assert(std::is_same_v<decltype(&io_exception::what),
                                 char const* (std::runtime_error::*)() const noexcept>,
                  "it does not override the words of its base");
}

} // namespace
