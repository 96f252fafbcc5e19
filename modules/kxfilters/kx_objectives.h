// The database of objectives.
#pragma once

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
};

// Objectives by key; static functions only. A few common ones are there from the start.
class KXFILTERS_API CKxDeviceDatabase {
public:
    // Fills in what is known of an objective. False leaves `item` as it is: no such key, or null. The flag is not used.
    static bool DBGetObjectiveParam(const CKxStringW& key, SKxDDBObjectiveItem* item, bool);

    // Adds an objective, or replaces the one with its key. False, and logged, for an empty key and for numbers that no
    // objective has: a magnification or an aperture not above 0, an aperture not below the refractive index, a negative
    // working distance.
    static bool DBSetObjective(const SKxDDBObjectiveItem& item);
};
