#pragma once

#include "connection.hpp"
#include "settings.hpp"
#include "variable_map.hpp"

#include <backend_module.hpp>

namespace modbus_backend {

/// Reads the variables of a map file from one controller over Modbus TCP.
class tcp_backend final : public example::backend {
public:
    /// Reads the map and connects. \throws setup_error
    explicit tcp_backend(settings const& given);

    void release() noexcept override;
    void variables(tavi::ioapi::v2::utility::array<tavi::ioapi::v2::plc_identifier>& list,
                   tavi::ioapi::v2::io_error& error) noexcept override;
    /// Connects first where the connection was lost in an earlier read.
    void read(tavi::ioapi::v2::read_result& result,
              tavi::ioapi::v2::io_error& error) noexcept override;
    void register_structures(tavi::ioapi::v2::io_structure_dictionary& dictionary,
                             tavi::ioapi::v2::io_error& error) noexcept override;

private:
    void read_all(tavi::ioapi::v2::read_result& result);

    variable_map map_;
    connection connection_;
};

} // namespace modbus_backend
