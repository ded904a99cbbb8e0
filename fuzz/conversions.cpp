#include <tavi/ioapi/v2/ioapi.hpp>

#include "model/library_value.hpp"
#include "model/random_value.hpp"
#include "model/rules.hpp"
#include "support/check.hpp"
#include "support/target.hpp"

#include <algorithm>
#include <utility>

/// \file
/// Laws that hold for any two nested values and any declared type.

namespace {

using namespace fuzz;
using v2::io_value;

/// Now and then under a type that says nothing of the payload, as a backend may state it.
value_model any_value(input& script) {
    value_model model = random_value(script, {4, 6});
    if (script.below(8) == 7) model.type = io_data_type();
    return model;
}

/// Whether a payload stands under the type of nothing. Its kind decides how it reads what other
/// kinds under that type hold, of which the rules say only that it is safe.
bool is_under_no_type(value_model const& model) {
    return !is_empty(model) && model.type == io_data_type();
}

/// Whether there is, on some level, what equals from one side only: nothing under a type, or
/// something under the type of nothing.
bool has_one_sided(value_model const& model) {
    if (is_empty(model) != (model.type == io_data_type())) return true;
    auto const* const elements = std::get_if<list<value_model>>(&model.payload);
    return elements != nullptr && std::any_of(elements->begin(), elements->end(), has_one_sided);
}

bool holds_empty_element(io_value const& value) {
    auto const* const elements = value.get_if<v2::utility::array<io_value>>();
    if (elements == nullptr) return false;
    for (io_value const& each : *elements) {
        if (each.empty()) return true;
    }
    return false;
}

/// The three places where a value converts though it does not fit.
bool may_convert_unfit(io_value const& value, io_data_type const& type) {
    return value.empty() || holds_empty_element(value) || type.type_code() == 0;
}

template <class T>
void check_compiled_type(io_value const& value, bool fits, bool may_differ) {
    v2::io_error error(io_errc::not_found);
    (void)v2::detail::get_as<T>(value, error);
    if (fits) check(error.ok(), "get_as gives what fits");
    if (!fits && !may_differ) check(error.failed(), "get_as refuses what does not fit");
}

template <class T>
void check_compiled(io_value const& value, io_data_type const& type, bool fits) {
    bool const may_differ = may_convert_unfit(value, type);
    if (type.is_array()) {
        check_compiled_type<v2::utility::array<T>>(value, fits, may_differ);
    } else {
        check_compiled_type<T>(value, fits, may_differ);
    }
}

void check_compiled_of(io_value const& value, io_data_type const& type, bool fits) {
    switch (type.basic_type) {
    case types::boolean: return check_compiled<bool>(value, type, fits);
    case types::u8: return check_compiled<unsigned char>(value, type, fits);
    case types::u16: return check_compiled<unsigned short>(value, type, fits);
    case types::u32: return check_compiled<unsigned int>(value, type, fits);
    case types::u64: return check_compiled<unsigned long long>(value, type, fits);
    case types::i8: return check_compiled<signed char>(value, type, fits);
    case types::i16: return check_compiled<short>(value, type, fits);
    case types::i32: return check_compiled<int>(value, type, fits);
    case types::i64: return check_compiled<long long>(value, type, fits);
    case types::flt: return check_compiled<float>(value, type, fits);
    case types::dbl: return check_compiled<double>(value, type, fits);
    case types::string: return check_compiled<v2::utility::string>(value, type, fits);
    default: return;
    }
}

void check_declared(io_value const& value, io_data_type const& type) {
    bool const fits = value.converts_to(type);
    v2::io_error error(io_errc::not_found);
    io_value const result = value.to_variant(type, error);
    if (fits) check(error.ok(), "to_variant gives what fits");
    if (!fits && !may_convert_unfit(value, type)) {
        check(error.failed(), "to_variant refuses what does not fit");
    }
    bool const is_own = value.data_type() == type;
    if (is_own) check(identical(value, result), "a value of the type is copied");
    if (error.ok() && !is_own && type.type_code() != 0) {
        check(result.type_code() == type.type_code(), "to_variant gives a value of the type");
        check(result.converts_to(type) || result.empty(), "what was converted fits");
    }
    check(identical(value.to_variant(type), result), "both forms of to_variant give one value");
    // A value of its own type may hold a kind that says something else.
    if (!is_own) check_compiled_of(value, type, fits);
}

void check_equality(io_value const& left, io_value const& right, bool symmetric) {
    bool const equal = left == right;
    check((left != right) == !equal, "!= is the negation of ==");
    if (symmetric) check((right == left) == equal, "== is symmetric");
}

void check_copies(io_value const& value) {
    v2::utility::string const text = value.printable_string();
    io_value copy(value);
    check(identical(copy, value), "a copy is identical to its source");
    check(copy.printable_string() == text, "a copy prints as its source does");
    io_value const moved(std::move(copy));
    check(moved.printable_string() == text, "a moved value prints as its source did");
    io_value assigned(5);
    assigned = value;
    check(assigned.printable_string() == text, "an assigned value prints as its source does");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    input script(data, size);
    value_model const left_model = any_value(script);
    value_model const right_model = any_value(script);
    io_value const left = made(left_model);
    io_value const right = made(right_model);
    for (int i = 0; i < 4; ++i) {
        io_data_type const type = random_type(script);
        check_declared(left, type);
        check_declared(right, type);
    }
    check_declared(left, right.data_type());
    bool const one_sided = has_one_sided(left_model) || has_one_sided(right_model);
    check_equality(left, right, !one_sided);
    if (!is_under_no_type(left_model) && !is_under_no_type(right_model)) {
        check((left == right) == equal(left_model, right_model), "== is as the rules");
        check((right == left) == equal(right_model, left_model), "== is as the rules, turned");
    }
    check_equality(left, io_value(left), true);
    check_copies(left);
    check_copies(right);
    return 0;
}
