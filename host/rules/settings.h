// What the host remembers from one run to the next, as a value and as the text of its file.
#pragma once

#include <string>
#include <string_view>

namespace kx::host {

struct Settings {
    // Light or dark, as the system's setting says.
    static constexpr int Automatic = 4;

    int zoom = 100;          // percent: 100, 125, 150 or 200
    int language = 0;        // primary language; 0: the system's
    int scheme = Automatic;  // EKxColorScheme, or Automatic
    int page = 0;            // index, 0 to 99; whether there is one is for the window to say
    int width = 0;           // of the client area in unzoomed pixels, 300 to 10000; 0, both: as large as the pages need
    int height = 0;

    bool operator==(const Settings&) const = default;
};

// The settings of a file's text; those of a first run when the text is not wholly what WriteSettings could have
// written: a line that is no "name=number" of a known name, a value that is not allowed, a missing end. Lines may end
// with a carriage return; each name may be left out but not be there twice.
Settings ReadSettings(std::string_view text);

// The text for the file.
std::string WriteSettings(const Settings& settings);

}  // namespace kx::host
