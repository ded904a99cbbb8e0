#include <tavi/ioapi/v2/io_object.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include "stored.hpp"
#include "support/allocations.hpp"

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <utility>

// What an object asks of the memory, and what it is when there is none.

namespace {

using namespace tavi::ioapi::v2;
using structures_test::holds;
using structures_test::holds_text;
using test_support::allocation_counter;
using test_support::allocation_failure;
using test_support::count_survived_failures;
using types = io_data_type::basic_types;

std::string const long_key = "a key that is longer than small buffers are";
std::string const other_key = "another key that is longer than small buffers are";

TEST(ObjectMemory, IsNotAskedByLookups) {
    io_object free_keys;
    free_keys.set(long_key, 1);
    io_object known_keys(7, {{long_key, io_data_type::scalar(types::i32)}});
    known_keys.set(long_key, 1);
    for (io_object* const object : {&free_keys, &known_keys}) {
        io_error error;
        allocation_counter const counter;
        EXPECT_TRUE(object->has(long_key));
        EXPECT_FALSE(object->has(other_key));
        (void)object->get_type(long_key);
        (void)object->get_type(other_key);
        (void)object->get(long_key, error);
        (void)object->get(other_key, error);
        object->remove(other_key, error);
        object->remove(long_key, error);
        EXPECT_EQ(counter.allocations(), 0U);
    }
}

TEST(ObjectMemory, ExhaustedLeavesAnObjectWithoutTheNewMember) {
    for (std::size_t n = 1;; ++n) {
        io_object object;
        object.set("kept", "as it was");
        io_value value("a text");
        bool hit = false;
        {
            io_error error;
            allocation_failure const failure(n);
            try {
                object.set(long_key, std::move(value), error);
            } catch (std::bad_alloc const&) {
                hit = true;
            }
            ASSERT_EQ(hit, failure.hit());
        }
        EXPECT_TRUE(holds_text(object.get("kept"), "as it was"));
        EXPECT_EQ(object.has(long_key), !hit);
        if (!hit) {
            EXPECT_GE(n, 3U) << "the key and the node are allocated";
            break;
        }
    }
}

TEST(ObjectMemory, ExhaustedLeavesTheOldValue) {
    for (std::size_t n = 1;; ++n) {
        io_object object(7, {{long_key, io_data_type::array_of(types::dbl)}});
        object.set(long_key, utility::array<double>{1.5});
        bool hit = false;
        {
            io_value value(utility::array<double>{2.5, 3.5});
            io_error error;
            allocation_failure const failure(n);
            try {
                object.set(long_key, std::move(value), error);
            } catch (std::bad_alloc const&) {
                hit = true;
            }
            ASSERT_EQ(hit, failure.hit());
        }
        auto const expected = hit ? utility::array<double>{1.5} : utility::array<double>{2.5, 3.5};
        EXPECT_TRUE(holds(object.get(long_key), expected)) << n;
        if (!hit) break;
    }
}

TEST(ObjectMemory, ExhaustedWhileAValueIsConvertedLeavesTheOldValue) {
    for (std::size_t n = 1;; ++n) {
        io_object object(7, {{"a", io_data_type::array_of(types::string)}});
        object.set("a", utility::array<utility::string>{"old"});
        bool raised = false;
        bool hit = false;
        {
            io_value value(utility::array<int>{1, 2});
            io_error error;
            allocation_failure const failure(n);
            try {
                object.set("a", std::move(value), error);
            } catch (std::bad_alloc const&) {
                raised = true;
            }
            hit = failure.hit();
        }
        EXPECT_EQ(raised, hit) << "nothing told of allocation " << n;
        auto const expected = hit ? utility::array<utility::string>{"old"}
                                  : utility::array<utility::string>{"1", "2"};
        EXPECT_TRUE(holds(object.get("a"), expected)) << n;
        if (!hit) break;
    }
}

TEST(ObjectMemory, SurvivesExhaustionWhenMembersAreCopiedOut) {
    io_object object;
    object.set(long_key, "a text");
    EXPECT_GE(count_survived_failures([&] {
                  io_error error;
                  (void)object.get(long_key, error);
              }),
              1);
    EXPECT_GE(count_survived_failures([&] {
                  for (auto const& [key, value] : object) EXPECT_TRUE(holds_text(value, "a text"));
              }),
              4);
    EXPECT_TRUE(holds_text(object.get(long_key), "a text"));
}

TEST(ObjectMemory, SurvivesExhaustionWhenTheObjectIsCopied) {
    io_object object;
    object.set(long_key, "a text");
    object.set("inner", io_value(object));
    EXPECT_GE(count_survived_failures([&] { io_object const copy(object); }), 6);
    EXPECT_GE(count_survived_failures([&] {
                  io_object target;
                  target.set("old", 1);
                  target = object;
              }),
              6);
    EXPECT_TRUE(object.has("inner"));
}

} // namespace
