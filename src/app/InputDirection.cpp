#include "InputDirection.h"

#include <QByteArray>
#include <QLocale>
#include <QMap>

namespace InputDirection {
namespace {

// Locale variables by name; a variable that is not set is absent.
using Environment = QMap<QByteArray, QByteArray>;

// The variables Qt reads for the system locale.
const char* const localeVariables[] = {"LC_ALL",      "LC_MESSAGES",    "LANG",
                                       "LANGUAGE",    "LC_NUMERIC",     "LC_TIME",
                                       "LC_MONETARY", "LC_MEASUREMENT", "LC_COLLATE"};

bool writesRightToLeft(const QByteArray& localeName)
{
    // "he_IL.UTF-8@euro" names the locale he_IL.
    const QByteArray name = localeName.split('.').front().split('@').front();
    return !name.isEmpty() && name != "C" && name != "POSIX" &&
           QLocale(QString::fromLatin1(name)).textDirection() == Qt::RightToLeft;
}

// The environment under which Qt should first read the system locale:
// empty when the user's language writes left to right.
Environment leftToRightReading(const Environment& current)
{
    // A category is LC_ALL when that is set, else its own variable, else
    // LANG; a variable set to nothing counts as not set.
    const auto category = [&current](const char* name) {
        for (const char* variable : {"LC_ALL", name, "LANG"})
            if (!current.value(variable).isEmpty())
                return current.value(variable);
        return QByteArray();
    };
    const QByteArray firstLanguage = current.value("LANGUAGE").split(':').front();
    if (!writesRightToLeft(category("LC_MESSAGES")) && !writesRightToLeft(firstLanguage))
        return {};

    // Every category but the messages is spelt out, so that it stays the
    // user's without LC_ALL.
    Environment reading;
    for (const char* name :
         {"LC_NUMERIC", "LC_TIME", "LC_MONETARY", "LC_MEASUREMENT", "LC_COLLATE"}) {
        const QByteArray value = category(name);
        if (!value.isEmpty())
            reading.insert(name, value);
    }
    const QByteArray lang = current.value("LANG");
    if (!lang.isEmpty())
        reading.insert("LANG", lang);
    reading.insert("LC_MESSAGES", "en_US.UTF-8");
    return reading;
}

} // namespace

void useLeftToRight()
{
    Environment current;
    for (const char* name : localeVariables)
        if (qEnvironmentVariableIsSet(name))
            current.insert(name, qgetenv(name));
    const Environment reading = leftToRightReading(current);
    if (reading.isEmpty())
        return;
    const auto apply = [](const Environment& environment) {
        for (const char* name : localeVariables) {
            if (environment.contains(name))
                qputenv(name, environment.value(name));
            else
                qunsetenv(name);
        }
    };
    apply(reading);
    // Qt reads the system locale once and keeps it.
    (void)QLocale::system().textDirection();
    apply(current);
}

} // namespace InputDirection
