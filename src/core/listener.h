#pragma once

#include "core/data_source.h"

/// A subscriber to changes of T. The changed object is itself the message; it comes by reference, at once. A class
/// that wants several feeds derives from several instantiations. Main thread only.
///
/// A publisher does: `if (Listener<T>::pDatasource) Listener<T>::pDatasource->Dispatch(&object);`
template <class T>
class Listener {
public:
    /// Null for as long as nobody listens.
    static inline CDataSource* pDatasource = nullptr;

    virtual void OnUpdate(T& data) = 0;

    bool IsConnected() const { return node.owner != nullptr; }
    void Connect()
    {
        if (IsConnected()) return;
        if (pDatasource == nullptr) pDatasource = new CDataSource;
        node.attach(*pDatasource, &m_func, this, 0);
    }
    void Disconnect()
    {
        if (!IsConnected()) return;
        node.detach();
        if (pDatasource != nullptr && pDatasource->empty()) {
            CDataSource* channel = pDatasource;
            pDatasource = nullptr;
            CDataSource::Release(channel);
        }
    }

protected:
    Listener() = default;
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;
    ~Listener() { Disconnect(); }

private:
    static void m_func(void* self, void* data) { static_cast<Listener*>(self)->OnUpdate(*static_cast<T*>(data)); }
    CDataSource::callback node;
};

/// Publishes `data` to the listeners of its type, if there are any.
template <class T>
void DispatchToListeners(T& data)
{
    if (Listener<T>::pDatasource != nullptr) Listener<T>::pDatasource->Dispatch(&data);
}

/// Fired once, when the application has left its event loop.
struct ShutDown {};
