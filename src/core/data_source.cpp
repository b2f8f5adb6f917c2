#include "core/data_source.h"

#include "core/clock.h"

double CDataSource::timestamp_correction = 0.0;
unsigned CDataSource::last_walk = 0;

CDataSource::~CDataSource()
{
    while (!subscribers.empty()) static_cast<callback*>(subscribers.first())->detach();
}

void CDataSource::Dispatch(void* data)
{
    timestamp = 0.0;
    stop = false;
    Walk([this, data](callback& subscriber) {
        if (stop) return false;
        subscriber.function(subscriber.user, data);
        return true;
    });
}

double CDataSource::Timestamp() const
{
    if (timestamp == 0.0) timestamp = GetTimeNow() + timestamp_correction;
    return timestamp;
}

void CDataSource::Release(CDataSource* source)
{
    if (source->walks != nullptr)
        source->released = true;
    else
        delete source;
}

void CDataSource::Unlink(callback* node)
{
    for (Cursor* walk = walks; walk != nullptr; walk = walk->outer)
        if (walk->at == node) walk->at = node->previous;
    node->previous->next = node->next;
    node->next->previous = node->previous;
}

void CDataSource::callback::attach(CDataSource& source, void (*call)(void*, void*), void* with, int with_priority)
{
    detach();
    function = call;
    user = with;
    priority = with_priority;
    owner = &source;
    source.subscribers.Enqueue(this);
}

void CDataSource::callback::detach()
{
    if (owner == nullptr) return;
    owner->Unlink(this);
    owner = nullptr;
    function = nullptr;
}
