#pragma once

#include <tavi/ioapi/v2/io_structure_dictionary.hpp>
#include <tavi/ioapi/v2/io_structure_type.hpp>

#include <map>
#include <mutex>

namespace tavi::ioapi::v2 {

/// The registered structures and the lock that guards them.
class io_structure_dictionary::impl {
public:
    TAVI_IOAPI_API io_data_type add(io_structure_type structure, io_error& error);
    TAVI_IOAPI_API io_structure_type get(unsigned long long id, io_error& error) const;
    TAVI_IOAPI_API void replace(unsigned long long id,
                                io_structure_type structure,
                                io_error& error);
    TAVI_IOAPI_API void remove(unsigned long long id, io_error& error);

    // Both are for callers that hold the lock.
    TAVI_IOAPI_API bool is_id_unused(unsigned long long id) const;
    TAVI_IOAPI_API unsigned long long get_unused_id() const;

private:
    mutable std::mutex lock_;
    std::map<unsigned long long, io_structure_type> structures_;
};

} // namespace tavi::ioapi::v2
