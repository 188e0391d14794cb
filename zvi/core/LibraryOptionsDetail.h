#pragma once

namespace zvi::lib {

class OptionAnalCtrl;
class OptionGenTol;

namespace core {

/// The library's own groups, with their defaults: made at the first call, destroyed at exit.
OptionGenTol &GeneralTolerances();
OptionAnalCtrl &AnalysisControl();

} // namespace core

} // namespace zvi::lib
