#include "loaded_module.hpp"
#include "support/alternatives.hpp"
#include "support/object_bytes.hpp"
#include "support/typed_tests.hpp"

#include <cstring>
#include <string>
#include <utility>

namespace {

using namespace tavi::ioapi::v2;
using boundary::WithModule;

// What the module is told to store, read with the host's eyes.
template <class T>
void expect_sample(T const& payload) {
    using element = detail::array_element_t<T>;
    if constexpr (std::is_same_v<T, bool>) {
        EXPECT_TRUE(payload);
    } else if constexpr (std::is_same_v<T, utility::string>) {
        EXPECT_EQ(payload, "level of the tank");
    } else if constexpr (std::is_same_v<T, io_object>) {
        EXPECT_EQ(payload.type(), io_data_type::object(7));
    } else if constexpr (std::is_same_v<T, io_value>) {
        auto const* const inner = payload.template get_if<utility::array<io_value>>();
        ASSERT_NE(inner, nullptr);
        ASSERT_EQ(inner->size(), 2U);
        EXPECT_EQ(*(*inner)[0].template get_if<int>(), 1);
        EXPECT_EQ(*(*inner)[1].template get_if<utility::string>(), "inner");
    } else if constexpr (std::is_void_v<element>) {
        EXPECT_EQ(payload, static_cast<T>(100));
    } else {
        ASSERT_EQ(payload.size(), 2U);
        expect_sample<element>(payload[1]);
    }
}

template <class T>
void expect_sample_value(io_value const& value) {
    EXPECT_EQ(value.index(), detail::index_of<T>);
    if constexpr (std::is_same_v<T, io_object>) {
        EXPECT_EQ(value.data_type(), io_data_type::object(7));
    } else {
        EXPECT_EQ(value.data_type(), detail::declared_type<T>());
    }
    if constexpr (!std::is_same_v<T, std::nullptr_t>) {
        ASSERT_NE(value.get_if<T>(), nullptr);
        expect_sample<T>(*value.get_if<T>());
    }
}

template <class T>
class ValueAcross : public WithModule {
protected:
    io_value made() const { return backend->make_value(detail::index_of<T>); }
};
TYPED_TEST_SUITE(ValueAcross, test_support::every_alternative, test_support::alternative_names);

TYPED_TEST(ValueAcross, IsMadeThereAndEndedHere) {
    io_value const value = this->made();
    expect_sample_value<TypeParam>(value);
}

TYPED_TEST(ValueAcross, IsMadeHereAndEndedThere) {
    io_value value = this->made();
    this->backend->take_value(std::move(value));
    EXPECT_TRUE(value.empty());
}

TYPED_TEST(ValueAcross, IsCopiedThere) {
    io_value const value = this->made();
    io_value const copy = this->backend->copy_value(value);
    expect_sample_value<TypeParam>(copy);
    expect_sample_value<TypeParam>(value);
}

TYPED_TEST(ValueAcross, GoesThereAndBack) {
    io_value value = this->made();
    io_value const back = this->backend->pass_value(std::move(value));
    expect_sample_value<TypeParam>(back);
}

TYPED_TEST(ValueAcross, ReplacesThereWhatWasMadeHere) {
    io_value target("made by the host");
    this->backend->assign_value(target, this->made());
    expect_sample_value<TypeParam>(target);
}

TYPED_TEST(ValueAcross, ReplacesHereWhatWasMadeThere) {
    io_value target = this->backend->make_value(31);
    target = this->made();
    expect_sample_value<TypeParam>(target);
}

TYPED_TEST(ValueAcross, LeavesNothingBehindThereWhenMemoryIsExhausted) {
    io_value const value = this->made();
    int const failures = test_support::count_survived_failures(
        [&] { static_cast<void>(this->backend->copy_value(value)); });
    bool const owns = detail::index_of<TypeParam> > detail::last_plain_index;
    EXPECT_GE(failures, owns ? 1 : 0);
}

class PlainTypesAcross : public WithModule {};

TEST_F(PlainTypesAcross, PassViewsByValue) {
    EXPECT_EQ(backend->upper_case("level"), "LEVEL");
    EXPECT_EQ(backend->upper_case(utility::string_view()), "");
    int const numbers[] = {1, 2, 3};
    EXPECT_EQ(backend->doubled(numbers).to_vector(), (std::vector<int>{2, 4, 6}));
    EXPECT_EQ(backend->doubled({}).size(), 0U);
}

TEST_F(PlainTypesAcross, ReturnArraysOfTexts) {
    auto const texts = backend->repeated("a text that is longer than small buffers", 3);
    ASSERT_EQ(texts.size(), 3U);
    EXPECT_EQ(texts[2], "a text that is longer than small buffers");
    EXPECT_EQ(backend->repeated("x", 0).data(), nullptr);
}

TEST_F(PlainTypesAcross, ReturnLargeBlocks) {
    std::string const large(4095, 'x');
    EXPECT_EQ(backend->upper_case(large).size(), 4095U);
    EXPECT_EQ(backend->repeated("x", 1000).size(), 1000U);
}

TEST_F(PlainTypesAcross, GiveAwayArraysOfTexts) {
    utility::array<utility::string> texts{"a", "", "b"};
    backend->take(std::move(texts));
    EXPECT_TRUE(texts.empty());
    backend->take(backend->repeated("x", 200));
}

TEST_F(PlainTypesAcross, PassTimesTypesAndIdentifiers) {
    EXPECT_EQ(backend->later(io_timestamp(-5), 3), io_timestamp(-2));
    EXPECT_EQ(backend->type_of(backend->make_value(19)),
              io_data_type::array_of(io_data_type::basic_types::i16));
    EXPECT_EQ(backend->identifier("level", 7), plc_identifier("level", 7));
}

TEST_F(PlainTypesAcross, PassHandles) {
    io_object object = backend->object(5);
    EXPECT_EQ(object.type().structure_id, 5U);
    io_object const copy(object);
    object = backend->object(6);
    EXPECT_EQ(copy.type().structure_id, 5U);
    io_structure_type const structure = backend->structure();
    EXPECT_EQ(structure.name(), "tank");
    EXPECT_EQ(structure.get_member("level").structure_id, 9U);
}

TEST_F(PlainTypesAcross, ShareTheEmptyText) {
    EXPECT_EQ(backend->shared_empty_text(), &utility::string::S_empty);
}

TEST_F(PlainTypesAcross, ReportExhaustedMemoryOfTheModule) {
    int const numbers[] = {1, 2, 3};
    {
        test_support::allocation_failure const failure(1);
        EXPECT_THROW(static_cast<void>(backend->doubled(numbers)), std::bad_alloc);
    }
    EXPECT_EQ(test_support::count_survived_failures(
                  [&] { static_cast<void>(backend->repeated("level", 3)); }),
              5); // the argument, the block and three texts
}

} // namespace
