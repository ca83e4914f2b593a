// SPDX-License-Identifier: MIT
#pragma once

class QPainter;

/// Something that a multi-image view lets paint over its images. Both engines show it the same, because both
/// lay the same painted overlay over the picture.
class ViewDecoration
{
public:
    virtual ~ViewDecoration() = default;
    /// Paints in the view's device-independent pixels. The painter's state is restored afterwards.
    virtual void paintOver(QPainter &painter) = 0;
};
