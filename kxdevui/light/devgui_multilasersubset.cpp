#include <kxdevui/light/devgui_multilasersubset.h>

#include <algorithm>

#include <kxdevui/framework/ui_activity.h>
#include <kxdevui/framework/ui_arithmetic.h>
#include <kxdevui/framework/ui_control.h>
#include <kxdevui/framework/ui_device.h>
#include <kxsystem/kx_log.h>
#include <kxsystem/kx_translation.h>

using namespace kx::ui;
using namespace kx::multilaser;

namespace {

constexpr wchar_t kSource[] = L"devgui_multilasersubset";

constexpr int kFirstSubset = 10300;
// Unzoomed pixels: the row of buttons, and what is between them.
constexpr long kRow = 20, kBelow = 6, kGap = 2;

struct Told {
    std::vector<SKxLaserLine> lines;
    std::vector<SKxLaserSubset> subsets;
    bool exclusive = true;
};

}  // namespace

CKxDevUI_MultiLaserSubset::CKxDevUI_MultiLaserSubset()
    : CKxDevUI_MultiLaser(this, {.name = L"KxDEVGUI_MultiLaserSubset",
                                 .size = {560, 262},
                                 .title = KX_GetTranslation(L"Lasers", L"devgui_multilaser"),
                                 .tabsInside = true}) {}

CKxDevUI_MultiLaserSubset::~CKxDevUI_MultiLaserSubset() { Destroy(); }

bool CKxDevUI_MultiLaserSubset::Make(const Parts& parts) {
    const int count = static_cast<int>(m_subsets.size());
    for (int i = 0; i < count; ++i) {
        HWND button = nullptr;
        const RECT place = ShareOf({0, 0, m_width, kRow}, i, count, kGap);
        const CKxStringW name =
            i < static_cast<int>(m_subsets.size()) ? m_subsets[static_cast<std::size_t>(i)].name : L"";
        if (!parts.PushRadio(button, kFirstSubset + i, name, place, false, nullptr, WS_TABSTOP)) return false;
    }
    if (!MakeBelow(parts, count > 0 ? kRow + kBelow : 0)) return false;
    ShowSubsets();
    return static_cast<bool>(parts);
}

bool CKxDevUI_MultiLaserSubset::Update(CDMApi_LogDevId engine) {
    const auto ask = [](const IKxDeviceLaserEngine& device) {
        Told told{AskLines(device), {}, device.GetCapability(eKxCapability_LaserPortsExclusive)};
        const long count = std::min(device.GetSubsetCount(), kMostSubsets);
        for (long i = 0; i < count; ++i)
            if (!device.GetSubset(i, told.subsets.emplace_back())) told.subsets.back() = {.usable = false};
        return told;
    };
    return UpdateFrom<IKxDeviceLaserEngine>(
        this, kSource, engine, ask, [this](const Told& told) { Set(told.lines, told.subsets, told.exclusive); });
}

void CKxDevUI_MultiLaserSubset::Set(const std::vector<SKxLaserLine>& lines, const std::vector<SKxLaserSubset>& subsets,
                                    bool exclusive) {
    const std::size_t count = std::min(subsets.size(), static_cast<std::size_t>(kMostSubsets));
    if (count < subsets.size())
        KX_LOG(kSource, L"%u subsets are left out", static_cast<unsigned>(subsets.size() - count));
    const bool asMany = m_subsets.size() == count;
    m_told = lines;
    m_subsets.assign(subsets.begin(), subsets.begin() + static_cast<std::ptrdiff_t>(count));
    m_exclusive = exclusive;
    const Alive alive(static_cast<CKxDevUI_Base*>(this));
    ShowLines();
    if (!alive) return;
    if (asMany)
        ShowSubsets();
    else
        Remake();
}

// A line that is in several is in use while one of them is.
void CKxDevUI_MultiLaserSubset::ShowLines() {
    std::vector<SKxLaserLine> lines = m_told;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const SKxLaserSubset* without = nullptr;
        bool active = false;
        for (const SKxLaserSubset& each : m_subsets) {
            if (std::find(each.lines.begin(), each.lines.end(), static_cast<long>(i)) == each.lines.end()) continue;
            active |= each.active;
            if (!without) without = &each;
        }
        if (active || !without || lines[i].interlock) continue;
        lines[i].usable = false;
        lines[i].reason = without->reason;
        if (!without->usable && !without->reason.IsEmpty()) continue;
        lines[i].reason.Format(200, KX_GetTranslation(L"%ls is not in use", kSource), without->name.c_str());
    }
    SetLines(lines);
}

void CKxDevUI_MultiLaserSubset::ShowSubsets() {
    const HWND window = m_hWnd;
    const Parts parts(window, static_cast<CKxDevUI_Base*>(this));
    const KeepsFocus keeps(window);
    for (std::size_t i = 0; parts && i < m_subsets.size(); ++i) {
        const SKxLaserSubset& subset = m_subsets[i];
        const HWND button = PartAt(kFirstSubset + static_cast<int>(i));
        SetTextOf(button, AsButtonText(subset.name));
        const WPARAM down = subset.active ? BST_CHECKED : BST_UNCHECKED;
        if (SendMessageW(button, BM_GETCHECK, 0, 0) != static_cast<LRESULT>(down))
            SendMessageW(button, BM_SETCHECK, down, 0);
        Enable(button, IsWindowEnabled(window) && subset.usable);
    }
}

void CKxDevUI_MultiLaserSubset::OnSubsetChangeRequest(long, bool, bool&) {}

void CKxDevUI_MultiLaserSubset::Activate(long subset, bool active) {
    if (subset >= static_cast<long>(m_subsets.size())) return;
    for (SKxLaserSubset& each : m_subsets)
        if (m_exclusive) each.active = false;
    m_subsets[static_cast<std::size_t>(subset)].active = active;
    // What the user has done since is not taken back.
    const std::vector<SKxLaserLine> now = GetLines();
    for (std::size_t i = 0; i < std::min(now.size(), m_told.size()); ++i)
        m_told[i].on = now[i].on, m_told[i].power = now[i].power;
    const Alive alive(static_cast<CKxDevUI_Base*>(this));
    ShowLines();
    if (alive) ShowSubsets();
}

void CKxDevUI_MultiLaserSubset::AskSubset(long subset) {
    const bool wanted = !m_subsets[static_cast<std::size_t>(subset)].active;
    if (!wanted && m_exclusive) return;
    Ask([&](bool& veto) { OnSubsetChangeRequest(subset, wanted, veto); }, [&] { Activate(subset, wanted); });
}

void CKxDevUI_MultiLaserSubset::Command(int id, int code) {
    const long subset = id - kFirstSubset;
    if (subset < 0 || subset >= static_cast<long>(m_subsets.size())) return CKxDevUI_MultiLaser::Command(id, code);
    if (code == BN_CLICKED) AskSubset(subset);
}

Handled CKxDevUI_MultiLaserSubset::Handle(const Message& message) {
    const Alive alive(static_cast<CKxDevUI_Base*>(this));
    const Handled answer = CKxDevUI_MultiLaser::Handle(message);
    if (message.id == WM_ENABLE && alive) ShowSubsets();
    return answer;
}
