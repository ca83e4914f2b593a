// SPDX-License-Identifier: MIT
#include "result/ResultClickInfo.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vximage/CILImage.h"
#include "host/vxparser/CPLSection.h"
#include "host/vxutils/CVXPreference.h"
#include "result/NoteText.h"

using namespace clickinfo;

namespace {

using resultclickinfo::ResultFacts;

// Keys of a result, beside those of every dataset.
const QString SATURATED = QStringLiteral("Saturated");
const QString CCD_CORRECTED = QStringLiteral("CCD Corrected");
const QString IS_ROTATED = QStringLiteral("isRotated");
const QString RAW_MIN = QStringLiteral("Raw Color Table Min");
const QString RAW_MAX = QStringLiteral("Raw Color Table Max");

QString flag(bool on)
{
    return on ? QStringLiteral("1") : QStringLiteral("0");
}

bool isKey(const QString &key, QLatin1String wanted)
{
    return key.toLower() == QString(wanted).toLower();
}

/// Calls visit(key, value) for every pair in order.
template <typename Visit>
void forEachPair(const CPLSection *section, Visit visit)
{
    if (!section)
        return;
    QStringList keys;
    QStringList values;
    section->getKeyList(&keys);
    section->getValueList(&values);
    for (int i = 0; i < keys.size(); ++i)
        visit(keys.at(i), values.at(i));
}

struct Walk
{
    QString acquisitionDate = QStringLiteral(""); ///< the last one met; empty, not absent
    bool hasNote = false;
};

/// Copies the pairs in order. Before a note comes what atNote(acquisition date met so far, note) adds; it
/// gives the changed note.
template <typename AtNote>
Walk copyWithNote(CPLSection &target, const CPLSection *source, AtNote atNote)
{
    Walk walk;
    forEachPair(source, [&](const QString &key, const QString &value) {
        if (isKey(key, KEY_ACQUISITION_DATE))
            walk.acquisitionDate = value;
        if (!isKey(key, KEY_NOTE)) {
            target.addKeyValue(key, value);
            return;
        }
        walk.hasNote = true;
        const QString note = atNote(walk.acquisitionDate, value);
        target.addKeyValue(key, note);
    });
    return walk;
}

void addKeyBlock(CPLSection &target, const QString &acquisitionDate, const ResultFacts &facts)
{
    target.addKeyValue(KEY_ACQUISITION_DATE, acquisitionDate);
    target.addKeyValue(SATURATED, flag(false));
    target.addKeyValue(CCD_CORRECTED, flag(true));
    target.addKeyValue(KEY_BACKGROUND_CORRECTED, flag(facts.isBackgroundSubtracted));
    target.addKeyValue(KEY_FLATFIELD_CORRECTED, flag(facts.isFlatFieldCorrected));
    target.addKeyValue(KEY_FL_BACKGROUND_CORRECTED, flag(facts.isFluorescenceBackgroundSubtracted));
    target.addKeyValue(KEY_MATH_OPERATION, facts.operation);
    target.addKeyValue(KEY_MATH_K, facts.k);
    target.addKeyValue(KEY_MATH_A, facts.clickA);
    target.addKeyValue(KEY_MATH_B, facts.clickB);
    if (!facts.clickPhotograph.isNull())
        target.addKeyValue(KEY_MATH_PHOTOGRAPH, facts.clickPhotograph);
}

// A result belongs to no sequence and to no place in one.
void leaveSequence(QString &note)
{
    notetext::remove(note, KEY_SEQUENCE_ID);
    notetext::remove(note, KEY_CLICK_INDEX);
    notetext::append(note, KEY_FOLDER_ON_DISK, QString());
}

QString luminescentNote(QString note, const ResultFacts &facts)
{
    leaveSequence(note);
    notetext::append(note, SATURATED, flag(false));
    notetext::append(note, CCD_CORRECTED, flag(true));
    notetext::append(note, KEY_BACKGROUND_CORRECTED, flag(facts.isBackgroundSubtracted));
    notetext::append(note, KEY_FLATFIELD_CORRECTED, flag(facts.isFlatFieldCorrected));
    notetext::append(note, KEY_MATH_OPERATION, facts.operation);
    notetext::append(note, KEY_MATH_K, facts.k);
    notetext::append(note, KEY_MATH_A, facts.clickA);
    notetext::append(note, KEY_MATH_B, facts.clickB);
    notetext::replace(note, KEY_BINNING, QString::asprintf("%d", facts.binning));
    if (!facts.clickPhotograph.isNull())
        notetext::append(note, KEY_MATH_PHOTOGRAPH, facts.clickPhotograph);
    return note;
}

QString photographNote(QString note)
{
    leaveSequence(note);
    notetext::append(note, CCD_CORRECTED, flag(true));
    notetext::append(note, IS_ROTATED, flag(false));
    return note;
}

void addVersion(CPLSection &target, const ResultFacts &facts)
{
    target.addKeyValue(KEY_VERSION, facts.versionText);
    target.addKeyValue(KEY_FOLDER_ON_DISK, QStringLiteral(""));
}

} // namespace

resultclickinfo::DisplayFacts resultclickinfo::displayFactsOf(const CILImage &result, tag_edisplayunit unit,
                                                              VXS_COLORTABLE_TYPES table,
                                                              const CVXSDataset *a,
                                                              const CVXSDataset *photographed)
{
    DisplayFacts facts;
    facts.unitName = unitKey(unit);
    facts.colorTable = QLatin1String(CILPalette::tableName(table));
    facts.hasOperandA = a;
    if (a) {
        facts.reversed = a->getToolInfo().reversed;
        facts.logarithmic = a->getToolInfo().logarithmic;
    }
    facts.colorMin = result.getPalette().getImageMin();
    facts.colorMax = result.getPalette().getImageMax();
    facts.rawMin = double(result.getMin());
    facts.rawMax = double(result.getMax());
    facts.hasPhotograph = photographed;
    if (photographed) {
        facts.brightness = photographed->getToolInfo().brightness;
        facts.gamma = double(photographed->getToolInfo().gamma);
    }
    return facts;
}

QStringList resultclickinfo::sectionKeys()
{
    return {SECTION_CLICK_NUMBER, SECTION_USER_INPUT,    SECTION_ANALYSIS_USER_INPUT,
            SECTION_LUMINESCENT,  SECTION_USER_LABELS,   SECTION_PHOTOGRAPH,
            SECTION_CAMERA,       SECTION_GRAPH_CONTROLS};
}

QStringList resultclickinfo::analyzedSectionKeys()
{
    return {SECTION_CLICK_NUMBER,   SECTION_USER_INPUT,  SECTION_ANALYSIS_USER_INPUT, SECTION_PHOTOGRAPH,
            SECTION_USER_LABELS,    SECTION_LUMINESCENT, SECTION_LUMINESCENT_A,       SECTION_LUMINESCENT_B,
            SECTION_GRAPH_CONTROLS, SECTION_ROIS};
}

QString resultclickinfo::versionText()
{
    return CVXPreference::getAppVersion() + QLatin1Char('(') + QStringLiteral(__DATE__) + QLatin1Char(')');
}

void resultclickinfo::copyPairs(CPLSection &target, const CPLSection *source)
{
    forEachPair(source, [&](const QString &key, const QString &value) { target.addKeyValue(key, value); });
}

void resultclickinfo::copyName(CPLSection &target, const CPLSection *source)
{
    if (!source)
        return;
    QString name;
    source->getSectionName(&name, false);
    if (!name.isNull())
        target.setSectionName(name);
}

void resultclickinfo::fillClickNumber(CPLSection &target, const CPLSection *source, const ResultFacts &facts)
{
    forEachPair(source, [&](const QString &key, const QString &value) {
        if (!isKey(key, KEY_SEQUENCE_ID) && !isKey(key, KEY_CLICK_INDEX))
            target.addKeyValue(key, value);
    });
    addVersion(target, facts);
}

void resultclickinfo::fillLuminescent(CPLSection &target, const CPLSection *source, const ResultFacts &facts)
{
    const Walk walk = copyWithNote(target, source, [&](const QString &date, const QString &note) {
        addKeyBlock(target, date, facts);
        return luminescentNote(note, facts);
    });
    if (!walk.hasNote)
        addKeyBlock(target, walk.acquisitionDate, facts);
    target.setValue(KEY_BINNING, facts.binning);
}

void resultclickinfo::fillPhotograph(CPLSection &target, const CPLSection *source)
{
    copyWithNote(target, source, [&](const QString &date, const QString &note) {
        target.addKeyValue(KEY_ACQUISITION_DATE, date);
        target.addKeyValue(CCD_CORRECTED, flag(true));
        target.addKeyValue(IS_ROTATED, flag(false));
        return photographNote(note);
    });
}

void resultclickinfo::fillGraphControls(CPLSection &target, const CPLSection *source,
                                        const DisplayFacts &facts)
{
    copyPairs(target, source);
    target.addKeyValue(KEY_INTENSITY_CALIBRATION, facts.unitName);
    if (facts.hasOperandA) {
        target.addKeyValue(KEY_REVERSED, flag(facts.reversed));
        target.addKeyValue(KEY_COLOR_TABLE, facts.colorTable);
        target.addKeyValue(KEY_COLOR_TABLE_LOG, flag(facts.logarithmic));
    }
    target.addKeyValue(KEY_COLOR_TABLE_MIN, QString::asprintf("%lf", facts.colorMin));
    target.addKeyValue(KEY_COLOR_TABLE_MAX, QString::asprintf("%lf", facts.colorMax));
    target.addKeyValue(RAW_MIN, QString::asprintf("%f", facts.rawMin));
    target.addKeyValue(RAW_MAX, QString::asprintf("%f", facts.rawMax));
    if (facts.hasPhotograph) {
        target.addKeyValue(KEY_BRIGHTNESS, QString::asprintf("%d", facts.brightness));
        target.addKeyValue(KEY_GAMMA, QString::asprintf("%f", facts.gamma));
    }
    // Once more at the end, where the last pair of a key is the one that is read.
    target.addKeyValue(KEY_COLOR_TABLE, facts.colorTable);
}

void resultclickinfo::fillAnalyzedClickNumber(CPLSection &target, const CPLSection *source,
                                              const ResultFacts &facts)
{
    copyPairs(target, source);
    addVersion(target, facts);
}
