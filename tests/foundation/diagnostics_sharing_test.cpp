#include <tavi/ioapi/v2/io_error.hpp>
#include <tavi/ioapi/v2/io_error_diagnostics_generic.hpp>
#include <tavi/ioapi/v2/io_exception.hpp>

#include "foreign_list.hpp"
#include "listed_pairs.hpp"
#include "support/allocations.hpp"
#include "support/diagnostics.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using namespace tavi::ioapi::v2;
using foundation_test::foreign_list;
using foundation_test::impl_behind;
using foundation_test::list_of;
using foundation_test::number_pairs;
using foundation_test::pairs_in;
using foundation_test::references_of;
using test_support::live_blocks;
using test_support::watched_diagnostics;

// A compiler must not see that both sides are one object.
template <class Handle>
Handle& no_other_than(Handle& handle) {
    return handle;
}

TEST(Error, SaysWhetherAListIsAttachedBeItEmpty) {
    io_error error(io_errc::not_found);
    EXPECT_FALSE(error.has_diagnostics());
    error.diagnostics(io_error_diagnostics_generic());
    EXPECT_TRUE(error.has_diagnostics());
    error.reset();
    EXPECT_FALSE(error.has_diagnostics());
}

TEST(DiagnosticsHandle, AddsOneReferenceAndDropsIt) {
    watched_diagnostics diagnostics;
    {
        io_error_diagnostics const handle(diagnostics.get());
        EXPECT_EQ(diagnostics.take_calls(), (std::vector<std::string>{"add_ref"}));
        EXPECT_EQ(handle.list(), diagnostics.get());
    }
    EXPECT_EQ(diagnostics.take_calls(), (std::vector<std::string>{"release"}));
}

TEST(DiagnosticsHandle, SharesTheListWithItsCopy) {
    watched_diagnostics diagnostics;
    io_error_diagnostics handle(diagnostics.get());
    diagnostics.take_calls();
    {
        io_error_diagnostics const copy(handle);
        EXPECT_EQ(diagnostics.take_calls(), (std::vector<std::string>{"add_ref"}));
        io_error_diagnostics const moved(std::move(handle)); // a copy as well
        EXPECT_EQ(handle.list(), diagnostics.get());
        EXPECT_EQ(impl_behind(moved), diagnostics.get());
        EXPECT_EQ(diagnostics.others(), 3U);
    }
    EXPECT_EQ(diagnostics.others(), 1U);
}

TEST(DiagnosticsHandle, DropsItsListForThatOfTheSource) {
    watched_diagnostics first;
    watched_diagnostics second;
    io_error_diagnostics target(first.get());
    io_error_diagnostics const source(second.get());
    target = source;
    EXPECT_EQ(first.others(), 0U);
    EXPECT_EQ(second.others(), 2U);
    target = io_error_diagnostics();
    EXPECT_EQ(impl_behind(target), nullptr);
    EXPECT_EQ(second.others(), 1U);
    target = source;
    EXPECT_EQ(impl_behind(target), second.get());
    target = no_other_than(target);
    EXPECT_EQ(impl_behind(target), second.get());
    EXPECT_EQ(second.others(), 2U);
}

TEST(DiagnosticsHandle, AsksTheListOfAnotherModuleAsItIs) {
    foreign_list list({{"b", io_value(2)}, {"a", io_value(1)}});
    io_error_diagnostics const handle(&list);
    EXPECT_EQ(handle.size(), 2U);
    EXPECT_TRUE(handle.has("a"));
    EXPECT_FALSE(handle.has("c"));
    EXPECT_EQ(*handle.get("b").get_if<int>(), 2);
    EXPECT_TRUE(handle.get("c").empty());
    EXPECT_EQ(list.take_calls(),
              (std::vector<std::string>{"size", "has a", "has c", "get b", "get c"}));
    EXPECT_TRUE(handle.contains("a"));
    EXPECT_FALSE(handle.contains("c"));
    EXPECT_EQ(list.walks, 0);
}

TEST(DiagnosticsList, StartsWithOneReference) {
    io_error_diagnostics_generic const list;
    EXPECT_EQ(impl_behind(list)->add_ref(), 2U);
    EXPECT_EQ(impl_behind(list)->release(), 1U);
}

TEST(DiagnosticsList, IsDestroyedWithItsOnlyHandle) {
    auto const before = live_blocks();
    {
        auto list = list_of({{"a key that is longer than small buffers", 1}, {"b", 2}});
        list.set("c", "a text");
        EXPECT_GT(live_blocks(), before);
    }
    EXPECT_EQ(live_blocks(), before);
}

TEST(DiagnosticsList, ShowsItsChangesToAllWhoHoldIt) {
    auto list = list_of({{"b", 1}});
    io_error_diagnostics_generic copy(list);
    io_error_diagnostics const view(list);
    io_error error(io_errc::no_result);
    error.diagnostics(list);
    io_error const other_error(error);
    io_exception const exception(error);
    copy.set("a", 2);
    list.remove("b");
    number_pairs const expected{{"a", 2}};
    EXPECT_EQ(pairs_in(list), expected);
    EXPECT_EQ(pairs_in(copy), expected);
    EXPECT_EQ(pairs_in(view), expected);
    EXPECT_EQ(pairs_in(error.diagnostics()), expected);
    EXPECT_EQ(pairs_in(other_error.diagnostics()), expected);
    EXPECT_EQ(pairs_in(exception.error().diagnostics()), expected);
    EXPECT_GE(references_of(list), 6U);
}

TEST(DiagnosticsList, LivesAsLongAsAnErrorHoldsIt) {
    auto const before = live_blocks();
    {
        io_error error(io_errc::no_result);
        {
            auto const list = list_of({{"a", 1}});
            error.diagnostics(list);
            EXPECT_EQ(references_of(list), 2U);
        }
        EXPECT_EQ(references_of(error.diagnostics()), 2U) << "the error's and this handle's";
        EXPECT_EQ(pairs_in(error.diagnostics()), (number_pairs{{"a", 1}}));
        error.reset();
        EXPECT_EQ(live_blocks(), before);
    }
}

TEST(DiagnosticsList, LivesAsLongAsAnExceptionHoldsIt) {
    auto const before = live_blocks();
    try {
        io_error error(io_errc::not_found);
        error.diagnostics(list_of({{"a", 1}}));
        throw io_exception(std::move(error));
    } catch (io_exception const& caught) {
        EXPECT_EQ(pairs_in(caught.error().diagnostics()), (number_pairs{{"a", 1}}));
    }
    EXPECT_EQ(live_blocks(), before);
}

TEST(DiagnosticsList, IsDroppedWhereItsHandleIsAssignedAnother) {
    auto const before = live_blocks();
    {
        auto const source = list_of({{"a", 1}});
        auto const with_one = live_blocks();
        auto target = list_of({{"b", 2}, {"c", 3}});
        EXPECT_GT(live_blocks(), with_one);
        target = source;
        EXPECT_EQ(live_blocks(), with_one);
        EXPECT_EQ(impl_behind(target), impl_behind(source));
        EXPECT_EQ(references_of(source), 2U);
        target.set("d", 4);
        EXPECT_EQ(pairs_in(source), (number_pairs{{"a", 1}, {"d", 4}}));
    }
    EXPECT_EQ(live_blocks(), before);
}

TEST(DiagnosticsList, KeepsItsContentWhenAssignedToItself) {
    auto list = list_of({{"a", 1}});
    list = no_other_than(list);
    list = std::move(no_other_than(list));
    EXPECT_EQ(pairs_in(list), (number_pairs{{"a", 1}}));
    EXPECT_EQ(references_of(list), 1U);
}

TEST(DiagnosticsList, StaysWithItsHandleWhenThatIsMoved) {
    auto list = list_of({{"a", 1}});
    io_error_diagnostics_generic const moved(std::move(list));
    EXPECT_EQ(impl_behind(list), impl_behind(moved));
    list.set("b", 2);
    EXPECT_EQ(pairs_in(moved), (number_pairs{{"a", 1}, {"b", 2}}));
    io_error_diagnostics_generic assigned;
    assigned = std::move(list);
    EXPECT_EQ(impl_behind(list), impl_behind(moved));
    EXPECT_EQ(references_of(list), 3U);
}

TEST(DiagnosticsList, CannotBeAssignedAListThatMayBeNull) {
    using list = io_error_diagnostics_generic;
    static_assert(std::is_base_of_v<io_error_diagnostics, list>);
    static_assert(std::is_convertible_v<list&, io_error_diagnostics&>);
    static_assert(!std::is_assignable_v<list&, io_error_diagnostics const&>);
    static_assert(!std::is_constructible_v<list, io_error_diagnostics const&>);
    static_assert(sizeof(list) == sizeof(void*));
}

TEST(DiagnosticsList, IsAllocatedOnce) {
    test_support::allocation_counter const counter;
    std::optional<io_error_diagnostics_generic> list(std::in_place);
    EXPECT_EQ(counter.allocations(), 1U);
    list.reset();
    EXPECT_EQ(counter.releases(), 1U);
}

} // namespace
