#pragma once

class CDisplayViewPage;
class QQuickItem;

/// What a page shows. An object of it outlives the visual element that it makes; the element exists only while the page
/// is attached. Main thread only.
struct IPageContent {
    virtual ~IPageContent() = default;
    /// Makes the visual element below `place` and answers it; null when it could not be made.
    virtual QQuickItem* Attach(CDisplayViewPage& place) = 0;
    /// Destroys the element; what the page keeps (the view of its map) has been saved.
    virtual void Detach() = 0;
    /// Writes what the page keeps of the user's, while it goes on showing.
    virtual void Save() = 0;
};
