// The catalogue reader: any bytes are taken or refused without a trap, and a catalogue that was cut never shows a text
// that the whole one would not.
#include "fuzz.h"

#include <kxsystem/kx_catalogue.h>

namespace {

std::optional<CKxCatalogue> Read(std::string_view po) {
    CKxCatalogueRemark refusal;
    std::vector<CKxCatalogueRemark> duplicates;
    // Another charset: what begins with 0x81 takes two bytes, and may hide a quote.
    const auto convert = [](const std::string&, std::string_view line) -> std::optional<std::string> {
        std::string utf8;
        for (std::size_t i = 0; i < line.size(); ++i) {
            if (line[i] == '\x81' && ++i == line.size()) return std::nullopt;
            utf8 += line[i - (i > 0 && line[i - 1] == '\x81')] == '\x81' ? 'x' : line[i];
        }
        return utf8;
    };
    auto catalogue =
        CKxCatalogue::Read(po, refusal, duplicates, po.starts_with("#c") ? convert : CKxCatalogue::Convert{});
    if (catalogue)
        for (const unsigned long long number : {0ULL, 1ULL, 12ULL, ~0ULL})
            static_cast<void>(catalogue->Find(L"", L"a", number));
    Require(catalogue || (refusal.line >= 1 && *refusal.reason));
    return catalogue;
}

// Whether a cut before po[at] leaves a text open, told without the reader: by quotes outside of comments.
class OpenText {
public:
    explicit OpenText(std::string_view po) : m_po(po) {}

    bool At(std::size_t at) {
        for (; m_next < at; ++m_next)
            Pass(m_po[m_next]);
        return m_open;
    }

private:
    void Pass(char c) {
        if (m_comment)
            m_comment = c != '\n';
        else if (m_escaped)
            m_escaped = false;
        else if (m_open && c == '\\')
            m_escaped = true;
        else if (c == '"')
            m_open = !m_open;
        else if (!m_open && c == '#')
            m_comment = true;
    }

    std::string_view m_po;
    std::size_t m_next = 0;
    bool m_open = false, m_escaped = false, m_comment = false;
};

// Between two lines of a text nothing tells that a third was to come: there, what is left must at least be the
// beginning.
bool IsPartOf(const CKxCatalogue& part, const CKxCatalogue& whole) {
    for (const auto& [key, translation] : part.Entries()) {
        const std::wstring* const full = whole.Find(key.context, key.text);
        if (!full || !full->starts_with(translation)) return false;
    }
    return true;
}

}  // namespace

void Fuzz(std::string_view po) {
    if (const auto rule = CKxPluralRule::Read(po))
        for (unsigned long long number = 0; number < 200; number += 7)
            Require(rule->FormFor(number) < rule->Forms());
    // Every cut is read, which takes the square of the size.
    if (po.size() > 400) return;
    const auto whole = Read(po);
    if (!whole) return;
    OpenText open(po);
    for (std::size_t at = 0; at < po.size(); ++at) {
        const auto part = Read(po.substr(0, at));
        Require(!part || (!open.At(at) && IsPartOf(*part, *whole)));
    }
}
