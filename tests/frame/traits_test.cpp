#include <tavi/ioapi/v2/ioapi.hpp>

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using namespace tavi::ioapi::v2;

template <class T>
constexpr bool moves_and_ends_without_failure = std::is_nothrow_move_constructible_v<T>&&
    std::is_nothrow_move_assignable_v<T>&& std::is_nothrow_destructible_v<T>;

// Asked of the operation itself: the trait would ask for the destructor as well.
template <class T>
constexpr bool moves_into_place_without_failure = noexcept(::new (static_cast<void*>(nullptr))
                                                               T(std::declval<T>()));

TEST(Traits, OfWhatIsPassedByValueIsTrivial) {
    static_assert(std::is_trivially_copyable_v<utility::string_view>);
    static_assert(std::is_trivially_copyable_v<utility::data_view<int const>>);
    static_assert(std::is_trivially_copyable_v<utility::data_view<int>>);
    static_assert(std::is_trivially_copyable_v<utility::data_view<plc_identifier const>>);
    static_assert(std::is_trivially_copyable_v<utility::data_view<browsing::node const>>);
    static_assert(std::is_trivially_copyable_v<io_timestamp>);
    static_assert(std::is_trivially_copyable_v<io_data_type>);
    static_assert(
        std::is_trivially_copyable_v<interfaces::io_error_diagnostics_impl::iterator_impl::entry>);
}

TEST(Traits, LetContainersMoveWhatGrows) {
    static_assert(moves_and_ends_without_failure<utility::string>);
    static_assert(moves_and_ends_without_failure<utility::array<int>>);
    static_assert(moves_and_ends_without_failure<utility::array<utility::string>>);
    static_assert(moves_and_ends_without_failure<utility::array<io_object>>);
    static_assert(moves_and_ends_without_failure<plc_identifier_part>);
    static_assert(moves_and_ends_without_failure<plc_identifier>);
    static_assert(moves_and_ends_without_failure<browsing::node>);
    static_assert(moves_and_ends_without_failure<io_error>);
    static_assert(moves_and_ends_without_failure<write_result::result_type>);
    static_assert(moves_and_ends_without_failure<write_result>);
}

TEST(Traits, OfHandlesNeverFail) {
    static_assert(moves_and_ends_without_failure<io_object>);
    static_assert(moves_and_ends_without_failure<io_structure_type>);
}

TEST(Traits, OfWhatHoldsAValueMayFail) {
    static_assert(!std::is_nothrow_destructible_v<io_value>);
    static_assert(!std::is_nothrow_move_constructible_v<io_value>);
    static_assert(!std::is_nothrow_move_assignable_v<io_value>);
    static_assert(!std::is_nothrow_destructible_v<io_data_value>);
    static_assert(!std::is_nothrow_destructible_v<read_result::result_type>);
    static_assert(!std::is_nothrow_destructible_v<utility::array<io_value>>);
    static_assert(!std::is_nothrow_destructible_v<read_result>);
}

TEST(Traits, OfArraysOfValuesMoveTheirPointerWithoutFailure) {
    using values = utility::array<io_value>;
    static_assert(moves_into_place_without_failure<values>);
    static_assert(!std::is_nothrow_move_assignable_v<values>);
}

TEST(Traits, OfAbstractClassesForbidCopies) {
    static_assert(std::is_abstract_v<interfaces::object>);
    static_assert(std::is_abstract_v<interfaces::io_error_diagnostics_impl>);
    static_assert(std::is_abstract_v<interfaces::io_error_diagnostics_impl::iterator_impl>);
    static_assert(std::is_abstract_v<io_error_category>);
    static_assert(!std::is_copy_constructible_v<io_error_generic_category>);
    static_assert(!std::is_copy_assignable_v<io_error_generic_category>);
    static_assert(std::has_virtual_destructor_v<interfaces::object>);
    static_assert(std::has_virtual_destructor_v<io_error_category>);
    static_assert(std::has_virtual_destructor_v<io_exception>);
    static_assert(
        std::has_virtual_destructor_v<interfaces::io_error_diagnostics_impl::iterator_impl>);
    static_assert(std::is_base_of_v<interfaces::object, interfaces::io_error_diagnostics_impl>);
    static_assert(std::is_base_of_v<std::runtime_error, io_exception>);
}

TEST(Traits, OfErrorAccessorsNeverFail) {
    static_assert(noexcept(std::declval<io_error const&>().code()));
    static_assert(noexcept(std::declval<io_error const&>().category()));
    static_assert(noexcept(generic_io_error_category()));
    static_assert(std::is_nothrow_copy_constructible_v<io_error>);
    static_assert(std::is_nothrow_copy_assignable_v<io_error>);
    static_assert(std::is_nothrow_default_constructible_v<io_error>);
}

} // namespace
