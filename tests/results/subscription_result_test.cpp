#include <tavi/ioapi/v2/subscription_result.hpp>

#include "counted_owner.hpp"
#include "subscribed_identifiers.hpp"
#include "support/diagnostics.hpp"
#include "support/object_bytes.hpp"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using namespace tavi::ioapi::v2;
using id = plc_identifier;
using results_test::counted_owner;
using results_test::identifiers_in;
using test_support::by_word;
using test_support::impl_of;
using test_support::offset_of;
using types = io_data_type::basic_types;
using subscribed = subscription_result::variable_result;

io_data_type const any_type{types::object, 7, 2, 3};

subscription_id by_number(unsigned long long value) {
    return subscription_id::from_number(value);
}

void expect_set(subscribed const& entry, id const& identifier, unsigned int aux_value) {
    EXPECT_EQ(entry.identifier, identifier);
    EXPECT_EQ(entry.data_type, any_type);
    EXPECT_EQ(entry.error, io_error());
    EXPECT_EQ(entry.error.diagnostics().list(), nullptr);
    EXPECT_TRUE(entry.ok());
    EXPECT_EQ(entry.aux_value, aux_value);
}

void expect_refused(subscribed const& entry, id const& identifier, io_errc code) {
    EXPECT_EQ(entry.identifier, identifier);
    EXPECT_EQ(entry.data_type, io_data_type());
    EXPECT_EQ(entry.error, io_error(code));
    EXPECT_EQ(entry.aux_value, 0U);
    EXPECT_EQ(entry.id.kind(), subscription_id_kind::none);
}

TEST(SubscriptionResult, StartsEmpty) {
    subscription_result const result;
    EXPECT_TRUE(result.empty());
    EXPECT_TRUE(result.begin() == result.end());
    EXPECT_FALSE(result.has(id("a")));
    EXPECT_FALSE(result.has(id()));
}

TEST(SubscriptionResult, KeepsWhatASubscriptionWasSetWith) {
    subscription_result result;
    id const identifier("a", 1);
    result.set(identifier, any_type, 0xFFFFFFFFU, by_number(42));
    EXPECT_TRUE(result.has(identifier));
    EXPECT_FALSE(result.empty());
    expect_set(result.get(identifier), identifier, 0xFFFFFFFFU);
    EXPECT_EQ(result.get(identifier).id.number(), 42U);
    EXPECT_NE(result.get(identifier).identifier.primary().text().data(),
              identifier.primary().text().data());
}

TEST(SubscriptionResult, KeepsTheErrorThatWasSet) {
    subscription_result result;
    result.set(id("a", 1), io_errc::not_found);
    EXPECT_TRUE(result.has(id("a", 1)));
    EXPECT_FALSE(result.get(id("a", 1)).ok());
    expect_refused(result.get(id("a", 1)), id("a", 1), io_errc::not_found);
}

TEST(SubscriptionResult, TakesTheDiagnosticsOfAnError) {
    test_support::watched_diagnostics diagnostics;
    subscription_result result;
    io_error error(io_errc::not_found);
    error.diagnostics(io_error_diagnostics(diagnostics.get()));
    diagnostics.take_calls();
    result.set(id("a"), std::move(error));
    EXPECT_EQ(diagnostics.take_calls(), std::vector<std::string>{});
    EXPECT_EQ(result.get(id("a")).error.diagnostics().list(), diagnostics.get());
    diagnostics.take_calls();
    result.set(id("a"), any_type, 1, by_number(1));
    EXPECT_EQ(diagnostics.take_calls(), (std::vector<std::string>{"release"}));
    EXPECT_EQ(diagnostics.others(), 0U);
}

TEST(SubscriptionResult, ReplacesASubscriptionByAnError) {
    subscription_result result;
    result.set(id("a"), any_type, 5, by_number(42));
    result.set(id("a"), io_errc::no_result);
    expect_refused(result.get(id("a")), id("a"), io_errc::no_result);
    EXPECT_EQ(identifiers_in(result).size(), 1U);
}

TEST(SubscriptionResult, ReplacesAnErrorByASubscription) {
    subscription_result result;
    result.set(id("a"), io_errc::no_result);
    result.set(id("a"), any_type, 5, by_number(42));
    expect_set(result.get(id("a")), id("a"), 5);
    EXPECT_EQ(result.get(id("a")).id.number(), 42U);
    EXPECT_EQ(identifiers_in(result).size(), 1U);
}

TEST(SubscriptionResult, ReplacesAnEntryInItsPlace) {
    subscription_result result;
    result.set(id("a"), any_type, 5, by_number(42));
    auto const* const entry = &result.get(id("a"));
    result.set(id("a"), any_type, 6, by_number(43));
    EXPECT_EQ(&result.get(id("a")), entry);
    EXPECT_EQ(entry->aux_value, 6U);
    EXPECT_EQ(entry->id.number(), 43U);
}

TEST(SubscriptionResult, GivesTheSameEntryByBothForms) {
    subscription_result result;
    result.set(id("a"), any_type, 5, by_number(42));
    EXPECT_EQ(&result[id("a")], &result.get(id("a")));
    EXPECT_EQ(&result[id("b")], &subscription_result::not_found());
}

TEST(SubscriptionResult, RemovesAnEntryOnce) {
    subscription_result result;
    result.set(id("a"), any_type, 5, by_number(42));
    result.set(id("b"), io_errc::no_result);
    EXPECT_EQ(result.remove(id("c")), 0U);
    EXPECT_EQ(result.remove(id("a")), 1U);
    EXPECT_FALSE(result.has(id("a")));
    EXPECT_TRUE(subscription_result::is_not_found(result.get(id("a"))));
    EXPECT_EQ(result.remove(id("a")), 0U);
    EXPECT_EQ(identifiers_in(result), (std::vector<id>{id("b")}));
    EXPECT_EQ(result.remove(id("b")), 1U);
    EXPECT_TRUE(result.empty());
}

TEST(SubscriptionNotFound, IsOneBlankRecordThatSaysSuccess) {
    subscription_result const first;
    subscription_result second;
    second.set(id("a"), io_errc::no_result);
    auto const& record = subscription_result::not_found();
    EXPECT_EQ(&first.get(id("b")), &record);
    EXPECT_EQ(&first.get(id("b")), &record) << "each time";
    EXPECT_EQ(&second.get(id("b")), &record);
    EXPECT_EQ(&second.get(id(7)), &record);
    EXPECT_TRUE(record.identifier.primary().is_none());
    EXPECT_TRUE(record.identifier.secondary().is_none());
    EXPECT_EQ(record.data_type, io_data_type());
    EXPECT_EQ(record.error.code(), 0);
    EXPECT_EQ(&record.error.category(), &generic_io_error_category());
    EXPECT_EQ(record.error.diagnostics().list(), nullptr);
    EXPECT_TRUE(record.ok());
    EXPECT_EQ(record.aux_value, 0U);
    EXPECT_EQ(record.id.kind(), subscription_id_kind::none);
}

TEST(SubscriptionNotFound, IsToldByItsAddress) {
    subscription_result result;
    result.set(id(), io_data_type(), 0, subscription_id());
    EXPECT_FALSE(subscription_result::is_not_found(result.get(id())));
    EXPECT_TRUE(subscription_result::is_not_found(result.get(id(7))));
    subscribed const blank{};
    EXPECT_FALSE(subscription_result::is_not_found(blank));
}

TEST(SubscriptionEntry, StandsAsIdentifierTypeErrorValueId) {
    subscribed const entry{};
    EXPECT_EQ(offset_of(entry, entry.identifier), 0U);
    EXPECT_EQ(offset_of(entry, entry.data_type), by_word(48, 64));
    EXPECT_EQ(offset_of(entry, entry.error), by_word(72, 88));
    EXPECT_EQ(offset_of(entry, entry.aux_value), by_word(84, 112));
    EXPECT_EQ(offset_of(entry, entry.id), by_word(88, 120));
}

TEST(SubscriptionResult, CanBeMovedButNotCopied) {
    static_assert(!std::is_copy_constructible_v<subscription_result>);
    static_assert(!std::is_copy_assignable_v<subscription_result>);
    static_assert(std::is_nothrow_move_constructible_v<subscription_result>);
    static_assert(std::is_nothrow_move_assignable_v<subscription_result>);
    static_assert(sizeof(subscription_result) == sizeof(void*));
}

TEST(SubscriptionResult, GivesItsEntriesUpWhenMoved) {
    counted_owner owner;
    {
        subscription_result source;
        source.set(id("a"), any_type, 5, owner.id());
        auto const* const entry = &source.get(id("a"));
        void const* const impl = impl_of(source);
        subscription_result target(std::move(source));
        EXPECT_EQ(impl_of(source), nullptr);
        EXPECT_EQ(impl_of(target), impl);
        EXPECT_EQ(&target.get(id("a")), entry);
        source = std::move(target);
        EXPECT_EQ(impl_of(target), nullptr);
        EXPECT_EQ(&source.get(id("a")), entry);
        EXPECT_EQ(owner.released, 0);
    }
    EXPECT_EQ(owner.released, 1);
}

} // namespace
