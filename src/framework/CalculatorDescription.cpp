#include "CalculatorDescription.h"

const FieldSpec* CalculatorDescription::field(const QString& key) const
{
    for (const FieldSpec& spec : fields) {
        if (spec.key == key || spec.outlet == key)
            return &spec;
    }
    return nullptr;
}

const ResultSpec* CalculatorDescription::result(const QString& key) const
{
    for (const ResultSpec& spec : results) {
        if (spec.key == key || spec.outlet == key)
            return &spec;
    }
    return nullptr;
}

namespace Describe {

namespace {
FieldSpec spec(const QString& key, const QString& outlet, const QString& label,
               FieldSpec::Kind kind)
{
    FieldSpec field;
    field.key = key;
    field.outlet = outlet;
    field.label = label;
    field.kind = kind;
    return field;
}
} // namespace

FieldSpec number(const QString& key, const QString& outlet, const QString& label)
{
    return spec(key, outlet, label, FieldSpec::Kind::Number);
}

FieldSpec percent(const QString& key, const QString& outlet, const QString& label)
{
    return spec(key, outlet, label, FieldSpec::Kind::Percent);
}

FieldSpec count(const QString& key, const QString& outlet, const QString& label)
{
    return spec(key, outlet, label, FieldSpec::Kind::Count);
}

FieldSpec date(const QString& key, const QString& outlet, const QString& label)
{
    return spec(key, outlet, label, FieldSpec::Kind::Date);
}

FieldSpec choice(const QString& key, const QString& outlet, const QString& label,
                 const QStringList& words, const QString& action)
{
    FieldSpec field = spec(key, outlet, label, FieldSpec::Kind::Choice);
    field.words = words;
    field.action = action;
    return field;
}

FieldSpec table(const QString& key, int rows, FieldSpec::Kind cells)
{
    FieldSpec field = spec(key, {}, {}, FieldSpec::Kind::Table);
    field.rows = rows;
    field.cells = cells;
    return field;
}

FieldSpec under(const QString& section, FieldSpec spec)
{
    spec.section = section;
    return spec;
}

ResultSpec under(const QString& section, ResultSpec spec)
{
    spec.section = section;
    return spec;
}

FieldSpec withoutSign(FieldSpec spec)
{
    spec.sign = false;
    return spec;
}

ResultSpec result(const QString& key, const QString& outlet, const QString& label,
                  const QString& unit)
{
    return {key, outlet, label, unit, {}};
}

} // namespace Describe
