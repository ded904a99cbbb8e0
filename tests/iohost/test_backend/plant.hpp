#pragma once

#include <tavi/ioapi/v2/backend_query.hpp>
#include <tavi/ioapi/v2/browse_result.hpp>
#include <tavi/ioapi/v2/io_data_value.hpp>
#include <tavi/ioapi/v2/io_error.hpp>

#include "behaviour.hpp"

#include <string>
#include <unordered_map>
#include <vector>

namespace test_backend {

/// A variable of the plant: what it holds, or why it cannot be read.
struct variable {
    tavi::ioapi::v2::plc_identifier identifier;
    std::string folder;
    std::string description;
    tavi::ioapi::v2::io_data_value value;
    tavi::ioapi::v2::io_error error;
    bool writable = true;
    unsigned long long version = 1; ///< another one after each change
};

/// All variables, which exist as long as their connection.
///
/// plant/tank  tank.level flt 2.5, tank.count u16 1500, tank.name string "north",
///             tank.open boolean true, tank.profile i32[] [1, -2, 3], tank.volume dbl 0.1
/// plant/pump  pump.state, an object of runs u16 7, speed flt 1.5, on boolean true,
///             currents u16[] [1, 2]; pump.fixed u8 9, which cannot be written
/// odd         a/b u8 1; the number 17, u32 170; the text `#17`, u32 171; a name with an escape;
///             odd.big i64 9007199254740993; odd.nan dbl; odd.bytes string with 0xFF;
///             odd.doubtful i32 5 of bad quality; odd.broken, device:7 with diagnostics;
///             odd.ticker u32, one more with every poll
/// more        v0, v1, ... as many as are asked for, each i32 of its number
class plant {
public:
    plant(behaviour const& how, tavi::ioapi::v2::backend_query host);

    /// Null where there is none. Members are not looked at.
    [[nodiscard]] variable* find(tavi::ioapi::v2::plc_identifier const& identifier);
    [[nodiscard]] std::vector<variable> const& variables() const noexcept { return variables_; }
    /// What is said of the type, which may be a lie.
    [[nodiscard]] tavi::ioapi::v2::io_data_type declared_type(variable const& known) const;

    /// \return whether there is such a folder
    [[nodiscard]] bool browse(tavi::ioapi::v2::plc_identifier const& folder,
                              tavi::ioapi::v2::browse_result& result) const;

    void tick();

private:
    void add(tavi::ioapi::v2::plc_identifier identifier,
             std::string const& folder,
             tavi::ioapi::v2::io_value value,
             std::string const& description = "");
    void add_tank();
    void add_pump(tavi::ioapi::v2::backend_query host);
    void add_odd();
    void add_more();
    void push_folder(tavi::ioapi::v2::browse_result& result, std::string const& name) const;

    behaviour how_;
    std::vector<variable> variables_;
    std::unordered_map<tavi::ioapi::v2::plc_identifier, std::size_t> places_;
};

/// The category `device`, which knows code 7, "valve stuck", and 8, without a message.
[[nodiscard]] tavi::ioapi::v2::io_error_category const& device_category() noexcept;

} // namespace test_backend
