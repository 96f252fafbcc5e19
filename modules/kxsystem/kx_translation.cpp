#include <kxsystem/kx_catalogue.h>
#include <kxsystem/kx_locale.h>
#include <kxsystem/kx_log.h>
#include <kxsystem/kx_translation.h>

#include <windows.h>

#include <map>
#include <new>

namespace {

std::optional<CKxCatalogue> ReadAndLog(WORD language, std::string_view po) {
    CKxCatalogueRemark refusal;
    std::vector<CKxCatalogueRemark> duplicates;
    auto catalogue = CKxCatalogue::Read(po, refusal, duplicates);
    if (!catalogue)
        KX_LOG(L"kx_translation", L"the catalogue for language 0x%02x is refused, line %d: %hs", language, refusal.line,
               refusal.reason);
    else
        for (const CKxCatalogueRemark& duplicate : duplicates)
            KX_LOG(L"kx_translation", L"the catalogue for language 0x%02x, line %d: %hs", language, duplicate.line,
                   duplicate.reason);
    return catalogue;
}

// The catalogue that the build has put into this module, a resource numbered as its primary language; empty if none.
std::string_view BuiltIn(WORD language) {
    static const char c_here = 0;
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&c_here), &module);
    const HRSRC resource = FindResourceW(module, MAKEINTRESOURCEW(language), RT_RCDATA);
    const HGLOBAL loaded = resource ? LoadResource(module, resource) : nullptr;
    const void* const text = loaded ? LockResource(loaded) : nullptr;
    return text ? std::string_view(static_cast<const char*>(text), SizeofResource(module, resource)) : "";
}

// All that is known of one language: the built-in catalogue, and before it what the host has added.
CKxCatalogue& CatalogueOf(WORD language) {
    static std::map<WORD, CKxCatalogue> s_catalogues;
    const auto known = s_catalogues.find(language);
    if (known != s_catalogues.end()) return known->second;
    const std::string_view po = BuiltIn(language);
    std::optional<CKxCatalogue> catalogue;
    if (!po.empty()) catalogue = ReadAndLog(language, po);
    return s_catalogues.emplace(language, catalogue ? std::move(*catalogue) : CKxCatalogue{}).first->second;
}

}  // namespace

CKxStringW KX_GetTranslation(const wchar_t* text, const wchar_t* source) {
    if (!text || !*text) return {};
    try {
        const CKxCatalogue& catalogue = CatalogueOf(PRIMARYLANGID(CKxLocale::GetModuleLangId()));
        if (const std::wstring* const translation = catalogue.Find(source ? source : L"", text)) return *translation;
    } catch (const std::bad_alloc&) {
        // English is better than nothing.
    }
    return text;
}

CKxStringW KX_GetTranslation(const wchar_t* text, const wchar_t*, const wchar_t* source) {
    return KX_GetTranslation(text, source);
}

bool KX_AddCatalogue(unsigned short primaryLanguage, const char* po, std::size_t size) {
    const WORD language = PRIMARYLANGID(primaryLanguage);
    if (language == LANG_NEUTRAL) {
        KX_LOG(L"kx_translation", L"a catalogue for no language is refused");
        return false;
    }
    try {
        auto added = ReadAndLog(language, po ? std::string_view(po, size) : "");
        if (!added) return false;
        CKxCatalogue& known = CatalogueOf(language);
        added->AddMissing(std::move(known));
        known = std::move(*added);
        return true;
    } catch (const std::bad_alloc&) {
        KX_LOG(L"kx_translation", L"a catalogue for language 0x%02x is refused: no memory", language);
        return false;
    }
}
