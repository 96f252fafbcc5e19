// The rule by which a language chooses among the forms of a text for a number. Internal to kxsystem, and free of
// Windows.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

// A rule of a catalogue's header: "nplurals=3; plural=(n%10==1 ? 0 : n<5 ? 1 : 2);", an expression of C over n with ?:,
// ||, &&, comparisons, + - * / %, ! and brackets.
class CKxPluralRule {
public:
    static constexpr std::size_t MaxForms = 8, MaxSize = 1'000, MaxDepth = 32;

    // Nothing for a rule that is malformed or beyond a limit.
    static std::optional<CKxPluralRule> Read(std::string_view text);

    std::size_t Forms() const noexcept { return m_forms; }
    // 0 to Forms() - 1. What divides by nothing, or names a form that there is not, is the first.
    std::size_t FormFor(unsigned long long number) const noexcept;

private:
    friend class CKxPluralReader;

    // In the order in which they are reckoned, operands first, on a stack.
    enum class Step : unsigned char {
        Constant,
        Number,
        Not,
        Multiply,
        Divide,
        Remainder,
        Add,
        Subtract,
        Less,
        Greater,
        LessOrEqual,
        GreaterOrEqual,
        Equal,
        Unequal,
        And,
        Or,
        Choose
    };
    struct Operation {
        Step step;
        unsigned long long constant = 0;
    };
    std::vector<Operation> m_operations;
    std::size_t m_forms = 1;
};
