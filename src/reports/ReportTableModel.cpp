#include "ReportTableModel.h"

#include "framework/CalculatorDescription.h"
#include "framework/CalculatorRegistry.h"
#include "framework/Presenter.h"
#include "store/QVReport.h"
#include "store/ReportStore.h"

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
        // A colour name, which QML reads into a colour property.
        return report.colorTag.isValid() ? report.colorTag.name() : QStringLiteral("transparent");
    case FileNameRole:
        return report.fileName;
    case FilePathRole:
        return report.fileName.isEmpty() ? QString() : report.filePathInDocumentsDirectory();
    case CalculatorTitleRole: {
        const CalculatorDescription* d =
            report.calculator.isEmpty() ? CalculatorRegistry::findReportLabel(report.functionTitle)
                                        : CalculatorRegistry::find(report.calculator);
        return d ? d->entry.title : report.functionTitle;
    }
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
        {CalculatorTitleRole, "calculatorTitle"},
    };
}

WriteResult ReportTableModel::deleteReport(int row)
{
    if (row < 0 || row >= count())
        return WriteResult::failure(QStringLiteral("There is no report %1.").arg(row));
    const QVReport report = reportAt(row);
    QList<ReportStore::Row> removed;
    const WriteResult result = QVReport::removeReportWithDate(report.date, nullptr, &removed);
    if (!result.ok())
        return result; // the row stays, as the record does
    m_undoRows = removed;
    m_undoTitle = report.title;
    emit undoChanged();
    beginRemoveRows({}, row, row);
    m_reportArray.removeAt(row);
    endRemoveRows();
    emit countChanged();
    return result;
}

void ReportTableModel::tell(const QString& title, const WriteResult& result)
{
    Presenter* presenter = Presenter::defaultPresenter();
    if (result.ok() || !presenter)
        return;
    AlertRequest alert;
    alert.title = title;
    alert.message = result.error;
    alert.actions = {{QStringLiteral("OK")}};
    presenter->present(alert, [](const QString&, const QString&) {});
}

QString ReportTableModel::removeRow(int row)
{
    const WriteResult result = deleteReport(row);
    tell(QStringLiteral("Could not delete the report"), result);
    return result.error;
}

QString ReportTableModel::undoDelete()
{
    if (m_undoRows.isEmpty())
        return QString();
    const WriteResult result = ReportStore::restoreRows(m_undoRows);
    tell(QStringLiteral("Could not restore the report"), result);
    if (result.ok()) {
        forgetUndo();
        loadReportArray();
    }
    return result.error;
}

void ReportTableModel::forgetUndo()
{
    if (m_undoRows.isEmpty())
        return;
    m_undoRows.clear();
    m_undoTitle.clear();
    emit undoChanged();
}

void ReportTableModel::tellNotice()
{
    const QString notice = ReportStore::takeNotice();
    Presenter* presenter = Presenter::defaultPresenter();
    if (notice.isEmpty() || !presenter)
        return;
    AlertRequest alert;
    alert.title = QStringLiteral("Saved Reports");
    alert.message = notice;
    alert.actions = {{QStringLiteral("OK")}};
    presenter->present(alert, [](const QString&, const QString&) {});
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
