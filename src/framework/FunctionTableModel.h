#pragma once

#include <QAbstractListModel>
#include <QList>
#include <QString>

// One catalogue entry: its title (also its identity) and its icon's name.
struct FunctionCell {
    QString title;
    QString imageName;
};

// The catalogue of form calculators: the Functions tab's calculators, then
// the rows that open the lists (stock calculators, loans and more, bonds and
// dates, business and statistics).
class FunctionTableModel : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role { TitleRole = Qt::UserRole + 1, ImageNameRole, IconRole };

    explicit FunctionTableModel(QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    const QList<FunctionCell>& functionArray() const { return m_functionArray; }

    // The screens a row with this title opens, by identifier ("TvmController",
    // ...). Every known title is compared, so a title matching twice would
    // open two; an unknown title opens none.
    Q_INVOKABLE static QStringList screenIdentifiersForTitle(const QString& title);
    // Nine rows fill the visible list, whatever its height.
    Q_INVOKABLE static qreal rowHeightForListHeight(qreal height) { return height / 9.0; }

private:
    void configureFunctionArray();
    QList<FunctionCell> m_functionArray;
};
