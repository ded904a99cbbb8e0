#pragma once

#include "../api.hpp"
#include "../utility/string_view.hpp"
#include "object.hpp"

namespace tavi::ioapi::v2 {

class io_value;

namespace interfaces {

/// The detail of an error as key and value pairs, shared by all copies of the error. Only the
/// count is protected against concurrent use.
class TAVI_IOAPI_API io_error_diagnostics_impl : public object {
public:
    /// Walks the pairs; has one owner, who ends it by `release`.
    class TAVI_IOAPI_API iterator_impl {
    public:
        /// One pair: both point into the list and live as long as its entry.
        struct entry {
            utility::string_view key; ///< of this pair
            io_value const* value;    ///< never null
        };

        iterator_impl(iterator_impl const&) = delete;
        iterator_impl& operator=(iterator_impl const&) = delete;

        /// Called by `release`; nobody else deletes an iterator.
        virtual ~iterator_impl();

        /// Step to the next pair. \return whether there is one; false at the end, without a step
        virtual bool advance() = 0;
        /// Whether both are of one class and stand at the same place.
        [[nodiscard]] virtual bool equal_to(iterator_impl const& other) const = 0;
        /// The pair at this place, which must not be the end.
        [[nodiscard]] virtual entry get() const = 0;
        /// A new iterator at the same place, owned by the caller. \throws std::bad_alloc
        [[nodiscard]] virtual iterator_impl* clone() const = 0;
        /// Destroy this iterator.
        virtual void release() = 0;

    protected:
        iterator_impl() noexcept = default;
    };

    ~io_error_diagnostics_impl() override;

    /// The number of pairs.
    [[nodiscard]] virtual unsigned int size() const = 0;
    /// A test for `key`. Its sense is that of the class which implements it: the library's own
    /// answers true for a key that is absent.
    [[nodiscard]] virtual bool has(utility::string_view key) const = 0;
    /// A copy of the value under `key`, or the empty value. \throws std::bad_alloc
    [[nodiscard]] virtual io_value get(utility::string_view key) const = 0;
    /// A new iterator at the first pair, owned by the caller. \throws std::bad_alloc
    [[nodiscard]] virtual iterator_impl* make_iterator() const = 0;
};

} // namespace interfaces
} // namespace tavi::ioapi::v2
