#pragma once

#include "zvi/Export.h"

namespace zvi_interface {

/// The progress bar of an application. There is one for the whole process, or none: what takes long tells it a text
/// from time to time. It is not guarded: it comes, goes and is told on one thread.
class ZVI_API IProgressBar {
public:
    /// The text to show from now on, in UTF-16 units; it is the caller's, and gone when the call returns.
    virtual void SetText(wchar_t const *text) = 0;

    /// Brings what is shown up to date with the text.
    virtual void Refresh() = 0;

    /// Takes the bar away from the process if it is the one in use.
    virtual ~IProgressBar();

    /// The bar in use; null when the application has none.
    static IProgressBar *GetInstance();

    /// From now on this one is in use; null for none. It stays the application's.
    static void SetInstance(IProgressBar *bar);

protected:
    /// For classes derived from it alone.
    IProgressBar() = default;
    IProgressBar(IProgressBar const &) = default;
    IProgressBar &operator=(IProgressBar const &) = default;
};

} // namespace zvi_interface
