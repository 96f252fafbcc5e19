#include <kxdevui/zfocus/devgui_zdrive_texts.h>

#include <kxsystem/kx_number.h>
#include <kxsystem/kx_translation.h>

namespace kx::zdrive {

namespace {

CKxStringW Between(double low, double high) { return InBrackets(NumberText(low) + L" \u2013 " + Micrometres(high)); }

}  // namespace

CKxStringW Translated(const wchar_t* text) { return KX_GetTranslation(text, L"devgui_zdrive"); }
CKxStringW NumberText(double number) { return KX_FormatNumber(L"%.9g", number); }
CKxStringW Micrometres(double number) { return NumberText(number) + L" \u00B5m"; }
CKxStringW InBrackets(const CKxStringW& text) { return L" (" + text + L")"; }

CKxStringW WhyNot(Verdict verdict, double low, double high) {
    switch (verdict) {
    case Verdict::NoRange: return Translated(L"The range is not known");
    case Verdict::LimitsCross: return Translated(L"The limits cross");
    case Verdict::BelowLimit: return Translated(L"Below the lower limit") + InBrackets(Micrometres(low));
    case Verdict::AboveLimit: return Translated(L"Above the upper limit") + InBrackets(Micrometres(high));
    case Verdict::BeyondRange: return Translated(L"Beyond the range") + Between(low, high);
    default: return Translated(L"The position is not known");
    }
}

CKxStringW NoteText(const Note& note) {
    const auto text = [](const wchar_t* what) { return Translated(what); };
    switch (note.kind) {
    case NoteKind::Refusal: return WhyNot(note.verdict, note.from, note.to);
    case NoteKind::LeavesStack: return text(L"Outside the Z stack") + Between(note.from, note.to);
    case NoteKind::LimitsCross: return text(L"The limits cross: nothing can be asked for");
    case NoteKind::NoRange: return text(L"The range is not known");
    case NoteKind::OutsideLimits: return text(L"Stands outside the limits") + Between(note.from, note.to);
    case NoteKind::OutsideRange: return text(L"Stands outside its range");
    case NoteKind::AtLowerLimit: return text(L"At the lower limit");
    case NoteKind::AtUpperLimit: return text(L"At the upper limit");
    case NoteKind::AtRangeEnd: return text(L"At the end of its range");
    case NoteKind::StackBeyond: return text(L"The Z stack reaches beyond") + Between(note.from, note.to);
    case NoteKind::Escaped: return text(L"Escaped from") + L" " + Micrometres(note.from);
    case NoteKind::PiezoInMiddle: return text(L"Piezo in its middle");
    case NoteKind::PiezoOffMiddle:
        return text(L"Piezo off its middle") + InBrackets(KX_FormatNumber(L"%+.4g \u00B5m", note.from));
    }
    return {};
}

}  // namespace kx::zdrive
