#pragma once

#include "core/zt_hwnd.h"

#include <string>

class CMenuTree;

/// An entry of the settings menu: a static object beside the dialog that it opens. The list is sorted by `order`, and
/// an entry goes before others of its order that are there already.
class CGlobalSettingsType {
public:
    CGlobalSettingsType(const char* entry_name, int entry_order);
    CGlobalSettingsType(const CGlobalSettingsType&) = delete;
    CGlobalSettingsType& operator=(const CGlobalSettingsType&) = delete;
    virtual ~CGlobalSettingsType();

    /// Adds the entry to a menu, under `path`.
    virtual void addMenu(CMenuTree* menu, const std::string& path) = 0;
    virtual void showDialog(ZT_HWND parent) = 0;

    /// The list in its order; null at the end.
    static CGlobalSettingsType* First() { return global_list; }
    CGlobalSettingsType* Next() const { return next; }

    CGlobalSettingsType* next = nullptr;
    const std::string name;
    const int order;

    static CGlobalSettingsType* global_list;
};
