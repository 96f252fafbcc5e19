// The rules of the cards over objectives, as functions of values: what a card says. None of them needs a window.
#pragma once

#include <utility>
#include <vector>

#include <kxdevui/optics/devgui_objectivecard.h>

namespace kx::ui {

// The distance in micrometres at which two points are still seen apart, by Rayleigh's criterion for a lens that also
// collects what it images: 0.61 wavelength / NA. 0 when either is not known.
KXDEVUI_API double ResolutionOf(double wavelength, double NA) noexcept;

// A length in micrometres with its unit, from a millimetre on in millimetres; empty when it is not known.
KXDEVUI_API CKxStringW LengthText(double micrometres);

// What may happen on the way from one objective to the other.
KXDEVUI_API EKxObjectiveRisk RiskOf(const SKxObjectiveCard& from, const SKxObjectiveCard& to);

// What is between an objective and the specimen.
enum class Immersion { Unknown, Dry, Water, Oil, Silicone, Glycerol };
KXDEVUI_API Immersion ImmersionOf(const CKxStringW& name);

// A card in words, in the user's language.
struct CardText {
    // The objective's name.
    CKxStringW title;
    // Names and values; the immersion's, which has a sign, is the row `immersed`, -1 for none.
    std::vector<std::pair<CKxStringW, CKxStringW>> rows;
    int immersed = -1;
    Immersion immersion = Immersion::Unknown;
    std::vector<CKxStringW> remarks;   // why it cannot be reached, what is wrong
    std::vector<CKxStringW> warnings;  // of changing to it
    // Whether there is nothing to be said.
    bool IsEmpty() const noexcept { return title.IsEmpty() && rows.empty() && remarks.empty(); }
    // All of it, line by line.
    KXDEVUI_API std::wstring Whole() const;
    // The same, word by word.
    bool operator==(const CardText&) const = default;
};

// The card of an objective; with the warning of a risk unless it is None.
KXDEVUI_API CardText TextOf(const SKxObjectiveCard& card, EKxObjectiveRisk warned);

}  // namespace kx::ui
