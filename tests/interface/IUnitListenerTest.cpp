#include "zvi/interface/IUnitListener.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

namespace zvi::lib::test {

namespace {

struct Listener : zvi_interface::IUnitListener {
    explicit Listener(std::function<void()> onChange) : action(std::move(onChange)) { AddListener(this); }
    void DoUnitChange(CDocument *) override { action(); }
    std::function<void()> action;
};

} // namespace

TEST(IUnitListener, ListenersMayComeAndGoWhileTheyAreCalled) {
    std::string calls;
    std::unique_ptr<Listener> second;
    std::unique_ptr<Listener> late;
    Listener first([&] {
        calls += '1';
        second.reset();
        if (late == nullptr)
            late = std::make_unique<Listener>([&] { calls += 'l'; });
    });
    second = std::make_unique<Listener>([&] { calls += '2'; });
    Listener third([&] { calls += '3'; });
    zvi_interface::IUnitListener::AddListener(&third);
    zvi_interface::IUnitListener::AddListener(nullptr);

    zvi_interface::IUnitListener::NotifyUnitChange(nullptr);
    EXPECT_EQ(calls, "13");
    calls.clear();
    zvi_interface::IUnitListener::NotifyUnitChange(nullptr);
    EXPECT_EQ(calls, "13l");
}

} // namespace zvi::lib::test
