// What is behind the nosepiece panel: its windows, and what it holds.
#pragma once

#include <windows.h>

#include <algorithm>
#include <array>
#include <functional>
#include <optional>
#include <vector>

#include <kxdevices/kx_device.h>
#include <kxdevui/framework/ui_gdi.h>
#include <kxdevui/framework/ui_position_panel.h>
#include <kxdevui/optics/devgui_nosepiece.h>
#include <kxdevui/optics/objectivecard.h>

namespace kx::nosepiece {

// The ids of its parts.
inline constexpr int kFirstLabel = 10100;
inline constexpr int kFirstButton = 10200;
inline constexpr int kFirstObservation = 10600;
inline constexpr int kMaxObservation = 4;

// What a device tells of its positions.
struct Structure {
    // Whether a position can be reached, and why not.
    struct Place {
        // As the device says.
        bool reachable;
        CKxStringW reason;
    };
    // How many there are, at most those that are shown, who decides, and each of them.
    long count = 0;
    bool deviceDriven = false;
    bool localSelect = false;
    std::vector<Place> places;

    // Asks the device, which may throw.
    static Structure Of(const IKxDeviceNosepiece& device) {
        Structure told{std::clamp(device.GetPositionCount(), 0L, long{kx::ui::kMaxPositions}),
                       device.IsDeviceDriven(),
                       device.IsLocalSelect(),
                       {}};
        for (long i = 0; i < told.count; ++i) {
            auto& [reachable, reason] = told.places.emplace_back();
            reachable = device.GetPositionAvailable(i, reason);
        }
        return told;
    }
};

// What is held of a position.
struct Held : SKxObjectiveCard {
    // It cannot be reached before a device has said so.
    Held() { reachable = false; }

    // Where it stands and its number, if the host wants others; its tooltip, as the button has it.
    std::optional<int> x;
    std::optional<int> number;
    CKxStringW tip;
};

// The template of an objective without a ring, or with one of a colour that is put in; not selected and selected.
using Templates = std::array<CKxStringA, 2>;

}  // namespace kx::nosepiece

// The windows of a panel, and what it holds.
struct CKxDevUI_Nosepiece::Inside : kx::ui::PositionPanel {
    // See there.
    using Held = kx::nosepiece::Held;

    // For that panel; no window yet.
    explicit Inside(CKxDevUI_Nosepiece* panel);

    // Null for one that is not there.
    Held* At(long position) {
        return position >= 0 && position < count ? &positions[static_cast<std::size_t>(position)] : nullptr;
    }
    // Loads the templates; makes the image of a magnification, and that of a position, of them.
    void LoadImages();
    CKxStringA ObjectiveOf(double magnification, bool selected) const;
    CKxStringA ImageOf(long position);
    // Takes what a device tells: whether the parts are to be made anew; the objectives by their keys.
    bool ShowStructure(const kx::nosepiece::Structure& structure);
    void ShowParameters(const std::vector<CKxStringW>& keys);
    // The labels and tooltips as they are to be now.
    void EnableLabels(bool enable) const;
    void UpdateTip(long position);
    void ShowLabelFont(long position) const;
    void ShowLabelFonts() const;
    HFONT LabelFont(bool bold) const;
    // What is known of a position, there or not.
    SKxObjectiveCard CardOf(long position);
    // Of the button of a position, or of the panel's window (-1); false when the host has ended the panel.
    bool HearForCards(const kx::ui::Message& message, long position);

    // What is shown, who decides, what hosts have set.
    std::vector<HWND> labels;
    std::vector<HWND> observation;
    std::array<Held, kx::ui::kMaxPositions> positions;
    long count = 0;
    bool deviceDriven = false;
    bool localSelect = false;
    bool enabled = true;
    std::vector<CKxStringW> observationTexts;
    int observationMode = 0;
    bool observationShown = false;
    std::function<void(int)> observationRequest;
    // What all of it is drawn with; the cards.
    kx::ui::Font normalFont;
    kx::ui::Font boldFont;
    kx::ui::Pen framePen;
    kx::nosepiece::Templates emptyImages;
    kx::nosepiece::Templates ringImages;
    CKxStringA motorImage;
    kx::ui::ObjectiveCards cards;
};
