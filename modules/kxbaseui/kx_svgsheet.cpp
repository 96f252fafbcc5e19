#include <kxbaseui/kx_svgsheet.h>

#include <kxbaseui/kx_svgvalues.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <vector>

namespace kx::svg {

namespace {

// One selector of a rule with the rule's declarations.
struct Rule {
    std::string_view element;  // empty: any
    std::vector<std::string_view> classes;
    std::string_view id;
    std::string normal, important;  // the declarations, each with its semicolon

    // Ids, then classes, then the element's name, as CSS 2.1, 6.4.3 counts them.
    auto Specificity() const { return std::tuple(!id.empty(), classes.size(), !element.empty()); }
};

bool IsNameCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_' ||
           static_cast<signed char>(c) < 0;
}

std::string_view TakeName(std::string_view& text) {
    const auto end = std::find_if_not(text.begin(), text.end(), IsNameCharacter);
    const std::string_view name = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(name.size());
    return name;
}

// False for a selector that is of another kind.
bool ReadSelector(std::string_view text, Rule& rule) {
    if (text.empty()) return false;
    if (text.starts_with('*'))
        text.remove_prefix(1);
    else
        rule.element = TakeName(text);
    while (!text.empty()) {
        const char kind = text.front();
        text.remove_prefix(1);
        const std::string_view name = TakeName(text);
        if (name.empty()) return false;
        if (kind == '.')
            rule.classes.push_back(name);
        else if (kind == '#' && rule.id.empty())
            rule.id = name;
        else
            return false;
    }
    return true;
}

// Without comments, and without what old documents put around a sheet.
std::string WithoutRemarks(std::string_view text) {
    std::string plain;
    while (!text.empty()) {
        const auto remark = text.find("/*");
        plain += text.substr(0, remark);
        if (remark == std::string_view::npos) break;
        const auto end = text.find("*/", remark + 2);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 2);
    }
    for (const std::string_view mark : {"<!--", "-->"})
        for (auto at = plain.find(mark); at != std::string::npos; at = plain.find(mark, at))
            plain.replace(at, mark.size(), mark.size(), ' ');
    return plain;
}

void ReadDeclarations(std::string_view text, Rule& rule) {
    static constexpr std::string_view c_important = "!important";
    while (!text.empty()) {
        std::string_view declaration = Trim(text.substr(0, text.find(';')));
        text.remove_prefix(std::min(text.find(';'), text.size() - 1) + 1);
        const bool important = declaration.ends_with(c_important);
        if (important) declaration.remove_suffix(c_important.size());
        if (!declaration.empty()) (important ? rule.important : rule.normal).append(declaration) += ';';
    }
}

class Sheets {
public:
    // The text has to stay. False beyond the number of rules.
    bool Read(std::string_view text) {
        while (!(text = Trim(text)).empty()) {
            const auto open = text.find_first_of("{;");
            if (open == std::string_view::npos) return true;
            const bool isAt = text.front() == '@';
            if (text[open] == ';') {
                // "@import ...;"; elsewhere a semicolon does not belong here, and goes with what is before it.
                text.remove_prefix(open + 1);
                continue;
            }
            const std::size_t close = EndOfBlock(text, open);
            if (!isAt && !AddRules(text.substr(0, open), text.substr(open + 1, close - open - 1))) return false;
            text.remove_prefix(std::min(close + 1, text.size()));
        }
        return true;
    }

    // The more specific later, and of equals the later one.
    void Sort() {
        std::stable_sort(m_rules.begin(), m_rules.end(),
                         [](const Rule& a, const Rule& b) { return a.Specificity() < b.Specificity(); });
        for (std::size_t i = 0; i < m_rules.size(); ++i) {
            const Rule& rule = m_rules[i];
            auto& rules = !rule.id.empty()        ? m_ofId[rule.id]
                          : !rule.classes.empty() ? m_ofClass[rule.classes.front()]
                                                  : m_ofElement[rule.element];
            rules.push_back(i);
        }
    }

    bool IsEmpty() const { return m_rules.empty(); }

    bool Apply(XmlNode& node) {
        if (node.name.empty()) return true;
        const std::string_view local = std::string_view(node.name).substr(node.name.starts_with("svg:") ? 4 : 0);
        const std::string* const id = node.Find("id");
        std::vector<std::string_view> classes;
        if (const std::string* const text = node.Find("class"))
            for (std::string_view rest = Trim(*text); !rest.empty(); rest = Trim(rest)) {
                const std::string_view name = rest.substr(0, rest.find_first_of(" \t\r\n\f"));
                classes.push_back(name);
                rest.remove_prefix(name.size());
            }
        std::vector<std::size_t> candidates;
        const auto add = [&](const auto& table, std::string_view key) {
            if (const auto found = table.find(key); found != table.end())
                candidates.insert(candidates.end(), found->second.begin(), found->second.end());
        };
        add(m_ofElement, local);
        add(m_ofElement, {});
        if (id) add(m_ofId, *id);
        for (const std::string_view name : classes)
            add(m_ofClass, name);
        std::sort(candidates.begin(), candidates.end());
        candidates.erase(std::unique(candidates.begin(), candidates.end()), candidates.end());

        std::string before, behind;
        for (const std::size_t candidate : candidates) {
            const Rule& rule = m_rules[candidate];
            const auto has = [&](std::string_view name) {
                return std::find(classes.begin(), classes.end(), name) != classes.end();
            };
            if (!rule.element.empty() && rule.element != local) continue;
            if (!rule.id.empty() && (!id || *id != rule.id)) continue;
            if (!std::all_of(rule.classes.begin(), rule.classes.end(), has)) continue;
            before += rule.normal;
            behind += rule.important;
            if (before.size() + behind.size() > SheetLimits::Given) return false;
        }
        m_given += before.size() + behind.size() + 8 * candidates.size();
        if (m_given > SheetLimits::Given) return false;
        if (!before.empty() || !behind.empty()) {
            std::string& style = Attribute(node, "style");
            style = before + style + ';' + behind;
        }
        return std::all_of(node.children.begin(), node.children.end(), [this](XmlNode& child) { return Apply(child); });
    }

private:
    static std::string& Attribute(XmlNode& node, std::string_view name) {
        for (auto& [key, value] : node.attributes)
            if (key == name) return value;
        return node.attributes.emplace_back(name, std::string()).second;
    }

    // A block within a block, as in @media, ends before it.
    static std::size_t EndOfBlock(std::string_view text, std::size_t at) {
        for (int depth = 0; at < text.size(); ++at) {
            if (text[at] == '{') ++depth;
            if (text[at] == '}' && --depth == 0) return at;
        }
        return text.size();
    }

    bool AddRules(std::string_view selectors, std::string_view declarations) {
        for (;;) {
            const auto comma = selectors.find(',');
            Rule rule;
            if (ReadSelector(Trim(selectors.substr(0, comma)), rule)) {
                if (m_rules.size() == SheetLimits::Rules) return false;
                ReadDeclarations(declarations, rule);
                m_given += declarations.size();
                if (m_given > SheetLimits::Given) return false;
                m_rules.push_back(std::move(rule));
            }
            if (comma == std::string_view::npos) return true;
            selectors.remove_prefix(comma + 1);
        }
    }

    std::vector<Rule> m_rules;
    // By what is rarest in a rule: its id, its first class, its element or none.
    std::unordered_map<std::string_view, std::vector<std::size_t>> m_ofId, m_ofClass, m_ofElement;
    std::size_t m_given = 0;
};

void Collect(const XmlNode& node, std::string& text) {
    const std::string* const type = node.Find("type");
    if ((node.name == "style" || node.name == "svg:style") && (!type || type->empty() || *type == "text/css"))
        for (const XmlNode& child : node.children)
            text += child.text;
    for (const XmlNode& child : node.children)
        Collect(child, text);
}

}  // namespace

bool ApplySheets(XmlNode& root) {
    std::string text;
    Collect(root, text);
    if (text.empty()) return true;
    text = WithoutRemarks(text);
    Sheets sheets;
    if (!sheets.Read(text)) return false;
    sheets.Sort();
    return sheets.IsEmpty() || sheets.Apply(root);
}

}  // namespace kx::svg
