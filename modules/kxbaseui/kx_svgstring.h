// Changes to SVG text before it is drawn: a template's colour becomes a device's, its number a position's.
#pragma once

#include <kxsystem/kx_string.h>

#include <cstddef>

#include <kxbaseui/kxbaseui_api.h>

// Functions of SVG texts; static functions only.
class CKxSvgStringAPI {
public:
    // A replacement that would make the text longer than this is refused.
    static constexpr std::size_t MaxLength = 1 << 20;

    // Replaces every occurrence of `what` in `svg`, from the front on and without looking again at what was put in, by
    // `with`, as it stands: letter case counts, and nothing is escaped. `what` and `with` may be parts of `svg`.
    // Returns the number of replacements. Null or empty `what`, or a result that is too long: 0, and the text is left
    // alone; null `with` counts as empty.
    KXBASEUI_API static int ReplaceString(CKxStringA& svg, const char* what, const char* with);
};
