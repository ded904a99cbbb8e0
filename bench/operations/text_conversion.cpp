#include "blocks.hpp"
#include "inputs.hpp"
#include "operations.hpp"
#include "values.hpp"

#include <charconv>
#include <cmath>
#include <string_view>

/// \file
/// Between a text and a number. Peers whose JSON is a text are asked to parse it.

namespace bench {

namespace {

// --- text to number

template <class T>
T parsed(char const* first, char const* last, bool& ok) {
    T number{};
    auto const end = std::from_chars(first, last, number);
    ok = end.ec == std::errc() && end.ptr == last;
    return number;
}

template <class T>
T parsed_by_glib(std::string const& text) {
    if constexpr (std::is_integral_v<T>) {
        gint64 number = 0;
        g_ascii_string_to_signed(text.c_str(), 10, G_MININT, G_MAXINT, &number, nullptr);
        return static_cast<T>(number);
    } else {
        char* end = nullptr;
        double const number = g_ascii_strtod(text.c_str(), &end);
        return *end == '\0' ? number : std::nan("");
    }
}

template <class T>
T converted_by_qt(QVariant const& value) {
    bool ok = false;
    if constexpr (std::is_integral_v<T>) {
        T const number = value.toInt(&ok);
        return ok ? number : T(-1);
    } else {
        T const number = value.toDouble(&ok);
        return ok ? number : T(-1);
    }
}

template <class T>
void add_from_text(char const* operation, std::string const& text, T wanted) {
    auto const is_right = [=](T number, int) { return number == wanted; };
    auto const as_text = [=](int) { return text; };
    auto const from_text = [=](char const* name, auto call) {
        add_calls(operation, name, as_text, call, is_right);
    };
    auto const error = std::make_shared<v2::io_error>();
    add_calls(
        operation, "iokern", [=](int) { return v2::io_value(text); },
        [=](v2::io_value const& value) { return value.as<T>(*error); },
        [=](T number, int) { return error->ok() && number == wanted; });
    from_text("limit", [](std::string const& each) {
        bool ok = false;
        T const number = parsed<T>(each.data(), each.data() + each.size(), ok);
        DoNotOptimize(ok);
        return number;
    });
    add_calls(
        operation, "poco_var", [=](int) { return poco_value(text); },
        [](poco_value const& value) { return value.convert<T>(); }, is_right);
    add_calls(
        operation, "qt_qvariant", [=](int) { return peer<QVariant>::of(text); }, converted_by_qt<T>,
        is_right);
    from_text("boost_lexical_cast",
              [](std::string const& each) { return boost::lexical_cast<T>(each); });
    from_text("glib_ascii", parsed_by_glib<T>);
    from_text("nlohmann[parse]",
              [](std::string const& each) { return nlohmann_value::parse(each).get<T>(); });
    // Its parser is not exact in the last place.
    add_calls(
        operation, "boost_json[parse]", as_text,
        [](std::string const& each) { return boost::json::parse(each).to_number<T>(); },
        [=](T number, int) { return std::fabs(number - wanted) < 1e-12; });
}

// --- number to text

/// The longest text of a number, and what a limit without a block of its own writes to.
struct buffer {
    char bytes[40];
    std::size_t size;

    [[nodiscard]] std::string_view view() const noexcept { return {bytes, size}; }
};

template <class T>
buffer written(T number) {
    buffer result;
    result.size = static_cast<std::size_t>(
        std::to_chars(result.bytes, result.bytes + sizeof(result.bytes), number).ptr -
        result.bytes);
    return result;
}

template <class Text>
std::string as_standard_text(Text const& text) {
    if constexpr (std::is_same_v<Text, QString>) {
        return text.toStdString();
    } else if constexpr (std::is_same_v<Text, v2::utility::string>) {
        return text.str();
    } else if constexpr (std::is_same_v<Text, glib_value>) {
        return g_value_get_string(text.get());
    } else if constexpr (std::is_same_v<Text, std::string>) {
        return text;
    } else {
        return std::string(text.view());
    }
}

template <class T>
class to_text {
public:
    to_text(char const* operation, T number, std::string wanted)
        : operation_(operation), number_(number), wanted_(std::move(wanted)) {}

    void add_all() const {
        auto const error = std::make_shared<v2::io_error>();
        add_value<v2::io_value>("iokern", [=](v2::io_value const& value) {
            return value.as<v2::utility::string>(*error);
        });
        add_limits();
        add_values();
        add_plain("std_to_chars[to std::string]",
                  [](T number) { return std::string(written(number).view()); });
        add_plain("fmt_format", [](T number) { return fmt::format("{}", number); });
        // It gives all 17 places that a number can need.
        add_calls(
            operation_, "boost_lexical_cast", [n = number_](int) { return n; },
            [](T number) { return boost::lexical_cast<std::string>(number); },
            [n = number_](std::string const& text, int) {
                return boost::lexical_cast<T>(text) == n;
            });
    }

private:
    template <class Call>
    void add_made(std::string const& name, auto make, Call call) const {
        add_calls(operation_, name, make, call, [wanted = wanted_](auto const& text, int) {
            return as_standard_text(text) == wanted;
        });
    }
    template <class Call>
    void add_plain(std::string const& name, Call call) const {
        add_made(
            name, [n = number_](int) { return n; }, call);
    }
    template <class V, class Call>
    void add_value(std::string const& name, Call call) const {
        add_made(
            name, [n = number_](int) { return peer<V>::of(n); }, call);
    }

    void add_limits() const {
        for_each_memory([&](auto memory) {
            using text = block_text<decltype(memory)>;
            add_plain(memory.name, [](T number) { return text(written(number).view()); });
        });
        add_plain("limit[less: into a buffer]", [](T number) { return written(number); });
        add_plain("fmt_compile[less: into a buffer]", [](T number) {
            buffer result;
            char const* const end = fmt::format_to(result.bytes, FMT_COMPILE("{}"), number);
            result.size = static_cast<std::size_t>(end - result.bytes);
            return result;
        });
    }

    void add_values() const {
        add_value<poco_value>("poco_var",
                              [](poco_value const& value) { return value.convert<std::string>(); });
        add_value<QVariant>("qt_qvariant", [](QVariant const& value) { return value.toString(); });
        add_value<nlohmann_value>("nlohmann[dump]",
                                  [](nlohmann_value const& value) { return value.dump(); });
        // Both write a double in a form of their own: 3.14159E0 and 3.141590.
        auto const is_near = [n = number_](auto const& text, int) {
            return std::fabs(std::stod(as_standard_text(text)) - n) < 1e-5;
        };
        add_calls(
            operation_, "boost_json[serialize]", [n = number_](int) { return boost_value(n); },
            [](boost_value const& value) { return boost::json::serialize(value); }, is_near);
        add_calls(
            operation_, "glib_gvalue", [n = number_](int) { return peer<glib_value>::of(n); },
            [](glib_value const& value) { return value.transformed(G_TYPE_STRING); }, is_near);
    }

    char const* operation_;
    T number_;
    std::string wanted_;
};

} // namespace

void add_text_conversion() {
    add_from_text("text_to_i32", "123456", 123456);
    add_from_text("text_to_dbl", "3.14159", 3.14159);
    to_text("i32_to_text", 123456, "123456").add_all();
    to_text("dbl_to_text", 3.14159, "3.14159").add_all();
}

} // namespace bench
