#pragma once

#include "zvi/Export.h"

class CDocument;

namespace zvi_interface {

/// What an application implements to hear of every unit change in its documents.
///
/// Listeners stand in one list for the whole process, which is not guarded: listeners come and go, and units change
/// with notice, on one thread. A listener may add and remove listeners, itself included, while it is called.
class ZVI_API IUnitListener {
public:
    /// Called in the thread of the change, after the new units are in force. The document may be null.
    virtual void DoUnitChange(CDocument *document) = 0;

    /// Takes the listener off the list.
    virtual ~IUnitListener();

    /// Puts a listener at the end of the list; null, or one that is on it already, changes nothing.
    static void AddListener(IUnitListener *listener);

    /// Takes a listener off the list; one that is not on it changes nothing.
    static void RemoveListener(IUnitListener *listener);

    /// Calls `DoUnitChange` of the listeners that are on the list now, in the order in which they were added. One that
    /// is removed meanwhile is no longer called; one that is added meanwhile is not called yet.
    static void NotifyUnitChange(CDocument *document);

protected:
    /// For classes derived from it alone.
    IUnitListener() = default;
    IUnitListener(IUnitListener const &) = default;
    IUnitListener &operator=(IUnitListener const &) = default;
};

} // namespace zvi_interface
