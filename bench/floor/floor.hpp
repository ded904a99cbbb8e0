#pragma once

#ifdef BENCH_FLOOR_BUILDS
#define BENCH_FLOOR_API __attribute__((visibility("default")))
#else
#define BENCH_FLOOR_API
#endif

/// \file
/// The least that a call into a shared object can do with a value of 56 bytes: what remains of a
/// copy, or of a conversion, when all its rules are taken away.

namespace bench::floor {

/// As large as a value, with an index of the payload and room for one.
struct value {
    unsigned long long type[3] = {};
    union {
        int i32;
        long long i64;
        unsigned char u8;
        double dbl;
        char const* block;
        unsigned long long words[3] = {};
    };
    int index = 0; ///< 1: int, 2: long long, 3: unsigned char, 4: double; 5 owns a block

    value() = default;
    explicit value(int number) : index(1) { i32 = number; }
    explicit value(double number) : index(4) { dbl = number; }
};
static_assert(sizeof(value) == 56);

/// As large as the record of an error.
struct error {
    int code = 0;
    void const* category = nullptr;
    void* diagnostics = nullptr;
};
static_assert(sizeof(error) == 24);

/// As large as a value with time and quality.
struct data_value {
    value held;
    long long stamp = 0;
    int quality = 0;
};
static_assert(sizeof(data_value) == 72);

/// As large as an entry of a read result.
struct entry {
    unsigned long long identifier[8] = {};
    data_value answer;
    error outcome;
};
static_assert(sizeof(entry) == 160);

/// Copy all bytes, unless the value owns a block.
BENCH_FLOOR_API void copy(value& target, value const& source);

/// The same, and leave the empty value behind.
BENCH_FLOOR_API void move(value& target, value& source);

/// Reset the error, then convert what the index says. Code 4 where the number does not fit.
BENCH_FLOOR_API long long to_i64(value const& source, error& outcome);
BENCH_FLOOR_API unsigned char to_u8(value const& source, error& outcome);
BENCH_FLOOR_API int to_i32(value const& source, error& outcome);

/// Take up a value, which owns nothing afterwards.
BENCH_FLOOR_API void make(data_value& target, value& source, long long stamp, int quality);

/// The same into an entry, whose error is reset.
BENCH_FLOOR_API void store(entry* entries, unsigned int index, data_value& source);

} // namespace bench::floor
