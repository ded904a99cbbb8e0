#include "counted_diagnostics.hpp"
#include "declared_type_targets.hpp"
#include "foreign_category.hpp"

#include <gtest/gtest.h>

namespace whole_values {
namespace {

/// The type that the result of a conversion to `type` must have.
io_data_type result_type(io_data_type const& type) {
    return {type.basic_type, 0, type.is_array() ? 2U : 0U, 0};
}

/// By the element type of the target, from 1 to 12.
class DeclaredTypeResult : public ::testing::TestWithParam<unsigned int> {
protected:
    [[nodiscard]] static types element() { return types{GetParam()}; }
    [[nodiscard]] static std::vector<io_data_type> targets() {
        return {{element(), 0, 0, 0}, {element(), 0, 0, 9},
                {element(), 6, 0, 0}, {element(), 0, 1, 0},
                {element(), 0, 2, 0}, {element(), 0, 2, 4},
                {element(), 5, 3, 1}, {element(), 0, 0xFFFFFFFF, 0xFFFFFFFF}};
    }
};
INSTANTIATE_TEST_SUITE_P(Elements,
                         DeclaredTypeResult,
                         ::testing::Range(first_target, last_target + 1),
                         ::testing::PrintToStringParamName());

/// A source that converts to every scalar and array target, but is of none of their types.
io_value fitting(io_data_type const& target) {
    io_data_type const own{types{99}, 1, 2, 3};
    if (target.is_array()) return io_value(own, array<utility::string>{"1", "0"});
    return io_value(own, utility::string("1"));
}

TEST_P(DeclaredTypeResult, HasTheTypeWithoutIdAndExtent) {
    for (io_data_type const& target : targets()) {
        io_error error(io_errc::not_found);
        io_value const result = fitting(target).to_variant(target, error);
        EXPECT_EQ(error.code(), 0);
        EXPECT_EQ(result.data_type(), result_type(target));
        EXPECT_EQ(result.index(), result_index(element(), target.is_array()));
    }
}

TEST_P(DeclaredTypeResult, HoldsWhatTheCompiledConversionGives) {
    for (io_data_type const& target : targets()) {
        io_value const source = fitting(target);
        io_value const result = source.to_variant(target);
        with_target(element(), [&](auto* pointer) {
            using T = std::remove_pointer_t<decltype(pointer)>;
            if (target.is_array()) {
                ASSERT_NE(result.get_if<array<T>>(), nullptr);
                EXPECT_TRUE(same_content(*result.get_if<array<T>>(), source.as<array<T>>()));
            } else {
                ASSERT_NE(result.get_if<T>(), nullptr);
                EXPECT_TRUE(same_content(*result.get_if<T>(), source.as<T>()));
            }
        });
    }
}

TEST_P(DeclaredTypeResult, OfAFailureKeepsTheTypeWithTheDefaultPayload) {
    io_value const misfits[] = {io_value(array<io_value>::of(array<int>{1})), io_value(io_object()),
                                io_value(array<io_object>(1)), io_value("x")};
    for (io_value const& misfit : misfits) {
        for (io_data_type const& target : targets()) {
            io_error error;
            io_value const result = misfit.to_variant(target, error);
            if (error.ok()) continue;
            EXPECT_EQ(result.data_type(), result_type(target));
            with_target(element(), [&](auto* pointer) {
                using T = std::remove_pointer_t<decltype(pointer)>;
                if (target.is_array()) {
                    ASSERT_NE(result.get_if<array<T>>(), nullptr);
                    EXPECT_EQ(result.get_if<array<T>>()->data(), nullptr);
                } else {
                    ASSERT_NE(result.get_if<T>(), nullptr);
                    EXPECT_TRUE(same_content(*result.get_if<T>(), T()));
                }
            });
        }
    }
}

TEST_P(DeclaredTypeResult, OfAFailureIsTheSameWithoutAnError) {
    for (io_data_type const& target : targets()) {
        io_error error;
        io_value const misfit(array<io_object>(1));
        EXPECT_TRUE(identical(misfit.to_variant(target), misfit.to_variant(target, error)));
    }
}

TEST_P(DeclaredTypeResult, OfTheEmptyValueIsTheDefaultForAScalar) {
    io_error error(io_errc::not_found);
    io_value const result = io_value().to_variant(io_data_type::scalar(element()), error);
    EXPECT_EQ(error.code(), 0);
    EXPECT_EQ(result.data_type(), io_data_type::scalar(element()));
    with_target(element(), [&](auto* pointer) {
        using T = std::remove_pointer_t<decltype(pointer)>;
        EXPECT_TRUE(same_content(*result.get_if<T>(), T()));
    });
}

/// Every alternative, to its own type.
TEST(DeclaredTypeOfTheValueItself, GivesACopyOfEveryAlternative) {
    for (declared_source const& from : every_declared_source()) {
        io_data_type const type = from.value.data_type();
        io_error error(io_errc::not_found);
        EXPECT_TRUE(from.value.converts_to(type)) << from.name;
        EXPECT_TRUE(identical(from.value.to_variant(type, error), from.value)) << from.name;
        EXPECT_EQ(error.code(), 0) << from.name;
    }
}

TEST(DeclaredTypeOfTheValueItself, IsNotLookedAtWhateverItSays) {
    for (io_data_type const& type :
         {io_data_type{types{99}, 1, 2, 3}, io_data_type{}, io_data_type::array_of(types::i32),
          io_data_type::object(9), io_data_type{types{0x80000000U}, 0, 0, 0}}) {
        for (io_value const& value : {io_value(type, utility::string("x")), io_value(type, nullptr),
                                      io_value(type, array<io_object>(1))}) {
            EXPECT_TRUE(value.converts_to(type));
            EXPECT_TRUE(identical(value.to_variant(type), value));
        }
    }
}

TEST(DeclaredTypeOfTheValueItself, LetsALongThroughAsItIs) {
    long const number = sizeof(long) == 8 ? static_cast<long>(5000000000LL) : 2000000000L;
    io_value const value(number);
    auto const i32 = io_data_type::scalar(types::i32);
    EXPECT_TRUE(value.converts_to(i32));
    io_value const copy = value.to_variant(i32);
    EXPECT_EQ(copy.index(), 5);
    EXPECT_EQ(*copy.get_if<long>(), number);
    io_error error;
    (void)copy.as<int>(error);
    EXPECT_EQ(error.code(), sizeof(long) == 8 ? 4 : 0);
}

TEST(DeclaredTypeOfTheValueItself, LetsAnArrayOfLongThroughAsItIs) {
    io_value const value(array<long>{5});
    EXPECT_EQ(value.to_variant(io_data_type::array_of(types::i32)).index(), 21);
    EXPECT_EQ(io_value(array<char>{'a'}).to_variant(io_data_type::array_of(types::i8)).index(), 30);
}

TEST(DeclaredType, ClearsTheErrorFirst) {
    for (io_data_type const& type :
         {io_data_type(), io_data_type::scalar(types::i32), io_data_type::scalar(types::string),
          io_data_type::array_of(types::u8), io_data_type::object(1)}) {
        foreign_category category;
        counted_diagnostics diagnostics;
        io_error error(category, 77);
        error.diagnostics(io_error_diagnostics(&diagnostics));
        (void)io_value("abc").to_variant(type, error);
        EXPECT_NE(error.code(), 77);
        EXPECT_EQ(&error.category(), &generic_io_error_category());
        EXPECT_EQ(error.diagnostics().list(), nullptr);
    }
}

TEST(DeclaredType, EmptyGivesTheEmptyValue) {
    for (io_data_type const& type : {io_data_type{}, io_data_type{types::empty, 3, 0, 8}}) {
        io_error error(io_errc::not_found);
        EXPECT_TRUE(identical(io_value(5).to_variant(type, error), io_value()));
        EXPECT_EQ(error.code(), 0);
    }
}

TEST(DeclaredType, IsSelectedByItsCodeWhateverSetsTheFlagOfAnArray) {
    io_data_type const odd{types{0x80000002U}, 0, 0, 0};
    io_value const source(array<int>{1});
    EXPECT_TRUE(source.converts_to(odd));
    EXPECT_TRUE(identical(source.to_variant(odd), io_value(array<unsigned char>{1})));
    EXPECT_FALSE(io_value(1).converts_to(odd));
}

TEST(DeclaredType, WithoutAConversionGivesTheEmptyValue) {
    for (types const element : every_element_type()) {
        for (unsigned int const kind : {0U, 1U, 2U}) {
            io_data_type const type{element, 0, kind, 0};
            if (is_target(type) || (element == types::empty && kind == 0)) continue;
            io_error error;
            EXPECT_TRUE(identical(io_value("x").to_variant(type, error), io_value()));
            EXPECT_EQ(error.code(), 3) << type.type_code();
            EXPECT_TRUE(identical(io_value("x").to_variant(type), io_value()));
        }
    }
}

} // namespace
} // namespace whole_values
