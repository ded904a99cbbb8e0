#include <tavi/ioapi/v2/ioapi.hpp>

#include "crowd.hpp"

#include <gtest/gtest.h>

#include <mutex>
#include <utility>
#include <vector>

namespace threads_test {
namespace {

namespace v2 = tavi::ioapi::v2;
using plc_id = v2::plc_identifier;

plc_id level_id() {
    return plc_id("tank.level");
}
plc_id name_id() {
    return plc_id("tank.name");
}
std::vector<plc_id> asked_for() {
    return {level_id(), name_id()};
}

TEST(threads, plc_identifier) {
    expect_plain(
        plc_id("a text that no small buffer could hold", 4),
        [](auto const& identifier) { return identifier.secondary().number() == 4; },
        [](auto& identifier) { identifier = plc_id(7); });
}

TEST(threads, plc_identifier_part) {
    expect_plain(
        v2::plc_identifier_part("a text that no small buffer could hold"),
        [](auto const& part) { return part.text().size() == 38; },
        [](auto& part) { part = v2::plc_identifier_part(7); });
}

TEST(threads, node) {
    v2::browsing::node node;
    node.identifier = level_id();
    node.description = "a text that no small buffer could hold";
    expect_plain(
        node, [](auto const& each) { return each.identifier == level_id(); },
        [](auto& each) { each.identifier = name_id(); });
}

TEST(threads, browse_result) {
    v2::browse_result found(2);
    found.begin()[1].identifier = level_id();
    expect_plain(
        found,
        [](auto const& result) {
            return result.size() == 2 && result.get_node(level_id()) != nullptr;
        },
        [](auto& result) { result.push({}); });
}

TEST(threads, read_result) {
    v2::read_result answers(asked_for());
    answers.set(0, v2::io_data_value(2.75, v2::io_data_value::value_quality::good));
    expect_plain(
        answers,
        [](auto const& result) {
            return result.size() == 2 && result.find(level_id())->ok() && !result[1].ok();
        },
        [](auto& result) { result.set(name_id(), v2::io_data_value()); });
}

TEST(threads, read_result_result_type) {
    v2::read_result::result_type answer(level_id());
    answer.set(v2::io_data_value(2.75, v2::io_data_value::value_quality::good));
    expect_plain(
        answer,
        [](auto const& entry) {
            return entry.ok() && entry.identifier() == level_id() && entry.value().good();
        },
        [](auto& entry) { entry.set(v2::io_error(v2::io_errc::not_found)); });
}

TEST(threads, write_result_result_type) {
    expect_plain(
        v2::write_result::result_type(level_id()),
        [](auto const& entry) { return !entry.ok() && entry.identifier() == level_id(); },
        [](auto& entry) { entry.set(v2::io_error()); });
}

TEST(threads, write_result) {
    expect_plain(
        v2::write_result(asked_for()),
        [](auto const& result) { return result.size() == 2 && !result.find(name_id())->ok(); },
        [](auto& result) { result.set(1, v2::io_error()); });
}

TEST(threads, subscription_id) {
    auto shared = v2::subscription_id::from_number(5);
    v2::subscription_id const& seen = shared;
    expect_shared_reads(seen, [](auto const& each) { return each.number() == 5; });
    std::mutex lock;
    EXPECT_EQ(failures_of_crowd([&](int, int) {
                  std::lock_guard<std::mutex> const held(lock);
                  v2::subscription_id const taken(std::move(shared));
                  shared = v2::subscription_id::from_number(taken.number());
                  return shared.number() == 5;
              }),
              0);
}

TEST(threads, subscription_result_variable_result) {
    v2::subscription_result::variable_result shared;
    shared.identifier = level_id();
    shared.aux_value = 3;
    v2::subscription_result::variable_result const& seen = shared;
    auto const reads_well = [](auto const& each) {
        return each.ok() && each.identifier == level_id() && each.aux_value == 3;
    };
    expect_shared_reads(seen, reads_well);
    std::mutex lock;
    EXPECT_EQ(failures_of_crowd([&](int, int) {
                  std::lock_guard<std::mutex> const held(lock);
                  bool const intact = reads_well(shared);
                  v2::subscription_result::variable_result const taken(std::move(shared));
                  shared = {level_id(), {}, {}, taken.aux_value, {}};
                  return intact;
              }),
              0);
}

TEST(threads, subscription_result_const_iterator) {
    v2::subscription_result held;
    held.set(level_id(), {}, 3, v2::subscription_id::from_number(1));
    held.set(name_id(), v2::io_errc::not_found);
    expect_plain(
        held.begin(),
        [](auto const& at) { return at->identifier == level_id() && (*at).aux_value == 3; },
        [](auto& at) { ++at; });
}

TEST(threads, subscription_result) {
    v2::subscription_result shared;
    shared.set(level_id(), {}, 3, v2::subscription_id::from_number(1));
    expect_shared_reads(shared, [](auto const& result) {
        unsigned int entries = 0;
        for (auto const& each : result) entries += each.aux_value;
        return entries == 3 && v2::subscription_result::is_not_found(result.get(name_id()));
    });
    std::mutex lock;
    EXPECT_EQ(failures_of_crowd([&](int, int round) {
                  std::lock_guard<std::mutex> const held(lock);
                  if (round % 2 == 0) {
                      shared.set(name_id(), v2::io_errc::not_found);
                      return shared.has(name_id());
                  }
                  shared.remove(name_id());
                  return !shared.has(name_id());
              }),
              0);
}

} // namespace
} // namespace threads_test
