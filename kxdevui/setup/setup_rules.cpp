#include <kxdevui/setup/setup_rules.h>

#include <algorithm>
#include <cwctype>
#include <map>
#include <optional>

#include <kxdevui/optics/objectivecard_rules.h>
#include <kxfilters/kx_opticalfilter.h>
#include <kxsystem/kx_number.h>
#include <kxsystem/kx_translation.h>

namespace kx::setup {

namespace {

CKxStringW Translated(const wchar_t* text) { return KX_GetTranslation(text, L"devgui_setup"); }

// As it is compared.
std::wstring Plain(const std::wstring& text) {
    std::wstring plain = KX_HalfWidth(text.c_str()).str();
    for (std::size_t i = 0; i < plain.size(); ++i) {
        const bool amongDigits =
            i > 0 && i + 1 < plain.size() && std::iswdigit(plain[i - 1]) != 0 && std::iswdigit(plain[i + 1]) != 0;
        plain[i] = plain[i] == L',' && amongDigits ? L'.' : static_cast<wchar_t>(std::towlower(plain[i]));
    }
    return plain;
}

template <class Value>
std::vector<double> Distinct(std::span<const Entry> entries, Value value) {
    std::vector<double> values;
    for (const Entry& each : entries) {
        if (value(each) > 0) values.push_back(value(each));
    }
    std::sort(values.begin(), values.end());
    values.erase(std::unique(values.begin(), values.end()), values.end());
    return values;
}

bool IsDry(const Entry& entry) { return entry.group == L"Air"; }
bool IsWet(const Entry& entry) { return entry.magnification > 0 && !entry.group.empty() && !IsDry(entry); }

// The nearest position that is not empty, forwards or backwards around the ring; `from` itself when there is none.
std::size_t Neighbour(std::span<const Entry> positions, std::size_t from, bool forwards) {
    std::size_t at = from;
    do {
        at = (at + (forwards ? 1 : positions.size() - 1)) % positions.size();
    } while (at != from && positions[at].IsEmpty());
    return at;
}

bool IsDryAmongWet(std::span<const Entry> positions, std::size_t position) {
    if (!IsDry(positions[position])) return false;
    const std::size_t next = Neighbour(positions, position, true), before = Neighbour(positions, position, false);
    return next != before && IsWet(positions[next]) && IsWet(positions[before]);
}

std::optional<std::size_t> SameAs(std::span<const Entry> positions, std::size_t position) {
    for (std::size_t i = 0; i < positions.size(); ++i) {
        if (i != position && positions[i].Is(positions[position])) return i;
    }
    return std::nullopt;
}

// 0 when nothing is known.
double ParfocalOfMost(std::span<const Entry> positions) {
    std::map<double, int> counts;
    for (const Entry& each : positions) {
        if (each.parfocal > 0) ++counts[each.parfocal];
    }
    const auto most = std::max_element(counts.begin(), counts.end(),
                                       [](const auto& a, const auto& b) { return a.second < b.second; });
    return most == counts.end() ? 0 : most->first;
}

}  // namespace

bool IsFound(const Entry& entry, const Search& search) {
    if (search.magnification > 0 && entry.magnification != search.magnification) return false;
    if (entry.NA < search.NA || (!search.group.empty() && entry.group != search.group)) return false;
    const std::wstring name = Plain(entry.name), typed = Plain(search.typed);
    for (std::size_t at = 0; at < typed.size();) {
        const std::size_t end = std::min(typed.find_first_of(L" \t\u00A0\u3000", at), typed.size());
        if (name.find(typed.substr(at, end - at)) == std::wstring::npos) return false;
        at = end + 1;
    }
    return true;
}

std::vector<double> MagnificationsOf(std::span<const Entry> entries) {
    return Distinct(entries, [](const Entry& each) { return each.magnification; });
}

std::vector<double> AperturesOf(std::span<const Entry> entries) {
    return Distinct(entries, [](const Entry& each) { return each.NA; });
}

std::vector<std::wstring> GroupsOf(std::span<const Entry> entries) {
    std::vector<std::wstring> groups;
    for (const Entry& each : entries) {
        const bool there = std::find(groups.begin(), groups.end(), each.group) != groups.end();
        if (!each.group.empty() && !there) groups.push_back(each.group);
    }
    return groups;
}

std::vector<Remark> RemarksOn(std::span<const Entry> positions, std::size_t position) {
    if (position >= positions.size()) return {};
    const Entry& here = positions[position];
    if (here.IsEmpty()) return {{Remark::Empty}};
    std::vector<Remark> remarks;
    if (!here.known) remarks.push_back({Remark::Unknown});
    if (const auto same = SameAs(positions, position)) remarks.push_back({Remark::Duplicate, *same});
    if (IsDryAmongWet(positions, position)) remarks.push_back({Remark::DryAmongWet});
    if (here.parfocal > 0 && here.parfocal != ParfocalOfMost(positions)) remarks.push_back({Remark::OtherParfocal});
    return remarks;
}

std::vector<std::size_t> Changed(std::span<const Entry> before, std::span<const Entry> after) {
    std::vector<std::size_t> changed;
    for (std::size_t i = 0; i < std::min(before.size(), after.size()); ++i) {
        if (!before[i].Is(after[i])) changed.push_back(i);
    }
    return changed;
}

std::wstring TextOf(const Remark& remark) {
    switch (remark.kind) {
    case Remark::Empty: return Translated(L"Empty").str();
    case Remark::Unknown: return Translated(L"Nothing is known of it").str();
    case Remark::Duplicate: {
        std::wstring text = Translated(L"Also in position %1").str();
        if (const std::size_t at = text.find(L"%1"); at != std::wstring::npos)
            text.replace(at, 2, std::to_wstring(remark.other + 1));
        return text;
    }
    case Remark::DryAmongWet: return Translated(L"Dry, between two with immersion").str();
    case Remark::OtherParfocal: return Translated(L"Not parfocal with the others").str();
    default: return {};
    }
}

std::wstring DetailsOf(const Entry& entry) {
    std::wstring details;
    const auto add = [&details](const wchar_t* label, const std::wstring& value) {
        if (!value.empty()) details += (details.empty() ? L"" : L"\n") + Translated(label).str() + L" " + value;
    };
    add(L"Working distance:", kx::ui::LengthText(entry.WD).str());
    add(L"Cover glass:", entry.correction);
    if (entry.parfocal > 0) add(L"Parfocal distance:", KX_FormatNumber(L"%.4g mm", entry.parfocal).str());
    return details;
}

Entry FilterNamed(const std::wstring& name) {
    Entry entry;
    entry.name = name;
    CKxOpticalFilter filter;
    entry.known = CKxFilterDialog::GetFilterInfo(CKxStringW(name), &filter);
    for (const SKxFilterBand& band : filter.bands)
        entry.group +=
            (entry.group.empty() ? L"" : L", ") + KX_FormatNumber(L"%.4g/%.4g", band.centre, band.width).str();
    return entry;
}

}  // namespace kx::setup
