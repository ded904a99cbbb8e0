#include "batches.hpp"

#include "failures.hpp"
#include "progress.hpp"

#include <algorithm>

namespace iohost {

namespace {

namespace v2 = tavi::ioapi::v2;
using identifiers = v2::utility::data_view<v2::plc_identifier const>;

/// Call `work` with the first index and the size of each batch.
template <class Work>
void for_each_batch(unsigned int count, progress& shown, Work work) {
    for (unsigned int first = 0; first < count; first += batch_size) {
        work(first, std::min(batch_size, count - first));
        if (count > batch_size) shown.show(std::min(count, first + batch_size), count);
    }
}

} // namespace

v2::read_result read_in_batches(example::backend& backend, identifiers variables) {
    v2::read_result all(variables);
    progress shown("variables read");
    for_each_batch(variables.size(), shown, [&](unsigned int first, unsigned int size) {
        v2::read_result batch(identifiers(variables.data() + first, size));
        v2::io_error error;
        backend.read(batch, error);
        insist("read", error);
        for (unsigned int i = 0; i < std::min(size, batch.size()); ++i) {
            auto const& entry = batch[i];
            if (entry.ok()) {
                all.set(first + i, entry.value());
            } else {
                all.set(first + i, entry.error());
            }
        }
    });
    return all;
}

v2::write_result write_in_batches(example::backend& backend,
                                  identifiers variables,
                                  v2::utility::data_view<v2::io_value const> values) {
    v2::write_result all(variables);
    progress shown("variables written");
    for_each_batch(variables.size(), shown, [&](unsigned int first, unsigned int size) {
        v2::write_result batch(identifiers(variables.data() + first, size));
        v2::io_error error;
        backend.write({values.data() + first, size}, batch, error);
        insist("write", error);
        for (unsigned int i = 0; i < std::min(size, batch.size()); ++i) {
            all.set(first + i, batch[i].error());
        }
    });
    return all;
}

} // namespace iohost
