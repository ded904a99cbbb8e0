#pragma once

#include <tavi/ioapi/v2/subscription_result.hpp>

#include <map>

namespace tavi::ioapi::v2 {

/// The entries in the order of their identifiers. The key of an entry stays the one it was first
/// set with, which is equivalent to the identifier in it but need not be equal.
class subscription_result::impl {
public:
    using variables = std::map<plc_identifier, variable_result>;

    /// The answer for an absent identifier.
    TAVI_IOAPI_API static variable_result const S_resultNotFound;

    impl() = default;

    TAVI_IOAPI_API void set(plc_identifier const& identifier,
                            io_data_type data_type,
                            unsigned int aux_value,
                            subscription_id id);
    TAVI_IOAPI_API void set(plc_identifier const& identifier, io_error error);
    TAVI_IOAPI_API unsigned int remove(plc_identifier const& identifier);
    TAVI_IOAPI_API bool has(plc_identifier const& identifier) const;
    TAVI_IOAPI_API variable_result const& get(plc_identifier const& identifier) const;
    TAVI_IOAPI_API variables::const_iterator begin() const;
    TAVI_IOAPI_API variables::const_iterator end() const;

private:
    void store(plc_identifier const& identifier, variable_result result);

    variables variables_;
};

/// A position among the entries.
class subscription_result::const_iterator::impl {
public:
    TAVI_IOAPI_API explicit impl(subscription_result::impl::variables::const_iterator position);

    TAVI_IOAPI_API void increment();
    TAVI_IOAPI_API variable_result const* get() const;
    TAVI_IOAPI_API impl* clone() const;
    TAVI_IOAPI_API bool equal(impl const& other) const;

private:
    subscription_result::impl::variables::const_iterator position_;
};

} // namespace tavi::ioapi::v2
