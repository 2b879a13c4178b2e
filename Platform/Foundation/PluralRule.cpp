#include "Platform/Foundation/PluralRule.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace platform {
namespace {

using Number = unsigned long;

struct Operator {
    std::string_view symbol;
    int precedence;
    Number (*apply)(Number, Number);
};

/// Longer symbols come before those that they begin with.
constexpr std::array<Operator, 13> operators{{
    {"||", 1, [](Number a, Number b) -> Number { return a != 0 || b != 0 ? 1 : 0; }},
    {"&&", 2, [](Number a, Number b) -> Number { return a != 0 && b != 0 ? 1 : 0; }},
    {"==", 3, [](Number a, Number b) -> Number { return a == b ? 1 : 0; }},
    {"!=", 3, [](Number a, Number b) -> Number { return a != b ? 1 : 0; }},
    {"<=", 4, [](Number a, Number b) -> Number { return a <= b ? 1 : 0; }},
    {">=", 4, [](Number a, Number b) -> Number { return a >= b ? 1 : 0; }},
    {"<", 4, [](Number a, Number b) -> Number { return a < b ? 1 : 0; }},
    {">", 4, [](Number a, Number b) -> Number { return a > b ? 1 : 0; }},
    {"+", 5, [](Number a, Number b) { return a + b; }},
    {"-", 5, [](Number a, Number b) { return a - b; }},
    {"*", 6, [](Number a, Number b) { return a * b; }},
    {"/", 6, [](Number a, Number b) { return b != 0 ? a / b : 0; }},
    {"%", 6, [](Number a, Number b) { return b != 0 ? a % b : 0; }},
}};

/// Computes while it reads, also the parts that a choice or a shortcut does not need.
class Evaluator {
  public:
    Evaluator(std::string_view rule, Number n) : rest_(rule), n_(n) {}

    std::optional<Number> whole() {
        const Number value = choice();
        skipBlanks();
        return isRule_ && rest_.empty() ? std::optional(value) : std::nullopt;
    }

  private:
    void skipBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t"), rest_.size())); }

    bool take(std::string_view symbol) {
        skipBlanks();
        const bool isThere = rest_.starts_with(symbol);
        rest_.remove_prefix(isThere ? symbol.size() : 0);
        return isThere;
    }

    Number failed() {
        isRule_ = false;
        rest_ = {};
        return 0;
    }

    // NOLINTBEGIN(misc-no-recursion): as deep as the rule is nested, within bounds
    Number choice() {
        constexpr int maxDepth = 64;
        if (++depth_ > maxDepth) {
            return failed();
        }
        Number value = operation(1);
        if (take("?")) {
            const Number then = choice();
            const bool hasOther = take(":");
            const Number other = hasOther ? choice() : failed();
            value = value != 0 ? then : other;
        }
        --depth_;
        return value;
    }

    /// Reads operands joined by operators of `minPrecedence` and higher, from left to right.
    Number operation(int minPrecedence) {
        Number value = operand();
        for (;;) {
            const auto* const found = std::find_if(operators.begin(), operators.end(), [&](const Operator& each) {
                return each.precedence >= minPrecedence && take(each.symbol);
            });
            if (found == operators.end()) {
                return value;
            }
            value = found->apply(value, operation(found->precedence + 1));
        }
    }

    Number operand() {
        std::size_t negations = 0;
        while (take("!")) {
            ++negations;
        }
        const Number value = primary();
        const bool isTrue = (value != 0) == (negations % 2 == 0);
        return negations == 0 ? value : Number{isTrue};
    }

    Number primary() {
        if (take("n")) {
            return n_;
        }
        if (take("(")) {
            const Number value = choice();
            return take(")") ? value : failed();
        }
        Number value = 0;
        const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), value);
        if (error != std::errc()) {
            return failed();
        }
        rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
        return value;
    }
    // NOLINTEND(misc-no-recursion)

    std::string_view rest_;
    Number n_;
    int depth_ = 0;
    bool isRule_ = true;
};

} // namespace

std::optional<unsigned long> evaluatePluralRule(std::string_view rule, unsigned long n) {
    return Evaluator(rule, n).whole();
}

} // namespace platform
