// The microscope of the host: simulated, as a device configuration file describes it, or the host's own.
#pragma once

#include <string>

#include "config/config_microscope.h"
#include "series_plan.h"

class HostMicroscope {
public:
    // Builds the microscope and registers its devices; once. An empty path asks for the host's own, which is built as
    // well when the file cannot be read.
    explicit HostMicroscope(const std::wstring& path);

    // Writes to the host's log where the microscope came from, what was remarked on its file, line by line, and what
    // it has.
    void Tell() const;

    const kx::config::Microscope& Roles() const { return m_roles; }
    // To be ticked from a timer.
    CKxSimMicroscope& Devices() { return m_devices; }
    // What is planned on the drive that focuses.
    SeriesPlan& Plan() { return m_plan; }
    // Tells a series the aperture of the objective in the light; one that is not known, or of which nothing is known,
    // changes nothing.
    void TellObjective(CKxZStackData& series) const;

private:
    std::wstring m_source;
    kx::config::Remarks m_remarks;
    CKxSimMicroscope m_devices;
    kx::config::Microscope m_roles;
    SeriesPlan m_plan;
};
