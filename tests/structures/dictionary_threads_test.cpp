#include <tavi/ioapi/v2/io_structure_dictionary.hpp>

#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace tavi::ioapi::v2;
using ids = std::vector<unsigned long long>;
using types = io_data_type::basic_types;

constexpr int rounds = 300;

ids add_many(io_structure_dictionary& dictionary) {
    ids result;
    for (int i = 0; i < rounds; ++i) {
        io_error error;
        result.push_back(
            dictionary.add_structure(io_structure_type("pump", {}), error).structure_id);
    }
    return result;
}

/// Run `action(n)` for each n below `count` on a thread of its own, all at once.
template <class Action>
void run_on_threads(int count, Action action) {
    std::atomic<int> waiting{count};
    std::vector<std::thread> threads;
    for (int n = 0; n < count; ++n) {
        threads.emplace_back([&, n] {
            --waiting;
            while (waiting > 0) std::this_thread::yield();
            action(n);
        });
    }
    for (auto& thread : threads) thread.join();
}

TEST(DictionaryThreads, ThatAddNeverGetTheSameId) {
    io_structure_dictionary dictionary;
    std::vector<ids> drawn(4);
    run_on_threads(4, [&](int n) { drawn[static_cast<std::size_t>(n)] = add_many(dictionary); });
    std::set<unsigned long long> distinct;
    for (auto const& list : drawn) distinct.insert(list.begin(), list.end());
    EXPECT_EQ(distinct.size(), 4U * rounds);
    for (auto const id : distinct) {
        io_error error;
        EXPECT_EQ(dictionary.get_structure(id, error).name(), "pump");
        EXPECT_TRUE(error.ok());
    }
}

TEST(DictionaryThreads, HaveSequencesOfTheirOwn) {
    io_structure_dictionary first;
    io_structure_dictionary second;
    std::vector<ids> drawn(2);
    run_on_threads(
        2, [&](int n) { drawn[static_cast<std::size_t>(n)] = add_many(n == 0 ? first : second); });
    EXPECT_NE(drawn[0], drawn[1]);
}

TEST(DictionaryThreads, OneAfterTheOtherDoNotRepeatASequence) {
    io_structure_dictionary dictionary;
    std::vector<ids> drawn(2);
    for (auto& list : drawn) std::thread([&] { list = add_many(dictionary); }).join();
    EXPECT_NE(drawn[0], drawn[1]);
}

TEST(DictionaryThreads, ReadAStructureWholeWhileAnotherReplacesIt) {
    io_structure_dictionary dictionary;
    auto const make = [](char letter) {
        std::string const name(40, letter);
        return io_structure_type(name, {{name, io_data_type::scalar(types::i32)}});
    };
    io_error error;
    dictionary.replace_structure(7, make('a'), error);
    std::atomic<int> torn{0};
    run_on_threads(4, [&](int n) {
        for (int i = 0; i < rounds; ++i) {
            io_error outcome;
            if (n < 2) {
                dictionary.replace_structure(7, make(i % 2 == 0 ? 'a' : 'b'), outcome);
            } else {
                auto const structure = dictionary.get_structure(7, outcome);
                if (!structure.has_member(structure.name())) ++torn;
            }
            if (outcome.failed()) ++torn;
        }
    });
    EXPECT_EQ(torn, 0);
}

TEST(DictionaryThreads, RemoveEachEntryOnce) {
    io_structure_dictionary dictionary;
    auto const all = add_many(dictionary);
    std::atomic<int> removed{0};
    std::atomic<int> missed{0};
    run_on_threads(3, [&](int) {
        for (auto const id : all) {
            io_error error;
            dictionary.remove_structure(id, error);
            ++(error.ok() ? removed : missed);
        }
    });
    EXPECT_EQ(removed, rounds);
    EXPECT_EQ(missed, 2 * rounds);
}

TEST(DictionaryThreads, AddReadReplaceAndRemoveAtOnce) {
    io_structure_dictionary dictionary;
    std::atomic<int> wrong{0};
    run_on_threads(4, [&](int n) {
        auto const own = static_cast<unsigned long long>(n);
        for (int i = 0; i < rounds; ++i) {
            io_error error;
            auto const type = dictionary.add_structure(io_structure_type("pump", {}), error);
            if (dictionary.get_structure(type.structure_id, error).name() != "pump") ++wrong;
            dictionary.replace_structure(own, io_structure_type("valve", {}), error);
            if (dictionary.get_structure(own, error).name() != "valve") ++wrong;
            dictionary.remove_structure(own, error);
            if (error.failed()) ++wrong;
            dictionary.remove_structure(type.structure_id, error);
            if (error.failed()) ++wrong;
        }
    });
    EXPECT_EQ(wrong, 0);
}

} // namespace
