#include "array_conversion.hpp"
#include "rules.hpp"

namespace fuzz {

namespace {

/// Call `function` with a pointer to the scalar type that serves an element kind from `boolean` to
/// `string`.
template <class Function>
auto with_target(types element, Function function) {
    switch (element) {
    case types::boolean: return function(static_cast<bool*>(nullptr));
    case types::u8: return function(static_cast<unsigned char*>(nullptr));
    case types::u16: return function(static_cast<unsigned short*>(nullptr));
    case types::u32: return function(static_cast<unsigned int*>(nullptr));
    case types::u64: return function(static_cast<unsigned long long*>(nullptr));
    case types::i8: return function(static_cast<signed char*>(nullptr));
    case types::i16: return function(static_cast<short*>(nullptr));
    case types::i32: return function(static_cast<int*>(nullptr));
    case types::i64: return function(static_cast<long long*>(nullptr));
    case types::flt: return function(static_cast<float*>(nullptr));
    case types::dbl: return function(static_cast<double*>(nullptr));
    default: return function(static_cast<std::string*>(nullptr));
    }
}

bool is_target(io_data_type const& type) {
    return type.basic_type >= types::boolean && type.basic_type <= types::string;
}

bool has_empty_element(value_model const& value) {
    auto const* const elements = std::get_if<list<value_model>>(&value.payload);
    if (elements == nullptr) return false;
    for (value_model const& each : *elements) {
        if (is_empty(each)) return true;
    }
    return false;
}

template <class T>
outcome<value_model> packed(outcome<T> result, io_data_type const& type) {
    return {{type, std::move(result.value)}, result.code};
}

} // namespace

bool fits(value_model const& value, io_data_type const& type) {
    if (value.type == type) return true;
    if (!is_target(type) || is_empty(value)) return false;
    if (type.array_kind != 0 && has_empty_element(value)) return false;
    return converted(value, type).code == io_errc::success;
}

outcome<value_model> converted(value_model const& value, io_data_type const& type) {
    if (value.type == type) return {value};
    if (type.basic_type == types::empty && type.array_kind == 0) return {};
    if (!is_target(type)) return {{}, io_errc::incompatible_type};
    return with_target(type.basic_type, [&](auto* pointer) {
        using T = std::remove_pointer_t<decltype(pointer)>;
        if (type.array_kind != 0) {
            return packed(to_list_of<T>(value), io_data_type{type.basic_type, 0, 2, 0});
        }
        return packed(to_scalar_of<T>(value), io_data_type{type.basic_type, 0, 0, 0});
    });
}

io_errc set_member(object_model& object, std::string const& key, value_model value) {
    auto const declared = object.structure.members.find(key);
    bool const is_declared = declared != object.structure.members.end();
    if (object.type.structure_id != 0 && !is_declared) return io_errc::invalid_property;
    if (is_declared && declared->second != value.type) {
        if (!fits(value, declared->second)) return io_errc::incompatible_type;
        value = converted(value, declared->second).value;
    }
    object.values[key] = std::move(value);
    return io_errc::success;
}

} // namespace fuzz
