#pragma once

#include "api.hpp"
#include "detail/data_model.hpp"
#include "io_error.hpp"
#include "plc_identifier.hpp"
#include "utility/array.hpp"
#include "utility/data_view.hpp"

#include <cstddef>

namespace tavi::ioapi::v2 {

/// What a backend fills in when its host writes variables: one error for each identifier, in the
/// order asked for. An entry that the backend never touched says `no_result`: a write that
/// succeeded must be told by a default `io_error`.
///
/// An array of entries without spare capacity: every change of size moves all entries, and nothing
/// is checked by index. Copies are deep, but for the diagnostics of errors, which are shared; a
/// moved-from result is empty. Not synchronised.
class write_result {
public:
    /// The outcome for one variable. An entry that `resize` adds reads as success.
    class result_type {
    public:
        /// No identifier, no error.
        result_type() noexcept = default;
        /// No result yet for `identifier`. \throws std::bad_alloc
        explicit result_type(plc_identifier const& identifier)
            : identifier_(identifier), error_(io_errc::no_result) {}

        /// The variable this entry answers for.
        [[nodiscard]] plc_identifier const& identifier() const noexcept TAVI_IOAPI_LIFETIMEBOUND {
            return identifier_;
        }
        /// The outcome of the write.
        [[nodiscard]] io_error const& error() const noexcept TAVI_IOAPI_LIFETIMEBOUND {
            return error_;
        }
        /// Whether the error is none.
        [[nodiscard]] bool ok() const noexcept { return error_.ok(); }

        /// Store the outcome, which is moved in.
        TAVI_IOAPI_API void set(io_error error);

    private:
        friend struct detail::layout_of<result_type>;

        plc_identifier identifier_;
        io_error error_;
    };

    using value_type = result_type;
    using iterator = result_type*;
    using const_iterator = result_type const*;

    /// No entries.
    write_result() noexcept = default;

    /// One entry for each identifier, in order, without a result yet.
    /// \throws std::bad_alloc, or std::bad_array_new_length for more entries than fit into
    /// 4294967295 bytes, 67108863 on 32-bit platforms and 48806446 on 64-bit ones, as all that adds
    /// entries
    TAVI_IOAPI_API explicit write_result(utility::data_view<plc_identifier const> identifiers);

    /// Start anew with these identifiers, which entries of this result may hold. The block is kept
    /// where the size stays the same. When memory is exhausted a result of another size stays as it
    /// was, one of the same size has its first entries reset.
    TAVI_IOAPI_API void assign(utility::data_view<plc_identifier const> identifiers);

    /// Drop entries at the end, or add blank ones. Nothing happens at the same size; else all
    /// entries move to a new block. When memory is exhausted the result stays as it was.
    TAVI_IOAPI_API void resize(unsigned int size);

    /// The count of entries.
    [[nodiscard]] TAVI_IOAPI_API unsigned int size() const noexcept;
    /// Whether there are no entries.
    [[nodiscard]] bool empty() const noexcept { return size() == 0; }

    /// The entry at `index`, which is not checked.
    [[nodiscard]] TAVI_IOAPI_API result_type& operator[](unsigned int index) noexcept
        TAVI_IOAPI_LIFETIMEBOUND;
    [[nodiscard]] TAVI_IOAPI_API result_type const& operator[](unsigned int index) const noexcept
        TAVI_IOAPI_LIFETIMEBOUND;

    /// All entries, in order; pointers that end with the next change of size, null where there are
    /// no entries.
    [[nodiscard]] TAVI_IOAPI_API result_type* begin() noexcept TAVI_IOAPI_LIFETIMEBOUND;
    [[nodiscard]] TAVI_IOAPI_API result_type* end() noexcept TAVI_IOAPI_LIFETIMEBOUND;
    [[nodiscard]] TAVI_IOAPI_API result_type const* begin() const noexcept TAVI_IOAPI_LIFETIMEBOUND;
    [[nodiscard]] TAVI_IOAPI_API result_type const* end() const noexcept TAVI_IOAPI_LIFETIMEBOUND;
    [[nodiscard]] TAVI_IOAPI_API result_type const* cbegin() const noexcept
        TAVI_IOAPI_LIFETIMEBOUND;
    [[nodiscard]] TAVI_IOAPI_API result_type const* cend() const noexcept TAVI_IOAPI_LIFETIMEBOUND;

    /// The first entry for `identifier`, or null, never `end()`. Linear: for large results keep
    /// the index of each variable and use that.
    [[nodiscard]] TAVI_IOAPI_API result_type* find(plc_identifier const& identifier) noexcept
        TAVI_IOAPI_LIFETIMEBOUND;
    [[nodiscard]] TAVI_IOAPI_API result_type const* find(
        plc_identifier const& identifier) const noexcept TAVI_IOAPI_LIFETIMEBOUND;

    /// Store in the entry at `index`, which is not checked.
    TAVI_IOAPI_API void set(unsigned int index, io_error error);
    /// Store in the first entry for `identifier`, as `find` gives it; an unknown one is ignored.
    TAVI_IOAPI_API void set(plc_identifier const& identifier, io_error error);

private:
    utility::array<result_type> entries_;
};

} // namespace tavi::ioapi::v2

namespace tavi::ioapi::v2::detail {

static_assert(sizeof(write_result) == by_data_model(8, 16));

template <>
struct layout_of<write_result::result_type> {
    using entry = write_result::result_type;
    static_assert(sizeof(entry) == by_data_model(64, 88));
    static_assert(offsetof(entry, identifier_) == 0);
    static_assert(offsetof(entry, error_) == by_data_model(48, 64));
};

} // namespace tavi::ioapi::v2::detail
