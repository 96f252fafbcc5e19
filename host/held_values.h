// What is set on the microscope where no device of the registry holds it: the stage, the lamps, the camera, the light
// sources, the drives of the Z series. Kept while the panels that show and change it come and go.
#pragma once

#include <array>
#include <list>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <kxdevices/kx_simdevices.h>
#include <kxdevices/kx_zstackdata.h>
#include <kxdevui/light/multilaser_rules.h>
#include <kxdevui/zfocus/zdrive_rules.h>

#include "rules/stage_place.h"

struct SeriesStates;

struct HeldValues {
    struct Lamp {
        bool on = false;
        double level = 40;  // percent
    };
    struct Plane {
        double z;         // micrometres
        double exposure;  // milliseconds
        std::wstring note;
        bool taken = true;
    };

    // The stand: the stage with the places that have a name, and the index of its step.
    struct Mark {
        std::wstring name;
        kx::host::StagePlace place;
    };
    SKxSimXYStage stage;
    std::vector<Mark> marks;
    int stageStep = 3;
    std::wstring exposure = L"20";  // of the camera, as it was entered
    int cameraBinning = 0;
    bool live = false;
    Lamp transmitted, reflected;
    bool tube = false, condenserOut = false;
    std::vector<CKxStringW> condenser{L"BrightField090", L"Phase1", L"Phase2", L"DICHigh", L""};  // keys, by position
    // What has stood in the positions of a device, by what is asked of it.
    struct Place {
        std::wstring name = {}, magnification = {}, key = {};
        bool operator==(const Place&) const = default;
    };
    using Setup = std::vector<Place>;
    std::map<std::wstring, std::vector<Setup>> setups;
    int seriesCount = 10;
    double seriesInterval = 5.0;  // seconds

    // The generic controls: milliseconds, a factor, seconds, degrees; then milliseconds, a factor, nanometres, seconds.
    std::array<double, 4> sliders{20, 2, 30, -20};
    double fieldExposure = 20, fieldGain = 2;
    std::list<double> fieldWavelengths{450, 525, 600};
    double fieldDelay = 0.5;
    int binning = 0;
    std::vector<Plane> planes;  // empty until a panel has planned the first ones

    // Light sources, in the order of their sliders; nanometres for the wavelength and the band.
    std::array<double, 7> powers{0, 0, 0, 0, 0, 550, 0};
    double bandFrom = 500, bandTo = 600;

    // The lists: places in them, a bit for each of several, and milliseconds.
    double dye = 1, mode = 1, channels = 1 << 1, listExposure = 20;

    // The field diaphragm: percent, whether it follows the objective, whether it is being centred.
    struct Diaphragm {
        double opening = 40;
        bool follows = false, centres = false;
    };
    Diaphragm diaphragm;
    // Whether the aperture diaphragm is sent where the objective wants it.
    bool apertureFollows = false;

    // What the presets of the lamps keep: volts, and percent.
    std::array<double, 3> halogenPresets{3, 6, 12}, arcPresets{20, 50, 100};

    // How the powers of the laser lines are shown, and whether the lines are linked.
    struct Lasers {
        EKxPowerScale scale = EKxPowerScale::Logarithmic;
        EKxPowerUnit unit = EKxPowerUnit::Percent;
        bool linked = false;
    };
    Lasers lasers;

    // The Z series and its drives: focus and piezo.
    std::array<SKxSimZDrive, 2> drives{{{.rangeMin = 0, .rangeMax = 10000, .speed = 20, .from = 4000, .to = 4000},
                                        {.rangeMin = 0, .rangeMax = 300, .speed = 60, .from = 150, .to = 150}}};
    CKxZStackData series;  // empty until a panel has planned the first one
    std::weak_ptr<SeriesStates> seriesPast;

    // The focus motor: the sizes of steps, in micrometres, and from where it has escaped.
    struct Focus {
        double fine = 0.1, coarse = 10;
        kx::zdrive::Retreat retreat;
    };
    Focus focus;

    // The panels, by their names, that the user has told to refuse what is asked for.
    std::set<std::wstring> refusing;
};

// The host has one microscope; panels are told no way to these.
HeldValues& Held();
