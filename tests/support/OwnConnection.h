#pragma once

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <gtest/gtest.h>

// Runs `use` with a query on a connection of the test's own to the SQLite
// database at `path` (as another program has it open), then closes it.
template <typename Use> void withOwnConnection(const QString& path, Use use)
{
    const QString name = QStringLiteral("test-own-connection");
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        db.setDatabaseName(path);
        EXPECT_TRUE(db.open()) << db.lastError().text().toStdString();
        QSqlQuery query(db);
        use(query);
    }
    QSqlDatabase::removeDatabase(name);
}
