#include "ReportDetailModel.h"

void ReportDetailModel::setReportFilePath(const QString& path)
{
    if (path == m_reportFilePath)
        return;
    m_reportFilePath = path;
    emit reportFilePathChanged();
}
