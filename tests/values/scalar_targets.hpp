#pragma once

#include <tavi/ioapi/v2/utility/string.hpp>

#include <gtest/gtest.h>

#include <string>

namespace values_test {

/// The sixteen types that a scalar conversion gives.
using scalar_targets = ::testing::Types<bool,
                                        char,
                                        signed char,
                                        unsigned char,
                                        short,
                                        unsigned short,
                                        int,
                                        unsigned int,
                                        long,
                                        unsigned long,
                                        long long,
                                        unsigned long long,
                                        float,
                                        double,
                                        long double,
                                        tavi::ioapi::v2::utility::string>;

/// Names a typed test by its target.
struct target_names {
    template <class T>
    static std::string GetName(int index) {
        static constexpr char const* names[] = {
            "Bool",  "Char",        "SignedChar", "UnsignedChar", "Short",    "UnsignedShort",
            "Int",   "UnsignedInt", "Long",       "UnsignedLong", "LongLong", "UnsignedLongLong",
            "Float", "Double",      "LongDouble", "String"};
        return names[index];
    }
};

} // namespace values_test
