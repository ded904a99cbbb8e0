#include "arrays.hpp"
#include "checked_number.hpp"
#include "inputs.hpp"
#include "kernels.hpp"
#include "operations.hpp"

#include <cstdint>

/// \file
/// Conversion to a type that is known at run time only: whether it succeeds, and the value of that
/// type; beside them the conversion to a type known at compile time, as `iokern[as]`.

namespace bench {

namespace {

using types = v2::detail::types;

/// A number that fits 8 bits.
int small_number(int number) {
    return number % 200;
}

// --- scalars

/// A tag that the compiler does not know.
bare_value::kind kind_u8() {
    bare_value::kind kind = bare_value::u8;
    DoNotOptimize(kind);
    return kind;
}

bool convert_bare(bare_value const& source, bare_value::kind kind, bare_value& target) {
    target.tag = kind;
    switch (kind) {
    case bare_value::i8: return convert_number(source, target.as.i8);
    case bare_value::i16: return convert_number(source, target.as.i16);
    case bare_value::i32: return convert_number(source, target.as.i32);
    case bare_value::i64: return convert_number(source, target.as.i64);
    case bare_value::u8: return convert_number(source, target.as.u8);
    case bare_value::u16: return convert_number(source, target.as.u16);
    case bare_value::u32: return convert_number(source, target.as.u32);
    case bare_value::u64: return convert_number(source, target.as.u64);
    default: return false;
    }
}

void add_scalar_test() {
    char const* const operation = "converts_to_u8";
    auto const is_true = [](bool fits, int) { return fits; };
    auto const make = [](int i) { return v2::io_value(small_number(i)); };
    auto const type = v2::io_data_type::scalar(types::u8);
    add_calls(
        operation, "iokern", make,
        [=](v2::io_value const& value) { return value.converts_to(type); }, is_true);
    auto const error = std::make_shared<v2::io_error>();
    add_calls(
        operation, "iokern[as]", make,
        [=](v2::io_value const& value) {
            auto number = value.as<unsigned char>(*error);
            DoNotOptimize(number);
            return error->ok();
        },
        is_true);
    add_calls(
        operation, "limit", [](int i) { return peer<bare_value>::of(small_number(i)); },
        [](bare_value const& value) {
            bare_value converted;
            return convert_bare(value, kind_u8(), converted);
        },
        is_true);
    // Both look at the types and not at the number.
    add_calls(
        operation, "qt_qvariant[less: unchecked]", [](int i) { return QVariant(small_number(i)); },
        [](QVariant const& value) { return value.canConvert(QMetaType(QMetaType::UChar)); },
        is_true);
    add_calls(
        operation, "glib_gvalue[less: unchecked]",
        [](int i) { return peer<glib_value>::of(small_number(i)); },
        [](glib_value const& value) {
            return g_value_type_transformable(G_VALUE_TYPE(value.get()), G_TYPE_UCHAR) != FALSE;
        },
        is_true);
}

void add_scalar_conversions() {
    char const* const operation = "to_variant_u8";
    auto const make = [](int i) { return v2::io_value(small_number(i)); };
    auto const type = v2::io_data_type::scalar(types::u8);
    auto const error = std::make_shared<v2::io_error>();
    add_calls(
        operation, "iokern", make,
        [=](v2::io_value const& value) { return value.to_variant(type, *error); },
        [=](v2::io_value const& value, int i) {
            auto const* const number = value.get_if<unsigned char>();
            return error->ok() && number != nullptr && *number == small_number(i);
        });
    add_calls(
        operation, "iokern[as]", make,
        [=](v2::io_value const& value) { return value.as<unsigned char>(*error); },
        [](unsigned char number, int i) { return number == small_number(i); });
    add_calls(
        operation, "limit", [](int i) { return peer<bare_value>::of(small_number(i)); },
        [](bare_value const& value) {
            bare_value converted;
            bool const ok = convert_bare(value, kind_u8(), converted);
            if (!ok) converted.tag = bare_value::none;
            return converted;
        },
        [](bare_value const& value, int i) {
            return value.tag == bare_value::u8 && value.as.u8 == small_number(i);
        });
    add_calls(
        operation, "qt_qvariant[less: unchecked]", [](int i) { return QVariant(small_number(i)); },
        [](QVariant const& value) {
            QVariant converted(value);
            converted.convert(QMetaType(QMetaType::UChar));
            return converted;
        },
        [](QVariant const& value, int i) {
            return value.typeId() == QMetaType::UChar && value.toInt() == small_number(i);
        });
    add_calls(
        operation, "glib_gvalue[less: unchecked]",
        [](int i) { return peer<glib_value>::of(small_number(i)); },
        [](glib_value const& value) { return value.transformed(G_TYPE_UCHAR); },
        [](glib_value const& value, int i) {
            return g_value_get_uchar(value.get()) == small_number(i);
        });
}

// --- arrays

constexpr int million = 1'000'000;

std::vector<int> whole_numbers() {
    std::vector<int> result;
    result.reserve(million);
    for (unsigned int i = 0; i < unsigned(million); ++i) {
        result.push_back(static_cast<int>(i * 7919U % 60001U) - 30000);
    }
    return result;
}

/// \param make  of a list of numbers, the peer's array \param fits  whether all fit 16 bits
template <class Make, class Fits>
void add_array_test(char const* name, Make make, Fits fits) {
    add("array_converts_to_i16", name, million, [=] {
        auto const source = shared(make(whole_numbers()));
        auto const run = [=] {
            bool result = fits(*source);
            DoNotOptimize(result);
        };
        return job{run, [=] {
                       auto numbers = whole_numbers();
                       numbers.back() = 40000;
                       return fits(*source) && !fits(make(numbers));
                   }};
    });
}

v2::io_value as_value(std::vector<int> const& numbers) {
    return v2::io_value(v2::utility::array<int>(numbers));
}

void add_arrays() {
    auto const type = v2::io_data_type::array_of(types::i16);
    auto const error = std::make_shared<v2::io_error>();
    auto const as_array = [=](v2::io_value const& value) {
        return value.as<v2::utility::array<short>>(*error);
    };
    auto const plain = [](std::vector<int> numbers) { return numbers; };
    add_array_test("iokern", as_value,
                   [=](v2::io_value const& value) { return value.converts_to(type); });
    add_array_test("iokern[as]", as_value, [=](v2::io_value const& value) {
        auto const converted = as_array(value);
        return error->ok() && converted.size() == unsigned(million);
    });
    add_array_test("limit", plain, [](std::vector<int> const& numbers) {
        return baseline::i32_fit_i16(numbers.data(), numbers.size());
    });
    if (__builtin_cpu_supports("avx2")) {
        add_array_test("limit[avx2]", plain, [](std::vector<int> const& numbers) {
            return avx2::i32_fit_i16(numbers.data(), numbers.size());
        });
    }

    array_conversion<int, short> const all{"array_to_variant_i16", whole_numbers, 1, million};
    // The array inside the value that `to_variant` gives.
    struct payload {
        v2::io_value value;
        [[nodiscard]] short const* data() const { return array().data(); }
        [[nodiscard]] std::size_t size() const { return array().size(); }

    private:
        [[nodiscard]] v2::utility::array<short> const& array() const {
            static v2::utility::array<short> const nothing;
            auto const* const held = value.get_if<v2::utility::array<short>>();
            return held != nullptr ? *held : nothing;
        }
    };
    all.add_peer("iokern", as_value, [=](v2::io_value const& value) {
        return payload{value.to_variant(type, *error)};
    });
    all.add_peer("iokern[as]", as_value, as_array);
    all.add_kernel<gateway_memory>("limit", baseline::i32_to_i16);
    if (__builtin_cpu_supports("avx2")) {
        all.add_kernel<gateway_memory>("limit[avx2]", avx2::i32_to_i16);
    }
}

} // namespace

void add_runtime_types() {
    add_scalar_test();
    add_scalar_conversions();
    add_arrays();
}

} // namespace bench
