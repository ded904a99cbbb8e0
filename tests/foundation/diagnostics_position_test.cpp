#include <tavi/ioapi/v2/io_error_diagnostics_generic.hpp>

#include "foreign_list.hpp"
#include "listed_pairs.hpp"
#include "support/allocations.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

namespace {

using namespace tavi::ioapi::v2;
using foundation_test::foreign_list;
using foundation_test::impl_behind;
using foundation_test::list_of;
using foundation_test::references_of;
using test_support::live_blocks;
using walk_impl = interfaces::io_error_diagnostics_impl::iterator_impl;

struct end_by_release {
    void operator()(walk_impl* iterator) const { iterator->release(); }
};
using owned_walk = std::unique_ptr<walk_impl, end_by_release>;

owned_walk walk_of(io_error_diagnostics const& list) {
    return owned_walk(impl_behind(list)->make_iterator());
}

TEST(DiagnosticsPosition, IsFalseOnReachingTheEndAndStaysThere) {
    auto const list = list_of({{"a", 1}, {"b", 2}, {"c", 3}});
    auto const at = walk_of(list);
    EXPECT_EQ(at->get().key, "a");
    EXPECT_TRUE(at->advance());
    EXPECT_EQ(at->get().key, "b");
    EXPECT_TRUE(at->advance());
    EXPECT_EQ(at->get().key, "c");
    EXPECT_FALSE(at->advance());
    auto const end = owned_walk(at->clone());
    for (int again = 0; again < 3; ++again) {
        EXPECT_FALSE(at->advance());
        EXPECT_TRUE(at->equal_to(*end)) << "it moved";
    }
}

TEST(DiagnosticsPosition, OfAnEmptyListIsAtTheEndFromTheStart) {
    io_error_diagnostics_generic const list;
    auto const at = walk_of(list);
    auto const other = walk_of(list);
    for (int again = 0; again < 3; ++again) {
        EXPECT_FALSE(at->advance());
        EXPECT_TRUE(at->equal_to(*other));
    }
}

TEST(DiagnosticsPosition, EqualsThoseAtTheSameEntry) {
    auto const list = list_of({{"a", 1}, {"b", 2}});
    auto const first = walk_of(list);
    auto const second = walk_of(list);
    EXPECT_TRUE(first->equal_to(*first));
    EXPECT_TRUE(first->equal_to(*second));
    second->advance();
    EXPECT_FALSE(first->equal_to(*second));
    EXPECT_FALSE(second->equal_to(*first));
    first->advance();
    EXPECT_TRUE(first->equal_to(*second));
    first->advance();
    EXPECT_FALSE(first->equal_to(*second));
    second->advance();
    EXPECT_TRUE(first->equal_to(*second)) << "both at the end";
}

TEST(DiagnosticsPosition, EqualsNoneOfAnotherList) {
    auto const first = list_of({{"a", 1}});
    auto const second = list_of({{"a", 1}});
    EXPECT_FALSE(walk_of(first)->equal_to(*walk_of(second)));
}

TEST(DiagnosticsPosition, EqualsNoneOfAnotherClass) {
    auto const list = list_of({{"a", 1}});
    foreign_list foreign({{"a", io_value(1)}});
    auto const at = walk_of(list);
    owned_walk const stranger(foreign.make_iterator());
    EXPECT_FALSE(at->equal_to(*stranger));
    at->advance();
    stranger->advance();
    EXPECT_FALSE(at->equal_to(*stranger)) << "both at the end";
    io_error_diagnostics_generic const nothing;
    EXPECT_FALSE(walk_of(nothing)->equal_to(*stranger));
}

TEST(DiagnosticsPosition, GivesTheKeyAndTheValueOfTheListItself) {
    io_error_diagnostics_generic list;
    list.set(std::string("a\0b", 3), "text");
    auto const first = walk_of(list);
    auto const second = walk_of(list);
    EXPECT_EQ(first->get().key.size(), 3U);
    EXPECT_EQ(first->get().key, std::string_view("a\0b", 3));
    EXPECT_EQ(first->get().key.data(), second->get().key.data());
    EXPECT_EQ(first->get().value, second->get().value);
    EXPECT_EQ(*first->get().value->get_if<utility::string>(), "text");
}

TEST(DiagnosticsPosition, IsClonedWhereItStands) {
    auto const list = list_of({{"a", 1}, {"b", 2}, {"c", 3}});
    auto const at = walk_of(list);
    at->advance();
    auto const clone = owned_walk(at->clone());
    EXPECT_NE(clone.get(), at.get());
    EXPECT_TRUE(clone->equal_to(*at));
    EXPECT_TRUE(clone->advance());
    EXPECT_EQ(clone->get().key, "c");
    EXPECT_EQ(at->get().key, "b");
    EXPECT_FALSE(clone->advance()) << "a clone knows the end too";
}

TEST(DiagnosticsPosition, IsFreedByRelease) {
    auto const list = list_of({{"a", 1}});
    auto const before = live_blocks();
    walk_impl* const at = impl_behind(list)->make_iterator();
    walk_impl* const clone = at->clone();
    EXPECT_EQ(live_blocks(), before + 2);
    at->release();
    EXPECT_EQ(live_blocks(), before + 1);
    clone->release();
    EXPECT_EQ(live_blocks(), before);
}

TEST(DiagnosticsPosition, HoldsNoReferenceToTheList) {
    auto const list = list_of({{"a", 1}});
    auto const at = walk_of(list);
    EXPECT_EQ(references_of(list), 1U);
}

} // namespace
