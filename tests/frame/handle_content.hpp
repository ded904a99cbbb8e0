#pragma once

#include <tavi/ioapi/v2/browse_result.hpp>
#include <tavi/ioapi/v2/config/category.hpp>
#include <tavi/ioapi/v2/config/config_template.hpp>
#include <tavi/ioapi/v2/config/option.hpp>
#include <tavi/ioapi/v2/config/store.hpp>
#include <tavi/ioapi/v2/config/verification_result.hpp>
#include <tavi/ioapi/v2/io_object.hpp>
#include <tavi/ioapi/v2/io_structure_type.hpp>

#include <gtest/gtest.h>

#include <string>
#include <utility>

/// \file
/// The handles that copy deep keep the same rules. How the tests make one, and how they read it.

namespace frame_test {

namespace v2 = tavi::ioapi::v2;

[[nodiscard]] inline std::string long_text(int n) {
    return "a text that is long enough for a block of its own " + std::to_string(n);
}

/// For each handle: `bare()` has no content that asks for an aligned block; `make(n)` holds the
/// number `n` and at least two blocks beside its private part; `read` gives that number back, and
/// `change` puts another one in its place.
template <class Handle>
struct content;

template <>
struct content<v2::io_structure_type> {
    static v2::io_structure_type bare() { return {}; }
    static v2::io_structure_type make(int n) {
        return v2::io_structure_type(long_text(n), {{"value", number(n)}});
    }
    static int read(v2::io_structure_type const& type) {
        return static_cast<int>(type.get_member("value").structure_id);
    }
    static void change(v2::io_structure_type& type, int n) { type.set_member("value", number(n)); }

private:
    static v2::io_data_type number(int n) {
        return v2::io_data_type::object(static_cast<unsigned long long>(n));
    }
};

template <>
struct content<v2::io_object> {
    static v2::io_object bare() { return {}; }
    static v2::io_object make(int n) {
        return v2::io_object(static_cast<unsigned long long>(n),
                             content<v2::io_structure_type>::make(n));
    }
    static int read(v2::io_object const& object) {
        return static_cast<int>(object.type().structure_id);
    }
    static void change(v2::io_object& object, int n) { object = make(n); }
};

template <>
struct content<v2::browse_result> {
    static v2::browse_result bare() { return {}; }
    static v2::browse_result make(int n) {
        v2::browse_result result;
        result.push({v2::browsing::node_class::variable, v2::plc_identifier(long_text(n)),
                     v2::plc_identifier(n), long_text(n), v2::io_data_type()});
        return result;
    }
    static int read(v2::browse_result const& result) {
        return static_cast<int>(result.begin()->browse_name.primary().number());
    }
    static void change(v2::browse_result& result, int n) {
        result.begin()->browse_name = v2::plc_identifier(n);
    }
};

template <>
struct content<v2::config::option> {
    static v2::config::option bare() {
        return v2::config::option("", "", "", v2::io_data_type::basic_types::i32);
    }
    static v2::config::option make(int n) {
        v2::config::option result(long_text(n), long_text(n), "", v2::io_value(long_text(n)));
        change(result, n);
        return result;
    }
    static int read(v2::config::option const& option) {
        return option.options()[0].value.as<int>();
    }
    static void change(v2::config::option& option, int n) {
        v2::config::option::value_option const list[] = {{long_text(n), "", n}};
        option.options(list);
    }
};

template <>
struct content<v2::config::category> {
    static v2::config::category bare() { return v2::config::category("", "", false, false); }
    static v2::config::category make(int n) {
        v2::config::option const list[] = {content<v2::config::option>::make(n)};
        return v2::config::category(long_text(n), "", false, false, list);
    }
    static int read(v2::config::category const& category) {
        return content<v2::config::option>::read(category.options()[0]);
    }
    static void change(v2::config::category& category, int n) {
        content<v2::config::option>::change(category.options()[0], n);
    }
};

template <>
struct content<v2::config::config_template> {
    static v2::config::config_template bare() { return {}; }
    static v2::config::config_template make(int n) {
        v2::config::config_template result;
        result.add_category(content<v2::config::category>::make(n));
        return result;
    }
    static int read(v2::config::config_template const& form) {
        return content<v2::config::category>::read(form.categories()[0]);
    }
    static void change(v2::config::config_template& form, int n) {
        content<v2::config::category>::change(form.categories()[0], n);
    }
};

template <>
struct content<v2::config::store> {
    static v2::config::store bare() { return {}; }
    static v2::config::store make(int n) {
        v2::config::store result;
        result.set(long_text(n), long_text(n));
        result.set("number", n);
        return result;
    }
    static int read(v2::config::store const& store) { return store.get("number").as<int>(); }
    static void change(v2::config::store& store, int n) { store.set("number", n); }
};

template <>
struct content<v2::config::verification_result> {
    using result_type = v2::config::verification_result;
    static result_type bare() { return {}; }
    static result_type make(int n) {
        result_type result;
        result.add_issue({result_type::severity_type{n}, long_text(n), {"key", long_text(n)}});
        return result;
    }
    static int read(result_type const& result) {
        return static_cast<int>(result.begin()->severity);
    }
    static void change(result_type& result, int n) {
        result.begin()->severity = result_type::severity_type{n};
    }
};

using handles = ::testing::Types<v2::io_structure_type,
                                 v2::io_object,
                                 v2::browse_result,
                                 v2::config::option,
                                 v2::config::category,
                                 v2::config::config_template,
                                 v2::config::store,
                                 v2::config::verification_result>;

/// What the suites over `handles` have in common.
template <class Handle>
class handle_test : public ::testing::Test {
protected:
    static Handle bare() { return content<Handle>::bare(); }
    static Handle make(int n) { return content<Handle>::make(n); }
    static int read(Handle const& handle) { return content<Handle>::read(handle); }
    static void change(Handle& handle, int n) { content<Handle>::change(handle, n); }

    /// A handle that has been moved from.
    static Handle make_null() {
        Handle handle = bare();
        Handle const taken(std::move(handle));
        return Handle(std::move(handle));
    }
};

} // namespace frame_test
