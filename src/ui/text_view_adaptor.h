#pragma once

#include "ui/view_adaptor.h"

/// The element of a text read-out; its look is DisplayViewTextItem or DisplayViewMultilineTextItem.
class CTextViewAdaptor : public CViewAdaptor_q, public ITxtWindow {
    Q_OBJECT
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY titleChanged)
    Q_PROPERTY(QString value READ value WRITE setValue NOTIFY valueChanged)

public:
    explicit CTextViewAdaptor(QQuickItem* parent = nullptr);

    /// UTF-8. The title shown is title, then " / " and units if units is not empty; the element becomes visible.
    void SetTitleUnits(const std::string& title, const std::string& units) override;
    void SetValue(const std::string& value) override;

    QString title() const { return m_title; }
    void setTitle(const QString& title);
    QString value() const { return m_value; }
    void setValue(const QString& value);

signals:
    void titleChanged();
    void valueChanged();

private:
    QString m_title;
    QString m_value;
};
