#include "zvi/interface/IUnitListener.h"

#include <algorithm>
#include <vector>

namespace zvi_interface {

namespace {

using ListenerList = std::vector<IUnitListener *>;

/// Never destroyed, so that listeners of static storage may leave it at process exit.
ListenerList &Listeners() {
    static ListenerList *const list = new ListenerList;
    return *list;
}

bool IsListed(IUnitListener const *listener) {
    ListenerList const &list = Listeners();
    return std::find(list.begin(), list.end(), listener) != list.end();
}

} // namespace

IUnitListener::~IUnitListener() {
    RemoveListener(this);
}

void IUnitListener::AddListener(IUnitListener *listener) {
    if (listener != nullptr && !IsListed(listener))
        Listeners().push_back(listener);
}

void IUnitListener::RemoveListener(IUnitListener *listener) {
    std::erase(Listeners(), listener);
}

void IUnitListener::NotifyUnitChange(CDocument *document) {
    ListenerList const called = Listeners();
    for (IUnitListener *listener : called) {
        if (IsListed(listener))
            listener->DoUnitChange(document);
    }
}

} // namespace zvi_interface
