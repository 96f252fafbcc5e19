#include <kxbaseui/kx_xml.h>

#include <algorithm>
#include <functional>
#include <map>

#include <kxsystem/kx_utf8.h>

namespace kx::svg {

namespace {

constexpr std::string_view c_blanks = " \t\r\n";
constexpr std::string_view c_byteOrderMark = "\xEF\xBB\xBF";

bool IsXmlCharacter(char32_t c) {
    return c == '\t' || c == '\n' || c == '\r' || (c >= 0x20 && c < 0xD800) || (c >= 0xE000 && c < 0xFFFE) ||
           (c >= 0x10000 && c <= 0x10FFFF);
}

bool AreXmlCharacters(std::string_view text) {
    char32_t character = 0;
    while (!text.empty())
        if (!TakeUtf8(text, character) || !IsXmlCharacter(character)) return false;
    return true;
}

bool IsNameStart(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == ':' || static_cast<signed char>(c) < 0;
}
bool IsNameCharacter(char c) { return IsNameStart(c) || (c >= '0' && c <= '9') || c == '-' || c == '.'; }

void AppendUtf8(std::string& text, char32_t character) {
    const auto put = [&](char32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
    if (character < 0x80) return put(character);
    if (character < 0x800) {
        put(0xC0 | character >> 6);
    } else {
        if (character < 0x10000) {
            put(0xE0 | character >> 12);
        } else {
            put(0xF0 | character >> 18);
            put(0x80 | (character >> 12 & 0x3F));
        }
        put(0x80 | (character >> 6 & 0x3F));
    }
    put(0x80 | (character & 0x3F));
}

// Every function takes what it is named for off the front of the text, and is false if that is not there.
class Reader {
public:
    explicit Reader(std::string_view text) : m_rest(text) {}

    bool Document(XmlNode& root) {
        if (m_rest.starts_with(c_byteOrderMark)) m_rest.remove_prefix(c_byteOrderMark.size());
        if (m_rest.starts_with("<?xml") && !Skip("<?", "?>")) return false;
        return Surroundings(true) && Element(root, 1) && Surroundings(false) && m_rest.empty();
    }

private:
    void Blanks() { m_rest.remove_prefix(std::min(m_rest.find_first_not_of(c_blanks), m_rest.size())); }

    bool Take(std::string_view token) {
        if (!m_rest.starts_with(token)) return false;
        m_rest.remove_prefix(token.size());
        return true;
    }

    bool Skip(std::string_view begin, std::string_view end) {
        if (!Take(begin)) return false;
        const auto found = m_rest.find(end);
        if (found == std::string_view::npos) return false;
        m_rest.remove_prefix(found + end.size());
        return true;
    }

    // What may stand anywhere: false if there is something of the kind, but broken.
    bool Remark(bool& found) {
        found = true;
        if (m_rest.starts_with("<!--")) {
            const auto dashes = m_rest.find("--", 4);
            return dashes != std::string_view::npos && m_rest.substr(dashes).starts_with("-->") && Skip("<!--", "-->");
        }
        if (m_rest.starts_with("<?")) return Skip("<?", "?>");
        found = false;
        return true;
    }

    bool Surroundings(bool typeAllowed) {
        for (bool found = true; found;) {
            Blanks();
            if (!Remark(found)) return false;
            if (!found && typeAllowed && m_rest.starts_with("<!DOCTYPE")) {
                if (!DocumentType()) return false;
                found = true;
                typeAllowed = false;
            }
        }
        return true;
    }

    bool DocumentType() {
        const auto open = m_rest.find_first_of("[>");
        if (open == std::string_view::npos) return false;
        if (m_rest[open] == '>') return Skip("<!DOCTYPE", ">");
        m_rest.remove_prefix(open + 1);
        for (Blanks(); !Take("]"); Blanks()) {
            bool remark = false;
            if (!Remark(remark)) return false;
            if (!remark && !(m_rest.starts_with("<!ENTITY") ? Entity() : Declaration())) return false;
        }
        Blanks();
        return Take(">");
    }

    // <!ELEMENT, <!ATTLIST, <!NOTATION: they say how documents are made, which nobody checks here.
    bool Declaration() {
        if (!m_rest.starts_with("<!")) return false;
        for (std::size_t i = 0; i < m_rest.size(); ++i) {
            if (m_rest[i] == '"' || m_rest[i] == '\'') i = m_rest.find(m_rest[i], i + 1);
            if (i == std::string_view::npos) return false;
            if (m_rest[i] == '>') return m_rest.remove_prefix(i + 1), true;
        }
        return false;
    }

    // The first of two with one name holds. What stands in other files, or is for the declarations themselves, is
    // passed over; a reference to it is refused.
    bool Entity() {
        const std::string_view whole = m_rest;
        Take("<!ENTITY");
        Blanks();
        std::string name, text;
        if (!Name(name)) return m_rest = whole, Declaration();
        Blanks();
        if (!m_rest.starts_with('"') && !m_rest.starts_with('\'')) return m_rest = whole, Declaration();
        const std::string_view quote = m_rest.substr(0, 1);
        m_rest.remove_prefix(1);
        if (!Text(text, quote, '\0')) return false;
        m_rest.remove_prefix(1);
        Blanks();
        if (m_entities.size() == XmlLimits::Entities || text.size() > XmlLimits::EntityBytes) return false;
        m_entities.emplace(std::move(name), std::move(text));
        return Take(">");
    }

    bool Name(std::string& name) {
        if (m_rest.empty() || !IsNameStart(m_rest.front())) return false;
        const auto end = std::find_if_not(m_rest.begin(), m_rest.end(), IsNameCharacter);
        name.assign(m_rest.begin(), end);
        m_rest.remove_prefix(name.size());
        return true;
    }

    bool Reference(std::string& text) {
        const auto end = m_rest.find(';');
        if (end > XmlLimits::EntityName) return false;  // or there is none
        const std::string_view name = m_rest.substr(1, end - 1);
        m_rest.remove_prefix(end + 1);
        static constexpr std::pair<std::string_view, char> c_entities[] = {
            {"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}};
        for (const auto& [entity, meaning] : c_entities)
            if (name == entity) return text += meaning, true;
        if (const auto found = m_entities.find(name); found != m_entities.end()) {
            // Text only: markup in an entity would have to be read as if it stood here.
            m_given += found->second.size();
            if (m_given > XmlLimits::Bytes || found->second.find('<') != std::string::npos) return false;
            return text += found->second, true;
        }
        return name.starts_with('#') && Number(name.substr(1), text);
    }

    static bool Number(std::string_view digits, std::string& text) {
        const bool hex = digits.starts_with('x');
        if (hex) digits.remove_prefix(1);
        if (digits.empty()) return false;
        static constexpr std::string_view c_digits = "0123456789abcdef", c_capitals = "0123456789ABCDEF";
        char32_t number = 0;
        for (const char c : digits) {
            const auto value = std::min(c_digits.find(c), c_capitals.find(c));
            if (value >= (hex ? 16 : 10)) return false;
            number = number * (hex ? 16 : 10) + static_cast<char32_t>(value);
            if (number > 0x10FFFF) return false;
        }
        if (!IsXmlCharacter(number)) return false;
        AppendUtf8(text, number);
        return true;
    }

    // Up to one of the characters in `ends`, which stays; `never` may not be in it.
    bool Text(std::string& text, std::string_view ends, char never = '<') {
        while (!m_rest.empty() && ends.find(m_rest.front()) == std::string_view::npos) {
            if (m_rest.front() == '&') {
                if (!Reference(text)) return false;
            } else {
                if (m_rest.front() == never || (ends == "<" && m_rest.starts_with("]]>"))) return false;
                text += m_rest.front();
                m_rest.remove_prefix(1);
            }
        }
        return !m_rest.empty();
    }

    bool Attribute(XmlNode& element) {
        std::pair<std::string, std::string> attribute;
        if (element.attributes.size() == XmlLimits::Attributes || !Name(attribute.first)) return false;
        if (element.Find(attribute.first)) return false;
        Blanks();
        if (!Take("=")) return false;
        Blanks();
        if (!m_rest.starts_with('"') && !m_rest.starts_with('\'')) return false;
        const std::string_view quote = m_rest.substr(0, 1);
        m_rest.remove_prefix(1);
        if (!Text(attribute.second, quote)) return false;
        m_rest.remove_prefix(1);
        element.attributes.push_back(std::move(attribute));
        return true;
    }

    bool Element(XmlNode& element, int depth) {
        if (depth > XmlLimits::Depth || ++m_nodes > XmlLimits::Nodes) return false;
        if (!Take("<") || !Name(element.name)) return false;
        for (;;) {
            const std::size_t before = m_rest.size();
            Blanks();
            if (Take("/>")) return true;
            if (Take(">")) break;
            if (m_rest.size() == before || !Attribute(element)) return false;
        }
        std::string name;
        if (!Content(element, depth) || !Take("</") || !Name(name) || name != element.name) return false;
        Blanks();
        return Take(">");
    }

    // Up to the end tag.
    bool Content(XmlNode& element, int depth) {
        while (!m_rest.starts_with("</")) {
            bool remark = false;
            if (!Remark(remark)) return false;
            if (remark) continue;
            if (m_rest.starts_with("<![CDATA[") || !m_rest.starts_with('<')) {
                if (!Characters(element)) return false;
            } else if (!Element(element.children.emplace_back(), depth + 1)) {
                return false;
            }
        }
        return true;
    }

    bool Characters(XmlNode& element) {
        // A remark does not cut a text in two.
        if (element.children.empty() || !element.children.back().name.empty()) {
            if (++m_nodes > XmlLimits::Nodes) return false;
            element.children.emplace_back();
        }
        std::string& text = element.children.back().text;
        const std::string_view whole = m_rest;
        if (!m_rest.starts_with('<')) return Text(text, "<");
        if (!Skip("<![CDATA[", "]]>")) return false;
        text += whole.substr(9, whole.size() - m_rest.size() - 12);
        return true;
    }

    std::string_view m_rest;
    std::map<std::string, std::string, std::less<>> m_entities;
    std::size_t m_given = 0;  // by them
    int m_nodes = 0;
};

}  // namespace

const std::string* XmlNode::Find(std::string_view attribute) const {
    for (const auto& [key, value] : attributes)
        if (key == attribute) return &value;
    return nullptr;
}

std::optional<XmlNode> ReadXml(std::string_view text) {
    XmlNode root;
    if (text.size() > XmlLimits::Bytes || !AreXmlCharacters(text) || !Reader(text).Document(root)) return std::nullopt;
    return root;
}

}  // namespace kx::svg
