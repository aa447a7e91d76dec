#include "HtmlPages.h"

#include <QFile>

namespace HtmlPages {

QString page(const QString& name)
{
    if (name.isEmpty() || name.contains(QLatin1Char('/')))
        return {};
    QFile file(QStringLiteral(":/html/%1.html").arg(name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QString body = QString::fromUtf8(file.readAll());
    if (body.contains(QLatin1String("<html")))
        return body;
    return QStringLiteral("<html><head><style>th { text-align: left; } td { vertical-align: "
                          "top; } code { font-family: monospace; }</style></head><body>") +
           body + QStringLiteral("</body></html>");
}

} // namespace HtmlPages
