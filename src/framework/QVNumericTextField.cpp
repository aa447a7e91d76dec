#include "QVNumericTextField.h"

void QVNumericTextField::setText(const QString& text)
{
    if (text == m_text)
        return;
    m_text = text;
    emit textChanged();
}

void QVNumericTextField::setInfo(const QString& info)
{
    if (info == m_info)
        return;
    m_info = info;
    emit infoChanged();
}

QString QVNumericTextField::changedSign(const QString& text)
{
    if (text.contains(QLatin1Char('-')))
        return text.mid(1);
    return QLatin1Char('-') + text;
}

void QVNumericTextField::signClicked()
{
    setText(changedSign(m_text));
}
