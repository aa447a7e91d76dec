#include "ReportTableModel.h"

#include "QVReport.h"
#include "platform/Services.h"
#include "platform/SettingsStore.h"

ReportTableModel::ReportTableModel(QObject* parent) : QAbstractListModel(parent)
{
    loadReportArray();
}

void ReportTableModel::loadReportArray()
{
    const std::optional<QVariantList> stored = QVReport::storedReportList();
    QList<QByteArray> reports;
    if (!stored) {
        auto& settings = Services::settings();
        settings.setValue(QVReport::reportsKey, QVariantList());
        settings.sync();
    } else {
        reports.reserve(stored->size());
        for (const QVariant& item : *stored)
            reports << item.toByteArray();
    }
    beginResetModel();
    m_reportArray = std::move(reports);
    endResetModel();
    emit countChanged();
}

int ReportTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

QVReport ReportTableModel::reportAt(int row) const
{
    if (row < 0 || row >= count())
        return QVReport::fromArchive({});
    return QVReport::fromArchive(m_reportArray.at(row));
}

QVariant ReportTableModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= count())
        return {};
    const QVReport report = reportAt(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case TitleRole:
        return report.title;
    case DateStringRole:
        return report.dateString();
    case FunctionTitleRole:
        return report.functionTitle;
    case ColorTagRole:
        return report.colorTag.isValid() ? QVariant(report.colorTag)
                                         : QVariant(QColor(Qt::transparent));
    case FileNameRole:
        return report.fileName;
    case FilePathRole:
        return report.fileName.isEmpty() ? QString() : report.filePathInDocumentsDirectory();
    default:
        return {};
    }
}

QHash<int, QByteArray> ReportTableModel::roleNames() const
{
    return {
        {TitleRole, "title"},
        {DateStringRole, "dateString"},
        {FunctionTitleRole, "functionTitle"},
        {ColorTagRole, "colorTag"},
        {FileNameRole, "fileName"},
        {FilePathRole, "filePath"},
    };
}

void ReportTableModel::deleteReport(int row)
{
    if (row < 0 || row >= count())
        return;
    QVReport::removeReportWithDate(reportAt(row).date);
    beginRemoveRows({}, row, row);
    m_reportArray.removeAt(row);
    endRemoveRows();
    emit countChanged();
}

QString ReportTableModel::filePathAt(int row) const
{
    return data(index(row), FilePathRole).toString();
}
