// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace imagemath {

/// Something about a result that its number cannot tell and its reader has to know. It stands beside the
/// result, in the log (level 2) and in the record of its making; the computation goes on.
///
///     outcome.notes.append({Note::Kind::Settings, formText("A was exposed %1 s, B %2 s").arg(...)});
///
/// A sentence without full stop that names the operands A and B, for the user.
struct Note
{
    enum class Kind {
        Saturation, ///< pixels at or above the camera's ceiling
        Settings,   ///< operands of different acquisition, combined in counts
        Correction, ///< one of the two alone is corrected
        Values,     ///< a ratio or product together with something else, or k of another pair or unit
        Offset,     ///< the camera's offset adds up with the counts
        MaskField,  ///< the tissue mask is of another field of view
    };

    Kind kind = Kind::Settings;
    QString text;
};

using Notes = QVector<Note>;

inline QStringList textsOf(const Notes &notes)
{
    QStringList texts;
    for (const Note &note : notes)
        texts += note.text;
    return texts;
}

} // namespace imagemath
