#pragma once

#include "expression/EPExpression.h"

#include <cmath>
#include <gtest/gtest.h>
#include <optional>

// CHECK_EVAL(text, value): the expression gives exactly `value` (NaN
// matches NaN); CHECK_INVALID(text) expects no number. Failures name the
// expression and what it gave.
inline ::testing::AssertionResult evaluatesTo(const char* textExpr, const char*, const char* text,
                                              double expected)
{
    const std::optional<double> got = numberByParsingExpression(QString::fromUtf8(text));
    if (!got)
        return ::testing::AssertionFailure() << textExpr << " = \"" << text << "\" gave no number";
    if (*got == expected || (std::isnan(*got) && std::isnan(expected)))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << "\"" << text << "\" gave " << *got << ", expected " << expected;
}

inline ::testing::AssertionResult isInvalid(const char*, const char* text)
{
    const std::optional<double> got = numberByParsingExpression(QString::fromUtf8(text));
    if (!got)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << "\"" << text << "\" gave " << *got << ", expected no number";
}

#define CHECK_EVAL(text, value) EXPECT_PRED_FORMAT2(evaluatesTo, text, value)
#define CHECK_INVALID(text) EXPECT_PRED_FORMAT1(isInvalid, text)
