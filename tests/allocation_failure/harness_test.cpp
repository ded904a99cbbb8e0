#include "tables.hpp"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

// The tables say nothing unless what fails is what the library calls, and broken promises are seen.

namespace allocation_failure_test {
namespace {

using test_support::allocation_counter;
using test_support::allocation_failure;
using test_support::live_blocks;
using test_support::shortage;
using v2::utility::string;

TEST(OurOperators, ServeTheLibrary) {
    allocation_counter const counter;
    {
        v2::io_structure_type const by_plain_new;
        EXPECT_EQ(counter.allocations(), 1U);
    }
    EXPECT_EQ(counter.releases(), 1U);
    v2::detail::iokern_allocator_base::deallocate(
        v2::detail::iokern_allocator_base::allocate(64, 16), 64, 16);
    ::operator delete(v2::detail::iokern_allocator_base::allocate(64));
    EXPECT_EQ(counter.allocations(), 3U);
    EXPECT_EQ(counter.releases(), 3U);
}

TEST(OurOperators, FailInTheLibrary) {
    allocation_failure const failure(1);
    EXPECT_THROW(v2::io_structure_type(), std::bad_alloc);
    EXPECT_TRUE(failure.hit());
}

struct released_pair {
    char const* name;
    void* (*make)();
    void (*release)(void*);
};

void* make_plain() {
    return ::operator new(64);
}
void* make_array() {
    return ::operator new[](64);
}
void* make_quiet() {
    return ::operator new(64, std::nothrow);
}
void* make_quiet_array() {
    return ::operator new[](64, std::nothrow);
}
void* make_aligned() {
    return ::operator new(64, std::align_val_t(64));
}
void* make_aligned_array() {
    return ::operator new[](64, std::align_val_t(64));
}
void* make_quiet_aligned() {
    return ::operator new(64, std::align_val_t(64), std::nothrow);
}
void* make_quiet_aligned_array() {
    return ::operator new[](64, std::align_val_t(64), std::nothrow);
}
void release_plain(void* block) {
    ::operator delete(block);
}
void release_array(void* block) {
    ::operator delete[](block);
}
void release_aligned(void* block) {
    ::operator delete(block, std::align_val_t(64));
}
void release_aligned_array(void* block) {
    ::operator delete[](block, std::align_val_t(64));
}

released_pair const every_form[] = {
    {"Plain", make_plain, release_plain},
    {"Array", make_array, release_array},
    {"Quiet", make_quiet, release_plain},
    {"QuietArray", make_quiet_array, release_array},
    {"Aligned", make_aligned, release_aligned},
    {"AlignedArray", make_aligned_array, release_aligned_array},
    {"QuietAligned", make_quiet_aligned, release_aligned},
    {"QuietAlignedArray", make_quiet_aligned_array, release_aligned_array},
};

class OurOperator : public ::testing::TestWithParam<released_pair> {};

TEST_P(OurOperator, CountsItsBlocks) {
    long long const before = live_blocks();
    void* const block = GetParam().make();
    EXPECT_EQ(live_blocks(), before + 1);
    GetParam().release(block);
    EXPECT_EQ(live_blocks(), before);
}

TEST_P(OurOperator, FailsWhenItIsToldTo) {
    allocation_failure const failure(1);
    void* block = nullptr;
    try {
        block = GetParam().make();
    } catch (std::bad_alloc const&) {
        EXPECT_TRUE(failure.hit());
    }
    EXPECT_EQ(block, nullptr);
    EXPECT_TRUE(failure.hit());
}

TEST_P(OurOperator, DoesNotTakeABlockTwice) {
    EXPECT_DEATH(
        {
            void* volatile block = GetParam().make(); // no compiler sees that it is the same
            GetParam().release(block);
            GetParam().release(block);
        },
        "block that is not alive|heap-use-after-free");
}

INSTANTIATE_TEST_SUITE_P(Forms, OurOperator, ::testing::ValuesIn(every_form), [](auto const& row) {
    return std::string(row.param.name);
});

TEST(AShortage, IsOverAfterOneAllocation) {
    allocation_failure const failure(2);
    ::operator delete(::operator new(1));
    EXPECT_EQ(::operator new(1, std::nothrow), nullptr);
    void* const block = ::operator new(1, std::nothrow);
    EXPECT_NE(block, nullptr);
    ::operator delete(block);
}

TEST(AShortage, LastsWhereItIsSaidTo) {
    allocation_failure const failure(2, shortage::lasting);
    ::operator delete(::operator new(1));
    EXPECT_EQ(::operator new(1, std::nothrow), nullptr);
    EXPECT_EQ(::operator new(1, std::nothrow), nullptr);
}

/// What is said of an operation on a text.
template <class Run>
std::string complaint_of(promise kept, Run run, std::string report = {}) {
    return judge(operation_of(
                     "Tried", kept, {}, [] { return string(long_text); }, run, std::move(report)),
                 shortage::once)
        .complaint;
}

TEST(AVerdict, HasNothingToSayOfAKeptPromise) {
    EXPECT_EQ(complaint_of(promise::unchanged, [](string& text) { text = other_text; }), "");
    EXPECT_EQ(complaint_of(promise::quiet, [](string& text) { text = string(); }), "");
}
TEST(AVerdict, CountsTheAllocationsThatFailed) {
    auto const tried = creation_of("Tried", {}, [] {
        string const first(long_text);
        return string(other_text);
    });
    EXPECT_EQ(judge(tried, shortage::once).failures, 2U);
    EXPECT_EQ(judge(tried, shortage::lasting).failures, 2U);
}
TEST(AVerdict, SeesAChange) {
    EXPECT_EQ(complaint_of(promise::unchanged,
                           [](string& text) {
                               text[0] = '!';
                               text = other_text;
                           }),
              "changes its object, allocation 1");
}
TEST(AVerdict, SeesADroppedBlock) {
    EXPECT_EQ(complaint_of(promise::unchanged,
                           [](string& text) {
                               text = string();
                               text = other_text;
                           }),
              "keeps or drops a block, allocation 1");
}
TEST(AVerdict, SeesALeak) {
    static std::vector<void*> lost;
    auto const complaint = complaint_of(promise::usable, [](string& text) {
        if (lost.empty()) lost.reserve(8);
        lost.push_back(::operator new(8));
        text = other_text;
    });
    EXPECT_TRUE(complaint.find("leaks") == 0) << complaint;
    for (void* const block : lost) ::operator delete(block);
    std::vector<void*>().swap(lost);
}
TEST(AVerdict, SeesAFailureThatIsKeptSecret) {
    EXPECT_EQ(complaint_of(promise::unchanged,
                           [](string& text) {
                               try {
                                   text = other_text;
                               } catch (std::bad_alloc const&) {
                                   text[0] = '!';
                               }
                           }),
              "does not raise std::bad_alloc, allocation 1");
}
TEST(AVerdict, SeesAnotherException) {
    EXPECT_EQ(complaint_of(promise::unchanged,
                           [](string& text) {
                               try {
                                   text = other_text;
                               } catch (std::bad_alloc const&) {
                                   throw 5;
                               }
                           }),
              "raises something else than std::bad_alloc, allocation 1");
}
TEST(AVerdict, SeesAnAllocationOfWhatAsksForNone) {
    EXPECT_EQ(complaint_of(promise::quiet, [](string& text) { text = other_text; }),
              "asks for memory, allocation 1");
}
TEST(AVerdict, SeesAWrongReport) {
    auto const quietly = [](string const& text) {
        try {
            return string(text).size();
        } catch (std::bad_alloc const&) {
            return 7U;
        }
    };
    EXPECT_EQ(complaint_of(promise::reported, quietly, "7"), "");
    EXPECT_EQ(complaint_of(promise::reported, quietly, "8"),
              "reports something else, allocation 1");
}
TEST(AVerdict, SeesAnObjectThatCannotBeGivenItOnceMore) {
    EXPECT_EQ(complaint_of(promise::usable,
                           [](string& text) {
                               bool const is_first = text[0] == 'a';
                               text[0] = '!';
                               string made(other_text);
                               if (is_first) text = std::move(made);
                           }),
              "leaves another object when it is repeated, allocation 1");
}

} // namespace
} // namespace allocation_failure_test
