#pragma once

#include <QChar>
#include <QStringView>

// What counts as a digit wherever Tallyvane reads a number (typed fields,
// table cells, stored keypad texts, the keypad's expression line): any
// Unicode decimal digit (general category Nd, also outside the Basic
// Multilingual Plane) stands for its value, so "٣", "３" and "3" all read
// as 3. Number texts are read one digit at a time through this function.
struct DecimalDigit {
    int value = -1;       // 0 to 9; -1 when the text holds no digit there
    qsizetype length = 0; // UTF-16 code units the digit takes (1 or 2)
    explicit operator bool() const { return value >= 0; }
};

inline DecimalDigit decimalDigitAt(QStringView text, qsizetype i)
{
    const char16_t u = text[i].unicode();
    if (u >= u'0' && u <= u'9')
        return {u - u'0', 1};
    if (u < 0x80)
        return {};
    char32_t code = u;
    qsizetype length = 1;
    if (QChar::isHighSurrogate(u) && i + 1 < text.size() &&
        QChar::isLowSurrogate(text[i + 1].unicode())) {
        code = QChar::surrogateToUcs4(u, text[i + 1].unicode());
        length = 2;
    }
    if (!QChar::isDigit(code))
        return {};
    return {QChar::digitValue(code), length};
}
