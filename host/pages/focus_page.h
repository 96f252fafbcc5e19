// Focus: the panels that belong here put themselves on the page.
#pragma once

#include "page.h"

class FocusPage : public Page {
public:
    FocusPage() : Page(L"Focus") {}

protected:
    void Fill() override {}
};
