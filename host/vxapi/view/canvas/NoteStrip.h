// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/vxapi_global.h"

#include <QFont>
#include <QRectF>
#include <QStringList>

/// Where notes stand in a view, and in which lines. Device-independent pixels of the view.
struct VXAPI_EXPORT NoteStrip
{
    QRectF rect; ///< empty without notes
    QStringList lines;
    QFont font;

    static constexpr double SIDE = 4.0;   ///< left and right of the lines
    static constexpr double ABOVE = 1.0;  ///< above and below them
    static constexpr double LEAST = 84.0; ///< a column narrower than this breaks every other word

    /// What stands in the view and does not give way to notes.
    struct Surroundings
    {
        QSizeF view;
        QRectF image; ///< where the last image stands or would stand
        double floor; ///< nothing but that image reaches below
    };

    /// Lays the notes out where nothing else stands: below the last image when they fit there, else in a
    /// column left of the images. A view that has no such place tells them in what lines there are below
    /// `floor`, at least one, over the image's foot: shortened, as the tooltip has the whole.
    static NoteStrip of(const QStringList &notes, const QFont &font, const Surroundings &around);
};
