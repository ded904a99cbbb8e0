#include "structure_registration.hpp"

#include "data_type.hpp"
#include "setup_error.hpp"

#include <utility>
#include <vector>

namespace modbus_backend {

namespace {

namespace v2 = tavi::ioapi::v2;

v2::io_structure_type type_of(structure const& described) {
    v2::io_structure_type type(described.name);
    for (auto const& part : described.members) type.set_member(part.name, data_type_of(part.type));
    return type;
}

/// Takes back what it has registered, unless it is kept.
class registration {
public:
    explicit registration(v2::backend_query host) : host_(host) {}
    registration(registration const&) = delete;
    registration& operator=(registration const&) = delete;
    ~registration() {
        for (auto const& type : types_) take_back(type);
    }

    v2::io_object add(structure const& described) {
        auto structure = type_of(described);
        types_.reserve(types_.size() + 1);
        v2::io_error error;
        auto const type =
            host_.register_structure_type(v2::plc_identifier(described.name), structure, error);
        if (error) {
            std::string const reason = error.message().str();
            throw setup_error(std::move(error), "the host does not take the structure '" +
                                                    described.name + "': " + reason);
        }
        types_.push_back(type);
        return {type, std::move(structure)};
    }

    void keep() noexcept { types_.clear(); }

private:
    void take_back(v2::io_data_type const& type) noexcept {
        try {
            v2::io_error ignored;
            host_.unregister_structure_type(type, ignored);
        } catch (...) {
            return; // one that the host does not give up does no harm
        }
    }

    v2::backend_query host_;
    std::vector<v2::io_data_type> types_;
};

} // namespace

void register_structures(structure_list const& structures, v2::backend_query host) {
    registration registered(host);
    std::vector<v2::io_object> blanks;
    for (auto const& described : structures) blanks.push_back(registered.add(*described));
    for (std::size_t i = 0; i < blanks.size(); ++i) structures[i]->blank = std::move(blanks[i]);
    registered.keep();
}

} // namespace modbus_backend
