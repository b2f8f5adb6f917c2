#include "displayview/display_view_page.h"

#include "displayview/page_content.h"

CDisplayViewPage::CDisplayViewPage(QQuickItem* parent) : QQuickItem(parent)
{
    setFlag(ItemIsFocusScope);
}

CDisplayViewPage::~CDisplayViewPage()
{
    DetachContent();
}

void CDisplayViewPage::AttachContent(IPageContent* page)
{
    if (page == content) return;
    DetachContent();
    content = page;
    if (content == nullptr) return;
    element = content->Attach(*this);
    FillWithElement();
}

void CDisplayViewPage::DetachContent()
{
    if (content == nullptr) return;
    element = nullptr;
    content->Detach();
    content = nullptr;
}

void CDisplayViewPage::animationFinished()
{
    setFocus(true);
    if (element != nullptr) element->forceActiveFocus();
}

void CDisplayViewPage::setArranging(bool on)
{
    if (is_arranging == on) return;
    is_arranging = on;
    emit arrangingChanged();
}

void CDisplayViewPage::geometryChange(const QRectF& now, const QRectF& before)
{
    QQuickItem::geometryChange(now, before);
    FillWithElement();
}

void CDisplayViewPage::FillWithElement()
{
    if (element != nullptr) element->setSize(size());
}
