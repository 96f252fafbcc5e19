// The lines of laser engines, on the simulated microscope: the panels that belong here put themselves on the page.
#pragma once

#include "page.h"

class LasersPage : public Page {
public:
    LasersPage() : Page(L"Lasers") {}

protected:
    void Fill() override {}
};
