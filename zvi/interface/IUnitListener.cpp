#include "zvi/interface/IUnitListener.h"

#include <algorithm>
#include <vector>

namespace zvi_interface {

namespace {

/// A listener with the number of its registration, which tells it from a later one at the same address.
struct Registration {
    IUnitListener *listener;
    unsigned long long number;
};

using Registrations = std::vector<Registration>;

/// Never destroyed, so that listeners of static storage may leave it at process exit.
Registrations &Listeners() {
    static Registrations *const list = new Registrations;
    return *list;
}

unsigned long long NextNumber() {
    static unsigned long long last = 0;
    return ++last;
}

} // namespace

IUnitListener::~IUnitListener() {
    RemoveListener(this);
}

void IUnitListener::AddListener(IUnitListener *listener) {
    auto const isSame = [listener](Registration const &r) { return r.listener == listener; };
    if (listener && std::ranges::none_of(Listeners(), isSame))
        Listeners().push_back({listener, NextNumber()});
}

void IUnitListener::RemoveListener(IUnitListener *listener) {
    std::erase_if(Listeners(), [listener](Registration const &r) { return r.listener == listener; });
}

void IUnitListener::NotifyUnitChange(CDocument *document) {
    Registrations const called = Listeners();
    for (Registration const &each : called) {
        auto const isStill = [&each](Registration const &r) { return r.number == each.number; };
        if (std::ranges::any_of(Listeners(), isStill))
            each.listener->DoUnitChange(document);
    }
}

} // namespace zvi_interface
