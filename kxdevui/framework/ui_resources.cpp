#include <kxdevui/framework/ui_resources.h>

#include <cstring>

#include <kxsystem/kx_locale.h>

namespace kx::ui {

namespace {

BOOL CALLBACK AppendLanguage(HMODULE, const wchar_t*, const wchar_t*, WORD language, LONG_PTR list) noexcept {
    try {
        reinterpret_cast<std::vector<LANGID>*>(list)->push_back(language);
        return TRUE;
    } catch (...) {
        return FALSE;
    }
}

HRSRC FindDialog(const wchar_t* name, HINSTANCE module) noexcept {
    if (!name) return nullptr;
    // The platform's own search for a language would end at the neutral form of it, so "German (Austria)" would not
    // find "German (Germany)".
    std::vector<LANGID> languages;
    EnumResourceLanguagesW(module, RT_DIALOG, name, AppendLanguage, reinterpret_cast<LONG_PTR>(&languages));
    const int chosen = ChooseLanguage(languages, CKxLocale::GetModuleLangId(), CKxLocale::GetSecondaryLangID());
    if (chosen < 0) return nullptr;
    return FindResourceExW(module, RT_DIALOG, name, languages[static_cast<std::size_t>(chosen)]);
}

}  // namespace

int ChooseLanguage(std::span<const LANGID> available, LANGID current, LANGID fallback) noexcept {
    const auto find = [available](auto fits) {
        for (std::size_t i = 0; i < available.size(); ++i) {
            if (fits(available[i])) return static_cast<int>(i);
        }
        return -1;
    };
    for (const LANGID wanted : {current, fallback}) {
        int index = find([wanted](LANGID language) { return language == wanted; });
        if (index < 0) {
            index = find([wanted](LANGID language) { return PRIMARYLANGID(language) == PRIMARYLANGID(wanted); });
        }
        if (index >= 0) return index;
    }
    return find([](LANGID language) { return PRIMARYLANGID(language) == LANG_NEUTRAL; });
}

const DLGTEMPLATE* FindDialogTemplate(const wchar_t* name, HINSTANCE module) noexcept {
    const HRSRC resource = FindDialog(name, module);
    const HGLOBAL loaded = resource ? LoadResource(module, resource) : nullptr;
    return loaded ? static_cast<const DLGTEMPLATE*>(LockResource(loaded)) : nullptr;
}

std::vector<std::byte> CopyTemplateAsHiddenChild(const wchar_t* name, HINSTANCE module) {
    const HRSRC resource = FindDialog(name, module);
    const HGLOBAL loaded = resource ? LoadResource(module, resource) : nullptr;
    const void* bytes = loaded ? LockResource(loaded) : nullptr;
    const DWORD size = bytes ? SizeofResource(module, resource) : 0;
    if (size < sizeof(DLGTEMPLATE)) return {};
    std::vector<std::byte> copy(size);
    std::memcpy(copy.data(), bytes, size);

    // The extended form of a template opens with version 1 and signature 0xFFFF, and has its style 12 bytes in, behind
    // the extended style; the old form opens with the style.
    WORD head[2];
    std::memcpy(head, copy.data(), sizeof head);
    const bool extended = head[0] == 1 && head[1] == 0xFFFF;
    const std::size_t styleAt = extended ? 12 : 0, exStyleAt = extended ? 8 : 4;
    DWORD style;
    std::memcpy(&style, copy.data() + styleAt, sizeof style);
    // The low word stays for the font and the like, but for those bits that only a top-level dialog can have.
    constexpr DWORD topLevelBits = DS_MODALFRAME | DS_SYSMODAL | DS_CENTER | DS_CENTERMOUSE | DS_SETFOREGROUND;
    style = (style & 0xFFFFu & ~topLevelBits) | WS_CHILD;
    const DWORD exStyle = 0;
    std::memcpy(copy.data() + styleAt, &style, sizeof style);
    std::memcpy(copy.data() + exStyleAt, &exStyle, sizeof exStyle);
    return copy;
}

}  // namespace kx::ui
