// Builds the simulated microscope of a stand, and lists what it has by role.
#pragma once

#include <string_view>
#include <vector>

#include <kxdevices/kx_simdevices.h>

#include "config_infer.h"

namespace kx::config {

// A microscope as a value: the numbers of its devices in the registry, by what panels make of them, each list in the
// order of the file. All of them answer DMApi, and CKxDeviceRegistry::Find gives the object: a CKxSimNosepiece for a
// turret, and so on, by which the host moves it (see Simulated below). The objects belong to the CKxSimMicroscope that
// they were built into; the numbers mean nothing after its end.
struct Microscope {
    // A laser unit. Ports are DMApi's to tell, the powers the device's: those of the file's limits of "Power".
    struct Laser {
        CDMApi_LogDevId id = 0;
        int wavelength = 0;  // nanometres; 0: its name tells none
        std::wstring unit;   // of its power, "%" where the file says nothing
    };
    // A Z drive, in micrometres.
    struct ZDrive {
        CDMApi_LogDevId id = 0;
        double minimum = 0, maximum = 0;
        int direction = 0;  // 1 when a greater position is nearer to the sample, -1 when it is farther, 0: not known
    };
    // A stage, in micrometres.
    struct Stage {
        CDMApi_LogDevId id = 0;
        SKxSimRange x, y;
    };

    std::vector<CDMApi_LogDevId> turrets;      // CKxSimNosepiece
    std::vector<CDMApi_LogDevId> wheels;       // CKxSimFilterChanger
    std::vector<CDMApi_LogDevId> lightPaths;   // CKxSimLightPath
    std::vector<CDMApi_LogDevId> tirfMirrors;  // CKxSimTIRFMirror
    std::vector<CDMApi_LogDevId> shutters;     // CKxSimShutter
    std::vector<Laser> lasers;                 // CKxSimLaserOutput
    std::vector<ZDrive> zDrives;               // CKxSimZDrive
    std::vector<Stage> stages;                 // CKxSimStage
    std::vector<CDMApi_LogDevId> others;       // CKxSimOther: cameras, ports, what nothing tells

    // The devices with these roles; 0 for none.
    CDMApi_LogDevId shutter = 0, focus = 0, stage = 0;
    // Whether the shutter opens for an image by itself.
    bool autoShutter = false;
    // The camera's calibrations.
    std::vector<PixelSize> pixelSizes;
};

// Makes a device of each of the stand's, registers it, and puts it where the file wants it to stand. Objectives whose
// labels tell magnification and aperture go into the database of objectives, by their label as the key, unless it
// knows them. What a shutter's limits of "Aperture" (percent) are makes it a smart one with ten steps.
Microscope BuildMicroscope(const Stand& stand, CKxSimMicroscope& devices);

// The configuration that the host has without a file: config/own_microscope.cfg, compiled in.
std::string_view DefaultConfig();

// The simulated device of that class with the number; null when there is none.
template <class Device>
Device* Simulated(CDMApi_LogDevId id) {
    return dynamic_cast<Device*>(CKxDeviceRegistry::Find(id));
}

}  // namespace kx::config
