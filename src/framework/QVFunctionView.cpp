#include "QVFunctionView.h"

void QVFunctionView::setTitle(const QString& title)
{
    if (title == m_title)
        return;
    m_title = title;
    emit titleChanged();
}

void QVFunctionView::setDescriptionHtml(const QString& html)
{
    if (html == m_descriptionHtml)
        return;
    m_descriptionHtml = html;
    emit descriptionHtmlChanged();
}

void QVFunctionView::showCalculator(int segment)
{
    m_segment = segment;
    m_calculatorVisible = true;
    emit segmentChanged();
}

void QVFunctionView::showDescription(int segment)
{
    m_segment = segment;
    m_calculatorVisible = false;
    emit segmentChanged();
}
