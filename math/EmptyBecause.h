// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace imagemath {

/// Why images of a computation have no pixels, for the user; a text is empty while there are some, and where
/// there is no dataset.
struct EmptyBecause
{
    QString a;
    QString b;
    /// Also where an operand without pixels stands in the way of the combination.
    QString result;
};

} // namespace imagemath
