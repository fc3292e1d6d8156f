#pragma once

#include <QObject>
#include <QPointer>

/// A pointer to a collaborator's interface that reads as null once the object behind it has died.
/// Collaborators are never owned, and some of them may go away before the editor does.
template <class Interface>
class InterfacePointer {
public:
    InterfacePointer() = default;
    // Not explicit: meant to be assigned from a plain pointer.
    InterfacePointer(Interface* pointer)
        : m_interface(pointer), m_object(pointer ? pointer->containerObject() : nullptr) {}

    Interface* get() const { return m_object ? m_interface : nullptr; }
    operator Interface*() const { return get(); }
    Interface* operator->() const { return get(); }

private:
    Interface* m_interface = nullptr;
    QPointer<QObject> m_object;
};
