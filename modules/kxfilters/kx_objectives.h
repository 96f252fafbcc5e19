// The database of objectives and condensers.
#pragma once

#include <vector>

#include <kxfilters/kxfilters_api.h>
#include <kxsystem/kx_string.h>

// An objective as its maker's sheet describes it.
struct SKxDDBObjectiveItem {
    CKxStringW key;              // what it is asked for by
    CKxStringW name;             // "Plan Apo 60x/1.40 Oil"
    double magnification = 0;    // 60 for 60x
    double NA = 0;               // numerical aperture
    double WD = 0;               // working distance, micrometres
    CKxStringW immersion;        // "Air", "Water", "Oil", "Silicone", "Glycerol"
    double refractiveIndex = 1;  // of the immersion
    CKxStringW correction = {};  // for the cover glass: "0.17 mm", "0.11-0.23 mm, collar"; empty when not known
    double parfocal = 0;         // parfocal distance, millimetres; 0 when not known

    // All of it.
    bool operator==(const SKxDDBObjectiveItem&) const = default;
};

// What a condenser can put into the light.
struct SKxDDBCondenserItem {
    CKxStringW key;     // what it is asked for by
    CKxStringW name;    // "Phase ring Ph2"
    CKxStringW method;  // "Bright field", "Phase contrast", "DIC", "Dark field"
    double NA = 0;      // the largest numerical aperture

    // All of it.
    bool operator==(const SKxDDBCondenserItem&) const = default;
};

// Objectives and condensers by key; static functions only. A few common ones are there from the start.
class KXFILTERS_API CKxDeviceDatabase {
public:
    // Fills in what is known of an objective. False leaves `item` as it is: no such key, or null. The flag is not used.
    static bool DBGetObjectiveParam(const CKxStringW& key, SKxDDBObjectiveItem* item, bool);

    // Adds an objective, or replaces the one with its key. False, and logged, for an empty key and for numbers that no
    // objective has: a magnification or an aperture not above 0, an aperture not below the refractive index, a negative
    // working distance, any that is not finite.
    static bool DBSetObjective(const SKxDDBObjectiveItem& item);

    // All objectives, by magnification, then by aperture.
    static std::vector<SKxDDBObjectiveItem> DBGetObjectives();

    // The same for condensers, whose aperture need only be above 0; all of them by method, then by aperture.
    static bool DBGetCondenserParam(const CKxStringW& key, SKxDDBCondenserItem* item);
    static bool DBSetCondenser(const SKxDDBCondenserItem& item);
    static std::vector<SKxDDBCondenserItem> DBGetCondensers();
};
