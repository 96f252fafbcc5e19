// Focus: the panels that belong here put themselves on the page.
#pragma once

#include "page.h"

class FocusPage : public Page {
public:
    FocusPage() : Page(L"Focus") {}
    // The Z series is another page's.
    void SetVisible(bool visible) override {
        for (CKxDevUI_Container* const each : Panels())
            if (auto* const panel = dynamic_cast<HostPanel*>(each); panel && visible) panel->ShowValues();
        Page::SetVisible(visible);
    }

protected:
    void Fill() override {}
};
