#include <kxdevui/framework/ui_access.h>

#include <oleacc.h>

#include <atomic>
#include <map>
#include <new>
#include <optional>

#include <kxdevui/framework/ui_parts.h>
#include <kxsystem/kx_log.h>

namespace kx::ui {

namespace {

// Written out: which of the platform's libraries has them is not the same for every compiler.
constexpr IID kUnknown{0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr IID kDispatch{0x20400, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr IID kEnumVariant{0x20404, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr IID kAccessible{0x618736E0, 0x3C3D, 0x11CF, {0x81, 0x0C, 0, 0xAA, 0, 0x38, 0x9B, 0x71}};

// These libraries are loaded when the first client asks: hardly any start of a program has one.
template <class Function>
Function* Find(const wchar_t* library, const char* name) {
    const HMODULE module = LoadLibraryExW(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    return module ? reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module, name))) : nullptr;
}

struct Platform {
    decltype(&CreateStdAccessibleObject) standard =
        Find<decltype(CreateStdAccessibleObject)>(L"oleacc.dll", "CreateStdAccessibleObject");
    decltype(&LresultFromObject) answer = Find<decltype(LresultFromObject)>(L"oleacc.dll", "LresultFromObject");
    decltype(&CoDisconnectObject) disconnect = Find<decltype(CoDisconnectObject)>(L"ole32.dll", "CoDisconnectObject");
    decltype(&SysAllocStringLen) text = Find<decltype(SysAllocStringLen)>(L"oleaut32.dll", "SysAllocStringLen");
    decltype(&SysFreeString) free = Find<decltype(SysFreeString)>(L"oleaut32.dll", "SysFreeString");

    explicit operator bool() const noexcept { return standard && answer && disconnect && text && free; }
};

const Platform& System() {
    static const Platform platform;
    return platform;
}

class Accessible;

std::map<HWND, Accessible*>& All() {
    static std::map<HWND, Accessible*> all;
    return all;
}

BSTR Bstr(const CKxStringW& text) { return System().text(text, static_cast<UINT>(text.str().size())); }

// Whether a client has ever asked for a window: before, nobody is there to be told.
bool s_asked = false;

#if defined(__GNUC__)
// COM's interfaces have none; an object ends itself.
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
#endif

// One object a window. A client of another process may keep it when the window has gone: it touches nothing then.
class Accessible final : public IAccessible {
public:
    Accessible(HWND window, IAccessible* standard) : m_window(window), m_standard(standard) { All()[window] = this; }
    Accessible(const Accessible&) = delete;
    Accessible& operator=(const Accessible&) = delete;
    virtual ~Accessible() = default;

    // Lets go of the window.
    void Lose() noexcept {
        All().erase(m_window);
        m_window = nullptr;
        m_standard->Release();
        m_standard = nullptr;
        System().disconnect(this, 0);
        Release();
    }

    // ---- IUnknown, IDispatch ----

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override {
        if (!out) return E_POINTER;
        *out = nullptr;
        if (id != kUnknown && id != kDispatch && id != kAccessible) {
            // Children that are windows are told by the standard object's list.
            return id == kEnumVariant && Record().parts == 0 && m_standard ? m_standard->QueryInterface(id, out)
                                                                           : E_NOINTERFACE;
        }
        *out = static_cast<IAccessible*>(this);
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --m_references;
        if (left == 0) delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        return m_standard ? m_standard->GetTypeInfoCount(count) : CO_E_OBJNOTCONNECTED;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
        return m_standard ? m_standard->GetTypeInfo(index, locale, info) : CO_E_OBJNOTCONNECTED;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override {
        return m_standard ? m_standard->GetIDsOfNames(id, names, count, locale, ids) : CO_E_OBJNOTCONNECTED;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* argument) override {
        return m_standard ? m_standard->Invoke(member, id, locale, flags, parameters, result, exception, argument)
                          : CO_E_OBJNOTCONNECTED;
    }

    // ---- The tree ----

    HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override {
        return m_standard ? m_standard->get_accParent(parent) : CO_E_OBJNOTCONNECTED;
    }
    HRESULT STDMETHODCALLTYPE get_accChildCount(long* count) override {
        if (!count) return E_POINTER;
        if (!m_window) return CO_E_OBJNOTCONNECTED;
        *count = Record().parts;
        if (!m_window) return CO_E_OBJNOTCONNECTED;
        return *count > 0 ? S_OK : m_standard->get_accChildCount(count);
    }
    HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** out) override {
        if (!out) return E_POINTER;
        *out = nullptr;
        if (!m_window) return CO_E_OBJNOTCONNECTED;
        const long parts = Record().parts;
        if (!m_window) return CO_E_OBJNOTCONNECTED;
        if (parts == 0) return m_standard->get_accChild(child, out);
        // They are told by this object.
        return child.vt == VT_I4 && child.lVal >= 1 && child.lVal <= parts ? S_FALSE : E_INVALIDARG;
    }

    // ---- What it is ----

    HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* out) override {
        return Text(child, out, &KxAccess::name, [] { return S_FALSE; });
    }
    HRESULT STDMETHODCALLTYPE get_accValue(VARIANT child, BSTR* out) override {
        return Text(child, out, &KxAccess::value, [] { return S_FALSE; });
    }
    HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT child, BSTR* out) override {
        return Text(child, out, &KxAccess::description, [] { return S_FALSE; });
    }
    HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT child, BSTR* out) override {
        return Text(child, out, &KxAccess::shortcut,
                    [&] { return IsPart(child) ? S_FALSE : m_standard->get_accKeyboardShortcut(child, out); });
    }
    HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT child, BSTR* out) override {
        return Text(child, out, &KxAccess::action, [] { return S_FALSE; });
    }
    HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT child, BSTR* out) override {
        return Text(child, out, nullptr, [] { return S_FALSE; });
    }
    HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR*, VARIANT, long*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* role) override {
        return Number(child, role, [&](const KxAccess& record) {
            if (record.role == 0 && !IsPart(child)) return m_standard->get_accRole(child, role);
            role->vt = VT_I4;
            role->lVal = record.role;
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* state) override {
        return Number(child, state, [&](const KxAccess& record) {
            VARIANT self{};
            self.vt = VT_I4;
            if (m_standard->get_accState(self, state) != S_OK || state->vt != VT_I4) state->vt = VT_I4, state->lVal = 0;
            // Where the focus is within a window is in the part's own state.
            if (IsPart(child)) state->lVal &= ~(STATE_SYSTEM_FOCUSED | STATE_SYSTEM_FOCUSABLE);
            if (!CanBeUsed(m_window)) state->lVal |= STATE_SYSTEM_UNAVAILABLE;
            state->lVal |= record.state;
            return S_OK;
        });
    }

    // ---- Where it is ----

    HRESULT STDMETHODCALLTYPE accLocation(long* x, long* y, long* cx, long* cy, VARIANT child) override {
        if (!x || !y || !cx || !cy) return E_POINTER;
        if (!m_window) return CO_E_OBJNOTCONNECTED;
        if (!IsPart(child)) return m_standard->accLocation(x, y, cx, cy, child);
        const auto part = RecordOf(child);
        if (!part) return E_INVALIDARG;
        RECT place = part->place;
        MapWindowPoints(m_window, nullptr, reinterpret_cast<POINT*>(&place), 2);
        *x = place.left, *y = place.top, *cx = place.right - place.left, *cy = place.bottom - place.top;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE accHitTest(long x, long y, VARIANT* hit) override {
        if (!hit) return E_POINTER;
        if (!m_window) return CO_E_OBJNOTCONNECTED;
        *hit = {};
        const KxAccess all = Record();
        if (!m_window) return CO_E_OBJNOTCONNECTED;
        if (all.parts == 0 && GetWindow(m_window, GW_CHILD)) return m_standard->accHitTest(x, y, hit);
        POINT at{x, y};
        ScreenToClient(m_window, &at);
        RECT client{};
        GetClientRect(m_window, &client);
        if (!PtInRect(&client, at)) return S_FALSE;
        // Never the object itself: the platform's search from a point would go on in it for ever.
        hit->vt = VT_I4;
        hit->lVal = CHILDID_SELF;
        for (long i = 1; i <= all.parts && hit->lVal == CHILDID_SELF; ++i) {
            const RECT place = PartOf(all, i).place;
            if (PtInRect(&place, at)) hit->lVal = i;
        }
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE accNavigate(long direction, VARIANT start, VARIANT* end) override {
        return m_standard ? m_standard->accNavigate(direction, start, end) : CO_E_OBJNOTCONNECTED;
    }

    // ---- What can be done ----

    HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* child) override {
        if (!child) return E_POINTER;
        if (!m_window) return CO_E_OBJNOTCONNECTED;
        const KxAccess all = GetFocus() == m_window ? Record() : KxAccess();
        for (long i = 1; i <= all.parts; ++i) {
            if (!(PartOf(all, i).state & STATE_SYSTEM_FOCUSED)) continue;
            child->vt = VT_I4;
            child->lVal = i;
            return S_OK;
        }
        return m_standard ? m_standard->get_accFocus(child) : CO_E_OBJNOTCONNECTED;
    }
    HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* children) override {
        if (!children) return E_POINTER;
        *children = {};
        return m_window ? S_FALSE : CO_E_OBJNOTCONNECTED;
    }
    HRESULT STDMETHODCALLTYPE accSelect(long flags, VARIANT) override {
        if (!m_window) return CO_E_OBJNOTCONNECTED;
        if (flags != SELFLAG_TAKEFOCUS) return E_INVALIDARG;
        if (!CanBeUsed(m_window)) return S_FALSE;
        SetFocus(m_window);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT child) override {
        return Do(child, [](const KxAccess& record) {
            if (!record.act) return DISP_E_MEMBERNOTFOUND;
            record.act();
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE put_accValue(VARIANT child, BSTR value) override {
        return Do(child, [&](const KxAccess& record) {
            if (!record.setValue) return DISP_E_MEMBERNOTFOUND;
            return record.setValue(CKxStringW(value ? value : L"")) ? S_OK : E_INVALIDARG;
        });
    }
    HRESULT STDMETHODCALLTYPE put_accName(VARIANT, BSTR) override { return DISP_E_MEMBERNOTFOUND; }

private:
    static bool IsPart(const VARIANT& child) { return child.vt != VT_I4 || child.lVal != CHILDID_SELF; }

    // A host that is asked may end the window: whoever goes on to the standard object looks again.
    KxAccess Record() const {
        KxAccess record;
        if (m_window) Guarded([&]() -> Handled { return record = ui::RecordOf(m_window), std::nullopt; });
        return record;
    }
    // A host's function may throw, too.
    static KxAccess PartOf(const KxAccess& all, long number) {
        KxAccess part;
        if (all.part) Guarded([&]() -> Handled { return part = all.part(number), std::nullopt; });
        return part;
    }
    // Of the window or of a part of it, if there is such a part.
    std::optional<KxAccess> RecordOf(const VARIANT& child) const {
        if (child.vt != VT_I4 || child.lVal < 0) return std::nullopt;
        KxAccess all = Record();
        if (child.lVal == CHILDID_SELF) return all;
        if (child.lVal > all.parts || !all.part) return std::nullopt;
        KxAccess part = PartOf(all, child.lVal);
        if (part.description.IsEmpty()) part.description = all.description;
        return part;
    }

    // A text of the record; where it is empty, what `otherwise` answers.
    template <class Otherwise>
    HRESULT Text(const VARIANT& child, BSTR* out, CKxStringW KxAccess::*text, Otherwise&& otherwise) {
        if (!out) return E_POINTER;
        *out = nullptr;
        if (!m_window) return CO_E_OBJNOTCONNECTED;
        const auto record = RecordOf(child);
        if (!m_window) return CO_E_OBJNOTCONNECTED;
        if (!record) return E_INVALIDARG;
        if (!text || ((*record).*text).IsEmpty()) return otherwise();
        *out = Bstr((*record).*text);
        return S_OK;
    }

    template <class Fill>
    HRESULT Number(const VARIANT& child, VARIANT* out, Fill&& fill) {
        if (!out) return E_POINTER;
        *out = {};
        if (!m_window) return CO_E_OBJNOTCONNECTED;
        const auto record = RecordOf(child);
        if (!m_window) return CO_E_OBJNOTCONNECTED;
        return record ? fill(*record) : E_INVALIDARG;
    }

    // The window, and with it the object's tie, may be gone afterwards.
    template <class Call>
    HRESULT Do(const VARIANT& child, Call&& call) {
        if (!m_window) return CO_E_OBJNOTCONNECTED;
        const auto record = RecordOf(child);
        if (!record) return E_INVALIDARG;
        if (!CanBeUsed(m_window)) return E_ACCESSDENIED;
        AddRef();
        HRESULT result = E_FAIL;
        Guarded([&]() -> Handled { return result = call(*record), std::nullopt; });
        Release();
        return result;
    }

    std::atomic<ULONG> m_references = 1;
    HWND m_window;
    IAccessible* m_standard;
};

}  // namespace

Handled AnswerGetObject(const Message& message) noexcept {
    if (message.id != WM_GETOBJECT || static_cast<LONG>(message.lParam) != OBJID_CLIENT) return std::nullopt;
    return Guarded([&]() -> Handled {
        if (!IsTold(message.window) || !System()) return std::nullopt;
        s_asked = true;
        const auto found = All().find(message.window);
        Accessible* object = found != All().end() ? found->second : nullptr;
        if (!object) {
            // The platform's own object for a window of that class.
            void* standard = nullptr;
            if (FAILED(System().standard(message.window, OBJID_CLIENT, kAccessible, &standard))) return std::nullopt;
            object = new (std::nothrow) Accessible(message.window, static_cast<IAccessible*>(standard));
            if (!object) return std::nullopt;
        }
        return System().answer(kAccessible, message.wParam, object);
    });
}

void AccessLost(HWND window) noexcept {
    const auto found = All().find(window);
    if (found != All().end()) found->second->Lose();
}

}  // namespace kx::ui

bool KX_AnswerGetObject(HWND window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& answer) {
    if (message == WM_NCDESTROY) kx::ui::AccessLost(window);
    const kx::ui::Handled handled = kx::ui::AnswerGetObject({window, message, wParam, lParam});
    if (handled) answer = *handled;
    return handled.has_value();
}

void KX_TellAccess(HWND window, DWORD event, long part) {
    if (window && kx::ui::s_asked) NotifyWinEvent(event, window, OBJID_CLIENT, part);
}
