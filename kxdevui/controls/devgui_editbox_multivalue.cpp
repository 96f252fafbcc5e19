#include <kxdevui/controls/devgui_editbox_multivalue.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include <kxdevui/controls/editbox_rules.h>
#include <kxdevui/framework/field_rules.h>
#include <kxsystem/kx_log.h>
#include <kxsystem/kx_number.h>
#include <kxsystem/kx_translation.h>

namespace {

constexpr wchar_t kSource[] = L"devgui_editbox";

}  // namespace

CKxDevUI_EditBoxMultiValue::CKxDevUI_EditBoxMultiValue() {
    m_maxChars = m_maxListChars;
    m_content = Content::List;
    m_separator = L';';
    m_findFault = [](const CKxDevUI_EditBox& box) {
        const auto& self = static_cast<const CKxDevUI_EditBoxMultiValue&>(box);
        const kx::ui::ValueList list = kx::ui::SplitValues(self.GetText().str(), self.m_separator);
        if (!list.wrong.empty()) return kx::ui::RefusedText(list.wrong, self.AllowedInWords());
        const std::wstring fault = self.FindFault().str();
        const double none = std::numeric_limits<double>::infinity(), least = self.m_minimumCount,
                     most = self.m_maximumCount;
        const kx::ui::Allowed counts{least < 0 ? -none : least, most < 0 ? none : most};
        const auto count = static_cast<double>(list.values.size());
        const bool isOfCount = count > 0 && (count < counts.minimum || count > counts.maximum);
        return isOfCount ? fault + L" " + kx::ui::AllowedText(counts) : fault;
    };
}

void CKxDevUI_EditBoxMultiValue::SetSeparator(wchar_t separator) {
    if (kx::ui::IsSeparator(separator)) {
        m_separator = separator;
    } else {
        KX_LOG(kSource, L"character %d cannot separate numbers", static_cast<int>(separator));
    }
}

bool CKxDevUI_EditBoxMultiValue::GetValues(std::list<double>* values) const {
    const kx::ui::ValueList list = kx::ui::SplitValues(GetText().str(), m_separator);
    if (values) values->assign(list.values.begin(), list.values.end());
    if (list.wrong.empty()) return true;
    KX_LOG(kSource, L"\"%ls\" is no number", list.wrong.c_str());
    return false;
}

void CKxDevUI_EditBoxMultiValue::SetValues(const std::list<double>* values) {
    CKxStringW text;
    for (const double value : values ? *values : std::list<double>()) {
        if (std::isfinite(value)) {
            text.str() += kx::ui::FormatNumber(value, L"%g").data();
            text.str() += m_separator;
        } else {
            KX_LOG(kSource, L"%g is not displayed", value);
        }
    }
    SetText(text);
}

void CKxDevUI_EditBoxMultiValue::SetCountRestriction(int minimum, int maximum) {
    m_minimumCount = std::max(minimum, -1);
    m_maximumCount = std::max(maximum, -1);
    if (m_maximumCount != -1 && m_minimumCount > m_maximumCount) std::swap(m_minimumCount, m_maximumCount);
}

// The message for what is wrong; empty when nothing is.
CKxStringW CKxDevUI_EditBoxMultiValue::FindFault() const {
    std::list<double> values;
    GetValues(&values);
    if (values.empty()) return KX_GetTranslation(L"Field can not be empty.", kSource);

    const auto count = static_cast<long long>(values.size());
    const bool few = m_minimumCount != -1 && count < m_minimumCount;
    const bool many = m_maximumCount != -1 && count > m_maximumCount;
    // With both limits set the message is one and the same: hosts and their users know it so.
    if (few || (many && m_minimumCount != -1)) return KX_GetTranslation(L"Too few values!", kSource);
    if (many) return KX_GetTranslation(L"Too many values!", kSource);

    CKxStringW message;
    for (const double value : values) {
        if (kx::ui::ViolatedBound(value, m_minimum, m_maximum) == kx::ui::Bound::None) continue;
        const wchar_t* text = L"Value out of range: %g\nValue must be in interval <%g;%g>";
        message.Format(100, L"%ls", KX_FormatNumber(TranslatedFormat(text, 3), value, m_minimum, m_maximum).c_str());
        break;
    }
    return message;
}

bool CKxDevUI_EditBoxMultiValue::CheckRestriction(bool showMessage) {
    const CKxStringW fault = FindFault();
    if (fault.IsEmpty()) return true;
    ReportError(fault, showMessage, m_edit, m_label);
    return false;
}
