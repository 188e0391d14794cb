#include "zvi/interface/IProgressBar.h"

namespace zvi_interface {

namespace {

IProgressBar *barInUse = nullptr;

} // namespace

IProgressBar::~IProgressBar() {
    if (barInUse == this)
        barInUse = nullptr;
}

IProgressBar *IProgressBar::GetInstance() {
    return barInUse;
}

void IProgressBar::SetInstance(IProgressBar *bar) {
    barInUse = bar;
}

} // namespace zvi_interface
