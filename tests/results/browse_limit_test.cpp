#include <tavi/ioapi/v2/browse_result.hpp>

#include "sample_nodes.hpp"
#include "support/allocations.hpp"
#include "support/object_bytes.hpp"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>

namespace {

using namespace tavi::ioapi::v2;
using browsing::node;
using results_test::numbered_nodes;
using results_test::numbers_in;
using test_support::allocation_counter;
using test_support::allocation_failure;

constexpr unsigned int most_nodes = 14913080;
static_assert(test_support::has_wide_words || 2147483647U / sizeof(node) == most_nodes);

// Where words are wider, the limit lies beyond every count that can be stated.
class BrowseLimit : public ::testing::Test {
protected:
    void SetUp() override {
        if constexpr (test_support::has_wide_words)
            GTEST_SKIP() << "the limit lies beyond every count of 32 bits here";
    }

    template <class Call>
    static void expect_refused(Call call, std::string const& text) {
        allocation_counter const counter;
        try {
            call();
            ADD_FAILURE() << "nothing was thrown";
        } catch (std::length_error const& refused) {
            EXPECT_EQ(refused.what(), text);
        } catch (std::bad_alloc const&) {
            ADD_FAILURE() << "memory was asked for";
        }
        EXPECT_LE(counter.allocations(), 4U) << "no more than the exception and the private part";
    }

    // At the limit memory is asked for; the test sees to it that there is none.
    template <class Call>
    static void expect_asked(Call call, std::size_t which) {
        bool asked = false;
        bool too_many = false;
        { // A report within would itself run out of memory.
            allocation_failure const failure(which);
            try {
                call();
            } catch (std::bad_alloc const&) {
                asked = failure.hit();
            } catch (std::length_error const&) {
                too_many = true;
            }
        }
        EXPECT_TRUE(asked);
        EXPECT_FALSE(too_many) << "refused at the limit";
    }

    // A view that claims more than there is: whoever reads it runs out of the one node.
    static utility::data_view<node const> claimed(unsigned int count) {
        static node const one;
        return {&one, count};
    }

    browse_result result_ = numbered_nodes(2);
};

constexpr unsigned int counts_beyond[] = {most_nodes + 1, 2 * most_nodes, 0x80000000U, 0xFFFFFFFFU};

TEST_F(BrowseLimit, IsStatedByReserve) {
    for (unsigned int const count : counts_beyond) {
        expect_refused([&] { result_.reserve(count); }, "vector::reserve");
    }
    expect_asked([&] { result_.reserve(most_nodes); }, 1);
    EXPECT_EQ(numbers_in(result_), (std::vector<unsigned long long>{0, 1}));
}

TEST_F(BrowseLimit, IsStatedByResize) {
    for (unsigned int const count : counts_beyond) {
        expect_refused([&] { result_.resize(count); }, "vector::_M_default_append");
    }
    expect_asked([&] { result_.resize(most_nodes); }, 1);
    EXPECT_EQ(numbers_in(result_), (std::vector<unsigned long long>{0, 1}));
}

TEST_F(BrowseLimit, IsStatedByTheConstructorFromACount) {
    for (unsigned int const count : counts_beyond) {
        expect_refused([&] { browse_result const sized(count); },
                       "cannot create std::vector larger than max_size()");
    }
}

TEST_F(BrowseLimit, IsStatedByTheConstructorFromAView) {
    for (unsigned int const count : counts_beyond) {
        expect_refused([&] { browse_result const viewed(claimed(count)); },
                       "cannot create std::vector larger than max_size()");
    }
}

TEST_F(BrowseLimit, LeavesTheLargestCountToTheMemory) {
    // Whichever of the two comes first, the private part or the nodes, one of them is asked for.
    expect_asked([] { browse_result const sized(most_nodes); }, 1);
    expect_asked([] { browse_result const viewed(claimed(most_nodes)); }, 1);
}

} // namespace
