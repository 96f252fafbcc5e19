// Every text that is shown has been asked for in the user's language, or is the host's; and every text that is asked
// for is in every catalogue.
#include <subjects/law.h>

#include <algorithm>
#include <cwctype>
#include <optional>
#include <set>
#include <sstream>

#include <kxbaseui/kx_menu.h>
#include <kxbaseui/kx_messagebox.h>
#include <kxsystem/kx_catalogue.h>
#include <kxsystem/kx_locale.h>
#include <kxsystem/kx_translation.h>

namespace kx::test {
namespace {

// What was asked for, as (source, text); what was painted, or told in boxes and menus.
std::set<std::pair<std::wstring, std::wstring>> asked;
std::set<std::wstring> shown;

// A language that the platform does not know and nobody speaks: what has been asked for is marked.
constexpr wchar_t mark = L'\u00AB';

CKxStringW Ask(const wchar_t* text, const wchar_t* source) {
    if (!text || !*text) return {};
    asked.emplace(source, text);
    // Every line of it: what is shown is looked at by lines.
    std::wstring marked(1, mark);
    for (const wchar_t* each = text; *each; ++each)
        *each == L'\n' ? marked += {L'\n', mark} : marked += *each;
    return marked.c_str();
}
CKxStringW AskWithRemark(const wchar_t* text, const wchar_t*, const wchar_t* source) { return Ask(text, source); }

void Show(const wchar_t* text, int length) {
    if (text) shown.emplace(length < 0 ? std::wstring(text) : std::wstring(text, static_cast<std::size_t>(length)));
}
int WINAPI Draw(HDC dc, LPCWSTR text, int length, LPRECT rect, UINT format) {
    Show(text, length);
    return DrawTextW(dc, text, length, rect, format);
}
BOOL WINAPI Out(HDC dc, int x, int y, UINT options, const RECT* rect, LPCWSTR text, UINT length, const INT* dx) {
    Show(text, static_cast<int>(length));
    return ExtTextOutW(dc, x, y, options, rect, text, length, dx);
}

// The functions that the library asks, and those by which it paints.
struct Heard {
    Heard() {
        using Plain = CKxStringW(const wchar_t*, const wchar_t*);
        using Remarked = CKxStringW(const wchar_t*, const wchar_t*, const wchar_t*);
        // The manual's control stands in this program, whose own painting is that of the law.
        for (const wchar_t* module : std::initializer_list<const wchar_t*>{L"kxdevui.dll", L"kxbaseui.dll", nullptr}) {
            imports_.push_back(
                std::make_unique<Import>(module, static_cast<Plain*>(&KX_GetTranslation), static_cast<Plain*>(&Ask)));
            imports_.push_back(std::make_unique<Import>(module, static_cast<Remarked*>(&KX_GetTranslation),
                                                        static_cast<Remarked*>(&AskWithRemark)));
            if (!module) break;
            imports_.push_back(std::make_unique<Import>(module, &DrawTextW, &Draw));
            imports_.push_back(std::make_unique<Import>(module, &ExtTextOutW, &Out));
        }
        KX_SetMessageBoxHandler(
            [](HWND, const wchar_t* text, const wchar_t* caption, UINT, int, void*) {
                Show(text, -1), Show(caption, -1);
                return IDOK;
            },
            nullptr);
        KX_SetMenuHandler(
            [](HWND, const CKxMenu& menu, int, int, void*) {
                for (int i = 0; i < menu.GetCount(); ++i)
                    Show(menu.GetText(i), -1);
                return 0;
            },
            nullptr);
    }

    std::vector<std::unique_ptr<Import>> imports_;
};

// The texts of windows, of lists and of tooltips, with where they stand.
std::vector<std::pair<std::string, std::wstring>> TextsOf(Subject& subject) {
    std::vector<std::pair<std::string, std::wstring>> texts;
    const auto windows = subject.Windows();
    for (const Target& each : windows) {
        const std::string name = NameOfWindow(each.window);
        // What is typed is the user's.
        if (!name.starts_with("Edit ")) texts.emplace_back(name, TextOf(each.window));
        const LRESULT count = name.starts_with("ComboBox") ? SendMessageW(each.window, CB_GETCOUNT, 0, 0) : 0;
        for (LRESULT i = 0; i < count; ++i) {
            wchar_t item[200] = L"";
            SendMessageW(each.window, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(item));
            texts.emplace_back("item of " + name, item);
        }
    }
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM list) -> BOOL {
            if (!NameOfWindow(window).starts_with("tooltips_class32")) return TRUE;
            for (LRESULT i = 0; i < SendMessageW(window, TTM_GETTOOLCOUNT, 0, 0); ++i) {
                wchar_t text[400] = L"";
                TTTOOLINFOW tool{};
                tool.cbSize = TTTOOLINFOW_V1_SIZE;
                tool.lpszText = text;
                if (SendMessageW(window, TTM_ENUMTOOLSW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&tool)))
                    reinterpret_cast<decltype(&texts)>(list)->emplace_back("tooltip", text);
            }
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&texts));
    return texts;
}

// Numbers and units of one letter are the same in all languages.
bool HasWords(const std::wstring& text) {
    for (std::size_t i = 1; i < text.size(); ++i)
        if (std::iswalpha(static_cast<wint_t>(text[i])) && std::iswalpha(static_cast<wint_t>(text[i - 1]))) return true;
    return false;
}

std::optional<CKxCatalogue> CatalogueOf(WORD language) {
    const HMODULE module = GetModuleHandleW(L"kxsystem.dll");
    const HRSRC resource = FindResourceW(module, MAKEINTRESOURCEW(language), RT_RCDATA);
    if (!resource) return std::nullopt;
    CKxCatalogueRemark refusal;
    std::vector<CKxCatalogueRemark> duplicates;
    return CKxCatalogue::Read(
        {static_cast<const char*>(LockResource(LoadResource(module, resource))), SizeofResource(module, resource)},
        refusal, duplicates);
}

struct LanguageLaw : LawOf<Law::Language> {
    ~LanguageLaw() override { CKxLocale::SetModuleLangId(0); }

    bool IsOwn(const std::wstring& text) {
        const auto own = Control().OwnTexts();
        return std::any_of(own.begin(), own.end(), [&](const std::wstring& each) { return text.starts_with(each); });
    }
    // As made in two languages, a text of a dialog template is another one.
    std::set<std::wstring> OfTemplates() {
        std::set<std::wstring> all[2];
        for (const int i : {0, 1}) {
            CKxLocale::SetModuleLangId(i ? MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN) : MAKELANGID(LANG_ENGLISH, 1));
            Begin();
            for (const auto& [where, text] : TextsOf(Control()))
                all[i].insert(text);
        }
        CKxLocale::SetModuleLangId(MAKELANGID(LANG_ENGLISH, 1));
        std::set<std::wstring> changed;
        for (const std::wstring& each : all[0])
            if (!all[1].contains(each)) changed.insert(each);
        return changed;
    }
};

TEST_P(LanguageLaw, EveryTextIsAskedFor) {
    const std::set<std::wstring> ofTemplates = OfTemplates();
    const Heard heard;
    asked.clear(), shown.clear();
    std::set<std::wstring> known;
    const auto look = [&](const std::string& after) {
        RedrawWindow(Parent().Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
        auto texts = TextsOf(Control());
        for (const std::wstring& each : std::exchange(shown, {}))
            texts.emplace_back("painted", each);
        std::vector<std::pair<std::string, std::wstring>> lines;
        for (const auto& [where, text] : texts) {
            std::wistringstream all(text);
            for (std::wstring line; std::getline(all, line);)
                lines.emplace_back(where, line);
        }
        for (const auto& [where, text] : lines) {
            if (!known.insert(text).second || !HasWords(text)) continue;
            const bool fine = text.find(mark) != std::wstring::npos || ofTemplates.contains(text) || IsOwn(text);
            Expect(fine, after + ", " + where, "\"" + Narrow(text) + "\" is shown and was not asked for");
        }
        Expect(true, "", "");
    };
    Begin();
    look("creation");
    ForEachOperation([&](const Operation& operation, Random& random) {
        operation.run(random);
        if (Control().Window()) look(operation.name);
    });
    Begin();
    for (std::size_t i = 0; Ready() && i < Control().Windows().size(); ++i) {
        for (const Act& act : ActsAt(Control().Windows()[i].window)) {
            doing_ = act.name;
            act.run();
        }
        if (Control().Window()) look("acts");
    }
    for (const WORD language : std::initializer_list<WORD>{LANG_GERMAN, LANG_FRENCH, LANG_SPANISH, LANG_JAPANESE}) {
        const auto catalogue = CatalogueOf(language);
        ASSERT_TRUE(catalogue) << language;
        for (const auto& [source, text] : asked)
            if (!IsExcepted(Narrow(source)))
                Expect(catalogue->Find(source, text) != nullptr, Narrow(source),
                       "\"" + Narrow(text) + "\" is not in the catalogue of language " + std::to_string(language));
    }
}

// All of the library that asks, asks through what the law has replaced.
TEST(LanguageLawItself, HearsTheLibrary) {
    const Import import(L"kxdevui.dll", static_cast<CKxStringW (*)(const wchar_t*, const wchar_t*)>(&KX_GetTranslation),
                        &Ask);
    EXPECT_GT(import.Count(), 0u);
    EXPECT_GT(Import(L"kxdevui.dll", &DrawTextW, &Draw).Count(), 0u);
}

INSTANTIATE_TEST_SUITE_P(All, LanguageLaw, testing::ValuesIn(Kinds()), NameOfKind);

}  // namespace
}  // namespace kx::test
