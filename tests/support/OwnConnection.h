#pragma once

#include "store/ReportStore.h"

#include <QScopeGuard>
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

// Runs `use` while another program holds the reports database's write lock
// (BEGIN IMMEDIATE on a connection of its own) and the store waits only
// `busyTimeoutMs` for it; then lets go, and puts the store's timeout and
// connection back as they were.
template <typename Use> void whileAnotherHoldsTheStore(int busyTimeoutMs, Use use)
{
    ReportStore::setBusyTimeout(busyTimeoutMs);
    const auto restore = qScopeGuard([] {
        ReportStore::setBusyTimeout(ReportStore::defaultBusyTimeout);
        ReportStore::close();
    });
    ReportStore::close();
    withOwnConnection(ReportStore::databasePath(), [&](QSqlQuery& lock) {
        ASSERT_TRUE(lock.exec(QStringLiteral("BEGIN IMMEDIATE")));
        use();
        lock.exec(QStringLiteral("ROLLBACK"));
    });
}
