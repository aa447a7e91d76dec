#pragma once

#include <QAbstractListModel>
#include <QString>

// The keypad's help topics and their pages.
class CalculatorHelpModel : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role { TitleRole = Qt::UserRole + 1, SourceRole };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    // The HTML page named `source` from the app's pages; empty when none.
    Q_INVOKABLE static QString loadHtmlFile(const QString& source);
};
