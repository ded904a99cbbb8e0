#include "content.hpp"
#include "support/allocations.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <new>
#include <string>
#include <utility>
#include <vector>

// What is left where the headers promise less than the strong guarantee, to the last part.

namespace allocation_failure_test {
namespace {

using test_support::allocation_failure;
using test_support::live_blocks;
using test_support::shortage;
using v2::browse_result;
using v2::io_data_type;
using v2::io_data_value;
using v2::io_value;
using v2::plc_identifier;
using v2::plc_identifier_kind;
using v2::plc_identifier_part;
using v2::utility::array;
using v2::utility::string;
using types = io_data_type::basic_types;

constexpr char const* long_old = "what was there before, in a block of its own";
constexpr char const* long_new = "what is to take its place, in a block as well, and longer";

/// Run `action` with its n-th allocation failing. \return whether `std::bad_alloc` came of it
template <class Action>
[[nodiscard]] bool runs_out(std::size_t n, Action action) {
    bool raised = false;
    allocation_failure const failure(n);
    try {
        action();
    } catch (std::bad_alloc const&) {
        raised = true;
    }
    return raised && failure.hit();
}

/// Holds an object whose destruction may raise: it is ended by nobody.
template <class T>
class undying {
public:
    template <class... Arguments>
    explicit undying(Arguments&&... arguments)
        : object_(::new (static_cast<void*>(bytes_)) T(std::forward<Arguments>(arguments)...)) {}
    T& operator*() noexcept { return *object_; }
    T* operator->() noexcept { return object_; }

private:
    alignas(T) unsigned char bytes_[sizeof(T)];
    T* object_;
};

template <class Action>
[[nodiscard]] bool raises_a_bare_text(Action action) {
    try {
        action();
    } catch (char const* text) {
        return *text == '\0';
    } catch (...) {
        return false;
    }
    return false;
}

TEST(AFailedValueAssignment, LeavesNoAlternativeAndTheOldType) {
    io_value const source(long_new);
    long long const before = live_blocks();
    undying<io_value> target(array<int>{1, 2});
    EXPECT_TRUE(runs_out(1, [&] { *target = source; }));
    EXPECT_EQ(target->index(), -1);
    EXPECT_EQ(target->data_type(), io_data_type::array_of(types::i32));
    EXPECT_EQ(live_blocks(), before) << "the old payload went first";
}

TEST(AFailedValueAssignment, LeavesWhatAllOperationsRefuse) {
    io_value const source(long_new);
    undying<io_value> target(5);
    ASSERT_TRUE(runs_out(1, [&] { target->assign(source); }));
    EXPECT_TRUE(raises_a_bare_text([&] { io_value const copy(*target); }));
    EXPECT_TRUE(raises_a_bare_text([&] { *target = io_value(5); }));
    EXPECT_TRUE(raises_a_bare_text([&] { (void)(*target == io_value(5)); }));
    EXPECT_TRUE(raises_a_bare_text([&] { (void)target->printable_string(); }));
    EXPECT_TRUE(raises_a_bare_text([&] { io_value const moved(std::move(*target)); }));
    EXPECT_TRUE(raises_a_bare_text([&] { target->visit([](auto const&) {}); }));
    v2::io_error error;
    EXPECT_EQ(target->as<int>(error), 0);
    EXPECT_EQ(error, v2::io_error(v2::io_errc::unhandled_exception));
    EXPECT_TRUE(raises_a_bare_text([&] { target->~io_value(); }));
}

TEST(AFailedDataValueAssignment, LeavesItsValueWithoutAnAlternative) {
    io_data_value const source(io_value(long_new), v2::io_timestamp(8),
                               io_data_value::value_quality::bad);
    undying<io_data_value> target(io_value(5), v2::io_timestamp(7),
                                  io_data_value::value_quality::good);
    EXPECT_TRUE(runs_out(1, [&] { *target = source; }));
    EXPECT_EQ(target->value().index(), -1);
    EXPECT_EQ(target->timestamp(), v2::io_timestamp(7));
}

// The record is cleared before the copy is made, whose failure is told by the exception alone.
TEST(AFailedCopyOutOfAValue, LeavesAClearedRecord) {
    io_value const source(long_new);
    v2::io_error error(v2::io_errc::not_found);
    EXPECT_TRUE(runs_out(1, [&] { (void)source.to_variant(source.data_type(), error); }));
    EXPECT_EQ(error, v2::io_error());
    EXPECT_EQ(text_of(source), text_of(io_value(long_new)));
}

TEST(AFailedCopyOutOfAnObject, LeavesAClearedRecord) {
    v2::io_object source;
    source.set("k", long_new);
    v2::io_error error(v2::io_errc::not_found);
    EXPECT_TRUE(runs_out(1, [&] { (void)source.get("k", error); }));
    EXPECT_EQ(error, v2::io_error());
    EXPECT_EQ(text_of(source.get("k")), text_of(io_value(long_new)));
}

void assign_to_a_local_value(io_value const& source) {
    io_value target(5);
    target = source;
}

// The local value is ended on the way of std::bad_alloc, and raises an exception of its own.
TEST(AFailedValueAssignmentDeathTest, EndsTheProcessWhereTheTargetIsLocal) {
    io_value const source(long_new);
    EXPECT_EXIT((void)runs_out(1, [&] { assign_to_a_local_value(source); }),
                ::testing::KilledBySignal(SIGABRT), "terminate called");
}

io_value left_without_an_alternative() {
    io_value value(5);
    io_value const source(long_new);
    EXPECT_TRUE(runs_out(1, [&] { value = source; }));
    return value;
}

// The argument is looked at before it is taken; its end on the way of the exception raises another.
TEST(ADataValueDeathTest, EndsTheProcessWhereItIsGivenAValueWithoutAnAlternative) {
    EXPECT_EXIT(
        {
            auto const* const made = new io_data_value(left_without_an_alternative(), {},
                                                       io_data_value::value_quality::good);
            ::_exit(made == nullptr ? 1 : 0);
        },
        ::testing::KilledBySignal(SIGABRT), "terminate called");
}

TEST(AFailedPartAssignment, LeavesTheNewKindAndAnEmptyText) {
    plc_identifier_part const source(long_new);
    for (plc_identifier_part target :
         {plc_identifier_part(), plc_identifier_part(7), plc_identifier_part(long_old)}) {
        EXPECT_TRUE(runs_out(1, [&] { target = source; }));
        EXPECT_EQ(target.kind(), plc_identifier_kind::text);
        EXPECT_EQ(target.text().size(), 0U);
        EXPECT_EQ(target.number(), 0U);
        target = plc_identifier_part(5);
        EXPECT_EQ(target.number(), 5U);
    }
}

TEST(AFailedIdentifierAssignment, MayHaveReplacedItsFirstPart) {
    plc_identifier const source(long_new, long_new);
    plc_identifier target(3, 4);
    EXPECT_TRUE(runs_out(1, [&] { target = source; }));
    EXPECT_EQ(text_of(target.primary()), text_of(plc_identifier_part("")));
    EXPECT_EQ(text_of(target.secondary()), text_of(plc_identifier_part(4)));
    EXPECT_TRUE(runs_out(2, [&] { target = source; }));
    EXPECT_EQ(text_of(target.primary()), text_of(source.primary()));
    EXPECT_EQ(text_of(target.secondary()), text_of(plc_identifier_part("")));
}

TEST(AFailedArrayAssignment, LeavesNoElementsWhereThereIsNoBlockForOthers) {
    array<string> const source{long_new, long_new};
    array<string> target{long_old};
    long long const before = live_blocks();
    EXPECT_TRUE(runs_out(1, [&] { target = source; }));
    EXPECT_EQ(target.size(), 0U);
    EXPECT_EQ(target.data(), nullptr);
    EXPECT_EQ(live_blocks(), before - 2);
}

TEST(AFailedArrayAssignment, LeavesDefaultElementsInANewBlock) {
    array<string> const source{long_new, long_new};
    array<string> target{long_old};
    EXPECT_TRUE(runs_out(3, [&] { target = source; }));
    EXPECT_EQ(text_of(target), text_of(array<string>{long_new, ""}));
}

TEST(AFailedArrayAssignment, LeavesTheRestOfAsManyElementsAsTheyWere) {
    array<string> const source{long_new, long_new, long_new};
    array<string> target{long_old, long_old, long_old};
    EXPECT_TRUE(runs_out(2, [&] { target = source; }));
    EXPECT_EQ(text_of(target), text_of(array<string>{long_new, long_old, long_old}));
}

TEST(AFailedArrayAssignment, LeavesValuesThatStillHaveAnAlternative) {
    auto const source = array<io_value>::of(long_new, long_new);
    auto target = array<io_value>::of(long_old, array<int>{1});
    EXPECT_TRUE(runs_out(2, [&] { target = source; }));
    EXPECT_EQ(text_of(target), text_of(array<io_value>::of(long_new, array<int>{1})));
}

template <class Result>
class AFailedNewStart : public ::testing::Test {};
using answer_results = ::testing::Types<v2::read_result, v2::write_result>;
TYPED_TEST_SUITE(AFailedNewStart, answer_results);

TYPED_TEST(AFailedNewStart, HasResetTheFirstOfAsManyEntries) {
    std::vector<plc_identifier> const old{plc_identifier(long_old, 0), plc_identifier(long_old, 1),
                                          plc_identifier(long_old, 2)};
    std::vector<plc_identifier> const fresh{
        plc_identifier(long_new, 0), plc_identifier(long_new, 1), plc_identifier(long_new, 2)};
    TypeParam result(old);
    TypeParam const before(result);
    TypeParam const after(fresh);
    EXPECT_TRUE(runs_out(2, [&] { result.assign(fresh); }));
    EXPECT_EQ(text_of(result[0]), text_of(after[0]));
    EXPECT_EQ(text_of(result[1]), text_of(before[1]));
    EXPECT_EQ(text_of(result[2]), text_of(before[2]));
}

TEST(AFailedStoreAssignment, LeavesAPartOfTheNewValuesOrNone) {
    config::store source;
    for (char const* const key : {"a", "b", "c", long_new}) {
        source.set(key, io_value(std::string(long_new) + key));
    }
    for (std::size_t n = 1;; ++n) {
        config::store target;
        for (char const* const key : {"a", "b", long_old}) target.set(key, long_old);
        bool const failed = runs_out(n, [&] { target = source; });
        unsigned int count = 0;
        for (auto const key : target.keys()) {
            EXPECT_TRUE(source.has(key)) << n;
            EXPECT_EQ(text_of(target.get(key)), text_of(source.get(key))) << n;
            ++count;
        }
        if (!failed) {
            EXPECT_EQ(count, 4U);
            EXPECT_GT(n, 4U);
            break;
        }
        EXPECT_LT(count, 4U) << n;
    }
}

browse_result two_of_a_class() {
    browse_result result;
    for (unsigned int i = 0; i < 2; ++i) {
        result.push({v2::browsing::node_class::variable, plc_identifier(long_old),
                     plc_identifier(i), long_old, io_data_type()});
    }
    return result;
}

// The list, two texts for each of two nodes, the array; then the same texts for its slots.
constexpr std::size_t before_slots = 1 + 2 * 2 + 1;
constexpr std::size_t with_slots = before_slots + 2 * 2;

void collect(browse_result const& result, std::size_t n, shortage kind) {
    allocation_failure const failure(n, kind);
    try {
        (void)result.get_nodes_by_class(v2::browsing::node_class::variable);
    } catch (std::bad_alloc const&) {
        ADD_FAILURE() << "it must not get out";
    }
}

class NodesOfAClassWithoutMemory : public ::testing::TestWithParam<shortage> {};

TEST_P(NodesOfAClassWithoutMemory, AreRefusedBeforeTheirSlots) {
    browse_result const result = two_of_a_class();
    std::string const content = text_of(result);
    for (std::size_t n = 1; n <= before_slots; ++n) {
        long long const before = live_blocks();
        {
            allocation_failure const failure(n, GetParam());
            EXPECT_THROW((void)result.get_nodes_by_class(v2::browsing::node_class::variable),
                         std::bad_alloc)
                << n;
        }
        EXPECT_EQ(live_blocks(), before) << n;
        EXPECT_EQ(text_of(result), content) << n;
    }
}

TEST_P(NodesOfAClassWithoutMemory, EndTheProcessInTheirSlots) {
    browse_result const result = two_of_a_class();
    for (std::size_t n = before_slots + 1; n <= with_slots; ++n) {
        EXPECT_EXIT(collect(result, n, GetParam()), ::testing::KilledBySignal(SIGABRT),
                    "terminate called.*std::bad_alloc")
            << n;
    }
    collect(result, with_slots + 1, GetParam()); // it takes no more than that
}

INSTANTIATE_TEST_SUITE_P(Shortages,
                         NodesOfAClassWithoutMemory,
                         ::testing::Values(shortage::once, shortage::lasting),
                         [](auto const& row) {
                             return std::string(row.param == shortage::once ? "Once" : "ForGood");
                         });

} // namespace
} // namespace allocation_failure_test
