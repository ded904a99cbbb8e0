#include "raw_value.hpp"
#include "sample_payloads.hpp"
#include "support/allocations.hpp"

#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <new>
#include <utility>

namespace values_test {
namespace {

// What a failed copy assignment leaves, and what corrupt memory would.
class ValueWithoutAlternative : public ::testing::TestWithParam<int> {
protected:
    ValueWithoutAlternative() { corrupt_index(*value_, GetParam()); }
    io_value& value() { return *value_; }
    void destroy() { value_.destroy(); }

private:
    raw_value value_{5};
};

TEST_P(ValueWithoutAlternative, RaisesWhenDestroyed) {
    EXPECT_TRUE(raises_empty_text([&] { destroy(); }));
}

TEST_P(ValueWithoutAlternative, RaisesWhenCopyConstructed) {
    alignas(io_value) unsigned char storage[sizeof(io_value)];
    EXPECT_TRUE(raises_empty_text([&] { ::new (static_cast<void*>(storage)) io_value(value()); }));
}

TEST_P(ValueWithoutAlternative, RaisesWhenMoveConstructed) {
    alignas(io_value) unsigned char storage[sizeof(io_value)];
    EXPECT_TRUE(raises_empty_text(
        [&] { ::new (static_cast<void*>(storage)) io_value(std::move(value())); }));
}

TEST_P(ValueWithoutAlternative, RaisesWhenAssignedByCopy) {
    io_value const source("level");
    EXPECT_TRUE(raises_empty_text([&] { value() = source; }));
    EXPECT_TRUE(raises_empty_text([&] { value().assign(source); }));
}

TEST_P(ValueWithoutAlternative, RaisesWhenAssignedByMove) {
    long long const before = test_support::live_blocks();
    {
        io_value source("level");
        EXPECT_TRUE(raises_empty_text([&] { value() = std::move(source); }));
    }
    {
        io_value source("level");
        EXPECT_TRUE(raises_empty_text([&] { value().assign(std::move(source)); }));
    }
    EXPECT_EQ(test_support::live_blocks(), before);
}

TEST_P(ValueWithoutAlternative, RaisesWhenCopiedToAnother) {
    long long const before = test_support::live_blocks();
    raw_value target("old content");
    EXPECT_TRUE(raises_empty_text([&] { *target = value(); }));
    EXPECT_EQ(test_support::live_blocks(), before);
    EXPECT_EQ(target->index(), -1);
    EXPECT_EQ(target->data_type(), io_data_type::scalar(types::string));
}

TEST_P(ValueWithoutAlternative, RaisesWhenMovedToAnother) {
    long long const before = test_support::live_blocks();
    raw_value target("old content");
    EXPECT_TRUE(raises_empty_text([&] { *target = std::move(value()); }));
    EXPECT_EQ(test_support::live_blocks(), before);
    EXPECT_EQ(target->index(), -1);
    EXPECT_EQ(target->data_type(), io_data_type::scalar(types::string));
}

TEST_P(ValueWithoutAlternative, RaisesWhenVisited) {
    EXPECT_TRUE(raises_empty_text([&] { value().visit([](auto const&) {}); }));
}

TEST_P(ValueWithoutAlternative, StaysAsItIsWhenAssignedToItself) {
    io_value& same = value();
    value_image const before = image_of(value());
    value() = same;
    value() = std::move(same);
    EXPECT_EQ(image_of(value()), before);
}

TEST_P(ValueWithoutAlternative, StillTellsItsType) {
    EXPECT_EQ(value().data_type(), io_data_type::scalar(types::i32));
    EXPECT_EQ(value().type_code(), 8U);
    EXPECT_EQ(value().p_basic_type(), 8U);
    EXPECT_EQ(value().index(), GetParam());
}

TEST_P(ValueWithoutAlternative, IsNeitherEmptyNorAnArrayNorAnything) {
    EXPECT_FALSE(value().empty());
    EXPECT_FALSE(value().is_array());
    EXPECT_EQ(value().get_if<int>(), nullptr);
    EXPECT_EQ(value().get_if<array<io_value>>(), nullptr);
}

TEST_P(ValueWithoutAlternative, ConvertsToNothingWithCodeEight) {
    io_error error;
    EXPECT_EQ(detail::get_as<int>(value(), error), 0);
    EXPECT_EQ(error, io_error(io_errc::unhandled_exception));
    EXPECT_FALSE(value().as<bool>(error));
    EXPECT_EQ(error, io_error(io_errc::unhandled_exception));
    EXPECT_EQ(value().as<std::string>(error), "");
    EXPECT_EQ(error, io_error(io_errc::unhandled_exception));
    EXPECT_THROW((void)value().as<double>(), io_exception);
    EXPECT_EQ(value().try_as<int>(), std::nullopt);
    EXPECT_EQ(value().value_or(7), 7);
}

INSTANTIATE_TEST_SUITE_P(Index,
                         ValueWithoutAlternative,
                         ::testing::Values(-1, 34, 35, 1000, INT_MAX, INT_MIN, -34),
                         [](auto const& given) {
                             return (given.param < 0 ? "Minus" : "Plus") +
                                    std::to_string(given.param < 0 ? 0U - unsigned(given.param)
                                                                   : unsigned(given.param));
                         });

class ArrayWithACorruptElement : public ::testing::TestWithParam<unsigned int> {
protected:
    static array<io_value> make() {
        array<io_value> elements(4);
        for (io_value& element : elements) element = "text of an element";
        elements[GetParam()] = 5;
        corrupt_index(elements[GetParam()], -1);
        return elements;
    }
};

TEST_P(ArrayWithACorruptElement, DestroysTheRestReleasesTheBlockAndRaises) {
    long long const before = test_support::live_blocks();
    alignas(array<io_value>) unsigned char storage[sizeof(array<io_value>)];
    auto* const elements = ::new (static_cast<void*>(storage)) array<io_value>(make());
    EXPECT_EQ(test_support::live_blocks(), before + 4);
    EXPECT_TRUE(raises_empty_text([&] { std::destroy_at(elements); }));
    EXPECT_EQ(test_support::live_blocks(), before);
}

TEST_P(ArrayWithACorruptElement, RaisesThroughTheValueThatHoldsIt) {
    long long const before = test_support::live_blocks();
    raw_value value(make());
    EXPECT_TRUE(raises_empty_text([&] { value.destroy(); }));
    EXPECT_EQ(test_support::live_blocks(), before);
}

TEST_P(ArrayWithACorruptElement, RaisesThroughTwoLevels) {
    long long const before = test_support::live_blocks();
    array<io_value> outer(3);
    outer[0] = "first";
    outer[1] = io_value(make());
    outer[2] = "last";
    raw_value value(std::move(outer));
    EXPECT_TRUE(raises_empty_text([&] { value.destroy(); }));
    EXPECT_EQ(test_support::live_blocks(), before);
}

TEST_P(ArrayWithACorruptElement, IsNotCopied) {
    raw_value value(make());
    long long const before = test_support::live_blocks();
    alignas(io_value) unsigned char storage[sizeof(io_value)];
    EXPECT_TRUE(raises_empty_text([&] { ::new (static_cast<void*>(storage)) io_value(*value); }));
    EXPECT_EQ(test_support::live_blocks(), before);
    EXPECT_TRUE(raises_empty_text([&] { value.destroy(); }));
}

TEST_P(ArrayWithACorruptElement, RaisesOnceForSeveralCorruptElements) {
    long long const before = test_support::live_blocks();
    array<io_value> elements = make();
    for (io_value& element : elements) {
        if (element.index() == -1) continue;
        element = 6;
        corrupt_index(element, 34);
    }
    raw_value value(std::move(elements));
    EXPECT_TRUE(raises_empty_text([&] { value.destroy(); }));
    EXPECT_EQ(test_support::live_blocks(), before);
}

TEST_P(ArrayWithACorruptElement, MovesAsAWhole) {
    raw_value value(make());
    raw_value target;
    *target = std::move(*value);
    EXPECT_TRUE(is_exactly_empty(*value));
    EXPECT_TRUE(raises_empty_text([&] { target.destroy(); }));
}

INSTANTIATE_TEST_SUITE_P(Place, ArrayWithACorruptElement, ::testing::Values(0U, 1U, 3U));

} // namespace
} // namespace values_test
