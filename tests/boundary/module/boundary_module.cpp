#include "boundary_module.hpp"

#include "diagnostics.hpp"
#include "own_host.hpp"
#include "own_object.hpp"
#include "samples.hpp"

#include <cctype>
#include <string>
#include <utility>

namespace boundary {
namespace {

using namespace tavi::ioapi::v2;
using quality = io_data_value::value_quality;

class boundary_category final : public io_error_category {
public:
    char const* name() const override { return "boundary"; }
    utility::string message(int code) const override {
        return code == 12 ? utility::string("device refuses") : utility::string();
    }
};
boundary_category const own_category;

std::atomic<int> living{0};

io_error const early_error(io_errc::not_found);
utility::string const early_text = early_error.message();
int const early_code = subscription_result::not_found().error.code();

template <int Index = 1>
io_value make_sample(int index) {
    if constexpr (Index == detail::alternatives::size) {
        return {};
    } else {
        return index == Index ? io_value(sample<detail::alternative_at<Index>>())
                              : make_sample<Index + 1>(index);
    }
}

template <class Diagnostics>
io_error error_with(int code) {
    io_error error(own_category, code);
    auto* const diagnostics = new Diagnostics(code * 100, living);
    error.diagnostics(io_error_diagnostics(diagnostics));
    diagnostics->release();
    return error;
}

subscription_id subscription(unsigned int index) {
    switch (index % 4) {
    case 1: return subscription_id::from_number(1000ULL + index);
    case 2: return subscription_id::from_address(&living);
    case 3: return subscription_id::adopt(new own_object);
    default: return {};
    }
}

class served_module final : public backend_module {
public:
    io_value make_value(int index) const override { return make_sample(index); }
    io_value copy_value(io_value const& value) const override { return value; }
    io_value pass_value(io_value value) const override { return value; }
    void take_value(io_value value) const override { static_cast<void>(value.index()); }
    void assign_value(io_value& target, io_value const& source) const override { target = source; }

    utility::string upper_case(utility::string_view text) const override {
        std::string upper = text.str();
        for (char& byte : upper) {
            byte = static_cast<char>(std::toupper(static_cast<unsigned char>(byte)));
        }
        return upper;
    }
    utility::array<int> doubled(utility::data_view<int const> numbers) const override {
        utility::array<int> result(numbers);
        for (int& number : result) number *= 2;
        return result;
    }
    utility::array<utility::string> repeated(utility::string text,
                                             unsigned int count) const override {
        utility::array<utility::string> result(count);
        for (auto& element : result) element = text;
        return result;
    }
    void take(utility::array<utility::string> texts) const override {
        static_cast<void>(texts.size());
    }
    io_timestamp later(io_timestamp time, long long ticks) const override {
        return io_timestamp(time.ticks() + ticks);
    }
    plc_identifier identifier(utility::string_view text, unsigned long long number) const override {
        return plc_identifier(text, number);
    }
    io_data_type type_of(io_value const& value) const override { return value.data_type(); }
    io_object object(unsigned long long id) const override { return io_object(id, structure()); }
    io_structure_type structure() const override {
        return io_structure_type("tank", {{"level", io_data_type::object(9)}});
    }

    io_error_category const& category() const override { return own_category; }
    io_error detailed_error() const override { return error_with<counted_pair>(12); }
    io_error self_counted_error() const override { return error_with<self_counted_pair>(13); }
    int living_diagnostics() const override { return living; }

    void read(read_result& result) const override {
        for (unsigned int i = 0; i < result.size(); ++i) {
            auto const index = static_cast<int>(i);
            if (index < detail::alternatives::size) {
                result.set(
                    i, io_data_value(make_value(index), io_timestamp(1000 + index), quality::good));
            } else if (i % 3 == 0) {
                result.set(i, detailed_error());
            } else if (i % 3 == 1) {
                result.set(result[i].identifier(), self_counted_error());
            } else {
                result[i].set(make_io_error(io_errc::not_supported));
            }
        }
    }
    void write(write_result& result) const override {
        for (auto& entry : result) {
            if (entry.identifier().primary().is_none()) {
                entry.set(detailed_error());
            } else {
                entry.set(io_error());
            }
        }
    }

    void browse(browse_result& result) const override {
        using browsing::node_class;
        auto const type = io_data_type::scalar(io_data_type::basic_types::dbl);
        result.push({node_class::folder, plc_identifier("tank"), plc_identifier("Tank"), {}, {}});
        result.push({node_class::variable, plc_identifier("tank", 1), plc_identifier("Level"),
                     "how high the water stands", type});
        result.push({node_class::variable, plc_identifier("tank", 2), plc_identifier("Flow"),
                     "how fast it runs", type});
    }
    void subscribe(utility::data_view<plc_identifier const> identifiers,
                   subscription_result& result) const override {
        for (unsigned int i = 0; i < identifiers.size(); ++i) {
            if (i + 1 == identifiers.size()) {
                result.set(identifiers[i], detailed_error());
            } else {
                result.set(identifiers[i], io_data_type::array_of(io_data_type::basic_types::i32),
                           i, subscription(i));
            }
        }
    }
    int living_objects() const override { return own_object::living; }
    config::config_template form() const override {
        config::option::value_option const choices[] = {{"slow", "once a minute", 60},
                                                        {"fast", "once a second", 1}};
        config::option const options[] = {
            {"host", "Host", "Name or address", io_data_type::basic_types::string},
            {"interval", "Interval", "Seconds between two reads", 60, choices}};
        config::category const categories[] = {
            {"connection", "How to get there", true, false, options}};
        return config::config_template(categories);
    }
    config::verification_result verify(config::store const& values) const override {
        config::verification_result result;
        config::config_template const described = form();
        for (auto const& category : described.categories()) {
            for (auto const& option : category.options()) {
                if (values.has(option.key())) continue;
                auto const severity = option.optional()
                                          ? config::verification_result::severity_type::information
                                          : config::verification_result::severity_type::error;
                result.add_issue({severity, "no value", {option.key().str()}});
            }
        }
        return result;
    }
    void annotate(io_error_diagnostics_generic& diagnostics) const override {
        diagnostics.set("seen", true);
    }
    io_data_type ask(backend_query query, io_error& error) const override {
        query.log(log_severity_level::warning, "asking");
        static_cast<void>(query.lookup_data_type(plc_identifier("nothing"), error));
        io_error ignored;
        return query.register_structure_type(plc_identifier("tank"), structure(), ignored);
    }
    backend_query query() const override {
        static own_host host;
        return backend_query(host);
    }

    int early_absent_code() const override { return early_code; }

    [[noreturn]] void raise(io_error error) const override { throw io_exception(std::move(error)); }
    [[noreturn]] void raise_own() const override { throw io_exception(detailed_error()); }
    int code_raised_by(void (*call)()) const override {
        try {
            call();
        } catch (io_exception const& exception) {
            return exception.code();
        }
        return -1;
    }

    char const* early_message() const override { return early_text.c_str(); }
    io_error_category const* generic_category() const override {
        return &generic_io_error_category();
    }
    char const* shared_empty_text() const override { return &utility::string::S_empty; }
};

served_module const served;

} // namespace
} // namespace boundary

extern "C" __attribute__((visibility("default"))) boundary::backend_module const*
boundary_module_entry();

boundary::backend_module const* boundary_module_entry() {
    return &boundary::served;
}

// For programs that know nothing of the library.

/// The length of what the generic category says to `not_found`.
extern "C" __attribute__((visibility("default"))) unsigned int boundary_module_message_size();
/// Touches all of the library; the same length.
extern "C" __attribute__((visibility("default"))) unsigned int boundary_module_exercise();

unsigned int boundary_module_message_size() {
    return tavi::ioapi::v2::make_io_error(tavi::ioapi::v2::io_errc::not_found).message().size();
}

unsigned int boundary_module_exercise() {
    using namespace tavi::ioapi::v2;
    for (int index = 0; index < detail::alternatives::size; ++index) {
        io_value const value = boundary::served.make_value(index);
        static_cast<void>(value.printable_string());
        static_cast<void>(value == io_value(value));
    }
    io_error error = boundary::served.detailed_error();
    static_cast<void>(describe(error));
    io_structure_dictionary dictionary; // starts this thread's engine
    dictionary.add_structure(boundary::served.structure(), error);
    plc_identifier const identifiers[] = {plc_identifier(1), plc_identifier(2), plc_identifier(3),
                                          plc_identifier(4), plc_identifier("a")};
    subscription_result subscribed;
    boundary::served.subscribe(identifiers, subscribed);
    browse_result browsed;
    boundary::served.browse(browsed);
    static_cast<void>(boundary::served.verify(config::store()));
    return boundary_module_message_size();
}
