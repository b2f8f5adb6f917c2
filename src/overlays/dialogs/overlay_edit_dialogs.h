#pragma once

#include "overlays/overlay_dialogs.h"

/// Opens the editing dialogs for the overlay objects. Made by the application.
class COverlayEditDialogs : public IOverlayDialogs {
public:
    COverlayEditDialogs() { SetOverlayDialogs(this); }
    ~COverlayEditDialogs() override { SetOverlayDialogs(nullptr); }

    void EditMark(ZT_HWND parent, COverlayMark& mark) override;
    void EditRoute(ZT_HWND parent, COverlayRoute& route) override;
    void EditTrack(ZT_HWND parent, COverlayTrack& track) override;
    void SaveAs(ZT_HWND parent, CSyncable& object) override;
};

/// Makes the dialogs known to declarative files.
void qml_register_overlay_dialogs();
