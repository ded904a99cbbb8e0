#include "array_conversion_oracle.hpp"
#include "array_conversion_targets.hpp"
#include "counted_diagnostics.hpp"
#include "foreign_category.hpp"
#include "raw_value.hpp"
#include "sample_payloads.hpp"

#include <gtest/gtest.h>

#include <vector>

namespace whole_values {
namespace {

struct alternative_values {
    io_value sample;
    io_value plain; ///< with the default payload
};

template <class... Alternatives>
std::vector<alternative_values> values_of(detail::alternative_list<Alternatives...>) {
    return {{sample_value<typename Alternatives::type>(),
             io_value(detail::declared_type<typename Alternatives::type>(),
                      typename Alternatives::type())}...};
}

std::vector<alternative_values> every_alternative() {
    return values_of(detail::alternatives{});
}

TEST(ArrayConversionFrom, NoArrayIsIncompatibleWithEveryTarget) {
    std::vector<alternative_values> const sources = every_alternative();
    for_each_array_target([&](auto* element) {
        using T = std::remove_pointer_t<decltype(element)>;
        for (auto const& [sample, plain] : sources) {
            if (sample.is_array()) continue;
            EXPECT_TRUE(refuses_array<T>(sample, io_errc::incompatible_type)) << sample;
            EXPECT_TRUE(refuses_array<T>(plain, io_errc::incompatible_type)) << plain;
        }
    });
}

TEST(ArrayConversionFrom, StatedTypeMakesNoArrayOfAScalar) {
    std::vector<alternative_values> const sources = every_alternative();
    for (types const stated : {types::boolean, types::u8, types::i32, types::string}) {
        for_each_array_target([&](auto* element) {
            using T = std::remove_pointer_t<decltype(element)>;
            for (auto const& [sample, plain] : sources) {
                if (sample.is_array()) continue;
                io_value const value = sample.visit([&](auto const& payload) {
                    return io_value(io_data_type::array_of(stated), payload);
                });
                EXPECT_TRUE(refuses_array<T>(value, io_errc::incompatible_type)) << value;
            }
        });
    }
}

TEST(ArrayConversionFrom, ArrayWithoutElementsGivesOneWithoutElements) {
    std::vector<alternative_values> const sources = every_alternative();
    for_each_array_target([&](auto* element) {
        using T = std::remove_pointer_t<decltype(element)>;
        for (auto const& [sample, plain] : sources) {
            bool const is_pair_of_texts =
                plain.index() == detail::index_of<array<char>> && std::is_same_v<T, io_value>;
            if (!plain.is_array() || is_pair_of_texts) continue;
            io_error error(io_errc::not_found);
            auto const result = detail::get_as<array<T>>(plain, error);
            EXPECT_EQ(error.code(), 0) << plain.index();
            EXPECT_EQ(result.size(), 0U) << plain.index();
            EXPECT_EQ(result.data(), nullptr) << plain.index();
        }
    });
}

TEST(ArrayConversionFrom, ClearsTheErrorFirst) {
    std::vector<alternative_values> const sources = every_alternative();
    for_each_array_target([&](auto* element) {
        using T = std::remove_pointer_t<decltype(element)>;
        for (auto const& [sample, plain] : sources) {
            foreign_category category;
            counted_diagnostics diagnostics;
            io_error error(category, 77);
            error.diagnostics(io_error_diagnostics(&diagnostics));
            (void)detail::get_as<array<T>>(sample, error);
            EXPECT_NE(error.code(), 77);
            EXPECT_EQ(&error.category(), &generic_io_error_category());
            EXPECT_EQ(error.diagnostics().list(), nullptr);
            EXPECT_EQ(diagnostics.released, 1);
        }
    });
}

TEST(ArrayConversionOfACorruptValue, IsAnUnhandledException) {
    for (int const index : {-1, 34, 1000, -2147483647}) {
        raw_value value(5);
        corrupt_index(*value, index);
        for_each_array_target([&](auto* element) {
            using T = std::remove_pointer_t<decltype(element)>;
            EXPECT_TRUE(refuses_array<T>(*value, io_errc::unhandled_exception)) << index;
        });
        corrupt_index(*value, 4);
        value.destroy();
    }
}

/// Calls `action` with a value that holds 1 and a corrupt value, and mends it afterwards.
template <class Action>
void with_corrupt_element(int index, Action action) {
    raw_value value(array<io_value>::of(1, 2));
    auto& element = const_cast<io_value&>(value->get_if<array<io_value>>()->back());
    corrupt_index(element, index);
    action(*value);
    corrupt_index(element, 4);
    value.destroy();
}

TEST(ArrayConversionOfACorruptElement, IsAnUnhandledException) {
    for (int const index : {-1, 34}) {
        with_corrupt_element(index, [&](io_value const& value) {
            for_each_array_target([&](auto* element) {
                using T = std::remove_pointer_t<decltype(element)>;
                EXPECT_TRUE(refuses_array<T>(value, io_errc::unhandled_exception)) << index;
            });
        });
    }
}

TEST(ArrayConversionOfACorruptElement, RaisesInTheQuestionWhetherItFits) {
    for (int const index : {-1, 34}) {
        with_corrupt_element(index, [&](io_value const& value) {
            for (types const element : {types::u8, types::i64, types::flt, types::dbl}) {
                EXPECT_TRUE(raises_empty_text(
                    [&] { (void)value.converts_to(io_data_type::array_of(element)); }));
            }
        });
    }
}

} // namespace
} // namespace whole_values
