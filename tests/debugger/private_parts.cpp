// Describes the private parts of handles to the debugger. Presets build the library with line
// numbers alone; its users get the description with the debug symbols of the library, which are a
// file of their own as well.
#include <config/category_impl.hpp>
#include <config/config_template_impl.hpp>
#include <config/option_impl.hpp>
#include <config/store_impl.hpp>
#include <config/verification_result_impl.hpp>
#include <foundation/io_error_diagnostics_generic_impl.hpp>
#include <results/browse_result_impl.hpp>
#include <results/subscription_result_impl.hpp>
#include <structures/io_object_impl.hpp>
#include <structures/io_structure_dictionary_impl.hpp>
#include <structures/io_structure_type_impl.hpp>

#include <utility>

namespace tavi::ioapi::v2 {

// The entries of maps are described where they are complete.
static_assert(sizeof(io_object_impl::members::value_type) > 0);
static_assert(sizeof(io_structure_type::impl::members::value_type) > 0);
static_assert(sizeof(subscription_result::impl::variables::value_type) > 0);
static_assert(sizeof(std::pair<unsigned long long const, io_structure_type>) > 0);
static_assert(sizeof(io_error_diagnostics_generic::impl::diagnostic_entry) > 0);

struct private_parts {
    io_object_impl* object;
    io_structure_type::impl* structure;
    io_structure_dictionary::impl* dictionary;
    io_error_diagnostics_generic::impl* diagnostics;
    io_error_diagnostics_generic::impl::iterator_impl* diagnostic;
    io_object::const_iterator::impl* member;
    io_structure_type::const_iterator::impl* declared_member;
    subscription_result::const_iterator::impl* variable;
    browse_result::impl* browsed;
    subscription_result::impl* subscribed;
    config::option::impl* option;
    config::category::impl* category;
    config::config_template::impl* form;
    config::store::impl* store;
    config::verification_result::impl* verdict;
};

extern private_parts const described;
private_parts const described{};

} // namespace tavi::ioapi::v2
