// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

class CPLSection;

/// The sections of a result's ClickInfo.txt and AnalyzedClickInfo.txt, made from those of its operands.
/// Nothing here reads a widget. Source sections may be null: a section without pairs. Keys are compared in
/// any case; every pair that is added keeps its place, also when its key is there already.
namespace resultclickinfo {

/// What the sections say about the operation.
struct SResultFacts
{
    QString versionText; ///< of the workspace, with the tool's build date
    QString operation;   ///< the formula's text
    QString k;           ///< the text of the k field
    QString clickA;
    QString clickB;
    QString clickPhotograph;                         ///< null: the result carries no photograph
    bool isBackgroundSubtracted = false;             ///< of A
    bool isFlatFieldCorrected = false;               ///< of A
    bool isFluorescenceBackgroundSubtracted = false; ///< of A
    int binning = 1;                                 ///< of the result image, truncated
};

/// How the result is shown.
struct SDisplayFacts
{
    QString unitName;
    QString colorTable;
    bool hasOperandA = false; ///< the next two are A's
    bool reversed = false;
    bool logarithmic = false;
    double colorMin = 0.0; ///< of the result's palette
    double colorMax = 0.0;
    double rawMin = 0.0; ///< smallest and largest pixel
    double rawMax = 0.0;
    bool hasPhotograph = false; ///< the next two are those of the photograph's dataset
    int brightness = 0;
    double gamma = 1.0;
};

QStringList sectionKeys();
QStringList analyzedSectionKeys();

/// "1.0.0(Aug 12 2025)": version and build date of the tool.
QString versionText(const QString &applicationVersion);

void copyPairs(CPLSection &target, const CPLSection *source);
/// Takes over the source's name when it has one.
void copyName(CPLSection &target, const CPLSection *source);

void fillClickNumber(CPLSection &target, const CPLSection *source, const SResultFacts &facts);
void fillLuminescent(CPLSection &target, const CPLSection *source, const SResultFacts &facts);
void fillPhotograph(CPLSection &target, const CPLSection *source);
void fillGraphControls(CPLSection &target, const CPLSection *source, const SDisplayFacts &facts);

void fillAnalyzedClickNumber(CPLSection &target, const CPLSection *source, const SResultFacts &facts);

/// Copies a file byte for byte, whole or not at all. A source that is not there is nobody's mistake; any
/// other failure is logged with file and reason.
void copyImageFile(const QString &from, const QString &to);

} // namespace resultclickinfo
