#include "chartview/map_item.h"

#include "chartview/rastelle_window.h"
#include "core/folders.h"
#include "core/text.h"

#include <algorithm>
#include <vector>

namespace {

std::vector<CMapItem*>& AllMapItems()
{
    static std::vector<CMapItem*> items;
    return items;
}

} // namespace

CMapItem::CMapItem(CDVI_Rastelle_Window* map_window, int file_number)
    : Counter(1), window(map_window), number(file_number)
{
    AllMapItems().push_back(this);
}

CMapItem::~CMapItem()
{
    closeMap();
    std::erase(AllMapItems(), this);
}

std::string CMapItem::FileName() const
{
    return getAppDirectory() + stringprintf("/%d.dvqc", std::max(number, 0));
}

void CMapItem::openMap()
{
    if (view != nullptr) return;
    view = std::make_unique<CRastelleView>(this);
    view->ReadFile(FileName(), hWnd(), 0);
    view->OpenStartChart();
}

void CMapItem::closeMap()
{
    if (view == nullptr) return;
    SaveMap();
    view->DetachHost();
    view.reset();
}

bool CMapItem::SaveMap()
{
    if (view == nullptr || number < 0) return true;
    return view->WriteFile(FileName(), hWnd(), 0);
}

void CMapItem::DetachWindow()
{
    window = nullptr;
}

void CMapItem::onDraw(QPainter* painter, double width, double height)
{
    if (view == nullptr) return;
    view->setScreenRect(0.0, 0.0, width, height);
    view->onDraw(painter, 0.0, 0.0, width, height);
}

void CMapItem::onRightClick(int x, int y)
{
    if (view != nullptr) view->rightMouseDown(x, y);
}

void CMapItem::InvalidateView()
{
    if (window != nullptr) window->Invalidate();
}

void CMapItem::InvalidateArea(const FRect& area)
{
    if (window != nullptr) window->InvalidateArea(area);
}

ZT_HWND CMapItem::hWnd()
{
    return window != nullptr ? window->hWnd() : ZT_HWND();
}

void CMapItem::OnHeartbeat()
{
    if (view == nullptr) return;
    view->onTimer();
    if (window != nullptr) window->onTick();
}

bool CMapItem::SaveAllMaps()
{
    bool all = true;
    for (CMapItem* item : AllMapItems()) all = item->SaveMap() && all;
    return all;
}

CMapItem* CMapItem::First()
{
    return AllMapItems().empty() ? nullptr : AllMapItems().front();
}
