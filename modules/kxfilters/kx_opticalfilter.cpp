#include <kxfilters/kx_opticalfilter.h>

#include <algorithm>
#include <cwctype>
#include <optional>
#include <string>
#include <string_view>

#include <kxsystem/kx_color.h>

namespace {

constexpr double kVisibleFrom = 380, kVisibleTo = 780;

// Emission filters that go by a dye's name.
constexpr struct {
    const wchar_t* dye;
    SKxFilterBand band;
} kDyes[] = {
    {L"DAPI", {460, 50}},    {L"CFP", {480, 40}}, {L"FITC", {525, 50}},  {L"GFP", {525, 50}},
    {L"YFP", {540, 30}},     {L"Cy3", {595, 50}}, {L"TRITC", {605, 70}}, {L"RFP", {605, 70}},
    {L"mCherry", {630, 75}}, {L"Cy5", {690, 50}}, {L"Cy7", {775, 50}},
};

bool IsWavelength(double value) { return value >= 200 && value <= 2000; }

// Reads a name from left to right, a piece at a time: numbers, words, single signs.
class Pieces {
public:
    explicit Pieces(std::wstring_view text) : m_rest(text) {}

    std::optional<double> Number() {
        double value = 0;
        std::size_t length = 0;
        for (; length < m_rest.size() && m_rest[length] >= L'0' && m_rest[length] <= L'9'; ++length)
            value = std::min(value * 10 + (m_rest[length] - L'0'), 1e6);
        if (length == 0) return std::nullopt;
        m_rest.remove_prefix(length);
        return value;
    }
    std::wstring Word() {
        std::wstring word;
        while (!m_rest.empty() && std::iswalpha(m_rest.front()))
            word += static_cast<wchar_t>(std::towlower(Sign()));
        return word;
    }
    wchar_t Sign() {
        const wchar_t sign = m_rest.front();
        m_rest.remove_prefix(1);
        return sign;
    }
    void Blanks() {
        while (!m_rest.empty() && std::iswspace(m_rest.front()))
            m_rest.remove_prefix(1);
    }
    bool Take(wchar_t sign) {
        if (m_rest.empty() || m_rest.front() != sign) return false;
        m_rest.remove_prefix(1);
        return true;
    }
    bool End() const { return m_rest.empty(); }

private:
    std::wstring_view m_rest;
};

std::optional<SKxFilterBand> EdgeBand(const std::wstring& kind, double edge) {
    const double from = kind == L"lp" ? edge : kVisibleFrom, to = kind == L"lp" ? kVisibleTo : edge;
    if ((kind != L"lp" && kind != L"sp") || !IsWavelength(edge) || from >= to) return std::nullopt;
    return SKxFilterBand{(from + to) / 2, to - from};
}

std::vector<SKxFilterBand> BandsInName(const std::wstring& name) {
    std::vector<SKxFilterBand> bands;
    std::wstring word;  // the last one, before a number
    double number = 0;  // the last one, before a word
    for (Pieces pieces(name); !pieces.End(); pieces.Blanks()) {
        if (const auto first = pieces.Number()) {
            number = 0;
            if (!IsWavelength(*first)) continue;
            if (pieces.Take(L'/')) {
                if (const auto width = pieces.Number(); width && *width > 0) bands.push_back({*first, *width});
            } else if (const auto band = EdgeBand(word, *first)) {
                bands.push_back(*band);
            } else {
                number = *first;
            }
            word.clear();
        } else if (word = pieces.Word(); !word.empty()) {
            const auto band = EdgeBand(word, number);
            if (band) bands.push_back(*band), word.clear();
            number = 0;
        } else {
            pieces.Sign();
        }
    }
    return bands;
}

std::wstring Lower(std::wstring text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](wchar_t c) { return static_cast<wchar_t>(std::towlower(c)); });
    return text;
}

}  // namespace

bool CKxFilterDialog::GetFilterInfo(const CKxStringW& name, CKxOpticalFilter* filter) {
    if (!filter) return false;
    filter->name = name;
    filter->bands = BandsInName(name.str());
    if (!filter->bands.empty()) return true;
    const std::wstring& text = name.str();
    const auto end = std::find_if_not(text.begin(), text.end(), [](wchar_t c) { return std::iswalnum(c) != 0; });
    const std::wstring word = Lower({text.begin(), end});
    for (const auto& each : kDyes) {
        if (word == Lower(each.dye)) filter->bands = {each.band};
    }
    return !filter->bands.empty();
}

std::vector<CKxStringW> CKxFilterDialog::GetFilterNames() {
    std::vector<CKxStringW> names;
    for (const auto& each : kDyes)
        names.emplace_back(each.dye);
    return names;
}

void CKxFilterDialog::GetColorsFromFilter(const CKxOpticalFilter* filter, unsigned long* colors, int& count) {
    const int room = filter && colors ? std::clamp(count, 0, MaximumColors) : 0;
    count = 0;
    for (; count < room && count < static_cast<int>(filter->bands.size()); ++count)
        colors[count] = KX_RGBFromWavelength(filter->bands[static_cast<std::size_t>(count)].centre);
}
