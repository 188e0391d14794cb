#pragma once

#include "zvi/Export.h"

/// A surface to draw on, with the operations that the library uses. A program implements it over its own canvas, or
/// over a picture file.
class ZVI_API CDC {
public:
    /// An object may be deleted through this class.
    virtual ~CDC();

    /// Selects a brush that leaves the inside of a shape open, and gives the brush that was selected until now.
    virtual void *SelectHollowBrush() = 0;

    /// Selects a brush that `SelectHollowBrush` gave.
    virtual void SelectBrush(void *brush) = 0;

    /// Draws a rectangle with two opposite corners, in units of the surface.
    virtual void Rectangle(int x1, int y1, int x2, int y2) = 0;

    /// Columns of the surface that a line of text takes. A surface that does not measure texts gives 0.
    virtual int TextWidth(wchar_t const *text);

protected:
    /// For classes derived from it alone.
    CDC() = default;
    CDC(CDC const &) = default;
    CDC &operator=(CDC const &) = default;
};
