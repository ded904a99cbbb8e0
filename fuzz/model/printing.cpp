#include "rules.hpp"

namespace fuzz {

namespace {

struct layout {
    char fill;
    unsigned int width;
    unsigned int level;

    [[nodiscard]] std::string indentation() const {
        unsigned int const count = width * level; // of 32 bits
        return std::string(count, fill);
    }
    [[nodiscard]] layout deeper() const { return {fill, width, level + 1}; }
};

template <class T>
char const* label() {
    if constexpr (std::is_same_v<T, short>) return "(i16) ";
    if constexpr (std::is_same_v<T, long long>) return "(i64) ";
    if constexpr (std::is_same_v<T, unsigned char>) return "(u8) ";
    if constexpr (std::is_same_v<T, unsigned short>) return "(u16) ";
    if constexpr (std::is_same_v<T, unsigned int> || std::is_same_v<T, unsigned long>)
        return "(u32) ";
    if constexpr (std::is_same_v<T, unsigned long long>) return "(u64) ";
    if constexpr (std::is_same_v<T, float>) return "(flt) ";
    if constexpr (std::is_same_v<T, double>) return "(dbl) ";
    if constexpr (std::is_same_v<T, char>) return "(i8) ";
    return "(i32) "; // signed char too
}

template <class T>
void print(std::string& out, T const& payload, layout where);

void print_object(std::string& out, object_model const& object, layout where) {
    auto const id = object.type.structure_id;
    out += where.indentation() + "object<" + (id == 0 ? "?" : digits_of(id)) + "> {\n";
    for (auto const& [key, value] : object.values) {
        out += where.indentation() + "[" + key + "] =>\n";
        print(out, value, where.deeper());
        out += "\n";
    }
    out += where.indentation() + "}";
}

template <class T>
void print(std::string& out, T const& payload, layout where) {
    if constexpr (std::is_same_v<T, value_model>) {
        std::visit([&](auto const& held) { print(out, held, where); }, payload.payload);
    } else if constexpr (std::is_same_v<T, object_model>) {
        print_object(out, payload, where);
    } else if constexpr (is_list<T>) {
        out += where.indentation() + "array (" +
               digits_of(static_cast<wide_integer>(payload.size())) + ") {\n";
        for (auto const& each : payload) {
            print<std::decay_t<decltype(each)>>(out, each, where.deeper());
            out += "\n";
        }
        out += where.indentation() + "}";
    } else {
        out += where.indentation();
        if constexpr (std::is_same_v<T, std::nullptr_t>) {
            out += "empty";
        } else if constexpr (std::is_same_v<T, bool>) {
            out += payload ? "(boolean) true" : "(boolean) false";
        } else if constexpr (std::is_same_v<T, std::string>) {
            out += "(string) \"" + payload + "\"";
        } else {
            out += label<T>() + to_text(payload).value;
        }
    }
}

} // namespace

std::string printed(value_model const& value, char fill, unsigned int width, unsigned int level) {
    std::string out;
    print(out, value, {fill, width, level});
    return out;
}

} // namespace fuzz
