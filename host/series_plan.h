// The Z series that is planned on the microscope: kept while the panels that show and change it come and go.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include <kxdevices/kx_zstackdata.h>

struct SeriesStates;

struct SeriesPlan {
    CKxZStackData stack;               // empty until a panel has planned the first one
    std::weak_ptr<SeriesStates> past;  // what it was, as far as that can be taken back
    std::vector<double> exposures;     // milliseconds, by the number of the plane

    // Of a plane that nobody has given one: 50.
    double& Exposure(std::size_t plane) {
        constexpr double kFirst = 50;
        if (plane >= exposures.size()) exposures.resize(plane + 1, kFirst);
        return exposures[plane];
    }
};
