#pragma once

#include "EPToken.h"

#include <QStringView>
#include <memory_resource>
#include <optional>
#include <span>
#include <vector>

// Tells the tokenizer which words are variables, and their values.
class EPTokenStringVariableSource {
public:
    virtual ~EPTokenStringVariableSource() = default;
    virtual bool variableExists(QStringView name) const = 0;
    virtual double variableValue(QStringView name) const = 0;
};

// Tells the tokenizer which words are functions, and makes their tokens.
class EPTokenStringFunctionSource {
public:
    virtual ~EPTokenStringFunctionSource() = default;
    virtual bool functionExists(QStringView name) const = 0;
    virtual std::optional<EPAnyToken> functionTokenForName(QStringView name) const = 0;
};

// An expression's text as a flat list of tokens.
//
// The text is split at the delimiters ( ) * + - / ^; white space is dropped
// everywhere (so "1 000" is 1000 and "s qrt" is "sqrt"); every other run of
// characters is one word that must be a number, a variable or a function.
class EPTokenString {
public:
    using TokenArray = std::pmr::vector<EPAnyToken>;

    explicit EPTokenString(std::pmr::memory_resource* memory = std::pmr::get_default_resource());

    // Tokenizes `expression`; false when any piece of it is no token. An
    // empty or blank text gives an empty list.
    bool initWithExpression(QStringView expression, const EPTokenStringVariableSource& variables,
                            const EPTokenStringFunctionSource& functions);
    // Keeps its own copy of `tokens`.
    void initWithTokens(std::span<const EPAnyToken> tokens);

    const TokenArray& tokenArray() const { return m_tokenArray; }
    qsizetype count() const { return qsizetype(m_tokenArray.size()); }

    // The tokens [location, location + length). Throws std::out_of_range
    // ("Invalid bounds specified for substringWithRange:") past the end.
    EPTokenString substringWithRange(size_t location, size_t length) const;

    // The token for one piece of text, tried as parenthesis, "+"/"-",
    // "*"/"/", "^", number, variable (valued now), function; or nothing.
    static std::optional<EPAnyToken> tokenFromString(QStringView text,
                                                     const EPTokenStringVariableSource& variables,
                                                     const EPTokenStringFunctionSource& functions);

    // The tokens of one word (blanks already dropped): its token, or a
    // number and a function when a number is written straight before a
    // function name ("2sin"); nothing when the word is neither.
    struct WordTokens {
        EPAnyToken first;
        std::optional<EPAnyToken> second;
    };
    static std::optional<WordTokens> tokensForWord(QStringView word,
                                                   const EPTokenStringVariableSource& variables,
                                                   const EPTokenStringFunctionSource& functions);

private:
    TokenArray m_tokenArray;
};
