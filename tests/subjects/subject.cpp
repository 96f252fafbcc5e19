#include "subject.h"

#include <algorithm>
#include <cctype>
#include <cfloat>
#include <cmath>
#include <limits>
#include <string_view>

#include <kxdevui/framework/devgui_activity.h>
#include <kxdevui/framework/devgui_readings.h>
#include <kxdevui/framework/ui_gdi.h>

namespace kx::test {
const std::vector<Operation>& Subject::Operations() {
    if (operations_.empty()) operations_ = MakeOperations();
    return operations_;
}

// In an order that does not depend on that of the objects on the linker's command line.
void Register(Kind kind) {
    const auto at =
        std::find_if(Kinds().begin(), Kinds().end(), [&](const Kind& each) { return each.name > kind.name; });
    Kinds().insert(at, std::move(kind));
}

std::vector<Kind>& Kinds() {
    static std::vector<Kind> kinds;
    return kinds;
}

std::string NameOfKind(const testing::TestParamInfo<Kind>& info) {
    std::string name = info.param.name;
    for (char& c : name)
        if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
    return name;
}

void PrintTo(const Kind& kind, std::ostream* out) { *out << kind.name; }

double AnyNumber(Random& random) {
    if (!random.OneIn(8)) return random.Between(-40, 240) / 2.0;
    constexpr double infinite = std::numeric_limits<double>::infinity();
    return random.Of({0.0, 1e-300, -1e300, DBL_MAX, -DBL_MAX, infinite, -infinite, std::nan("")});
}

void TellAnyActivity(HWND control, Random& random) {
    const auto activity = static_cast<EKxActivity>(random.Between(0, static_cast<int>(EKxActivity::Locked)));
    KX_TellActivity(control, {activity, random.Between(-1, 17), random.Of({L"", L"17"})});
}

void TellAnyReadings(HWND control, Random& random) {
    KX_TellLight(control, static_cast<EKxLight>(random.Between(0, 2)));
    KX_TellMeasured(control, {.asked = AnyNumber(random), .measured = AnyNumber(random)});
}

void WithDc(int width, int height, const std::function<void(HDC)>& run) {
    const kx::ui::WindowDC screen(nullptr);
    const kx::ui::Bitmap bitmap(CreateCompatibleBitmap(screen, width, height));
    const kx::ui::MemoryDC dc(CreateCompatibleDC(screen));
    const kx::ui::Selection selected(dc.get(), bitmap.get());
    run(dc.get());
}

std::vector<Target> TreeOf(HWND window) {
    if (!window) return {};
    wchar_t name[64] = L"";
    GetClassNameW(window, name, 64);
    WNDCLASSW known{};
    const bool ours = std::wstring_view(name).find(L"KxDev") <= 1 || !GetClassInfoW(nullptr, name, &known);
    std::vector<Target> tree{{window, ours}};
    // What is in one of the platform's controls is its own.
    for (HWND child = ours ? GetWindow(window, GW_CHILD) : nullptr; child; child = GetWindow(child, GW_HWNDNEXT))
        for (const Target& each : TreeOf(child))
            tree.push_back(each);
    return tree;
}

}  // namespace kx::test
