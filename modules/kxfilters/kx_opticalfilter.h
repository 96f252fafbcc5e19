// Optical filters by their names: which bands they let through, and in which colours these are shown.
#pragma once

#include <vector>

#include <kxfilters/kxfilters_api.h>
#include <kxsystem/kx_string.h>

// A range of wavelengths that passes, in nanometres.
struct SKxFilterBand {
    // The middle, and the full width at half maximum.
    double centre;
    double width;
};

// A filter as its name describes it.
class CKxOpticalFilter {
public:
    // What it is called.
    CKxStringW name;
    // Rising, as they stand in the name where that gives them. None for an unknown or a clear filter.
    std::vector<SKxFilterBand> bands;
};

// Filters and their colours; static functions only.
class KXFILTERS_API CKxFilterDialog {
public:
    // How many colours GetColorsFromFilter gives at most.
    static constexpr int MaximumColors = 5;

    // Describes a filter by its name. Names that follow the field's custom give their bands themselves, anywhere in the
    // text: "525/50" (centre and width), any number of them ("390/40 482/25 587/45"), "LP 515" or "515 LP" (from there
    // up to 780 nm), "SP 650" (from 380 nm up to there). Otherwise a table of common dyes' emission filters is asked
    // for the name's first word, in upper or lower case ("DAPI", "GFP narrow"). Wavelengths from 200 to 2,000 nm count.
    // False, with a filter without bands, when neither knows it; false for null.
    static bool GetFilterInfo(const CKxStringW& name, CKxOpticalFilter* filter);

    // The names of that table, as they are usually written.
    static std::vector<CKxStringW> GetFilterNames();

    // The colours (0x00BBGGRR) of a filter's bands in their order, each that of the band's centre
    // (KX_RGBFromWavelength). `count` says how many there is room for, at most MaximumColors of which are used, and how
    // many there are afterwards; 0 for null pointers.
    static void GetColorsFromFilter(const CKxOpticalFilter* filter, unsigned long* colors, int& count);
};
