#include <kxdevui/optics/objectivecard_rules.h>

#include <cmath>
#include <iterator>

#include <kxsystem/kx_number.h>
#include <kxsystem/kx_translation.h>

namespace kx::ui {

namespace {

constexpr wchar_t kSource[] = L"devgui_objectivecard";
// With the wavelength in nanometres, after the resolution.
constexpr wchar_t kFormula[] = L" (0.61 \u03BB / NA, \u03BB = %.0f nm)";

bool IsKnown(double value) { return value > 0 && std::isfinite(value); }

bool IsLiquid(Immersion immersion) { return immersion != Immersion::Unknown && immersion != Immersion::Dry; }

bool Has(EKxObjectiveRisk risk, EKxObjectiveRisk part) {
    return (static_cast<int>(risk) & static_cast<int>(part)) != 0;
}

CKxStringW Joined(const CKxStringW& text, const CKxStringW& reason) {
    return reason.IsEmpty() ? text : text + L": " + reason;
}

// In the user's language, where it is one that is known.
CKxStringW ImmersionText(Immersion immersion, const CKxStringW& given) {
    switch (immersion) {
    case Immersion::Dry: return KX_GetTranslation(L"Air", kSource);
    case Immersion::Water: return KX_GetTranslation(L"Water", kSource);
    case Immersion::Oil: return KX_GetTranslation(L"Oil", kSource);
    case Immersion::Silicone: return KX_GetTranslation(L"Silicone", kSource);
    case Immersion::Glycerol: return KX_GetTranslation(L"Glycerol", kSource);
    case Immersion::Unknown: break;
    }
    return given;
}

}  // namespace

double ResolutionOf(double wavelength, double NA) noexcept {
    constexpr double nanometresInMicrometre = 1000;
    const double resolution = 0.61 * wavelength / NA / nanometresInMicrometre;
    return IsKnown(wavelength) && IsKnown(NA) && IsKnown(resolution) ? resolution : 0;
}

CKxStringW LengthText(double micrometres) {
    if (!IsKnown(micrometres)) return {};
    // What would be rounded to 1000 is a millimetre already.
    const bool isLong = micrometres >= 999.5;
    return KX_FormatNumber(KX_GetTranslation(isLong ? L"%.3g mm" : L"%.3g \u00B5m", kSource),
                           isLong ? micrometres / 1000 : micrometres);
}

EKxObjectiveRisk RiskOf(const SKxObjectiveCard& from, const SKxObjectiveCard& to) {
    const bool dry = IsLiquid(ImmersionOf(from.immersion)) && ImmersionOf(to.immersion) == Immersion::Dry;
    const bool closer = IsKnown(from.WD) && IsKnown(to.WD) && to.WD < from.WD;
    return static_cast<EKxObjectiveRisk>((dry ? 1 : 0) | (closer ? 2 : 0));
}

Immersion ImmersionOf(const CKxStringW& name) {
    const wchar_t* const names[] = {L"Air", L"Water", L"Oil", L"Silicone", L"Glycerol"};
    for (int i = 0; i < static_cast<int>(std::size(names)); ++i) {
        if (name == names[i]) return static_cast<Immersion>(i + 1);
    }
    return Immersion::Unknown;
}

std::wstring CardText::Whole() const {
    std::wstring whole = title.str();
    const auto add = [&whole](const CKxStringW& line) { whole += (whole.empty() ? L"" : L"\r\n") + line.str(); };
    for (const auto& [name, value] : rows)
        add(name + L": " + value);
    for (const auto* lines : {&remarks, &warnings}) {
        for (const CKxStringW& line : *lines)
            add(line);
    }
    return whole;
}

CardText TextOf(const SKxObjectiveCard& card, EKxObjectiveRisk warned) {
    CardText text;
    text.title = card.name;
    const auto add = [&text](const wchar_t* name, const CKxStringW& value) {
        if (!value.IsEmpty()) text.rows.emplace_back(KX_GetTranslation(name, kSource), value);
    };
    add(L"Magnification", card.magnification);
    if (IsKnown(card.NA)) add(L"Numerical aperture", KX_FormatNumber(L"%.2f", card.NA));
    if (!card.immersion.IsEmpty()) {
        text.immersed = static_cast<int>(text.rows.size());
        text.immersion = ImmersionOf(card.immersion);
        add(L"Immersion", ImmersionText(text.immersion, card.immersion));
    }
    add(L"Working distance", LengthText(card.WD));
    if (const double resolution = ResolutionOf(card.wavelength, card.NA); resolution > 0)
        add(L"Resolution",
            LengthText(resolution) + KX_FormatNumber(KX_GetTranslation(kFormula, kSource), card.wavelength));
    if (!card.reachable) text.remarks.push_back(Joined(KX_GetTranslation(L"Cannot be reached", kSource), card.reason));
    if (!card.remark.IsEmpty()) text.remarks.push_back(card.remark);
    const std::pair<EKxObjectiveRisk, const wchar_t*> risks[] = {
        {EKxObjectiveRisk::Dry, L"The stage is high: a dry objective would touch the immersion liquid."},
        {EKxObjectiveRisk::Closer, L"The stage is high: this objective comes closer to the specimen."}};
    for (const auto& [risk, warning] : risks) {
        if (Has(warned, risk)) text.warnings.push_back(KX_GetTranslation(warning, kSource));
    }
    return text;
}

}  // namespace kx::ui
