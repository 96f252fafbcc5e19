#include <kxsystem/kx_plural.h>

#include <array>
#include <string>
#include <utility>

// Reads by descent, from what binds least to what binds most; every function takes what it is named for off the front.
class CKxPluralReader {
public:
    explicit CKxPluralReader(std::string_view text) : m_rest(text) {}

    std::optional<CKxPluralRule> Read() {
        unsigned long long forms = 0;
        if (!Take("nplurals") || !Take("=") || !Constant(forms) || forms < 1 || forms > CKxPluralRule::MaxForms ||
            !Take(";") || !Take("plural") || !Take("=") || !Choice(0))
            return std::nullopt;
        Take(";");
        Blanks();
        if (!m_rest.empty()) return std::nullopt;
        m_rule.m_forms = static_cast<std::size_t>(forms);
        return std::move(m_rule);
    }

private:
    using Step = CKxPluralRule::Step;

    void Blanks() {
        while (!m_rest.empty() && (m_rest.front() == ' ' || m_rest.front() == '\t'))
            m_rest.remove_prefix(1);
    }

    bool Take(std::string_view token) {
        Blanks();
        if (!m_rest.starts_with(token)) return false;
        m_rest.remove_prefix(token.size());
        return true;
    }

    bool Constant(unsigned long long& value) {
        Blanks();
        std::size_t digits = 0;
        for (value = 0; digits < m_rest.size() && m_rest[digits] >= '0' && m_rest[digits] <= '9'; ++digits)
            value = value * 10 + static_cast<unsigned long long>(m_rest[digits] - '0');
        m_rest.remove_prefix(digits);
        return digits > 0 && digits < 10;
    }

    bool Put(Step step, unsigned long long constant = 0) {
        m_rule.m_operations.push_back({step, constant});
        return true;
    }

    bool Choice(std::size_t depth) {
        if (depth > CKxPluralRule::MaxDepth || !Binary(0, depth)) return false;
        if (!Take("?")) return true;
        return Choice(depth + 1) && Take(":") && Choice(depth + 1) && Put(Step::Choose);
    }

    // The operators of one level, longer tokens first.
    static constexpr std::size_t c_levels = 6;
    static constexpr std::array<std::array<std::pair<std::string_view, Step>, 4>, c_levels> c_operators{{
        {{{"||", Step::Or}}},
        {{{"&&", Step::And}}},
        {{{"==", Step::Equal}, {"!=", Step::Unequal}}},
        {{{"<=", Step::LessOrEqual}, {">=", Step::GreaterOrEqual}, {"<", Step::Less}, {">", Step::Greater}}},
        {{{"+", Step::Add}, {"-", Step::Subtract}}},
        {{{"*", Step::Multiply}, {"/", Step::Divide}, {"%", Step::Remainder}}},
    }};

    bool Binary(std::size_t level, std::size_t depth) {
        if (level == c_levels) return Unary(depth);
        if (!Binary(level + 1, depth)) return false;
        for (bool found = true; found;) {
            found = false;
            for (const auto& [token, step] : c_operators[level]) {
                if (token.empty() || !Take(token)) continue;
                if (!Binary(level + 1, depth) || !Put(step)) return false;
                found = true;
                break;
            }
        }
        return true;
    }

    bool Unary(std::size_t depth) {
        if (depth > CKxPluralRule::MaxDepth) return false;
        Blanks();
        if (!m_rest.starts_with("!=") && Take("!")) return Unary(depth + 1) && Put(Step::Not);
        if (Take("(")) return Choice(depth + 1) && Take(")");
        if (Take("n")) return Put(Step::Number);
        unsigned long long value = 0;
        return Constant(value) && Put(Step::Constant, value);
    }

    std::string_view m_rest;
    CKxPluralRule m_rule;
};

std::optional<CKxPluralRule> CKxPluralRule::Read(std::string_view text) {
    if (text.size() > MaxSize) return std::nullopt;
    return CKxPluralReader(text).Read();
}

std::size_t CKxPluralRule::FormFor(unsigned long long number) const noexcept {
    // Everything is reckoned, what C would leave out too: that changes nothing but a division by nothing.
    std::array<unsigned long long, MaxSize> stack;
    std::size_t top = 0;
    const auto binary = [](Step step, unsigned long long a, unsigned long long b) -> unsigned long long {
        switch (step) {
        case Step::Multiply: return a * b;
        case Step::Divide: return b ? a / b : 0;
        case Step::Remainder: return b ? a % b : 0;
        case Step::Add: return a + b;
        case Step::Subtract: return a - b;
        case Step::Less: return a < b;
        case Step::Greater: return a > b;
        case Step::LessOrEqual: return a <= b;
        case Step::GreaterOrEqual: return a >= b;
        case Step::Equal: return a == b;
        case Step::Unequal: return a != b;
        case Step::And: return a && b;
        case Step::Or: return a || b;
        default: return 0;
        }
    };
    for (const Operation& operation : m_operations) {
        switch (operation.step) {
        case Step::Constant: stack[top++] = operation.constant; break;
        case Step::Number: stack[top++] = number; break;
        case Step::Not: stack[top - 1] = !stack[top - 1]; break;
        case Step::Choose:
            top -= 2;
            stack[top - 1] = stack[top - 1] ? stack[top] : stack[top + 1];
            break;
        default:
            --top;
            stack[top - 1] = binary(operation.step, stack[top - 1], stack[top]);
            break;
        }
    }
    return top == 1 && stack[0] < m_forms ? static_cast<std::size_t>(stack[0]) : 0;
}
