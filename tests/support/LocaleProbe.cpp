// Prints what the app's start leaves of the system locale: the writing
// direction the keyboard takes from it, a number and a date as the locale
// writes them, and the locale variables. With --ltr it starts as the app
// does.
#include "app/InputDirection.h"

#include <QCoreApplication>
#include <QDate>
#include <QLocale>
#include <cstdio>
#include <cstring>

int main(int argc, char* argv[])
{
    if (argc > 1 && std::strcmp(argv[1], "--ltr") == 0)
        InputDirection::useLeftToRight();
    QCoreApplication app(argc, argv);
    const QLocale locale;
    QString text = QStringLiteral("direction %1\nnumber %2\ndate %3\n")
                       .arg(int(QLocale::system().textDirection()))
                       .arg(locale.toString(-1234567.25, 'f', 2),
                            locale.toString(QDate(2024, 3, 5), QLocale::LongFormat));
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG", "LANGUAGE", "LC_NUMERIC", "LC_TIME"})
        text += QStringLiteral("%1=%2\n").arg(QLatin1String(name), qEnvironmentVariable(name));
    std::fputs(text.toUtf8().constData(), stdout);
    return 0;
}
