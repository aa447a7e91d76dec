#include "CalculatorDescription.h"

const FieldDescription* CalculatorDescription::field(const QString& key) const
{
    for (const FieldDescription& field : fields) {
        if (field.key == key || field.outlet == key)
            return &field;
    }
    return nullptr;
}

QList<ExampleStep> CalculatorDescription::exampleSteps() const
{
    QList<ExampleStep> steps;
    for (qsizetype i = 0; i < example.size(); ++i) {
        const QString& arg = example.at(i);
        if (arg == u"--solve" && i + 1 < example.size()) {
            steps.append({ExampleStep::Kind::Solve, nullptr, example.at(++i)});
            continue;
        }
        const qsizetype equals = arg.indexOf(u'=');
        const FieldDescription* input = equals > 0 ? field(arg.left(equals)) : nullptr;
        if (!input)
            steps.append({ExampleStep::Kind::Unknown, nullptr, arg});
        else
            steps.append({input->isTable() ? ExampleStep::Kind::Table
                          : input->kind == FieldDescription::Kind::Choice
                              ? ExampleStep::Kind::Choice
                              : ExampleStep::Kind::Field,
                          input, arg.mid(equals + 1)});
    }
    return steps;
}

const ResultDescription* CalculatorDescription::result(const QString& key) const
{
    for (const ResultDescription& result : results) {
        if (result.key == key || result.outlet == key)
            return &result;
    }
    return nullptr;
}

namespace Describe {

namespace {
FieldDescription described(const QString& key, const QString& outlet, const QString& label,
                           FieldDescription::Kind kind)
{
    FieldDescription field;
    field.key = key;
    field.outlet = outlet;
    field.label = label;
    field.kind = kind;
    return field;
}
} // namespace

FieldDescription number(const QString& key, const QString& outlet, const QString& label)
{
    return described(key, outlet, label, FieldDescription::Kind::Number);
}

FieldDescription percent(const QString& key, const QString& outlet, const QString& label)
{
    return described(key, outlet, label, FieldDescription::Kind::Percent);
}

FieldDescription count(const QString& key, const QString& outlet, const QString& label)
{
    return described(key, outlet, label, FieldDescription::Kind::Count);
}

FieldDescription date(const QString& key, const QString& outlet, const QString& label)
{
    return described(key, outlet, label, FieldDescription::Kind::Date);
}

FieldDescription choice(const QString& key, const QString& outlet, const QString& label,
                        const QStringList& words, const QString& action)
{
    FieldDescription field = described(key, outlet, label, FieldDescription::Kind::Choice);
    field.words = words;
    field.action = action;
    return field;
}

FieldDescription table(const QString& key, int rows, FieldDescription::Kind cells,
                       const QString& label)
{
    FieldDescription field = described(key, {}, label, FieldDescription::Kind::Table);
    field.rows = rows;
    field.cells = cells;
    return field;
}

FieldDescription under(const QString& section, FieldDescription field)
{
    field.section = section;
    return field;
}

ResultDescription under(const QString& section, ResultDescription result)
{
    result.section = section;
    return result;
}

FieldDescription spelledOut(const QStringList& labels, FieldDescription field)
{
    field.wordLabels = labels;
    return field;
}

FieldDescription whenBlank(const QString& text, FieldDescription field)
{
    field.placeholder = text;
    return field;
}

FieldDescription withoutSign(FieldDescription field)
{
    field.sign = false;
    return field;
}

ResultDescription result(const QString& key, const QString& outlet, const QString& label,
                         const QString& unit)
{
    return {key, outlet, label, unit, {}};
}

} // namespace Describe
