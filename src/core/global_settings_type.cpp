#include "core/global_settings_type.h"

constinit CGlobalSettingsType* CGlobalSettingsType::global_list = nullptr;

CGlobalSettingsType::CGlobalSettingsType(const char* entry_name, int entry_order) : name(entry_name), order(entry_order)
{
    CGlobalSettingsType** link = &global_list;
    while (*link != nullptr && (*link)->order < order) link = &(*link)->next;
    next = *link;
    *link = this;
}

CGlobalSettingsType::~CGlobalSettingsType()
{
    for (CGlobalSettingsType** link = &global_list; *link != nullptr; link = &(*link)->next) {
        if (*link != this) continue;
        *link = next;
        return;
    }
}
