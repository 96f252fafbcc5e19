#include <kxsystem/kx_catalogue.h>
#include <kxsystem/kx_locale.h>
#include <kxsystem/kx_log.h>
#include <kxsystem/kx_translation.h>

#include <windows.h>

#include <charconv>
#include <map>
#include <new>

namespace {

// The platform's number of a charset, or 0.
UINT CodePageOf(std::string_view charset) {
    static constexpr std::pair<std::string_view, UINT> c_names[] = {
        {"koi8-r", 20866},  {"koi8-u", 21866}, {"euc-jp", 20932}, {"shift_jis", 932},
        {"sjis", 932},      {"euc-kr", 949},   {"gb2312", 936},   {"gbk", 936},
        {"gb18030", 54936}, {"big5", 950},     {"tis-620", 874},  {"latin1", 28591},
    };
    for (const auto& [name, page] : c_names)
        if (charset == name) return page;
    for (const auto& [family, first] :
         {std::pair{std::string_view("iso-8859-"), 28590U}, {"windows-", 0U}, {"cp", 0U}}) {
        if (!charset.starts_with(family)) continue;
        UINT number = 0;
        const char* const end = charset.data() + charset.size();
        if (std::from_chars(charset.data() + family.size(), end, number).ptr != end) return 0;
        return first == 0 ? number : number >= 1 && number <= 16 ? first + number : 0;
    }
    return 0;
}

std::optional<std::string> FromCharset(const std::string& charset, std::string_view line) {
    const UINT page = CodePageOf(charset);
    // Of EUC-JP, the platform knows the characters of two bytes; what begins with this one has three.
    if (page == 0 || (page == 20932 && line.find('\x8F') != std::string_view::npos)) return std::nullopt;
    if (line.empty()) return std::string();
    const int size = static_cast<int>(line.size());
    // No character of any of these takes more than one of UTF-16 a byte, but for those of four bytes, which take two.
    std::wstring wide(line.size(), L'\0');
    const int length =
        MultiByteToWideChar(page, page == 54936 ? 0 : MB_ERR_INVALID_CHARS, line.data(), size, wide.data(), size);
    if (length <= 0) return std::nullopt;
    std::string utf8(static_cast<std::size_t>(length) * 3, '\0');
    const int bytes = WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, utf8.data(), static_cast<int>(utf8.size()),
                                          nullptr, nullptr);
    utf8.resize(static_cast<std::size_t>(bytes));
    return utf8;
}

std::optional<CKxCatalogue> ReadAndLog(WORD language, std::string_view po) {
    CKxCatalogueRemark refusal;
    std::vector<CKxCatalogueRemark> duplicates;
    auto catalogue = CKxCatalogue::Read(po, refusal, duplicates, FromCharset);
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

CKxStringW KX_GetTranslation(const wchar_t* singular, const wchar_t* plural, unsigned long long number,
                             const wchar_t* source) {
    const wchar_t* const text = number == 1 ? singular : plural;
    if (!singular || !text) return {};
    try {
        const CKxCatalogue& catalogue = CatalogueOf(PRIMARYLANGID(CKxLocale::GetModuleLangId()));
        if (const auto* const translation = catalogue.Find(source ? source : L"", singular, number))
            return *translation;
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
