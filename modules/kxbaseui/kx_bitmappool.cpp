#include <kxbaseui/kx_bitmappool.h>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_gdi.h>
#include <kxbaseui/kx_glyphs.h>
#include <kxbaseui/kx_svg.h>
#include <kxbaseui/kx_xml.h>
#include <kxsystem/kx_log.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <exception>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace {

using kx::Bitmap;
using kx::MemoryDC;

// What decides how the pixels look.
struct Look {
    std::string_view svg;
    int width, height;
    COLORREF current;
    bool enabled;

    friend bool operator==(const Look&, const Look&) = default;
};

struct LookHash {
    std::size_t operator()(const Look& look) const {
        std::size_t hash = std::hash<std::string_view>()(look.svg);
        for (const std::size_t part : {static_cast<std::size_t>(look.width), static_cast<std::size_t>(look.height),
                                       static_cast<std::size_t>(look.current), static_cast<std::size_t>(look.enabled)})
            hash = hash * 31 + part;
        return hash;
    }
};

// A bitmap stays selected into a DC of its own, since selecting costs more than blending it. A malformed text has an
// entry without them, so that it is not read at every paint.
struct Entry {
    std::string svg;
    Look look;
    // Goes after the DC that it is selected into.
    Bitmap bitmap;
    MemoryDC dc;

    std::size_t Bytes() const {
        return bitmap ? 4 * static_cast<std::size_t>(look.width) * static_cast<std::size_t>(look.height) : 0;
    }
};

// ---- Pixels --------------------------------------------------------------------------------------------------------

// Grey and pale: what is not there to be used stands back on light and dark faces alike.
void Disable(kx::svg::Image& image) {
    for (std::uint32_t& pixel : image.pixels) {
        const std::uint32_t red = pixel >> 16 & 0xFF, green = pixel >> 8 & 0xFF, blue = pixel & 0xFF;
        const std::uint32_t grey = (red * 54 + green * 183 + blue * 19) >> 8, alpha = pixel >> 24;
        pixel = (alpha * 2 / 5) << 24 | (grey * 2 / 5) * 0x010101U;
    }
}

Bitmap ToBitmap(const kx::svg::Image& image) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = image.width;
    info.bmiHeader.biHeight = -image.height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    Bitmap bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (bitmap) std::memcpy(bits, image.pixels.data(), image.pixels.size() * 4);
    return bitmap;
}

// ---- The resource module -------------------------------------------------------------------------------------------

constexpr wchar_t c_resourceModule[] = L"r7_w32_baseresources.dll";

// Beside this module, wherever the host's program stands. Never freed: resources are read until the process ends.
HMODULE ResourceModule() {
    static const HMODULE module = [] {
        HMODULE self = nullptr;
        GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                           c_resourceModule, &self);
        wchar_t path[2 * MAX_PATH];
        const DWORD length = GetModuleFileNameW(self, path, 2 * MAX_PATH);
        std::wstring file(path, length < 2 * MAX_PATH ? length : 0);
        file.resize(file.find_last_of(L'\\') + 1);
        file += c_resourceModule;
        const HMODULE found =
            LoadLibraryExW(file.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE);
        if (!found)
            KX_LOG(L"kx_bitmappool", L"NO IMAGE CAN BE SHOWN: %ls cannot be loaded - lasterror = %u", file.c_str(),
                   GetLastError());
        return found;
    }();
    return module;
}

bool ReadResource(const wchar_t* name, std::string& text) {
    const HMODULE module = ResourceModule();
    const HRSRC resource = module ? FindResourceW(module, name, RT_RCDATA) : nullptr;
    const HGLOBAL loaded = resource ? LoadResource(module, resource) : nullptr;
    const void* const data = loaded ? LockResource(loaded) : nullptr;
    const DWORD size = resource ? SizeofResource(module, resource) : 0;
    if (!data || size > kx::svg::XmlLimits::Bytes) return false;
    text.assign(static_cast<const char*>(data), size);
    return true;
}

// A resource's number in the place of a pointer is no name.
bool IsName(const wchar_t* name) { return !IS_INTRESOURCE(name) && *name; }

std::wstring Capitals(const wchar_t* name) {
    std::wstring capitals(name);
    CharUpperBuffW(capitals.data(), static_cast<DWORD>(std::min<std::size_t>(capitals.size(), 1000)));
    return capitals;
}

// ---- The pool ------------------------------------------------------------------------------------------------------

class Pool {
public:
    static Pool& Get() {
        static Pool pool;
        return pool;
    }

    int Add(const wchar_t* name) {
        const std::wstring key = Capitals(name);
        for (std::size_t i = 0; i < m_indexed.size(); ++i)
            if (m_indexed[i] == key) return static_cast<int>(i) + 1;
        if (!Find(key)) {
            KX_LOG(L"kx_bitmappool", L"no image \"%ls\"", key.c_str());
            return CKxBitmapPool::NoImage;
        }
        m_indexed.push_back(key);
        return static_cast<int>(m_indexed.size());
    }

    // Null when there is no such image.
    const std::string* ByIndex(int index) {
        if (index < 1 || static_cast<std::size_t>(index) > m_indexed.size()) return nullptr;
        return Find(m_indexed[static_cast<std::size_t>(index) - 1]);
    }

    const std::string* ByName(const wchar_t* name) { return Find(Capitals(name)); }

    void Replace(const wchar_t* name, const std::string& svg) {
        const std::wstring key = Capitals(name);
        if (svg.empty()) {
            m_texts.erase(key);
        } else {
            m_texts[key] = svg;
        }
    }

    bool Draw(HDC dc, std::string_view svg, const RECT& place, bool enabled) {
        // Sides are compared first: the difference of far ends would overflow.
        if (!dc || place.right <= place.left || place.bottom <= place.top) return false;
        const long long width = static_cast<long long>(place.right) - place.left;
        const long long height = static_cast<long long>(place.bottom) - place.top;
        if (width > CKxBitmapPool::MaxSide || height > CKxBitmapPool::MaxSide) return false;
        const Entry& entry = Rasterized(
            {svg, static_cast<int>(width), static_cast<int>(height), KX_GetSysColor(COLOR_BTNTEXT), enabled});
        const BLENDFUNCTION blend{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
        return entry.dc && AlphaBlend(dc, place.left, place.top, entry.look.width, entry.look.height, entry.dc.get(), 0,
                                      0, entry.look.width, entry.look.height, blend) != FALSE;
    }

    CKxBitmapPool::Figures GetFigures() const { return {m_entries.size(), m_bytes, m_rasterized}; }

    void Clear() {
        m_byLook.clear();
        m_entries.clear();
        m_bytes = 0;
    }

private:
    const std::string* Find(const std::wstring& key) {
        const auto known = m_texts.find(key);
        if (known != m_texts.end()) return &known->second;
        std::string text;
        if (!ReadResource(key.c_str(), text)) return nullptr;
        return &m_texts.emplace(key, std::move(text)).first->second;
    }

    // The entry of that look, made if need be; it is the newest then, and stays until the next call.
    const Entry& Rasterized(const Look& look) {
        const auto known = m_byLook.find(look);
        if (known != m_byLook.end()) {
            m_entries.splice(m_entries.begin(), m_entries, known->second);
            return m_entries.front();
        }
        ++m_rasterized;
        kx::svg::Image image;
        const kx::svg::Color current{GetRValue(look.current), GetGValue(look.current), GetBValue(look.current), 1};
        Entry made{std::string(look.svg), look, nullptr, nullptr};
        std::vector<std::string> leftOut;
        if (kx::svg::Render(look.svg, look.width, look.height, current, &m_glyphs, image, &leftOut)) {
            TellLeftOut(look.svg, leftOut);
            if (!look.enabled) Disable(image);
            made.bitmap = ToBitmap(image);
            made.dc.reset(made.bitmap ? CreateCompatibleDC(nullptr) : nullptr);
            if (made.dc) SelectObject(made.dc.get(), made.bitmap.get());
        } else {
            KX_LOG(L"kx_bitmappool", L"malformed image of %zu characters", look.svg.size());
        }
        m_entries.push_front(std::move(made));
        Entry& entry = m_entries.front();
        entry.look.svg = entry.svg;
        m_byLook.emplace(entry.look, m_entries.begin());
        m_bytes += entry.Bytes();
        Shrink();
        return entry;
    }

    // Once for a text, in whatever sizes and colours it is drawn.
    void TellLeftOut(std::string_view svg, const std::vector<std::string>& kinds) {
        if (kinds.empty()) return;
        if (m_told.size() == CKxBitmapPool::MaxImages) m_told.clear();
        if (!m_told.insert(std::hash<std::string_view>()(svg)).second) return;
        for (const std::string& kind : kinds)
            KX_LOG(L"kx_bitmappool", L"an image of %zu characters is drawn without: %hs", svg.size(), kind.c_str());
    }

    void Shrink() {
        while (m_entries.size() > 1 &&
               (m_entries.size() > CKxBitmapPool::MaxImages || m_bytes > CKxBitmapPool::MaxBytes)) {
            const Entry& oldest = m_entries.back();
            m_bytes -= oldest.Bytes();
            m_byLook.erase(oldest.look);
            m_entries.pop_back();
        }
    }

    std::map<std::wstring, std::string> m_texts;  // by name in capitals
    std::vector<std::wstring> m_indexed;
    std::list<Entry> m_entries;  // the newest first
    std::unordered_map<Look, std::list<Entry>::iterator, LookHash> m_byLook;
    std::size_t m_bytes = 0;
    std::unordered_set<std::size_t> m_told;  // the hashes of texts of which something is left out
    unsigned long long m_rasterized = 0;
    kx::svg::GdiGlyphs m_glyphs;
};

// Running out of memory is not worth more than an image that is missing.
template <class Result, class Body>
Result Guarded(Result otherwise, const Body& body) {
    try {
        return body(Pool::Get());
    } catch (const std::exception&) {
        return otherwise;
    }
}

}  // namespace

int CKxBitmapPool::AddImageBaseUI(const wchar_t* name) {
    if (!IsName(name)) return NoImage;
    return Guarded(NoImage, [&](Pool& pool) { return pool.Add(name); });
}

bool CKxBitmapPool::LoadSVGBaseUI(const wchar_t* name, CKxStringA& svg) {
    if (!IsName(name)) return false;
    return Guarded(false, [&](Pool& pool) {
        const std::string* const text = pool.ByName(name);
        if (text) svg.str() = *text;
        return text != nullptr;
    });
}

bool CKxBitmapPool::DrawOptimalImage(HDC dc, int image, const RECT& place, bool enabled) {
    return Guarded(false, [&](Pool& pool) {
        const std::string* const text = pool.ByIndex(image);
        return text && pool.Draw(dc, *text, place, enabled);
    });
}

bool CKxBitmapPool::DrawSVGImage(HDC dc, const CKxStringA& svg, const RECT& place, bool enabled) {
    return Guarded(false, [&](Pool& pool) { return pool.Draw(dc, svg.str(), place, enabled); });
}

void CKxBitmapPool::ReplaceImage(const wchar_t* name, const CKxStringA& svg) {
    if (!IsName(name)) return;
    Guarded(false, [&](Pool& pool) {
        pool.Replace(name, svg.str());
        return true;
    });
}

CKxBitmapPool::Figures CKxBitmapPool::GetFigures() { return Pool::Get().GetFigures(); }

void CKxBitmapPool::Clear() { Pool::Get().Clear(); }
