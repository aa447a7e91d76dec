// Rewrites tests/expression/golden_results.txt from the expression engine as
// it is now: record-golden-results OUTPUT. The lines are grammar-based random
// keypad lines (every number syntax, minus chains, implied products,
// functions, variables, blanks, malformed text, nesting around the depth
// limit) plus the fuzz corpus and the kept fuzz regressions. Each line is
// "<bits of the double, or none> <p|v> <escaped input>", "v" being the run
// with the test dictionary. Record only with an engine whose results are
// trusted: the point of the file is that they never move.
#include "../tests/expression/GoldenFormat.h"
#include "expression/EPExpression.h"

#include <QDir>
#include <QFile>
#include <QTextStream>
#include <bit>
#include <cstdio>

namespace {

using golden::dictionary;
using golden::resultText;

// Printable ASCII stays, everything else (and "\", and a blank at the end)
// becomes \uXXXX per UTF-16 unit, so every line of the file is one input,
// lone surrogates included.
QString escaped(QStringView text)
{
    QString out;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if ((c.unicode() > 0x20 && c.unicode() < 0x7f && c != u'\\') ||
            (c == u' ' && i + 1 < text.size()))
            out += c;
        else
            out += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
    }
    return out;
}

// Random keypad lines from a small grammar; deterministic for one seed.
class LineGenerator {
public:
    QString line()
    {
        QString text = expression(0);
        if (below(6) == 0) // damage some: a stray character, or a piece gone
            text.insert(below(int(text.size()) + 1), pick(u"()()+-*/^ .x\u00b2"));
        else if (below(30) == 0 && !text.isEmpty())
            text.remove(below(int(text.size())), 1 + below(3));
        return text;
    }

    QString deep()
    {
        const int depth = 250 + below(12);
        const QString open = QStringList{"(", "-(", "sin(", "2(", "2^-("}[below(5)];
        return open.repeated(depth) + number() + QString(depth + below(3) - 1, u')');
    }

private:
    quint64 next()
    {
        quint64 z = (m_state += 0x9e3779b97f4a7c15);
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9;
        z = (z ^ (z >> 27)) * 0x94d049bb133111eb;
        return z ^ (z >> 31);
    }
    int below(int n) { return int(next() % quint64(n)); }
    QChar pick(std::u16string_view choices) { return choices[below(int(choices.size()))]; }
    template <typename... T> QString oneOf(const T&... choices)
    {
        const QString all[] = {QString(choices)...};
        return all[below(sizeof...(T))];
    }

    QString blank() { return below(8) ? QString() : QString(pick(u"  \t\n\u00a0\u2003\u3000")); }

    // ASCII mostly; else Arabic-Indic, extended Arabic-Indic, Devanagari,
    // fullwidth or (as surrogate pairs) mathematical bold digits, some mixed.
    QString digits(int count)
    {
        static const char32_t zeros[] = {0x660, 0x6f0, 0x966, 0xff10, 0x1d7ce, U'0'};
        const bool foreign = below(12) == 0;
        const char32_t zero = foreign ? zeros[below(6)] : U'0';
        QString out;
        for (int i = 0; i < count; ++i) {
            const char32_t c = (foreign && below(4) == 0 ? zeros[below(6)] : zero) + below(10);
            out += QString::fromUcs4(&c, 1);
        }
        return out;
    }

    QString number()
    {
        switch (below(40)) {
        case 0:
        case 1:
            return "." + digits(below(3));
        case 2:
        case 3:
        case 4:
            return digits(14 + below(8)) + (below(2) ? "." + digits(below(6)) : QString());
        case 5:
        case 6:
            return "0." + QString(15 + below(12), u'0') + digits(1 + below(4));
        case 7:
            return below(2) ? QString(305 + below(10), u'9') : "0." + QString(330, u'0') + "1";
        case 8:
            return oneOf("1..2", "1.2.3", "2\u00b2", "\u00bd", "1e5", "2,5", "2\u066b5", "05.");
        default:
            return below(3) ? digits(1 + below(3)) : digits(1 + below(3)) + "." + digits(below(4));
        }
    }

    QString word()
    {
        if (below(8))
            return below(4) ? QStringLiteral("pi") : oneOf("x", "rate");
        return oneOf("sin", "2x", "SIN", "sinx", "e", "2pi", "%", "\u0663sqrt", "\U0001d7cfsqrt",
                     "s qrt", "log");
    }

    QString function() { return oneOf("sin", "cos", "tan", "atan", "log", "ln", "sqrt"); }

    QString operand(int depth)
    {
        const int kind = below(depth >= 3 ? 10 : 20);
        if (kind < 5)
            return number() + blank();
        if (kind < 7)
            return word() + blank();
        if (kind < 9)
            return "-" + blank() + operand(depth + 1);
        if (kind < 10)
            return number() + (below(5) ? function() + "(" + expression(depth + 1) + ")" : "pi");
        if (kind < 15)
            return function() + blank() + "(" + expression(depth + 1) + ")";
        return "(" + blank() + expression(depth + 1) + ")" + blank();
    }

    QString expression(int depth)
    {
        QString text = operand(depth);
        for (int n = below(depth ? 3 : 6); n > 0; --n) {
            text += blank();
            text += below(3) ? QString(pick(u"+-*/^+-*/"))
                             : oneOf("", "^-", "/-", "*--", "--", "/--", "+-");
            text += blank() + operand(depth);
        }
        return text;
    }

    quint64 m_state = 20240611;
};

QStringList recordedInputs()
{
    LineGenerator generator;
    QStringList inputs;
    for (int attempt = 0; attempt < 100000 && inputs.size() < 5000; ++attempt) {
        const QString line = generator.line();
        if (line.size() <= 160) // long lines add bulk but little news
            inputs << line;
    }
    // NaNs of both signs meeting: which one an operation passes on shows.
    inputs << "sqrt(-1)*-sqrt(-1)"
           << "-sqrt(-1)*sqrt(-1)"
           << "-(0/0)-0/0"
           << "0/0/-(0/0)"
           << "2^-sin(0/0)"
           << "-(0/0)^sqrt(-1)"
           << "--(0/0)+-(0/0)"
           << "ln(-1)/-ln(-1)"
           << "2^-(0/0)*(0/0)"
           << "(0/0)*2^-(0/0)"
           << "2^-(0/0)+0/0"
           << "0/0-2^-(0/0)"
           << "2^-(0/0)/(0/0)"
           << "(0/0)^2^-(0/0)"
           << "(0/0)^(2^-(0/0))";
    // Carriage returns, vertical tabs and form feeds are white space too.
    inputs << "1+\r2"
           << "2\v*\f3\r";
    // The first code units past ASCII: a control character, then the
    // next-line character, which is white space.
    inputs << QStringLiteral("1+\u00802") << QStringLiteral("1+\u00852");
    for (int i = 0; i < 60; ++i)
        inputs << generator.deep();
    for (const char* dirName : {FUZZ_CORPUS_DIR, FUZZ_REGRESSIONS_DIR}) {
        const QDir dir(QString::fromUtf8(dirName));
        for (const QString& name : dir.entryList(QDir::Files | QDir::NoDotAndDotDot)) {
            QFile file(dir.filePath(name));
            if (name.startsWith(u'.') || !file.open(QIODevice::ReadOnly))
                continue;
            const QByteArray bytes = file.readAll();
            inputs << QString::fromUtf8(bytes)
                   << QString(reinterpret_cast<const QChar*>(bytes.constData()), bytes.size() / 2);
        }
    }
    return inputs;
}

std::optional<double> evaluate(const QString& text, bool withDictionary)
{
    return numberByParsingExpression(text, withDictionary ? &dictionary : nullptr);
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: record-golden-results OUTPUT\n");
        return 2;
    }
    QFile file(QString::fromLocal8Bit(argv[1]));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        std::fprintf(stderr, "%s: %s\n", argv[1], qPrintable(file.errorString()));
        return 1;
    }
    QTextStream out(&file);
    for (const QString& input : recordedInputs()) {
        out << resultText(evaluate(input, false)) << " p " << escaped(input) << '\n';
        if (input.contains(QLatin1Char('x')) || input.contains(QLatin1String("pi")) ||
            input.contains(QLatin1String("sin")) || input.contains(QLatin1String("rate")))
            out << resultText(evaluate(input, true)) << " v " << escaped(input) << '\n';
    }
    return 0;
}
