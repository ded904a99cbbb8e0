#include "random_value.hpp"

#include "rules.hpp"

#include <array>
#include <cmath>
#include <limits>

namespace fuzz {

namespace {

/// A power of two with a small distance, of either sign, modulo 2^64.
unsigned long long border(input& script) {
    unsigned int const shift = script.below(64);
    unsigned int const distance = script.byte();
    unsigned long long number = 1ULL << shift;
    number += distance & 7U;
    number -= (distance >> 3U) & 7U;
    return (distance & 0x80U) != 0 ? 0 - number : number;
}

template <class Real>
Real random_real(input& script) {
    using limits = std::numeric_limits<Real>;
    switch (script.below(6)) {
    case 0: return static_cast<Real>(static_cast<long long>(border(script)));
    case 1: return static_cast<Real>(static_cast<signed char>(script.byte())) / 4;
    case 2: {
        static constexpr std::array<Real, 12> special{
            Real(0),           -Real(0),         limits::infinity(), -limits::infinity(),
            limits::max(),     limits::lowest(), limits::min(),      limits::denorm_min(),
            limits::epsilon(), Real(0.1),        Real(1e6),          Real(1e15)};
        return special.at(script.below(12));
    }
    case 3: return script.flag() ? limits::quiet_NaN() : -limits::quiet_NaN();
    case 4: {
        // On both sides of the largest float.
        auto const steps = static_cast<int>(script.below(5)) - 2;
        auto number = static_cast<Real>(std::numeric_limits<float>::max());
        Real const goal = steps < 0 ? Real(0) : limits::infinity();
        for (int i = steps < 0 ? -steps : steps; i > 0; --i) number = std::nextafter(number, goal);
        return number;
    }
    default: {
        Real const number = script.raw<Real>();
        // Only quiet ones: a signalling NaN changes its bits wherever it is passed on.
        return std::isnan(number) ? limits::quiet_NaN() : number;
    }
    }
}

template <class T>
T random_payload(input& script, extent size);

template <class T>
list<T> random_list(input& script, extent size) {
    list<T> result;
    for (unsigned int i = script.below(size.width + 1); i > 0; --i) {
        if constexpr (std::is_same_v<T, value_model>) {
            result.push_back(random_value(script, size));
        } else {
            result.push_back(random_payload<T>(script, size));
        }
    }
    return result;
}

template <class T>
T random_payload(input& script, extent size) {
    if constexpr (std::is_same_v<T, std::nullptr_t>) {
        return nullptr;
    } else if constexpr (std::is_same_v<T, bool>) {
        return script.flag();
    } else if constexpr (std::is_arithmetic_v<T>) {
        return random_number<T>(script);
    } else if constexpr (std::is_same_v<T, std::string>) {
        return random_text(script);
    } else if constexpr (std::is_same_v<T, object_model>) {
        return size.depth == 0 ? object_model()
                               : random_object(script, {size.depth - 1, size.width});
    } else if constexpr (std::is_same_v<T, list<value_model>> ||
                         std::is_same_v<T, list<object_model>>) {
        return size.depth == 0 ? T()
                               : random_list<element_of_t<T>>(script, {size.depth - 1, size.width});
    } else {
        return random_list<element_of_t<T>>(script, size);
    }
}

template <std::size_t... Index>
payload_model payload_at(std::size_t index,
                         input& script,
                         extent size,
                         std::index_sequence<Index...> /*all*/) {
    payload_model result;
    (void)((index == Index &&
            (result.emplace<Index>(
                 random_payload<std::variant_alternative_t<Index, payload_model>>(script, size)),
             true)) ||
           ...);
    return result;
}

value_model value_at(unsigned int index, input& script, extent size) {
    value_model value = natural(payload_at(
        index, script, size, std::make_index_sequence<std::variant_size_v<payload_model>>()));
    bool const is_open = index == 0 || index == 33; // a caller may state the type of these
    if (is_open && script.below(4) == 3) {
        value.type = random_type(script);
        if (index == 0 && value.type.array_kind != 0) value.type = natural_type(value.payload);
        if (index == 33 && value.type.array_kind == 0) value.type = natural_type(value.payload);
    }
    return value;
}

} // namespace

template <class T>
T random_number(input& script) {
    if constexpr (std::is_floating_point_v<T>) {
        return random_real<T>(script);
    } else {
        return static_cast<T>(script.flag() ? border(script) : script.byte());
    }
}

std::string random_text(input& script) {
    static constexpr std::array<char const*, 24> words{
        "",     "true", "false", "inf", "-inf",   "nan",   "-nan(1)",  "infinity",
        "0",    "-0",   ".5",    "5.",  "1e3",    "1E-3",  "1e400",    "1e-400",
        "0x10", "+1",   " 1",    "4.2", "3.5e38", "1e-46", "16777217", "9007199254740993"};
    std::string text;
    switch (script.below(6)) {
    case 0: text = words.at(script.below(words.size())); break;
    case 1: text = digits_of(static_cast<long long>(border(script))); break;
    case 2: text = digits_of(border(script)); break;
    case 3: text = shortest_text(random_real<double>(script)); break;
    default: text = script.bytes(script.below(12)); break;
    }
    if (script.below(8) == 7 && !text.empty()) {
        text[script.byte() % text.size()] = static_cast<char>(script.byte());
    }
    return text;
}

std::string random_key(input& script) {
    static constexpr std::array<char const*, 8> keys{"", "a", "b", "aa", "B", "level", "\xFF", "k"};
    unsigned int const choice = script.below(10);
    if (choice < keys.size()) return keys.at(choice);
    return script.bytes(script.below(20));
}

io_data_type random_type(input& script) {
    unsigned int const kind = script.byte();
    io_data_type type;
    if (kind < 240) {
        type.basic_type = types{kind % 13 + (kind % 13 == 0 ? 12U : 0U)};
        type.array_kind = kind < 120 ? 0 : 2;
    } else {
        type.basic_type = types{script.below(16)};
        type.structure_id = script.below(3);
        type.array_kind = script.below(4);
        type.array_extent = script.below(2);
    }
    return type;
}

structure_model random_structure(input& script) {
    structure_model result;
    if (script.flag()) result.name = random_key(script);
    for (unsigned int i = script.below(5); i > 0; --i) {
        std::string key = random_key(script);
        result.members[std::move(key)] = random_type(script);
    }
    return result;
}

object_model random_object(input& script, extent size) {
    object_model object;
    object.type.structure_id = script.below(3);
    object.structure = random_structure(script);
    for (unsigned int i = script.below(size.width + 1); i > 0; --i) {
        std::string const key = random_key(script);
        (void)set_member(object, key, random_value(script, size));
    }
    return object;
}

value_model random_scalar(input& script) {
    return value_at(script.below(16), script, {0, 0});
}

value_model random_value(input& script, extent size) {
    return value_at(script.below(34), script, size);
}

template signed char random_number<signed char>(input&);
template short random_number<short>(input&);
template int random_number<int>(input&);
template long random_number<long>(input&);
template long long random_number<long long>(input&);
template unsigned char random_number<unsigned char>(input&);
template unsigned short random_number<unsigned short>(input&);
template unsigned int random_number<unsigned int>(input&);
template unsigned long random_number<unsigned long>(input&);
template unsigned long long random_number<unsigned long long>(input&);
template float random_number<float>(input&);
template double random_number<double>(input&);
template char random_number<char>(input&);

} // namespace fuzz
