#include "conversion.hpp"

#include <utility>

namespace iohost {

namespace v2 = tavi::ioapi::v2;

void convert_values(v2::read_result& result, v2::io_data_type const& type) {
    for (auto& entry : result) {
        if (!entry.ok()) continue;
        auto const& read = entry.value();
        v2::io_error error;
        // What comes of a failure is a default of the type; the error alone tells.
        auto converted = read.value().to_variant(type, error);
        if (error) {
            entry.set(std::move(error));
        } else {
            entry.set(v2::io_data_value(std::move(converted), read.timestamp(), read.quality()));
        }
    }
}

} // namespace iohost
