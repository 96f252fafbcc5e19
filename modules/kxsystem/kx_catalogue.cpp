#include <kxsystem/kx_catalogue.h>

#include <algorithm>
#include <utility>

#include <kxsystem/kx_utf8.h>

namespace {

struct Refusal {
    CKxCatalogueRemark remark;
};

constexpr std::string_view c_byteOrderMark = "\xEF\xBB\xBF";

// Only for text that CheckBytes has passed.
std::wstring Widen(std::string_view text) {
    std::wstring wide;
    wide.reserve(text.size());
    for (char32_t character = 0; !text.empty() && kx::TakeUtf8(text, character);)
        kx::AppendWide(wide, character);
    return wide;
}

// A zero would end a text early for whoever reads it, and a lone CR would hide line ends.
void CheckBytes(std::string_view po) {
    int line = 1;
    while (!po.empty()) {
        char32_t character = 0;
        if (!kx::TakeUtf8(po, character)) throw Refusal{{line, "not UTF-8"}};
        if (character == 0) throw Refusal{{line, "a zero byte"}};
        if (character == '\r' && !po.starts_with('\n')) throw Refusal{{line, "a carriage return without a line feed"}};
        line += character == '\n';
    }
}

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\v'; }
bool IsLower(char c) { return c >= 'a' && c <= 'z'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool HasFlag(std::string_view comment, std::string_view flag) {
    if (!comment.starts_with("#,")) return false;
    for (comment.remove_prefix(2); !comment.empty();) {
        std::string_view word = comment.substr(0, comment.find(','));
        comment.remove_prefix(std::min(word.size() + 1, comment.size()));
        while (!word.empty() && IsBlank(word.front()))
            word.remove_prefix(1);
        while (!word.empty() && IsBlank(word.back()))
            word.remove_suffix(1);
        if (word == flag) return true;
    }
    return false;
}

// Empty if the header names none.
std::string Charset(std::string_view header) {
    std::string lower(header);
    std::transform(lower.begin(), lower.end(), lower.begin(), Lower);
    for (std::size_t start = 0; start < lower.size(); start = lower.find('\n', start)) {
        start += lower[start] == '\n';
        const std::string line = lower.substr(start, lower.find('\n', start) - start);
        const auto name = line.find("charset=");
        if (line.starts_with("content-type:") && name != std::string_view::npos)
            return line.substr(name + 8, line.find_first_of(" \t\r;", name) - name - 8);
    }
    return {};
}

}  // namespace

class CKxCatalogueReader {
public:
    CKxCatalogueReader(std::string_view po, std::vector<CKxCatalogueRemark>& duplicates)
        : m_rest(po), m_duplicates(duplicates) {}

    CKxCatalogue Read() {
        if (m_rest.size() > CKxCatalogue::MaxSize) Refuse("larger than 16 MB");
        if (m_rest.starts_with(c_byteOrderMark)) m_rest.remove_prefix(c_byteOrderMark.size());
        CheckBytes(m_rest);
        while (SkipBlanks())
            TakeToken();
        EndEntry();
        if (!m_any) Refuse("without any entry");
        return std::move(m_catalogue);
    }

private:
    enum Part { None, Context, Text, Plural, Translation, PluralTranslation };

    struct Entry {
        std::string context, text, translation, ignored;
        int line = 0;
        int forms = 0;
        Part part = None;
        bool hasContext = false, plural = false, fuzzy = false;
        // A keyword wants at least one string.
        bool hungry = false;
    };

    [[noreturn]] void Refuse(const char* reason) const { throw Refusal{{m_line, reason}}; }

    bool SkipBlanks() {
        while (!m_rest.empty() && (IsBlank(m_rest.front()) || m_rest.front() == '\n')) {
            m_line += m_rest.front() == '\n';
            m_rest.remove_prefix(1);
        }
        return !m_rest.empty();
    }

    void TakeToken() {
        if (m_rest.front() == '#')
            TakeComment();
        else if (m_rest.front() == '"')
            TakeString();
        else
            TakeKeyword();
    }

    void TakeComment() {
        EndEntry();
        const std::string_view comment = m_rest.substr(0, m_rest.find('\n'));
        m_rest.remove_prefix(comment.size());
        // The flags before an obsolete entry are its own, not the next entry's.
        if (comment.starts_with("#~"))
            m_fuzzy = false;
        else if (HasFlag(comment, "fuzzy"))
            m_fuzzy = true;
    }

    void TakeString() {
        std::string* const part = PartText();
        if (!part) Refuse("a text without a keyword");
        m_entry.hungry = false;
        m_rest.remove_prefix(1);
        for (;;) {
            const auto plain = std::min(m_rest.find_first_of("\"\\\n"), m_rest.size());
            part->append(m_rest.substr(0, plain));
            m_rest.remove_prefix(plain);
            if (m_rest.empty() || m_rest.front() == '\n') Refuse("a text that is not closed");
            if (m_rest.front() == '"') break;
            part->push_back(TakeEscape());
        }
        m_rest.remove_prefix(1);
    }

    char TakeEscape() {
        static constexpr std::string_view c_letters = "ntrabfv\\\"", c_meanings = "\n\t\r\a\b\f\v\\\"";
        m_rest.remove_prefix(1);
        if (m_rest.empty() || m_rest.front() == '\n') Refuse("a text that is not closed");
        const auto letter = c_letters.find(m_rest.front());
        if (letter == std::string_view::npos) Refuse("a wrong escape");
        m_rest.remove_prefix(1);
        return c_meanings[letter];
    }

    void TakeKeyword() {
        const auto end = std::find_if_not(m_rest.begin(), m_rest.end(), [](char c) { return IsLower(c) || c == '_'; });
        const std::string_view keyword = m_rest.substr(0, static_cast<std::size_t>(end - m_rest.begin()));
        m_rest.remove_prefix(keyword.size());
        if (m_entry.hungry) Refuse("a keyword without a text");
        if (keyword == "msgctxt")
            BeginContext();
        else if (keyword == "msgid")
            BeginText();
        else if (keyword == "msgid_plural")
            BeginPlural();
        else if (keyword == "msgstr")
            BeginTranslation();
        else
            Refuse("an unknown keyword");
        m_entry.hungry = true;
    }

    void BeginContext() {
        EndEntry();
        BeginEntry();
        m_entry.hasContext = true;
        m_entry.part = Context;
    }

    void BeginText() {
        if (m_entry.part != Context) {
            EndEntry();
            BeginEntry();
        }
        m_entry.part = Text;
    }

    void BeginPlural() {
        if (m_entry.part != Text) Refuse("a misplaced msgid_plural");
        m_entry.plural = true;
        m_entry.part = Plural;
    }

    void BeginTranslation() {
        if (m_rest.starts_with('[')) {
            if (m_entry.part != Plural && m_entry.part != PluralTranslation) Refuse("a misplaced msgstr[]");
            if (m_rest.size() < 3 || !IsDigit(m_rest[1]) || m_rest[1] - '0' != m_entry.forms++ || m_rest[2] != ']')
                Refuse("a wrong number of a plural form");
            m_rest.remove_prefix(3);
            m_entry.part = PluralTranslation;
        } else {
            if (m_entry.part != Text) Refuse("a misplaced msgstr");
            m_entry.part = Translation;
        }
    }

    std::string* PartText() {
        switch (m_entry.part) {
        case None: return nullptr;
        case Context: return &m_entry.context;
        case Text: return &m_entry.text;
        case Translation: return &m_entry.translation;
        case Plural:
        case PluralTranslation: return &m_entry.ignored;
        }
        return nullptr;
    }

    void BeginEntry() {
        m_entry.line = m_line;
        m_entry.fuzzy = std::exchange(m_fuzzy, false);
    }

    void EndEntry() {
        const Entry entry = std::exchange(m_entry, Entry{});
        if (entry.part == None) return;
        if (entry.part < Translation || entry.hungry) Refuse("an entry that is not complete");
        m_any = true;
        if (entry.text.empty() && !entry.hasContext)
            CheckHeader(entry);
        else if (!entry.fuzzy && !entry.plural && !entry.translation.empty())
            Store(entry);
    }

    static void CheckHeader(const Entry& entry) {
        const std::string charset = Charset(entry.translation);
        if (!charset.empty() && charset != "utf-8" && charset != "utf8")
            throw Refusal{{entry.line, "a charset other than UTF-8"}};
    }

    void Store(const Entry& entry) {
        CKxCatalogue::Key key{Widen(entry.context), Widen(entry.text)};
        if (!m_catalogue.m_entries.try_emplace(std::move(key), Widen(entry.translation)).second)
            m_duplicates.push_back({entry.line, "a second entry for one text"});
    }

    std::string_view m_rest;
    std::vector<CKxCatalogueRemark>& m_duplicates;
    CKxCatalogue m_catalogue;
    Entry m_entry;
    int m_line = 1;
    bool m_fuzzy = false, m_any = false;
};

std::optional<CKxCatalogue> CKxCatalogue::Read(std::string_view po, CKxCatalogueRemark& refusal,
                                               std::vector<CKxCatalogueRemark>& duplicates) {
    try {
        return CKxCatalogueReader(po, duplicates).Read();
    } catch (const Refusal& caught) {
        refusal = caught.remark;
        return std::nullopt;
    }
}

const std::wstring* CKxCatalogue::Find(std::wstring_view context, std::wstring_view text) const {
    const auto found = m_entries.find(KeyView{context, text});
    return found == m_entries.end() ? nullptr : &found->second;
}

void CKxCatalogue::AddMissing(CKxCatalogue&& other) {
    m_entries.reserve(m_entries.size() + other.m_entries.size());
    m_entries.merge(other.m_entries);
}
