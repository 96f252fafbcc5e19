// The cards over the objectives of a nosepiece: what the tooltip leaves out, and a warning before a change that may
// touch the specimen.
//
//     turret.SetCards({
//         .complete = [&](long, SKxObjectiveCard& card) { card.wavelength = m_camera.Wavelength(); },
//         .warns = [&](long, EKxObjectiveRisk) { return m_focus.Position() > kSafe; },
//     });
//
// A card shows in the place of the tooltip, while the pointer rests on an objective, one that cannot be reached
// included, or has come there by a key. Escape hides it until one comes back; so does leaving. A press on an objective
// that the host warns of brings it at once.
#pragma once

#include <functional>

#include <kxdevui/framework/kxdevui_api.h>
#include <kxsystem/kx_string.h>

// What may happen on the way from one objective to another while the stage is high.
enum class EKxObjectiveRisk {
    None = 0,
    Dry = 1,     // from an immersion liquid to a dry objective, whose front it would wet
    Closer = 2,  // to a shorter working distance
    DryAndCloser = 3,
};

// What is known of an objective. A line that would say nothing is left out.
struct SKxObjectiveCard {
    // What it is, as a nosepiece reads it from its device and the database of objectives.
    CKxStringW name = {};
    CKxStringW magnification = {};  // "60x"
    double NA = 0;                  // numerical aperture; not above 0: unknown
    double WD = 0;                  // working distance in micrometres; not above 0: unknown
    CKxStringW immersion = {};  // as the database of objectives has it: "Air", "Water", "Oil", "Silicone", "Glycerol"
    double wavelength = 0;      // of the light in nanometres; not above 0: unknown, and with it the resolution
    // Whether the position can be reached, and what stands in the way.
    bool reachable = true;
    CKxStringW reason = {};  // why it cannot be reached
    CKxStringW remark = {};  // what is wrong with the nosepiece
};

// Whether a panel has cards, and what its host has to say. Both are called while a card is shown as well, ten times a
// second, and may end the panel; one that throws has said nothing.
struct SKxObjectiveCards {
    // Adds to what the panel knows of a position, the wavelength for one, or changes it.
    std::function<void(long position, SKxObjectiveCard& card)> complete = {};
    // Whether to warn of the change to a position that brings a risk: whether the stage is high. Not asked where there
    // is none.
    std::function<bool(long position, EKxObjectiveRisk risk)> warns = {};
};
