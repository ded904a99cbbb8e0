#include "sample_payloads.hpp"
#include "support/allocations.hpp"
#include "support/alternatives.hpp"
#include "support/typed_tests.hpp"
#include "value_image.hpp"

#include <gtest/gtest.h>

#include <utility>

namespace values_test {
namespace {

using value_maker = io_value (*)();

template <class Action>
void for_each_pair(Action action) {
    for (std::size_t from = 0; from < make_sample.size(); ++from) {
        for (std::size_t to = 0; to < make_sample.size(); ++to) {
            SCOPED_TRACE(::testing::Message() << "from " << from << " to " << to);
            action(make_sample[from], make_sample[to]);
        }
    }
}

TEST(ValueAssignment, CopiesEveryAlternativeOverEveryAlternative) {
    for_each_pair([](value_maker from, value_maker to) {
        io_value const source = from();
        io_value target = to();
        io_value& result = target = source;
        EXPECT_EQ(&result, &target);
        EXPECT_TRUE(same_content(target, source));
        EXPECT_FALSE(shares_blocks(target, source));
        EXPECT_TRUE(same_content(source, from()));
    });
}

TEST(ValueAssignment, MovesEveryAlternativeOverEveryAlternative) {
    for_each_pair([](value_maker from, value_maker to) {
        io_value source = from();
        io_value target = to();
        void const* const block = block_of(source);
        test_support::allocation_counter const counter;
        target = std::move(source);
        EXPECT_EQ(counter.allocations(), 0U);
        EXPECT_EQ(block_of(target), block);
        EXPECT_TRUE(same_content(target, from()));
        EXPECT_TRUE(is_exactly_empty(source));
    });
}

TEST(ValueAssignment, GivesBackTheOldPayload) {
    for_each_pair([](value_maker from, value_maker to) {
        long long const before = test_support::live_blocks();
        {
            io_value source = from();
            io_value target = to();
            target.assign(source);
            io_value other = to();
            other.assign(std::move(source));
        }
        EXPECT_EQ(test_support::live_blocks(), before);
    });
}

TEST(ValueAssignment, ReplacesEveryFieldOfTheType) {
    io_data_type const stated{types::object, 7, 2, 5};
    io_value target(stated, 5);
    target = io_value(6);
    EXPECT_EQ(target.data_type(), io_data_type::scalar(types::i32));
    io_value const source(stated, 7);
    target = source;
    EXPECT_EQ(target.data_type(), stated);
}

TEST(ValueAssignment, BuildsANewTextInPlaceOfOneOfEqualLength) {
    io_value target("abc");
    io_value const source("xyz");
    test_support::allocation_counter const counter;
    target = source;
    EXPECT_EQ(counter.releases(), 1U);
    EXPECT_EQ(counter.allocations(), 1U);
}

TEST(ValueAssignment, FromAnEmptyTextTakesNoBlock) {
    io_value target("abc");
    io_value const source("");
    test_support::allocation_counter const counter;
    target = source;
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(counter.releases(), 1U);
    EXPECT_EQ(target.index(), 15);
    EXPECT_EQ(target.get_if<utility::string>()->data(), &utility::string::S_empty);
}

template <class T>
class ValueSelfAssignment : public ::testing::Test {
protected:
    ~ValueSelfAssignment() noexcept override = default; // that of a value may raise

    io_value value = sample_value<T>();
    io_value& same = value;
    value_image const before = image_of(value);
    test_support::allocation_counter const counter;

    void expect_unchanged() {
        EXPECT_EQ(counter.allocations(), 0U);
        EXPECT_EQ(counter.releases(), 0U);
        EXPECT_EQ(image_of(value), before);
        EXPECT_TRUE(same_content(value, sample_value<T>()));
    }
};
TYPED_TEST_SUITE(ValueSelfAssignment,
                 test_support::every_alternative,
                 test_support::alternative_names);

TYPED_TEST(ValueSelfAssignment, ByCopyChangesNothing) {
    this->value = this->same;
    this->expect_unchanged();
}

TYPED_TEST(ValueSelfAssignment, ByMoveChangesNothing) {
    this->value = std::move(this->same);
    this->expect_unchanged();
}

TYPED_TEST(ValueSelfAssignment, ByNameChangesNothing) {
    this->value.assign(this->same);
    this->value.assign(std::move(this->same));
    this->expect_unchanged();
}

} // namespace
} // namespace values_test
