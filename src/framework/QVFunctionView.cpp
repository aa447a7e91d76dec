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

QString QVFunctionView::text(const QString& outlet) const
{
    return m_texts.value(outlet).toString();
}

void QVFunctionView::setText(const QString& outlet, const QString& text)
{
    const auto it = m_texts.constFind(outlet);
    if (it != m_texts.constEnd() && it->toString() == text)
        return;
    m_texts.insert(outlet, text);
    emit textsChanged();
}

QString QVFunctionView::note(const QString& outlet) const
{
    return m_notes.value(outlet).toString();
}

void QVFunctionView::setNote(const QString& outlet, const QString& note)
{
    if (this->note(outlet) == note)
        return;
    if (note.isEmpty())
        m_notes.remove(outlet);
    else
        m_notes.insert(outlet, note);
    emit notesChanged();
}

void QVFunctionView::markStale(const QString& input)
{
    if (m_staleInputs.contains(input))
        return;
    m_staleInputs.append(input);
    if (m_staleInputs.size() == 1)
        emit staleChanged();
}

void QVFunctionView::markTakenIn(const QString& input)
{
    if (m_staleInputs.removeAll(input) > 0 && m_staleInputs.isEmpty())
        emit staleChanged();
}

void QVFunctionView::markAllTakenIn()
{
    if (m_staleInputs.isEmpty())
        return;
    m_staleInputs.clear();
    emit staleChanged();
}
