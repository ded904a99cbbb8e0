#include "harness.hpp"
#include "operations.hpp"
#include "tree.hpp"
#include "values.hpp"

#include <charconv>
#include <cmath>
#include <sstream>

/// \file
/// A nested value as text; one item is one member of an object. The text is made anew each time.
/// The peers print JSON, or as GLib does; those that cannot indent do less.

namespace bench {

namespace {

// --- this library's own form, by hand

class hand_printer {
public:
    explicit hand_printer(std::string& out) : out_(out) {}

    void print(tree_node const& node, std::size_t level) {
        indent(level);
        std::visit([&](auto const& content) { print(content, level); }, node.content);
    }

private:
    void print(bool truth, std::size_t) { out_ += truth ? "(boolean) true" : "(boolean) false"; }
    void print(int number, std::size_t) { labelled("(i32) ", number); }
    void print(long long number, std::size_t) { labelled("(i64) ", number); }
    void print(double number, std::size_t) { labelled("(dbl) ", number); }
    void print(std::string const& text, std::size_t) {
        out_ += "(string) \"";
        out_ += text;
        out_ += '"';
    }

    void print(tree_node::list const& list, std::size_t level) {
        labelled("array (", list.size());
        out_ += ") {\n";
        for (auto const& each : list) {
            print(each, level + 1);
            out_ += '\n';
        }
        indent(level);
        out_ += '}';
    }

    void print(tree_node::object const& object, std::size_t level) {
        out_ += "object<?> {\n";
        for (auto const& [key, member] : object) {
            indent(level);
            out_ += '[';
            out_ += key;
            out_ += "] =>\n";
            print(member, level + 1);
            out_ += '\n';
        }
        indent(level);
        out_ += '}';
    }

    template <class T>
    void labelled(char const* label, T number) {
        char digits[40];
        out_ += label;
        out_.append(digits, std::to_chars(digits, digits + sizeof(digits), number).ptr);
    }

    void indent(std::size_t level) { out_.append(2 * level, ' '); }

    std::string& out_;
};

std::string print_by_hand(tree_node const& tree) {
    std::string out;
    hand_printer(out).print(tree, 0);
    return out;
}

// --- the peers' trees

/// \tparam Builder  has the type `value`, and makes one of a scalar, of a list and of members
template <class Builder>
typename Builder::value build(tree_node const& node) {
    return std::visit(
        [](auto const& content) -> typename Builder::value {
            using content_type = std::decay_t<decltype(content)>;
            if constexpr (std::is_same_v<content_type, tree_node::list>) {
                return Builder::list(content, build<Builder>);
            } else if constexpr (std::is_same_v<content_type, tree_node::object>) {
                return Builder::object(content, build<Builder>);
            } else {
                return Builder::scalar(content);
            }
        },
        node.content);
}

struct iokern_builder {
    using value = v2::io_value;

    template <class T>
    static v2::io_value scalar(T const& content) {
        return v2::io_value(content);
    }
    static v2::io_value list(tree_node::list const& list, v2::io_value (*each)(tree_node const&)) {
        v2::utility::array<v2::io_value> result(static_cast<unsigned int>(list.size()));
        v2::io_value* place = result.begin();
        for (auto const& node : list) *place++ = each(node);
        return v2::io_value(std::move(result));
    }
    static v2::io_value object(tree_node::object const& members,
                               v2::io_value (*each)(tree_node const&)) {
        v2::io_object result;
        for (auto const& [key, node] : members) result.set(key, each(node));
        return v2::io_value(std::move(result));
    }
};

struct nlohmann_builder {
    using value = nlohmann_value;

    template <class T>
    static nlohmann_value scalar(T const& content) {
        return nlohmann_value(content);
    }
    static nlohmann_value list(tree_node::list const& list,
                               nlohmann_value (*each)(tree_node const&)) {
        auto result = nlohmann_value::array();
        for (auto const& node : list) result.push_back(each(node));
        return result;
    }
    static nlohmann_value object(tree_node::object const& members,
                                 nlohmann_value (*each)(tree_node const&)) {
        auto result = nlohmann_value::object();
        for (auto const& [key, node] : members) result[key] = each(node);
        return result;
    }
};

struct boost_builder {
    using value = boost_value;

    template <class T>
    static boost_value scalar(T const& content) {
        return boost_value(content);
    }
    static boost_value list(tree_node::list const& list, boost_value (*each)(tree_node const&)) {
        boost::json::array result;
        for (auto const& node : list) result.push_back(each(node));
        return result;
    }
    static boost_value object(tree_node::object const& members,
                              boost_value (*each)(tree_node const&)) {
        boost::json::object result;
        for (auto const& [key, node] : members) result[key] = each(node);
        return result;
    }
};

struct poco_builder {
    using value = poco_value;

    template <class T>
    static poco_value scalar(T const& content) {
        return poco_value(content);
    }
    static poco_value list(tree_node::list const& list, poco_value (*each)(tree_node const&)) {
        Poco::JSON::Array::Ptr result = new Poco::JSON::Array;
        for (auto const& node : list) result->add(each(node));
        return result;
    }
    static poco_value object(tree_node::object const& members,
                             poco_value (*each)(tree_node const&)) {
        Poco::JSON::Object::Ptr result = new Poco::JSON::Object;
        for (auto const& [key, node] : members) result->set(key, each(node));
        return result;
    }
};

struct qt_builder {
    using value = QJsonValue;

    static QJsonValue scalar(std::string const& text) { return QString::fromStdString(text); }
    static QJsonValue scalar(long long number) { return static_cast<qint64>(number); }
    template <class T>
    static QJsonValue scalar(T const& content) {
        return content;
    }
    static QJsonValue list(tree_node::list const& list, QJsonValue (*each)(tree_node const&)) {
        QJsonArray result;
        for (auto const& node : list) result.append(each(node));
        return result;
    }
    static QJsonValue object(tree_node::object const& members,
                             QJsonValue (*each)(tree_node const&)) {
        QJsonObject result;
        for (auto const& [key, node] : members) {
            result.insert(QString::fromStdString(key), each(node));
        }
        return result;
    }
};

struct glib_builder {
    using value = GVariant*;

    static GVariant* scalar(bool truth) { return g_variant_new_boolean(truth); }
    static GVariant* scalar(int number) { return g_variant_new_int32(number); }
    static GVariant* scalar(long long number) { return g_variant_new_int64(number); }
    static GVariant* scalar(double number) { return g_variant_new_double(number); }
    static GVariant* scalar(std::string const& text) { return g_variant_new_string(text.c_str()); }
    static GVariant* list(tree_node::list const& list, GVariant* (*each)(tree_node const&)) {
        GVariantBuilder builder;
        g_variant_builder_init(&builder, G_VARIANT_TYPE("av"));
        for (auto const& node : list) g_variant_builder_add(&builder, "v", each(node));
        return g_variant_builder_end(&builder);
    }
    static GVariant* object(tree_node::object const& members, GVariant* (*each)(tree_node const&)) {
        GVariantBuilder builder;
        g_variant_builder_init(&builder, G_VARIANT_TYPE("a{sv}"));
        for (auto const& [key, node] : members) {
            g_variant_builder_add(&builder, "{sv}", key.c_str(), each(node));
        }
        return g_variant_builder_end(&builder);
    }
};

// --- what is printed, and whether it is right

bool same_json(nlohmann_value const& left, nlohmann_value const& right) {
    if (left.is_number() && right.is_number()) {
        return std::fabs(left.get<double>() - right.get<double>()) < 1e-9;
    }
    if (!left.is_structured()) return left == right;
    if (left.type() != right.type() || left.size() != right.size()) return false;
    for (auto const& [key, value] : left.items()) {
        auto const& other = left.is_object() ? right.at(key) : right.at(std::stoul(key));
        if (!same_json(value, other)) return false;
    }
    return true;
}

bool is_json_of_tree(std::string_view text) {
    return same_json(nlohmann_value::parse(text), build<nlohmann_builder>(print_tree()));
}

template <class Make, class Print, class Right>
void add_printer(char const* name, Make make, Print print, Right is_right) {
    add("print_nested", name, print_tree_members, [=] {
        auto const value = shared(make(print_tree()));
        auto const run = [=] {
            auto text = print(*value);
            DoNotOptimize(text);
        };
        return job{run, [=] { return is_right(print(*value)); }};
    });
}

/// A text of GLib's own.
struct glib_text {
    std::unique_ptr<char, decltype(&g_free)> bytes;
};

/// GLib's form is read back by GLib.
bool is_variant_of_tree(glib_text const& text) {
    GVariant* const read =
        g_variant_parse(G_VARIANT_TYPE("av"), text.bytes.get(), nullptr, nullptr, nullptr);
    GVariant* const wanted = g_variant_ref_sink(build<glib_builder>(print_tree()));
    bool const is_right = read != nullptr && g_variant_equal(read, wanted);
    if (read != nullptr) g_variant_unref(read);
    g_variant_unref(wanted);
    return is_right;
}

void add_glib() {
    auto const make = [](tree_node const& tree) {
        return std::unique_ptr<GVariant, decltype(&g_variant_unref)>(
            g_variant_ref_sink(build<glib_builder>(tree)), g_variant_unref);
    };
    auto const print = [](auto const& value) {
        return glib_text{{g_variant_print(value.get(), FALSE), g_free}};
    };
    add_printer("glib_gvariant[less: compact]", make, print, is_variant_of_tree);
}

} // namespace

void add_printing() {
    auto const is_own_form = [](auto const& text) {
        return std::string_view(text) == print_by_hand(print_tree());
    };
    add_printer(
        "iokern", build<iokern_builder>,
        [](v2::io_value const& value) { return value.printable_string(); }, is_own_form);
    add_printer(
        "limit", [](tree_node const& tree) { return tree; }, print_by_hand,
        [](auto const& text) {
            return std::string_view(text) == build<iokern_builder>(print_tree()).printable_string();
        });
    add_printer(
        "nlohmann", build<nlohmann_builder>,
        [](nlohmann_value const& value) { return value.dump(2); }, is_json_of_tree);
    add_printer(
        "boost_json[less: compact]", build<boost_builder>,
        [](boost_value const& value) { return boost::json::serialize(value); }, is_json_of_tree);
    add_printer(
        "poco_json", build<poco_builder>,
        [](poco_value const& value) {
            std::ostringstream out;
            Poco::JSON::Stringifier::stringify(value, out, 2);
            return out.str();
        },
        is_json_of_tree);
    add_printer(
        "qt_json",
        [](tree_node const& tree) { return QJsonDocument(build<qt_builder>(tree).toArray()); },
        [](QJsonDocument const& value) { return value.toJson(QJsonDocument::Indented); },
        [](QByteArray const& text) { return is_json_of_tree(text.toStdString()); });
    add_glib();
}

} // namespace bench
