// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <QString>

/// Click numbers taken apart and made: user initials, for a result "_" and a letter suffix, then a
/// date-and-time stamp ("ZB20031215152405", "ZB_M20031215152405"); a sequence's name ends in "_SEQ".
/// Case-sensitive.
namespace clicknumber {

/// The name up to and including its first "_SEQ", else its last digit; empty without either.
QString stem(const QString &name);

/// The name up to its first digit or "_".
QString initials(const QString &name);

/// What follows the stem, as a sum over its letters: "A" is 1, "Z" 26, "ZA" and "AZ" 27. Upper and lower case
/// count the same; other characters count with their Latin-1 codes.
int suffixValue(const QString &name);

/// The letters of a value: as many "Z" as 26 goes into it, three at most, then the rest as a letter. Values
/// from 105 on repeat earlier texts; 0 and less give none.
QString suffixOfValue(int value);

/// The first free click number for a result of that operand: suffix "M", or for the result of a result the
/// suffix after its own, counted up while isTaken() says so. A null text when every suffix from there on is
/// taken.
QString forResult(const QString &clickNumber, const std::function<bool(const QString &)> &isTaken);

} // namespace clicknumber
