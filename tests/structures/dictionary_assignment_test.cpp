#include <tavi/ioapi/v2/io_structure_dictionary.hpp>

#include "support/allocations.hpp"
#include "support/object_bytes.hpp"
#include "support/stated_leak.hpp"

#include <gtest/gtest.h>

#include <new>
#include <optional>
#include <type_traits>
#include <utility>

// Assignment makes two handles one dictionary and counts no references: one of the two must never
// be destroyed, and what it held before is left behind.

namespace {

using namespace tavi::ioapi::v2;
using test_support::impl_of;

class DictionaryAssignment : public ::testing::Test {
protected:
    DictionaryAssignment() {
        test_support::stated_leak const leak;
        target_ = ::new (static_cast<void*>(storage_)) io_structure_dictionary;
    }

    static unsigned long long add(io_structure_dictionary& dictionary, char const* name) {
        io_error error;
        return dictionary.add_structure(io_structure_type(utility::string(name)), error)
            .structure_id;
    }
    static bool has(io_structure_dictionary& dictionary, unsigned long long id) {
        io_error error;
        (void)dictionary.get_structure(id, error);
        return error.ok();
    }

    /// Never destroyed.
    io_structure_dictionary& target() { return *target_; }

    std::optional<io_structure_dictionary> source_{std::in_place};

private:
    alignas(io_structure_dictionary) unsigned char storage_[sizeof(io_structure_dictionary)];
    io_structure_dictionary* target_;
};

TEST_F(DictionaryAssignment, GivesItself) {
    static_assert(std::is_same_v<decltype(target() = *source_), io_structure_dictionary&>);
    auto& result = target() = *source_;
    EXPECT_EQ(&result, &target());
}

TEST_F(DictionaryAssignment, CopiesThePointer) {
    target() = *source_;
    EXPECT_EQ(impl_of(target()), impl_of(*source_));
    EXPECT_NE(impl_of(target()), nullptr);
}

TEST_F(DictionaryAssignment, CopiesThePointerOfAnRvalueToo) {
    void const* const impl = impl_of(*source_);
    target() = std::move(*source_);
    EXPECT_EQ(impl_of(target()), impl);
    EXPECT_EQ(impl_of(*source_), impl);
}

TEST_F(DictionaryAssignment, ReleasesAndAllocatesNothing) {
    test_support::allocation_counter const counter;
    target() = *source_;
    target() = std::move(*source_);
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(counter.releases(), 0U);
}

TEST_F(DictionaryAssignment, MakesBothOneDictionary) {
    target() = *source_;
    auto const first = add(target(), "pump");
    auto const second = add(*source_, "valve");
    EXPECT_TRUE(has(*source_, first));
    EXPECT_TRUE(has(target(), second));
    io_error error;
    target().remove_structure(second, error);
    EXPECT_FALSE(has(*source_, second));
}

TEST_F(DictionaryAssignment, LeavesTheOldEntriesBehind) {
    unsigned long long id = 0;
    {
        test_support::stated_leak const leak;
        id = add(target(), "lost");
    }
    target() = *source_;
    EXPECT_FALSE(has(target(), id));
}

TEST_F(DictionaryAssignment, FreesTheDictionaryForBothWhenTheFirstIsDestroyed) {
    add(*source_, "pump");
    target() = *source_;
    test_support::allocation_counter const counter;
    source_.reset();
    EXPECT_GE(counter.releases(), 3U) << "the entry, its content and the dictionary itself";
}

TEST_F(DictionaryAssignment, OfItselfChangesNothing) {
    auto const id = add(*source_, "pump");
    void const* const impl = impl_of(*source_);
    auto& same = *source_;
    *source_ = same;
    *source_ = std::move(same);
    EXPECT_EQ(impl_of(*source_), impl);
    EXPECT_TRUE(has(*source_, id));
}

} // namespace
