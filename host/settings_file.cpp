#include "settings_file.h"

#include <windows.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

namespace {

namespace fs = std::filesystem;

// Empty without a profile.
fs::path SettingsPath() {
    const wchar_t* const profile = _wgetenv(L"APPDATA");
    return profile && *profile ? fs::path(profile) / L"kxdevhost" / L"kxdevhost.ini" : fs::path();
}

}  // namespace

kx::host::Settings LoadSettings() {
    constexpr std::size_t kMostBytes = 4096;
    std::ifstream file(SettingsPath(), std::ios::binary);
    std::string text(kMostBytes, '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(file.gcount()));
    return kx::host::ReadSettings(text);
}

void SaveSettings(const kx::host::Settings& settings) {
    const fs::path path = SettingsPath();
    if (path.empty()) return;
    std::error_code error;
    fs::create_directories(path.parent_path(), error);
    std::ofstream(path, std::ios::binary | std::ios::trunc) << kx::host::WriteSettings(settings);
}
