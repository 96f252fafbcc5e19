#include <kxdevui/framework/ui_life.h>

#include <unordered_map>

namespace kx::ui {

namespace {

// Never freed: controls with static storage may outlive everything in this library.
std::unordered_map<const void*, unsigned long long>& Objects() {
    static auto* objects = new std::unordered_map<const void*, unsigned long long>;
    return *objects;
}

}  // namespace

void Life::Begin(const void* object) {
    static unsigned long long serial = 0;
    Objects()[object] = ++serial;
}

void Life::End(const void* object) noexcept { Objects().erase(object); }

bool Life::IsAlive(const void* object) noexcept { return SerialOf(object) != 0; }

unsigned long long Life::SerialOf(const void* object) noexcept {
    const auto found = Objects().find(object);
    return found == Objects().end() ? 0 : found->second;
}

}  // namespace kx::ui
