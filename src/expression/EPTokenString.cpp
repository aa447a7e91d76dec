#include "EPTokenString.h"

#include <QVarLengthArray>
#include <stdexcept>

namespace {

bool isDelimiter(char16_t c)
{
    switch (c) {
    case u'(':
    case u')':
    case u'*':
    case u'+':
    case u'-':
    case u'/':
    case u'^':
        return true;
    default:
        return false;
    }
}

// The C locale's space class up to 127, the Unicode space property above.
bool isWhiteSpace(QChar c)
{
    const char16_t u = c.unicode();
    if (u <= 127)
        return u == u' ' || (u >= u'\t' && u <= u'\r');
    return c.isSpace();
}

// What tokenFromString() makes of a one-character delimiter, without the
// trial and error.
EPAnyToken delimiterToken(char16_t c)
{
    switch (c) {
    case u'(':
    case u')': {
        EPParenthesesToken paren;
        paren.initWithString(QStringView(&c, 1));
        return paren;
    }
    case u'+':
        return EPAddSubOperator(false);
    case u'-':
        return EPAddSubOperator(true);
    case u'*':
        return EPMulDivOperator(false);
    case u'/':
        return EPMulDivOperator(true);
    default:
        return EPPowerOperator();
    }
}

template <typename Token> std::optional<EPAnyToken> accept(QStringView text)
{
    Token token;
    if (token.initWithString(text))
        return EPAnyToken(std::move(token));
    return std::nullopt;
}

// The word split into a leading number and the function name after it, or
// nothing when it is not of that form.
std::optional<std::pair<EPAnyToken, EPAnyToken>>
numberAndFunction(QStringView word, const EPTokenStringFunctionSource& functions)
{
    qsizetype split = 0;
    while (split < word.size() && (word.at(split).isDigit() || word.at(split) == u'.'))
        ++split;
    if (split == 0 || split == word.size())
        return std::nullopt;
    const QStringView name = word.mid(split);
    if (!functions.functionExists(name))
        return std::nullopt;
    std::optional<EPAnyToken> number = accept<EPNumericalToken>(word.first(split));
    std::optional<EPAnyToken> function = functions.functionTokenForName(name);
    if (!number || !function)
        return std::nullopt;
    return std::pair{std::move(*number), std::move(*function)};
}

} // namespace

EPTokenString::EPTokenString(std::pmr::memory_resource* memory) : m_tokenArray(memory) {}

std::optional<EPAnyToken>
EPTokenString::tokenFromString(QStringView text, const EPTokenStringVariableSource& variables,
                               const EPTokenStringFunctionSource& functions)
{
    if (auto t = accept<EPParenthesesToken>(text))
        return t;
    if (auto t = accept<EPAddSubOperator>(text))
        return t;
    if (auto t = accept<EPMulDivOperator>(text))
        return t;
    if (auto t = accept<EPPowerOperator>(text))
        return t;
    if (auto t = accept<EPNumericalToken>(text))
        return t;
    if (variables.variableExists(text)) {
        EPVariableToken variable;
        variable.initWithString(text);
        variable.setDoubleValue(variables.variableValue(text));
        return EPAnyToken(std::move(variable));
    }
    if (functions.functionExists(text))
        return functions.functionTokenForName(text);
    return std::nullopt;
}

std::optional<EPTokenString::WordTokens>
EPTokenString::tokensForWord(QStringView word, const EPTokenStringVariableSource& variables,
                             const EPTokenStringFunctionSource& functions)
{
    if (std::optional<EPAnyToken> token = tokenFromString(word, variables, functions))
        return WordTokens{std::move(*token), std::nullopt};
    // A number written straight before a function name, as the keys type it
    // ("2" then "sin(" gives the word "2sin"), is the number and the
    // function side by side, which the evaluator multiplies. Only function
    // names split off: "2pi" stays one unknown word.
    std::optional<std::pair<EPAnyToken, EPAnyToken>> pair = numberAndFunction(word, functions);
    if (!pair)
        return std::nullopt;
    return WordTokens{std::move(pair->first), std::move(pair->second)};
}

bool EPTokenString::initWithExpression(QStringView expression,
                                       const EPTokenStringVariableSource& variables,
                                       const EPTokenStringFunctionSource& functions)
{
    m_tokenArray.clear();
    // Words and delimiters alternate and a word gives at most two tokens
    // (a number and a function), so this many tokens is the most there can
    // be.
    size_t delimiters = 0;
    for (const QChar c : expression)
        delimiters += isDelimiter(c.unicode()) ? 1 : 0;
    m_tokenArray.reserve(3 * delimiters + 2);

    QVarLengthArray<QChar, 64> word;
    const auto flushWord = [&]() {
        if (word.isEmpty())
            return true;
        std::optional<WordTokens> tokens =
            tokensForWord(QStringView(word.constData(), word.size()), variables, functions);
        word.clear();
        if (!tokens)
            return false;
        m_tokenArray.push_back(std::move(tokens->first));
        if (tokens->second)
            m_tokenArray.push_back(std::move(*tokens->second));
        return true;
    };

    for (const QChar c : expression) {
        if (isDelimiter(c.unicode())) {
            if (!flushWord())
                return false;
            m_tokenArray.push_back(delimiterToken(c.unicode()));
        } else if (!isWhiteSpace(c)) {
            word.append(c);
        }
    }
    return flushWord();
}

void EPTokenString::initWithTokens(std::span<const EPAnyToken> tokens)
{
    m_tokenArray.assign(tokens.begin(), tokens.end());
}

EPTokenString EPTokenString::substringWithRange(size_t location, size_t length) const
{
    if (location > m_tokenArray.size() || length > m_tokenArray.size() - location)
        throw std::out_of_range("Invalid bounds specified for substringWithRange:");
    EPTokenString sub(m_tokenArray.get_allocator().resource());
    sub.initWithTokens(std::span(m_tokenArray).subspan(location, length));
    return sub;
}
