#include "ParameterExpression.h"

#include "EngineeringNumber.h"

#include <QCoreApplication>
#include <QHash>
#include <QStringList>

#include <cmath>

namespace ParameterExpression {

namespace {

/// Parentheses and parameters that stand within one another. What people write stays far below, and
/// the stack of the program far above.
constexpr int DeepestNesting = 200;

QString tr(const char* text) {
    return QCoreApplication::translate("ParameterExpression", text);
}

bool isDigit(QChar c) {
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

bool beginsName(QChar c) {
    const ushort lower = c.unicode() | 0x20;
    return c == QLatin1Char('_') || (c.unicode() < 0x80 && lower >= 'a' && lower <= 'z');
}

bool isName(const QString& text) {
    for (const QChar c : text) {
        if (!beginsName(c) && !isDigit(c)) {
            return false;
        }
    }
    return !text.isEmpty() && beginsName(text.at(0));
}

struct Token {
    enum Kind { End, Number, Name, Sign };
    Kind kind = End;
    int start = 0;
    int length = 0;
};

/// Cuts the inside of the braces into tokens, from left to right.
class Scanner {
public:
    Scanner(const QString& text, int begin, int end) : m_text(text), m_at(begin), m_end(end) {}

    Token next() {
        while (m_at < m_end && m_text.at(m_at).isSpace()) {
            ++m_at;
        }
        Token token{Token::End, m_at, 0};
        if (m_at == m_end) {
            return token;
        }
        const QChar first = m_text.at(m_at);
        if (beginsName(first)) {
            token.kind = Token::Name;
            skipWord();
        } else if (isDigit(first) || first == QLatin1Char('.')) {
            token.kind = Token::Number;
            skipNumber();
        } else {
            token.kind = Token::Sign;
            ++m_at;
        }
        token.length = m_at - token.start;
        return token;
    }

private:
    QChar at(int index) const { return index < m_end ? m_text.at(index) : QChar(); }
    void skipWord() {
        while (at(m_at).isLetterOrNumber() || at(m_at) == QLatin1Char('_')) {
            ++m_at;
        }
    }
    void skipNumber() {
        while (isDigit(at(m_at)) || at(m_at) == QLatin1Char('.')) {
            ++m_at;
        }
        // A sign belongs to the number only within an exponent.
        const bool isSigned = at(m_at + 1) == QLatin1Char('+') || at(m_at + 1) == QLatin1Char('-');
        if (at(m_at).toLower() == QLatin1Char('e') && isSigned && isDigit(at(m_at + 2))) {
            m_at += 2;
        }
        skipWord();
    }

    const QString& m_text;
    int m_at;
    const int m_end;
};

/// The inside of the braces; false if the text isn't in braces.
bool inside(const QString& text, int* begin, int* end) {
    *begin = 0;
    *end = text.size();
    while (*begin < *end && text.at(*begin).isSpace()) {
        ++*begin;
    }
    while (*end > *begin && text.at(*end - 1).isSpace()) {
        --*end;
    }
    const bool found = *end - *begin >= 2 && text.at(*begin) == QLatin1Char('{') &&
                       text.at(*end - 1) == QLatin1Char('}');
    ++*begin;
    --*end;
    return found;
}

/// What the evaluation of one value and of all that it refers to has in common.
struct Evaluator {
    /// Null to look at the form only.
    const IMathUtils::Lookup* lookup = nullptr;
    IMathUtils::Evaluation result;
    /// Each parameter is worked out once, however often it is referred to.
    QHash<QString, double> known;
    QStringList underWay;
    int depth = 0;

    double fail(const QString& problem) {
        if (result.problem.isEmpty()) {
            result.problem = problem;
        }
        return 0;
    }
    bool hasFailed() const { return !result.problem.isEmpty(); }
    double valueOf(const QString& text);
    double parameter(const QString& name);
};

/// Works out one expression.
class Parser {
public:
    Parser(Evaluator& evaluator, const QString& text, int begin, int end)
        : m_evaluator(evaluator), m_text(text), m_scanner(text, begin, end) {
        advance();
    }

    double parse() {
        const double value = sum();
        return m_token.kind == Token::End ? value : notUnderstood();
    }

private:
    void advance() { m_token = m_scanner.next(); }
    bool isSign(char sign) const {
        return m_token.kind == Token::Sign && m_text.at(m_token.start) == QLatin1Char(sign);
    }
    bool take(char sign) {
        const bool found = isSign(sign);
        if (found) {
            advance();
        }
        return found;
    }
    double notUnderstood() {
        return m_evaluator.fail(
            tr("the expression can not be understood at character %1").arg(m_token.start + 1));
    }

    double sum() {
        double value = product();
        while (!m_evaluator.hasFailed() && (isSign('+') || isSign('-'))) {
            const bool minus = isSign('-');
            advance();
            const double other = product();
            value = minus ? value - other : value + other;
        }
        return value;
    }

    double product() {
        double value = factor();
        while (!m_evaluator.hasFailed() && (isSign('*') || isSign('/'))) {
            const bool over = isSign('/');
            advance();
            const double other = factor();
            if (over && other == 0 && m_evaluator.lookup) {
                return m_evaluator.fail(tr("there is a division by zero"));
            }
            value = over ? value / other : value * other;
        }
        return value;
    }

    double factor() {
        bool minus = false;
        while (isSign('+') || isSign('-')) {
            minus = minus != isSign('-');
            advance();
        }
        const double value = operand();
        return minus ? -value : value;
    }

    double operand() {
        if (m_token.kind == Token::Number) {
            bool ok = false;
            const double value = EngineeringNumber::parse(word(), &ok);
            if (!ok) {
                return notUnderstood();
            }
            advance();
            return value;
        }
        if (m_token.kind == Token::Name) {
            const QString name = word();
            if (!isName(name)) {
                return notUnderstood();
            }
            advance();
            return m_evaluator.lookup ? m_evaluator.parameter(name) : 1;
        }
        if (!take('(')) {
            return notUnderstood();
        }
        if (++m_evaluator.depth > DeepestNesting) {
            return m_evaluator.fail(tr("the expression is nested too deeply"));
        }
        const double value = sum();
        --m_evaluator.depth;
        return take(')') ? value : notUnderstood();
    }

    QString word() const { return m_text.mid(m_token.start, m_token.length); }

    Evaluator& m_evaluator;
    const QString& m_text;
    Scanner m_scanner;
    Token m_token;
};

double Evaluator::valueOf(const QString& text) {
    int begin = 0;
    int end = 0;
    if (inside(text, &begin, &end)) {
        return Parser(*this, text, begin, end).parse();
    }
    bool ok = false;
    const double value = EngineeringNumber::parse(text, &ok);
    return ok ? value : fail(tr("it is neither a number nor an expression in braces"));
}

double Evaluator::parameter(const QString& name) {
    const auto it = known.constFind(name);
    if (it != known.constEnd()) {
        return *it;
    }
    const QString text = (*lookup)(name);
    if (text.isNull()) {
        if (!hasFailed()) {
            result.missing = name;
        }
        return fail(tr("there is no parameter \"%1\"").arg(name));
    }
    if (underWay.contains(name)) {
        return fail(tr("the parameter \"%1\" refers to itself").arg(name));
    }
    if (++depth > DeepestNesting) {
        return fail(tr("the parameters refer to one another too deeply"));
    }
    underWay.append(name);
    const bool isExpression = text.trimmed().startsWith(QLatin1Char('{'));
    bool ok = false;
    const double number = EngineeringNumber::parse(text, &ok);
    const double value =
        isExpression ? valueOf(text)
                     : (ok ? number : fail(tr("the parameter \"%1\" is no number").arg(name)));
    underWay.removeLast();
    --depth;
    known.insert(name, value);
    return value;
}

}  // namespace

bool isWellFormed(const QString& text) {
    int begin = 0;
    int end = 0;
    Evaluator evaluator;
    if (!inside(text, &begin, &end)) {
        return false;
    }
    Parser(evaluator, text, begin, end).parse();
    return !evaluator.hasFailed();
}

IMathUtils::Evaluation evaluate(const QString& text, const IMathUtils::Lookup& lookup) {
    // A name is then simply not known.
    const IMathUtils::Lookup nothing = [](const QString&) { return QString(); };
    Evaluator evaluator;
    evaluator.lookup = lookup ? &lookup : &nothing;
    const double value = evaluator.valueOf(text);
    if (!std::isfinite(value)) {
        evaluator.fail(tr("the value is too large"));
    }
    evaluator.result.ok = !evaluator.hasFailed();
    evaluator.result.value = evaluator.result.ok ? value : 0;
    return evaluator.result;
}

QString renamed(const QString& text, const QString& from, const QString& to) {
    int begin = 0;
    int end = 0;
    if (!isName(to) || !inside(text, &begin, &end)) {
        return text;
    }
    QString result;
    int copied = 0;
    Scanner scanner(text, begin, end);
    for (Token token = scanner.next(); token.kind != Token::End; token = scanner.next()) {
        if (token.kind == Token::Name && QStringView(text).mid(token.start, token.length) == from) {
            result += text.mid(copied, token.start - copied) + to;
            copied = token.start + token.length;
        }
    }
    return result + text.mid(copied);
}

}  // namespace ParameterExpression
