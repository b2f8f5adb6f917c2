#include "overlays/overlay_source.h"

#include <algorithm>
#include <vector>

namespace {

std::vector<IOverlaySource*>& AllSources()
{
    static std::vector<IOverlaySource*> sources;
    return sources;
}

} // namespace

IOverlaySource::IOverlaySource()
{
    AllSources().push_back(this);
}

IOverlaySource::~IOverlaySource()
{
    std::erase(AllSources(), this);
}

void IOverlaySource::GetUpdatesFromAllSources(COverlayObject::update_action action, Listener<COverlayObject>& listener)
{
    for (IOverlaySource* source : AllSources()) source->GetUpdatesForAll(action, listener);
}
