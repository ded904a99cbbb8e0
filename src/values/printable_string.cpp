#include <tavi/ioapi/v2/io_value.hpp>

#include "array_rules.hpp"
#include "number_text.hpp"
#include "structures/io_object_impl.hpp"

#include <string>
#include <string_view>
#include <type_traits>

namespace tavi::ioapi::v2 {

namespace {

/// What stands before a value. Intended: several labels do not tell the width or the sign.
template <class T>
constexpr std::string_view label_of() noexcept {
    if constexpr (std::is_same_v<T, bool>) return "(boolean) ";
    if constexpr (std::is_same_v<T, signed char>) return "(i32) "; // not i8
    if constexpr (std::is_same_v<T, short>) return "(i16) ";
    if constexpr (std::is_same_v<T, int>) return "(i32) ";
    if constexpr (std::is_same_v<T, long>) return "(i32) ";
    if constexpr (std::is_same_v<T, long long>) return "(i64) ";
    if constexpr (std::is_same_v<T, unsigned char>) return "(u8) ";
    if constexpr (std::is_same_v<T, unsigned short>) return "(u16) ";
    if constexpr (std::is_same_v<T, unsigned int>) return "(u32) ";
    if constexpr (std::is_same_v<T, unsigned long>) return "(u32) ";
    if constexpr (std::is_same_v<T, unsigned long long>) return "(u64) ";
    if constexpr (std::is_same_v<T, float>) return "(flt) ";
    if constexpr (std::is_same_v<T, double>) return "(dbl) ";
    if constexpr (std::is_same_v<T, char>) return "(i8) "; // an unsigned number
    if constexpr (std::is_same_v<T, utility::string>) return "(string) ";
}

/// Writes a value and all that it holds to the end of one text.
class printer {
public:
    printer(std::string& out, char fill, unsigned int width)
        : out_(out), fill_(fill), width_(width) {}

    void print(io_value const& value, unsigned int level) {
        value.visit([&](auto const& payload) { print(payload, level); });
    }

    void print(std::nullptr_t, unsigned int level) {
        indent(level);
        out_ += "empty";
    }

    // Out of line, so that its buffer takes no room in the frames of what is nested around it.
    template <detail::number T>
    [[gnu::noinline]] void print(T number, unsigned int level) {
        detail::number_text const text(number);
        if (text.view().empty()) return; // a number without a text leaves nothing
        begin_scalar<T>(level);
        out_ += text.view();
    }

    void print(bool truth, unsigned int level) {
        begin_scalar<bool>(level);
        out_ += detail::text_of(truth);
    }

    void print(utility::string const& text, unsigned int level) {
        begin_scalar<utility::string>(level);
        out_ += '"';
        out_ += std::string_view(text);
        out_ += '"';
    }

    template <class T>
    void print(utility::array<T> const& elements, unsigned int level) {
        indent(level);
        out_ += "array (";
        append(elements.size());
        out_ += ") {\n";
        for (unsigned int i = 0; i < elements.size(); ++i) {
            print(detail::element_of(elements, i), level + 1);
            out_ += '\n';
        }
        indent(level);
        out_ += '}';
    }

    void print(io_object const& object, unsigned int level) {
        indent(level);
        out_ += "object<";
        unsigned long long const id = object.type().structure_id;
        if (id == 0) {
            out_ += '?';
        } else {
            append(id);
        }
        out_ += "> {\n";
        for (auto const& [key, value] : detail::impl_of(object)) {
            indent(level); // Intended: a key stands as deep as its object.
            out_ += '[';
            out_ += key;
            out_ += "] =>\n";
            print(value, level + 1);
            out_ += '\n';
        }
        indent(level);
        out_ += '}';
    }

private:
    // Out of line for the same reason: a frame that held the buffers of all kinds of array would
    // take 1.4 KiB of stack for each level.
    template <detail::number T>
    [[gnu::noinline]] void append(T number) {
        out_ += detail::number_text(number).view();
    }

    template <class T>
    void begin_scalar(unsigned int level) {
        indent(level);
        out_ += label_of<T>();
    }

    void indent(unsigned int level) {
        unsigned int const count = level * width_; // in 32 bits
        out_.append(count, fill_);
    }

    std::string& out_;
    char fill_;
    unsigned int width_;
};

} // namespace

utility::string io_value::printable_string(char fill,
                                           unsigned int width,
                                           unsigned int level) const {
    std::string text;
    printer(text, fill, width).print(*this, level);
    return text;
}

} // namespace tavi::ioapi::v2
