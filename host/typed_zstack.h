// A Z stack panel whose top and bottom can be typed.
#pragma once

#include <kxdevui/zfocus/devgui_zstack.h>

class TypedZStack : public CKxDevUI_ZStack {
public:
    // Once it has its window.
    void MakePositionsWritable() {
        for (const int id : {EditTop, EditBottom})
            SendMessageW(Item(id), EM_SETREADONLY, FALSE, 0);
    }

    // For the parent's WM_COMMAND; false for what is none of this.
    bool OnPositionLeft(int id, int code) {
        if (code != EN_KILLFOCUS || (id != EditTop && id != EditBottom)) return false;
        const bool showErrors = !IsMyWindow(GetFocus());
        id == EditTop ? ValidateTop(showErrors) : ValidateBottom(showErrors);
        return true;
    }
};
