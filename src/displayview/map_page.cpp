#include "displayview/map_page.h"

#include "chartview/rastelle_window.h"
#include "displayview/display_view_page.h"

#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>

CMapPage::~CMapPage()
{
    Detach();
}

QQuickItem* CMapPage::Attach(CDisplayViewPage& place)
{
    Detach();
    QQmlEngine* engine = qmlEngine(&place);
    if (engine == nullptr) return nullptr;
    QQmlComponent component(engine, QUrl(QStringLiteral("qrc:/DVI_Rastelle.qml")));
    QObject* object = component.beginCreate(qmlContext(&place));
    window = qobject_cast<CDVI_Rastelle_Window*>(object);
    if (window == nullptr) {
        qWarning("%s", qPrintable(component.errorString()));
        delete object;
        return nullptr;
    }
    window->setParentItem(&place);
    window->setSize(place.size());
    component.completeCreate();
    window->openMap();
    return window;
}

void CMapPage::Detach()
{
    if (window == nullptr) return;
    window->closeMap();
    // Not deleted at once: a detach may come out of one of the element's own signals.
    window->setParentItem(nullptr);
    window->deleteLater();
    window = nullptr;
}

void CMapPage::Save()
{
    if (window != nullptr && window->Item() != nullptr) window->Item()->SaveMap();
}
