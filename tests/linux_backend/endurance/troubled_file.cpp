#include "troubled_file.hpp"

#include <algorithm>
#include <array>
#include <filesystem>

namespace endurance {

namespace {

namespace fs = std::filesystem;

std::size_t any_up_to(std::size_t most, std::mt19937_64& chance) {
    return std::uniform_int_distribution<std::size_t>(0, most)(chance);
}

} // namespace

bool troubled_file::may_meet(mishap which) const noexcept {
    switch (which) {
    case mishap::none:
    case mishap::unmounted: return false;
    case mishap::too_large: return file_->too_large != nullptr;
    case mishap::unplugged: return file_->device != nullptr;
    default: return true;
    }
}

void troubled_file::meet(mishap which, std::uint32_t number, std::mt19937_64& chance) {
    met_ = which;
    shown_.reset();
    machine_->remove(file_->name);
    switch (which) {
    case mishap::shrunk: shrink(file_->text(number), chance); break;
    case mishap::nonsense: write_nonsense(chance); break;
    case mishap::too_large: write(file_->too_large(), answer::malformed); break;
    case mishap::folder:
        fs::create_directory(machine_->path(file_->name));
        said_ = answer::unreadable;
        break;
    case mishap::loop: link_to(machine_->path(file_->name), answer::unreadable); break;
    case mishap::endless: link_to("/dev/zero", answer::malformed); break;
    case mishap::unplugged:
        fs::rename(machine_->path(file_->device), aside());
        said_ = answer::not_found;
        break;
    default: said_ = answer::absent; break;
    }
}

void troubled_file::recover() {
    if (met_ == mishap::unplugged) fs::rename(aside(), machine_->path(file_->device));
    machine_->remove(file_->name);
    met_ = mishap::none;
    said_ = answer::value;
}

void troubled_file::show(std::uint32_t number) {
    if (!is_well() || shown_ == number) return;
    write(file_->text(number), answer::value);
    shown_ = number;
}

void troubled_file::shrink(std::string const& text, std::mt19937_64& chance) {
    auto const cuts = file_->cuts(text);
    auto const& cut = cuts[any_up_to(cuts.size() - 1, chance)];
    auto const length = cut.first + any_up_to(cut.last - cut.first, chance);
    write(std::string_view(text).substr(0, length), cut.said);
}

void troubled_file::write(std::string_view text, answer said) {
    // A file that is made anew waits for no disk, unlike one that is cut and written again.
    machine_->remove(file_->name);
    machine_->write(file_->name, text);
    said_ = said;
}

void troubled_file::write_nonsense(std::mt19937_64& chance) {
    constexpr std::array letters{'q', 'w', 'z', '\xFF', '\0', ' ', '\t', '\x01'};
    constexpr std::size_t most = 3000;
    std::string text(1 + any_up_to(most, chance), ' ');
    std::generate(text.begin(), text.end(), [&] { return letters[any_up_to(7, chance)]; });
    write(file_->takes_any_text ? '\n' + text : text, file_->of_nonsense);
}

void troubled_file::link_to(std::string const& target, answer said) {
    fs::create_symlink(target, machine_->path(file_->name));
    said_ = said;
}

std::string troubled_file::aside() const {
    return machine_->path("aside_" + fs::path(file_->device).filename().string());
}

} // namespace endurance
