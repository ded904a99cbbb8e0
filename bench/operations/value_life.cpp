#include "blocks.hpp"
#include "harness.hpp"
#include "operations.hpp"
#include "values.hpp"

#include <cstdint>

/// \file
/// The life of one value: made and destroyed, copied, moved.

namespace bench {

namespace {

template <class V>
void add_construct() {
    add("construct", peer<V>::name, batch, [] {
        auto const run = [] {
            for (int i = 0; i < batch; ++i) {
                V value = peer<V>::of(i);
                DoNotOptimize(value);
            }
        };
        return job{run, [] { return peer<V>::number(peer<V>::of(7)) == 7; }};
    });
}

template <class V, class Content, class Right>
void add_copy(char const* operation, std::string const& name, Content content, Right is_right) {
    add(operation, name, batch, [=] {
        auto const source = shared(peer<V>::of(content));
        auto const run = [=] {
            V const& from = *source;
            for (int i = 0; i < batch; ++i) {
                V copy(from);
                DoNotOptimize(copy);
            }
        };
        return job{run, [=] {
                       V const copy(*source); // NOLINT(performance-unnecessary-copy-initialization)
                       return is_right(copy) && is_right(*source);
                   }};
    });
}

/// Out and back: two moves each time.
template <class V, class Content, class Right>
void add_move(char const* operation, Content content, Right is_right) {
    add(operation, peer<V>::name, 2 * batch, [=] {
        auto const place = shared(peer<V>::of(content));
        auto const run = [=] {
            V& source = *place;
            for (int i = 0; i < batch; ++i) {
                V away(std::move(source));
                DoNotOptimize(away);
                source = std::move(away);
                DoNotOptimize(source);
            }
        };
        return job{run, [=] {
                       V away(std::move(*place));
                       bool const arrived = is_right(away);
                       *place = std::move(away);
                       return arrived && is_right(*place);
                   }};
    });
}

/// Two words in place of one wide copy: what was just stored as two parts is slow to load as one.
template <class First, class Second>
[[gnu::always_inline]] inline void in_two_registers(First& first, Second& second) {
    asm("" : "+r"(first), "+r"(second));
}

/// A move by hand empties its source.
struct moved_bare_value : bare_value {
    explicit moved_bare_value(bare_value const& other) : bare_value(other) {}
    moved_bare_value(moved_bare_value&& other) noexcept : bare_value{none, {}} { take(other); }
    moved_bare_value& operator=(moved_bare_value&& other) noexcept {
        take(other);
        return *this;
    }

private:
    void take(moved_bare_value& other) {
        kind moved_tag = other.tag;
        std::int64_t number = other.as.i64;
        in_two_registers(moved_tag, number);
        tag = moved_tag;
        as.i64 = number;
        other.tag = none;
    }
};

} // namespace

template <>
struct peer<moved_bare_value> : peer<bare_value> {
    static moved_bare_value of(int number) {
        return moved_bare_value(peer<bare_value>::of(number));
    }
};

namespace {

void add_scalars() {
    auto const add_all = []<class V>() {
        auto const is_seven = [](V const& value) { return peer<V>::number(value) == 7; };
        add_construct<V>();
        add_copy<V>("copy_scalar", peer<V>::name, 7, is_seven);
        add_move<V>("move_scalar", 7, is_seven);
    };
    for_each_value_peer(add_all);
    add_all.operator()<floor_value>();

    auto const is_seven = [](bare_value const& value) {
        return peer<bare_value>::number(value) == 7;
    };
    add_construct<bare_value>();
    add_copy<bare_value>("copy_scalar", "limit", 7, is_seven);
    add_move<moved_bare_value>("move_scalar", 7, is_seven);
}

/// Two words, moved through two registers; the source is empty after it.
struct two_words {
    std::uint64_t tag = 0;
    char const* data = nullptr;

    two_words(std::uint64_t kind, char const* text) : tag(kind), data(text) {}
    two_words(two_words&& other) noexcept { take(other); }
    two_words& operator=(two_words&& other) noexcept {
        take(other);
        return *this;
    }

private:
    void take(two_words& other) {
        std::uint64_t moved_tag = other.tag;
        char const* moved_data = other.data;
        in_two_registers(moved_tag, moved_data);
        tag = moved_tag;
        data = moved_data;
        other.tag = 0;
    }
};

} // namespace

template <>
struct peer<two_words> {
    static constexpr char const* name = "limit";
    static two_words of(std::string const&) { return {15, text32}; }
    static std::string text(two_words const& value) { return value.tag == 15 ? value.data : ""; }
};

namespace {

template <class Memory>
void add_text_copy_limit() {
    add("copy_text32", Memory::name, batch, [] {
        auto const run = [] {
            for (int i = 0; i < batch; ++i) {
                block_text<Memory> const copy(text32);
                DoNotOptimize(copy);
            }
        };
        return job{run, [] { return block_text<Memory>(text32).view() == text32; }};
    });
}

void add_texts() {
    std::string const content = text32;
    for_each_value_peer([&]<class V>() {
        auto const is_whole = [](V const& value) { return peer<V>::text(value) == text32; };
        add_move<V>("move_text32", content, is_whole);
        bool const is_counted = std::is_same_v<V, QVariant>;
        add_copy<V>("copy_text32", is_counted ? named<V>("less: shared") : peer<V>::name, content,
                    is_whole);
    });
    add_move<two_words>("move_text32", content, [](two_words const& value) {
        return peer<two_words>::text(value) == text32;
    });
    for_each_memory([](auto memory) { add_text_copy_limit<decltype(memory)>(); });
    add("copy_text32", named<QVariant>("detached"), batch, [=] {
        auto const source = shared(peer<QVariant>::of(content));
        auto const copy = [=] {
            QVariant result(*source);
            static_cast<QString*>(result.data())->detach();
            return result;
        };
        auto const run = [=] {
            for (int i = 0; i < batch; ++i) {
                QVariant result = copy();
                DoNotOptimize(result);
            }
        };
        return job{run, [=] { return peer<QVariant>::text(copy()) == text32; }};
    });
}

} // namespace

void add_value_life() {
    add_scalars();
    add_texts();
}

} // namespace bench
