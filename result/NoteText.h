// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Entries of a note text, "key=value;" one after the other. A key is searched as plain text anywhere in the
/// note, case-sensitively, so it also matches inside an earlier key or value: hand over whole key names.
namespace notetext {

/// Appends an entry, whether or not there is one of that key.
void append(QString &note, const QString &key, const QString &value);

/// Removes from the first occurrence of the key through the next ";"; nothing when either is missing.
void remove(QString &note, const QString &key);

/// Replaces what stands between the "=" and the ";" after the first occurrence of the key; nothing when the
/// entry lacks one of them.
void replace(QString &note, const QString &key, const QString &value);

} // namespace notetext
