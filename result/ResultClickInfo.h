// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/VXTypes.h"

#include <QString>
#include <QStringList>

class CILImage;
class CPLSection;
class CVXSDataset;

/// The sections of a result's ClickInfo.txt and AnalyzedClickInfo.txt, made from those of its operands.
/// Nothing here reads a widget. Source sections may be null: a section without pairs. Keys are compared in
/// any case; every pair that is added keeps its place, also when its key is there already.
namespace resultclickinfo {

/// What the sections say about the operation.
struct ResultFacts
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
struct DisplayFacts
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

/// Of a result in that unit and colour table. A's flags and the photograph's tones come from their datasets
/// (either may be null), the limits from the image's palette and pixels.
DisplayFacts displayFactsOf(const CILImage &result, tag_edisplayunit unit, VXS_COLORTABLE_TYPES table,
                            const CVXSDataset *a, const CVXSDataset *photographed);

QStringList sectionKeys();
QStringList analyzedSectionKeys();

/// "1.0.0(Aug 12 2025)": version of the workspace and build date of the tool.
QString versionText();

void copyPairs(CPLSection &target, const CPLSection *source);
/// Takes over the source's name when it has one.
void copyName(CPLSection &target, const CPLSection *source);

void fillClickNumber(CPLSection &target, const CPLSection *source, const ResultFacts &facts);
void fillLuminescent(CPLSection &target, const CPLSection *source, const ResultFacts &facts);
void fillPhotograph(CPLSection &target, const CPLSection *source);
void fillGraphControls(CPLSection &target, const CPLSection *source, const DisplayFacts &facts);

void fillAnalyzedClickNumber(CPLSection &target, const CPLSection *source, const ResultFacts &facts);

} // namespace resultclickinfo
