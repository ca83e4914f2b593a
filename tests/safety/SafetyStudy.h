// SPDX-License-Identifier: MIT
#include "tests/support/Files.h"
#pragma once

#include <functional>
#include <QByteArray>
#include <QMap>
#include <QString>

class CVXSSequenceDataset;
struct ClickSpec;

/// A sequence of clicks with known counts, for tests of what happens to files: clicks CLICK_A and CLICK_B,
/// both with photograph, and two that are added in memory only when a run asks for them.
namespace safetystudy {

extern const QString CLICK_A;
extern const QString CLICK_B;
extern const QString MEMORY_A;
extern const QString MEMORY_B;

constexpr int WIDTH = 96;
constexpr int HEIGHT = 64;

float countsA(int x, int y);
float countsB(int x, int y);
float photograph(int x, int y);

ClickSpec specOf(const QString &click);
/// Writes the sequence under that folder. Its folder, which ends in "/"; empty when that failed.
QString write(const QString &parentFolder);
/// Adds a click as a computed or imported dataset: in memory only.
bool addInMemory(CVXSSequenceDataset *sequence, const QString &click);

} // namespace safetystudy

/// What was there is there unchanged: an empty text, else the first file that is missing or differs.
QString firstHarm(const QMap<QString, QByteArray> &before, const QMap<QString, QByteArray> &after);
/// Copies everything below a folder; false when something could not be copied.
bool copyTree(const QString &from, const QString &to);
