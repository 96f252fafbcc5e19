// The simulated devices of the pages that show one kind of panel each: of every kind that a panel treats differently.
#pragma once

#include <kxdevices/kx_simdevices.h>

class GalleryDevices {
public:
    GalleryDevices();

    // To be ticked from a timer; what arrives tells the listeners of the registry.
    CKxSimMicroscope& Devices() { return m_devices; }

    CKxSimNosepiece& Nosepiece() { return m_nosepiece; }
    CKxSimFilterChanger& Emission() { return m_emission; }
    CKxSimFilterChanger& Cubes() { return m_cubes; }
    CKxSimLightPath& Path() { return m_path; }
    CKxSimTIRFMirror& Mirror() { return m_mirror; }
    CKxSimLaserOutput& Lasers() { return m_lasers; }

private:
    CKxSimMicroscope m_devices;  // owns what follows
    CKxSimNosepiece& m_nosepiece;
    CKxSimFilterChanger& m_emission;
    CKxSimFilterChanger& m_cubes;
    CKxSimLightPath& m_path;
    CKxSimTIRFMirror& m_mirror;
    CKxSimLaserOutput& m_lasers;
};
