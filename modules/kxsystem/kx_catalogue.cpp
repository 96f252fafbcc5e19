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

std::string InSmallLetters(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), Lower);
    return lower;
}

// A field of the header; its name in small letters. Empty if there is none.
std::string_view Field(std::string_view header, std::string_view name) {
    while (!header.empty()) {
        const std::string_view line = header.substr(0, header.find('\n'));
        if (InSmallLetters(line.substr(0, name.size())) == name) return line.substr(name.size());
        header.remove_prefix(std::min(line.size() + 1, header.size()));
    }
    return {};
}

// Empty if the header names none.
std::string Charset(std::string_view header) {
    const std::string type = InSmallLetters(Field(header, "content-type:"));
    const auto name = type.find("charset=");
    if (name == std::string::npos) return {};
    return type.substr(name + 8, type.find_first_of(" \t\r;", name) - name - 8);
}

bool IsUtf8(std::string_view charset) { return charset.empty() || charset == "utf-8" || charset == "utf8"; }

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<signed char>(c) > 0; });
}

// The charset that a text names before anything else of it can be read: a field of the header stands in quotes, and
// ends with an escape.
std::string CharsetOfBytes(std::string_view po) {
    static constexpr std::string_view c_field = "\"content-type:";
    for (std::size_t start = 0; start < po.size(); start = std::min(po.find('\n', start), po.size() - 1) + 1) {
        std::string_view line = po.substr(start, po.find('\n', start) - start);
        const auto field = line.starts_with('#') ? std::string::npos : InSmallLetters(line).find(c_field);
        if (field == std::string::npos) continue;
        line.remove_prefix(field + 1);
        return Charset(line.substr(0, line.find_first_of("\\\"")));
    }
    return {};
}

// The whole text in UTF-8.
std::string Converted(std::string_view po, const std::string& charset, const CKxCatalogue::Convert& convert) {
    std::string converted;
    for (int line = 1; !po.empty(); ++line) {
        const std::string_view text = po.substr(0, po.find('\n'));
        const auto utf8 = convert(charset, text);
        if (!utf8) throw Refusal{{line, "not in its charset, or in one that is not known"}};
        converted += *utf8;
        po.remove_prefix(text.size());
        if (po.empty()) break;
        converted += '\n';
        po.remove_prefix(1);
    }
    return converted;
}

}  // namespace

class CKxCatalogueReader {
public:
    CKxCatalogueReader(std::string_view po, std::vector<CKxCatalogueRemark>& duplicates,
                       const CKxCatalogue::Convert& convert)
        : m_rest(po), m_duplicates(duplicates), m_convert(convert) {}

    CKxCatalogue Read() {
        if (m_rest.size() > CKxCatalogue::MaxSize) Refuse("larger than 16 MB");
        if (m_rest.starts_with(c_byteOrderMark)) m_rest.remove_prefix(c_byteOrderMark.size());
        m_anyCharset = IsAscii(m_rest);
        if (const std::string charset = CharsetOfBytes(m_rest); !m_anyCharset && m_convert && !IsUtf8(charset)) {
            m_converted = Converted(m_rest, charset, m_convert);
            m_rest = m_converted;
            m_anyCharset = true;
        }
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
        std::string context, text, translation, pluralText;
        std::vector<std::string> forms;
        int line = 0;
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
            if (m_rest.size() < 3 || !IsDigit(m_rest[1]) || m_rest[2] != ']' ||
                static_cast<std::size_t>(m_rest[1] - '0') != m_entry.forms.size())
                Refuse("a wrong number of a plural form");
            m_entry.forms.emplace_back();
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
        case Plural: return &m_entry.pluralText;
        case PluralTranslation: return &m_entry.forms.back();
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
            TakeHeader(entry);
        else if (!entry.fuzzy && entry.plural)
            StoreForms(entry);
        else if (!entry.fuzzy && !entry.translation.empty())
            Store(m_catalogue.m_entries, entry, Widen(entry.translation));
    }

    void TakeHeader(const Entry& entry) {
        if (!m_anyCharset && !IsUtf8(Charset(entry.translation)))
            throw Refusal{{entry.line, "a charset other than UTF-8"}};
        if (auto rule = CKxPluralRule::Read(Field(entry.translation, "plural-forms:")))
            m_rule = std::make_shared<const CKxPluralRule>(std::move(*rule));
    }

    void StoreForms(const Entry& entry) {
        const auto isEmpty = [](const std::string& form) { return form.empty(); };
        if (!m_rule || entry.forms.size() != m_rule->Forms() ||
            std::any_of(entry.forms.begin(), entry.forms.end(), isEmpty))
            return;
        CKxCatalogue::Forms forms{m_rule, {}};
        for (const std::string& form : entry.forms)
            forms.forms.push_back(Widen(form));
        Store(m_catalogue.m_plurals, entry, std::move(forms));
    }

    template <class Map, class Value>
    void Store(Map& map, const Entry& entry, Value value) {
        CKxCatalogue::Key key{Widen(entry.context), Widen(entry.text)};
        if (!map.try_emplace(std::move(key), std::move(value)).second)
            m_duplicates.push_back({entry.line, "a second entry for one text"});
    }

    std::string_view m_rest;
    std::vector<CKxCatalogueRemark>& m_duplicates;
    const CKxCatalogue::Convert& m_convert;
    std::string m_converted;
    bool m_anyCharset = false;
    std::shared_ptr<const CKxPluralRule> m_rule;
    CKxCatalogue m_catalogue;
    Entry m_entry;
    int m_line = 1;
    bool m_fuzzy = false, m_any = false;
};

std::optional<CKxCatalogue> CKxCatalogue::Read(std::string_view po, CKxCatalogueRemark& refusal,
                                               std::vector<CKxCatalogueRemark>& duplicates, const Convert& convert) {
    try {
        return CKxCatalogueReader(po, duplicates, convert).Read();
    } catch (const Refusal& caught) {
        refusal = caught.remark;
        return std::nullopt;
    }
}

const std::wstring* CKxCatalogue::Find(std::wstring_view context, std::wstring_view text) const {
    const auto found = m_entries.find(KeyView{context, text});
    return found == m_entries.end() ? nullptr : &found->second;
}

const std::wstring* CKxCatalogue::Find(std::wstring_view context, std::wstring_view text,
                                       unsigned long long number) const {
    const auto found = m_plurals.find(KeyView{context, text});
    return found == m_plurals.end() ? nullptr : &found->second.forms[found->second.rule->FormFor(number)];
}

void CKxCatalogue::AddMissing(CKxCatalogue&& other) {
    m_entries.reserve(m_entries.size() + other.m_entries.size());
    m_plurals.reserve(m_plurals.size() + other.m_plurals.size());
    m_entries.merge(other.m_entries);
    m_plurals.merge(other.m_plurals);
}
