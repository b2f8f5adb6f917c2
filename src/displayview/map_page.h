#pragma once

#include "displayview/page_content.h"

class CDVI_Rastelle_Window;

/// A page that is one map over its whole area. The view of the map is read when the page is attached and written when
/// it is detached.
class CMapPage : public IPageContent {
public:
    ~CMapPage() override;

    QQuickItem* Attach(CDisplayViewPage& place) override;
    void Detach() override;
    void Save() override;
    /// The map's element while the page is attached, null otherwise.
    CDVI_Rastelle_Window* Map() const { return window; }

private:
    CDVI_Rastelle_Window* window = nullptr; ///< owned
};
