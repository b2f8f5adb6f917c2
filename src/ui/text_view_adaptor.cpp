#include "ui/text_view_adaptor.h"

CTextViewAdaptor::CTextViewAdaptor(QQuickItem* parent) : CViewAdaptor_q(parent) {}

void CTextViewAdaptor::SetTitleUnits(const std::string& title, const std::string& units)
{
    setTitle(QString::fromStdString(units.empty() ? title : title + " / " + units));
    setVisible(true);
}

void CTextViewAdaptor::SetValue(const std::string& value)
{
    setValue(QString::fromStdString(value));
}

void CTextViewAdaptor::setTitle(const QString& title)
{
    if (m_title == title) return;
    m_title = title;
    emit titleChanged();
}

void CTextViewAdaptor::setValue(const QString& value)
{
    if (m_value == value) return;
    m_value = value;
    emit valueChanged();
}
