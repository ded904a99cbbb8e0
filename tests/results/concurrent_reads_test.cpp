#include <tavi/ioapi/v2/read_result.hpp>

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace {

using namespace tavi::ioapi::v2;
using id = plc_identifier;
using quality = io_data_value::value_quality;

// What the thread sanitizer is to see: several readers of one result, and nobody who writes.
TEST(ConcurrentReads, OfOneResultAreSafe) {
    std::vector<id> const identifiers{id("level", 1), id(7), id("missing")};
    read_result result(identifiers);
    result.set(0, io_data_value("a text that is longer than small buffers", quality::good));
    result.set(1, io_data_value(utility::array<io_value>::of(1, io_object(7, {})), quality::bad));
    read_result const& shared = result;
    auto const read = [&shared] {
        for (int round = 0; round < 50; ++round) {
            read_result const copy(shared);
            EXPECT_EQ(copy.find(id("level", 1)), copy.begin());
            EXPECT_EQ(shared.find(id("missing"))->error().message(), "no result");
            EXPECT_EQ(shared[1].value().value().get_if<utility::array<io_value>>()->size(), 2U);
            EXPECT_TRUE(shared[0].value().good());
        }
    };
    std::thread first(read);
    std::thread second(read);
    first.join();
    second.join();
}

} // namespace
