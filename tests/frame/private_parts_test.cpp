#include <tavi/ioapi/v2/ioapi.hpp>

#include "config/category_impl.hpp"
#include "config/config_template_impl.hpp"
#include "config/option_impl.hpp"
#include "config/store_impl.hpp"
#include "config/verification_result_impl.hpp"
#include "foundation/io_error_diagnostics_generic_impl.hpp"
#include "results/browse_result_impl.hpp"
#include "results/subscription_result_impl.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// \file
/// The private parts of the handles are exported with the rest, so that they are called here as
/// another module may call them, with standard types.

namespace {

using namespace tavi::ioapi::v2;
using basic_types = io_data_type::basic_types;

config::option option_of(std::string_view key) {
    return {key, "shown", "described", basic_types::i32};
}

config::category category_of(std::string_view name, std::string_view key) {
    config::option const options[] = {option_of(key)};
    return {name, "described", true, false, options};
}

TEST(PrivatePartOf, ABrowseResultHasItsNodesAtTheirIndexes) {
    std::vector<browsing::node> nodes(2);
    nodes[1].description = "second";
    browse_result::impl list(std::move(nodes));
    browse_result::impl const& read = list;
    EXPECT_EQ(list.size(), 2U);
    EXPECT_EQ(list[1].description, "second");
    EXPECT_EQ(&read[1], list.data() + 1);
    EXPECT_EQ(read.data(), list.data());
    list.reserve(9);
    list.push({});
    list.resize(8);
    EXPECT_EQ(list.size(), 8U);
    list.clear();
    EXPECT_EQ(list.size(), 0U);
}

TEST(PrivatePartOf, ASubscriptionResultKnowsWhatIsThere) {
    subscription_result::impl map;
    plc_identifier const level("level");
    map.set(level, io_data_type::scalar(basic_types::dbl), 7, {});
    EXPECT_TRUE(map.has(level));
    EXPECT_EQ(map.get(level).aux_value, 7U);
    EXPECT_EQ(map.begin()->first, level);
    map.set(level, io_errc::not_supported);
    EXPECT_EQ(map.get(level).error.code(), 6);
    EXPECT_EQ(map.remove(level), 1U);
    EXPECT_EQ(map.begin(), map.end());
    EXPECT_EQ(&map.get(level), &subscription_result::impl::S_resultNotFound);
    EXPECT_EQ(&subscription_result::not_found(), &subscription_result::impl::S_resultNotFound);
}

TEST(PrivatePartOf, ASubscriptionIteratorIsAPlace) {
    subscription_result::impl map;
    map.set(plc_identifier(1), io_errc::not_found);
    subscription_result::const_iterator::impl place(map.begin());
    EXPECT_EQ(place.get(), &map.begin()->second);
    auto* const clone = place.clone();
    EXPECT_TRUE(clone->equal(place));
    place.increment();
    EXPECT_FALSE(clone->equal(place));
    EXPECT_TRUE(place.equal(subscription_result::const_iterator::impl(map.end())));
    delete clone;
}

TEST(PrivatePartOf, AnOptionTakesStandardTypes) {
    config::option::impl required("key", "shown", "described", basic_types::flt, {});
    EXPECT_EQ(required.key(), "key");
    EXPECT_EQ(required.display_name(), "shown");
    EXPECT_EQ(required.description(), "described");
    EXPECT_EQ(required.value_type(), basic_types::flt);
    EXPECT_FALSE(required.optional());
    EXPECT_FALSE(required.has_default_value());
    EXPECT_TRUE(required.default_value().empty());
    required.options(std::vector<config::option::value_option>(3));
    EXPECT_EQ(required.options().size(), 3U);

    config::option::impl const optional("key", "", "", io_value(5), {});
    EXPECT_EQ(optional.value_type(), basic_types::i32);
    EXPECT_TRUE(optional.optional());
    EXPECT_TRUE(optional.has_default_value());
    EXPECT_TRUE(optional.options().empty());
}

TEST(PrivatePartOf, ACategoryFindsPlaces) {
    config::category::impl category("name", "described", true, false, {});
    EXPECT_EQ(category.name(), "name");
    EXPECT_EQ(category.description(), "described");
    EXPECT_TRUE(category.wants_connection());
    EXPECT_FALSE(category.collapsed());
    EXPECT_TRUE(category.add_option(option_of("a")));
    EXPECT_TRUE(category.add_option(option_of("b")));
    EXPECT_FALSE(category.add_option(option_of("a")));
    config::category::impl const& read = category;
    EXPECT_EQ(category.get_option_iterator("b")->key(), "b");
    EXPECT_EQ(&*read.get_option_iterator("b"), read.get_option("b"));
    EXPECT_EQ(category.get_option_iterator("c") - category.get_option_iterator("a"), 2);
    EXPECT_EQ(read.get_option_iterator("c") - read.get_option_iterator("a"), 2);
    EXPECT_EQ(category.get_option("b"), read.get_option("b"));
    EXPECT_EQ(category.options().data(), read.options().data());
    EXPECT_TRUE(category.has_option("b"));
    EXPECT_TRUE(category.remove_option("b"));
    EXPECT_FALSE(category.has_option("b"));
}

TEST(PrivatePartOf, ATemplateTellsOptionsFromCategories) {
    config::config_template::impl form(
        std::vector<config::category>{category_of("connection", "host")});
    EXPECT_TRUE(form.add_category(category_of("timing", "interval")));
    EXPECT_FALSE(form.add_category(category_of("timing", "other")));
    config::config_template::impl const& read = form;
    EXPECT_TRUE(read.has_option("interval"));
    EXPECT_FALSE(read.has_option("timing"));
    EXPECT_TRUE(read.has_category("timing"));
    EXPECT_FALSE(read.has_category("interval"));
    EXPECT_EQ(form.get_option("interval"), read.get_option("interval"));
    EXPECT_EQ(form.get_category("timing"), read.get_category("timing"));
    EXPECT_EQ(&*form.get_category_iterator("timing"), form.get_category("timing"));
    EXPECT_EQ(read.get_category_iterator("nothing") - read.get_category_iterator("timing"), 1);
    EXPECT_EQ(form.categories().size(), read.categories().size());
    EXPECT_TRUE(form.remove_category("connection"));
    EXPECT_FALSE(form.has_option("host"));
}

TEST(PrivatePartOf, AStorePointsToItsValues) {
    config::store::impl values;
    values.set("b", 1);
    values.set("B", "text");
    EXPECT_EQ(values.keys(), (std::vector<std::string_view>{"B", "b"}));
    ASSERT_NE(values.get_ptr("b"), nullptr);
    EXPECT_EQ(*values.get_ptr("b")->get_if<int>(), 1);
    EXPECT_EQ(values.get_ptr("c"), nullptr);
    EXPECT_TRUE(values.has("b"));
    EXPECT_TRUE(values.get("c").empty());
    EXPECT_EQ(*values.get("c", 9).get_if<int>(), 9);
    EXPECT_TRUE(values.remove("b"));
    EXPECT_FALSE(values.remove("b"));
}

TEST(PrivatePartOf, AVerificationResultIsARange) {
    config::verification_result::impl issues;
    issues.add_issue(
        {config::verification_result::severity_type::warning, "slow", {utility::string("a")}});
    config::verification_result::impl const& read = issues;
    EXPECT_EQ(read.size(), 1U);
    EXPECT_EQ(read.data(), issues.data());
    EXPECT_EQ(read.issues_for_option("a").size(), 1U);
    EXPECT_TRUE(read.issues_for_option("b").empty());
    EXPECT_EQ(read.severity_for_option("a"), config::verification_result::severity_type::warning);
}

TEST(PrivatePartOf, DiagnosticsAnswersForAbsentKeys) {
    io_error_diagnostics_generic const held;
    auto* const list = static_cast<io_error_diagnostics_generic::impl*>(held.list());
    io_error_diagnostics_generic::impl const& read = *list;
    list->set("b", 1);
    list->set("a", 2);
    EXPECT_EQ(list->size(), 2U);
    EXPECT_FALSE(list->has("a"));
    EXPECT_TRUE(list->has("c"));
    EXPECT_EQ(list->find("b") - list->find("a"), 1);
    EXPECT_EQ(read.find("c") - read.find("b"), 1);
    EXPECT_EQ(*list->get("a").get_if<int>(), 2);
    list->remove("a");
    EXPECT_EQ(held.size(), 1U);
}

} // namespace
