#pragma once

#include <tavi/ioapi/v2/io_data_value.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include <cstddef>
#include <cstring>
#include <utility>

/// \file
/// How a value passes from one place to another inside the library, in line: as bytes, for no
/// alternative knows its own address.

namespace tavi::ioapi::v2::detail {

/// A friend of the values, for all sources that hand one on.
struct payload_transfer {
    /// Take the payload, and leave the empty value behind.
    /// \param to    holds no payload: a scalar, or nothing that lives; its type stays
    /// \throws char const*  where `from` has no legal alternative, and then nothing has changed
    static void take_payload(io_value& to, io_value& from) {
        check(from);
        to.storage_ = from.storage_;
        to.index_ = from.index_;
        from.type_ = {};
        from.storage_ = {};
        from.index_ = 0;
    }

    /// \return the value, taken from an argument of the present call: that owns nothing any more,
    /// and must only be destroyed. \throws char const*  where it has no legal alternative, and then
    /// nothing has changed
    static io_value taken(io_value& argument) {
        check(argument);
        io_value result;
        copy_plain(result, argument);
        argument.index_ = 0;
        return result;
    }

    /// Take all that `argument` has in the place of what is there; the argument owns nothing any
    /// more, and must only be destroyed. \throws char const*  where it has no legal alternative,
    /// and then a payload that was there has gone
    static void replace(io_data_value& to, io_data_value& argument) {
        if (to.value_.owns_payload()) [[unlikely]]
            to.value_.destroy_payload();
        check(argument.value_);
        copy_plain(to.value_, argument.value_);
        argument.value_.index_ = 0;
        to.timestamp_ = argument.timestamp_;
        to.quality_ = argument.quality_;
    }

private:
    static void check(io_value const& value) {
        if (value.index_ < 0 || value.index_ >= alternatives::size) raise_corrupt_index();
    }

    using word = unsigned long long;

    static void copy_word(unsigned char* to, unsigned char const* from) {
        word value = 0;
        std::memcpy(&value, from, sizeof(value));
        std::memcpy(to, &value, sizeof(value));
    }

    // No loop: compilers would make a call of it.
    template <std::size_t... Numbers>
    static void copy_words(unsigned char* to,
                           unsigned char const* from,
                           std::index_sequence<Numbers...>) {
        (copy_word(to + Numbers * sizeof(word), from + Numbers * sizeof(word)), ...);
    }

    // By the words in which an argument was stored just now: a processor hands those on at once,
    // but a vector over several of them only when they have reached its cache.
    static void copy_plain(io_value& to, io_value const& from) {
        to.type_.basic_type = from.type_.basic_type;
        to.type_.structure_id = from.type_.structure_id;
        to.type_.array_kind = from.type_.array_kind;
        to.type_.array_extent = from.type_.array_extent;
        static_assert(sizeof(from.storage_) % sizeof(word) == 0);
        copy_words(to.storage_.bytes, from.storage_.bytes,
                   std::make_index_sequence<sizeof(from.storage_) / sizeof(word)>());
        to.index_ = from.index_;
    }
};

} // namespace tavi::ioapi::v2::detail
