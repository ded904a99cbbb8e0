#include "plant.hpp"

#include <tavi/ioapi/v2/io_error_diagnostics_generic.hpp>
#include <tavi/ioapi/v2/io_object.hpp>

#include <limits>
#include <utility>

namespace test_backend {

namespace {

namespace v2 = tavi::ioapi::v2;
using declared = v2::io_data_type;
using kinds = declared::basic_types;
using quality = v2::io_data_value::value_quality;

class device final : public v2::io_error_category {
public:
    constexpr device() noexcept = default;
    [[nodiscard]] char const* name() const override { return "device"; }
    [[nodiscard]] v2::utility::string message(int code) const override {
        return code == 7 ? "valve stuck" : "";
    }
};

v2::io_timestamp const taken_at(17'000'000'000'000'000);

v2::io_error stuck() {
    v2::io_error_diagnostics_generic details;
    details.set(v2::diagnostics_key::address, 40001U);
    details.set(v2::diagnostics_key::device_text, "no answer");
    v2::io_error error(device_category(), 7);
    error.diagnostics(details);
    return error;
}

v2::io_structure_type pump_state() {
    return {"pump_state",
            {{"runs", declared::scalar(kinds::u16)},
             {"speed", declared::scalar(kinds::flt)},
             {"on", declared::scalar(kinds::boolean)},
             {"currents", declared::array_of(kinds::u16)}}};
}

} // namespace

v2::io_error_category const& device_category() noexcept {
    static device const category;
    return category;
}

plant::plant(behaviour const& how, v2::backend_query host) : how_(how) {
    add_tank();
    add_pump(host);
    add_odd();
    add_more();
}

void plant::add(v2::plc_identifier identifier,
                std::string const& folder,
                v2::io_value value,
                std::string const& description) {
    places_.emplace(identifier, variables_.size());
    variables_.push_back({std::move(identifier),
                          folder,
                          description,
                          v2::io_data_value(std::move(value), taken_at, quality::good),
                          {}});
}

void plant::add_tank() {
    add(v2::plc_identifier("tank.level"), "plant/tank", 2.5F, "m above ground");
    add(v2::plc_identifier("tank.count"), "plant/tank", static_cast<unsigned short>(1500));
    add(v2::plc_identifier("tank.name"), "plant/tank", "north");
    add(v2::plc_identifier("tank.open"), "plant/tank", true);
    add(v2::plc_identifier("tank.profile"), "plant/tank", v2::utility::array<int>{1, -2, 3});
    add(v2::plc_identifier("tank.volume"), "plant/tank", 0.1);
}

void plant::add_pump(v2::backend_query host) {
    static unsigned int opened = 0;
    std::string name = "pump_state";
    if (how_.has("registers_anew")) name += std::to_string(++opened);
    v2::io_error error;
    auto const type = host.register_structure_type(v2::plc_identifier(name), pump_state(), error);
    v2::io_object state(type, pump_state());
    state.set("runs", 7);
    state.set("speed", 1.5);
    state.set("on", true);
    state.set("currents", v2::utility::array<unsigned short>{1, 2});
    add(v2::plc_identifier("pump.state"), "plant/pump", state);
    add(v2::plc_identifier("pump.fixed"), "plant/pump", static_cast<unsigned char>(9));
    variables_.back().writable = false;
}

void plant::add_odd() {
    add(v2::plc_identifier("a/b"), "odd", static_cast<unsigned char>(1));
    add(v2::plc_identifier(17), "odd", 170U);
    add(v2::plc_identifier("#17"), "odd", 171U);
    add(v2::plc_identifier("esc\x1b[2J"), "odd", "bell\a", "clears\x1b[2J");
    add(v2::plc_identifier("odd.big"), "odd", 9007199254740993LL);
    add(v2::plc_identifier("odd.nan"), "odd", std::numeric_limits<double>::quiet_NaN());
    add(v2::plc_identifier("odd.bytes"), "odd", "a\xFFz");
    add(v2::plc_identifier("odd.doubtful"), "odd", 5);
    variables_.back().value.value(5, taken_at, quality::bad);
    add(v2::plc_identifier("odd.broken"), "odd", 0);
    variables_.back().error = stuck();
    add(v2::plc_identifier("odd.ticker"), "odd", 0U);
}

void plant::add_more() {
    for (unsigned int i = 0; i < how_.variables; ++i) {
        add(v2::plc_identifier("v" + std::to_string(i)), "more", static_cast<int>(i));
    }
}

variable* plant::find(v2::plc_identifier const& identifier) {
    auto const found = places_.find(v2::plc_identifier(identifier.primary()));
    return found != places_.end() ? &variables_[found->second] : nullptr;
}

v2::io_data_type plant::declared_type(variable const& known) const {
    if (how_.has("lies_about_types") && known.identifier == v2::plc_identifier("tank.level")) {
        return declared::scalar(kinds::i32);
    }
    return known.value.value().data_type();
}

void plant::push_folder(v2::browse_result& result, std::string const& name) const {
    v2::browsing::node node;
    node.node_class = v2::browsing::node_class::folder;
    node.identifier = v2::plc_identifier(name);
    node.browse_name = v2::plc_identifier(name.substr(name.rfind('/') + 1));
    node.description = "folder";
    result.push(node);
}

bool plant::browse(v2::plc_identifier const& folder, v2::browse_result& result) const {
    if (how_.has("nodes_without_identifier")) {
        v2::browsing::node node;
        node.node_class = v2::browsing::node_class::type;
        result.push(node);
    }
    if (folder == v2::plc_identifier()) {
        push_folder(result, "plant");
        push_folder(result, "odd");
        if (how_.variables != 0) push_folder(result, "more");
        if (how_.cycle) push_folder(result, "loop");
        return true;
    }
    if (folder == v2::plc_identifier("plant")) {
        push_folder(result, "plant/tank");
        push_folder(result, "plant/pump");
        return true;
    }
    if (how_.cycle && folder == v2::plc_identifier("loop")) {
        push_folder(result, "loop");
        return true;
    }
    bool found = false;
    for (auto const& each : variables_) {
        if (folder != v2::plc_identifier(each.folder)) continue;
        found = true;
        v2::browsing::node node;
        node.node_class = v2::browsing::node_class::variable;
        node.identifier = each.identifier;
        node.browse_name = each.identifier;
        node.description = each.description;
        node.data_type = declared_type(each);
        result.push(node);
    }
    return found;
}

void plant::tick() {
    auto& ticker = *find(v2::plc_identifier("odd.ticker"));
    auto const before = ticker.value.value().as<unsigned int>();
    ticker.value.value(before + 1, taken_at, quality::good);
    ++ticker.version;
}

} // namespace test_backend
