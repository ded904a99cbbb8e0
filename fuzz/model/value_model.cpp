#include "value_model.hpp"

#include <array>
#include <numeric>

namespace fuzz {

io_data_type natural_type(payload_model const& payload) {
    // By index; from 17 on arrays.
    static constexpr std::array<types, 34> elements{
        types::empty, types::boolean, types::i8,     types::i16,    types::i32,    types::i32,
        types::i64,   types::u8,      types::u16,    types::u32,    types::u32,    types::u64,
        types::flt,   types::dbl,     types::i8,     types::string, types::object, types::boolean,
        types::i8,    types::i16,     types::i32,    types::i32,    types::i64,    types::u8,
        types::u16,   types::u32,     types::u32,    types::u64,    types::flt,    types::dbl,
        types::i8,    types::string,  types::object, types::empty};
    io_data_type type;
    type.basic_type = elements.at(payload.index());
    if (payload.index() >= 17) type.array_kind = 2;
    if (auto const* const object = std::get_if<object_model>(&payload)) {
        type.structure_id = object->type.structure_id;
    }
    return type;
}

namespace {

std::size_t count_of_object(object_model const& object) {
    return std::accumulate(
        object.values.begin(), object.values.end(), std::size_t{1},
        [](std::size_t sum, auto const& member) { return sum + count_of(member.second); });
}

} // namespace

std::size_t count_of(value_model const& value) {
    return std::visit(
        [](auto const& payload) -> std::size_t {
            using T = std::decay_t<decltype(payload)>;
            std::size_t count = 1;
            if constexpr (std::is_same_v<T, object_model>) {
                count += count_of_object(payload);
            } else if constexpr (std::is_same_v<T, list<object_model>>) {
                for (object_model const& each : payload) count += count_of_object(each);
            } else if constexpr (std::is_same_v<T, list<value_model>>) {
                for (value_model const& each : payload) count += count_of(each);
            } else if constexpr (is_list<T>) {
                count += payload.size();
            }
            return count;
        },
        value.payload);
}

} // namespace fuzz
