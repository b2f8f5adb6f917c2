#include "app/app_ui_context.h"

#include "app/app_globals.h"
#include "app/chart_menu.h"
#include "app/overlay_menus.h"
#include "app/zentara_app_model.h"
#include "chartview/rastelle_view.h"
#include "overlays/mark_manager.h"
#include "ui/done_button.h"

#include <QQmlApplicationEngine>
#include <QQuickWindow>

CAppUiContext::CAppUiContext()
    : desktop(g_user_notification_manager,
              [] { return theApp != nullptr && theApp->window() != nullptr && theApp->window()->isActive(); })
{
    SetUiContext(this);
    SetViewServices(this);
    SetMessageSink(&messages);
}

CAppUiContext::~CAppUiContext()
{
    SetMessageSink(nullptr);
    SetViewServices(nullptr);
    SetUiContext(nullptr);
}

QQmlEngine* CAppUiContext::Engine()
{
    return theAppEngine;
}

QQuickItem* CAppUiContext::DialogParent()
{
    return theApp != nullptr ? theApp->dialogParent() : nullptr;
}

void CAppUiContext::stopInactivityTimeout()
{
    if (theApp != nullptr) theApp->stopInactivityTimeout();
}

void CAppUiContext::startInactivityTimeout()
{
    if (theApp != nullptr) theApp->startInactivityTimeout();
}

void CAppUiContext::showHelpForTag(const QString& tag)
{
    if (theApp != nullptr) theApp->showHelpForTag(tag);
}

void CAppUiContext::SetStatusText(const QString& text)
{
    if (theApp != nullptr) theApp->SetStatusText(text.toStdString());
}

void CAppUiContext::SetShowDoneButton(bool shown)
{
    if (theApp != nullptr) theApp->SetShowDoneButton(shown);
}

bool CAppUiContext::UsingTouch() const
{
    return theApp != nullptr && theApp->usingTouch();
}

void CAppUiContext::CreateNewMark(CRastelleView& view)
{
    AddMarkInView(view);
}

void CAppUiContext::CreateNewRoute(CRastelleView& view)
{
    g_mark_manager.CreateNewRoute(view.hWnd());
}

void CAppUiContext::ShowMapListDialog(CRastelleView* view, ZT_HWND hwnd, std::function<void()>)
{
    if (view != nullptr) ShowChartMenu(*view, hwnd);
}

void CAppUiContext::ShowContextMenu(CRastelleView& view, double x, double y)
{
    ShowMapMenu(view, x, y);
}

bool CAppUiContext::InvokeDoneButton()
{
    if (theApp == nullptr || !theApp->showDoneButton()) return false;
    PressDoneButton();
    return true;
}
