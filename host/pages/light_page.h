// Light and its shutters, on the simulated microscope: the panels that belong here put themselves on the page.
#pragma once

#include "page.h"

class LightPage : public Page {
public:
    LightPage() : Page(L"Illumination") {}

protected:
    void Fill() override {}
};
