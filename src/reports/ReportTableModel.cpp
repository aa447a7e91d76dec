#include "ReportTableModel.h"

#include "QVReport.h"
#include "ReportStore.h"
#include "framework/Presenter.h"

ReportTableModel::ReportTableModel(QObject* parent) : QAbstractListModel(parent)
{
    loadReportArray();
}

void ReportTableModel::loadReportArray()
{
    QString error;
    std::optional<QList<QByteArray>> stored = QVReport::storedReportList(&error);
    if (!stored && error.isEmpty()) {
        // No list yet: create it now, so that saves from here on are kept
        // (with the records of an older settings-file list, if there is one).
        const WriteResult created = ReportStore::createList();
        if (created.ok())
            stored = QVReport::storedReportList(&error);
        else
            error = created.error;
    }
    beginResetModel();
    m_reportArray = stored.value_or(QList<QByteArray>());
    endResetModel();
    emit countChanged();
    setLoadError(error);
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

WriteResult ReportTableModel::deleteReport(int row)
{
    if (row < 0 || row >= count())
        return WriteResult::failure(QStringLiteral("There is no report %1.").arg(row));
    const WriteResult result = QVReport::removeReportWithDate(reportAt(row).date);
    if (!result.ok())
        return result; // the row stays, as the record does
    beginRemoveRows({}, row, row);
    m_reportArray.removeAt(row);
    endRemoveRows();
    emit countChanged();
    return result;
}

QString ReportTableModel::removeRow(int row)
{
    const WriteResult result = deleteReport(row);
    if (!result.ok()) {
        if (Presenter* presenter = Presenter::defaultPresenter()) {
            AlertRequest alert;
            alert.title = QStringLiteral("Could not delete the report");
            alert.message = result.error;
            alert.actions = {{QStringLiteral("OK")}};
            presenter->present(alert, [](const QString&, const QString&) {});
        }
    }
    return result.error;
}

void ReportTableModel::setLoadError(const QString& error)
{
    if (m_loadError == error)
        return;
    m_loadError = error;
    emit loadErrorChanged();
}

QString ReportTableModel::filePathAt(int row) const
{
    return data(index(row), FilePathRole).toString();
}
