// SPDX-License-Identifier: MIT
#include "result/ResultWriter.h"

#include "display/ImagingAngles.h"
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxparser/CPLClickInfo.h"
#include "math/ToolLog.h"
#include "result/ResultFolderLock.h"
#include "result/ResultImages.h"

#include <QDir>
#include <QFile>

#include <memory>

using namespace clickinfo;
using namespace resultclickinfo;

namespace resultwriter {

namespace {

constexpr int PATIENCE = 10000; // ms, for another program to write its result

ResultFacts factsOf(const Request &request)
{
    ResultFacts facts;
    facts.versionText = versionText();
    facts.operation = request.operation;
    facts.k = request.k;
    facts.clickA = request.a.clickNumber;
    facts.clickB = request.b.clickNumber;
    if (const Operand *photographed = request.photographed())
        facts.clickPhotograph = photographed->clickNumber;
    if (const CVXSDataset *a = request.a.dataset) {
        facts.isBackgroundSubtracted = a->isLuminBackgroundSubtracted();
        facts.isFlatFieldCorrected = a->isLuminFlatFieldCorrected();
        facts.isFluorescenceBackgroundSubtracted = a->isLuminFLBkgSubtracted();
    }
    facts.binning = int(request.image.binningFactor());
    return facts;
}

/// A section without pairs; that of the click number is named by it, others as the source is.
std::unique_ptr<CPLSection> newSection(const QString &key, const CPLSection *source,
                                       const QString &clickNumber)
{
    auto section = std::make_unique<CPLSection>();
    section->setSectionKey(key);
    if (key == SECTION_CLICK_NUMBER)
        section->setSectionName(clickNumber);
    else
        copyName(*section, source);
    return section;
}

/// Reads another ClickInfo into `info` and, when that succeeds, takes its section as the source.
ESTATUS sourceFrom(const QString &path, const QString &section, CPLClickInfo &info, const CPLSection *&source)
{
    const ESTATUS status = info.loadClickInfo(path, false);
    if (status == ESTATUS_SUCCESS)
        source = info[section];
    return status;
}

// The name is free until somebody has finished a result of it, which may be another program.
bool reserveFolder(const Request &request, ResultPlace &place, ResultFolderLock &lock, Written *written)
{
    for (;;) {
        const QString folder = place.folderOf(written->clickNumber);
        QDir().mkdir(folder);
        if (!lock.take(folder, PATIENCE)) {
            written->reason = folder + QStringLiteral(": another workspace is writing a result there");
            imagemath::logLine(written->reason);
            return false;
        }
        const QString free = place.clickNumberFor(request.a.clickNumber);
        if (free == written->clickNumber)
            return true;
        if (free.isNull())
            return false;
        written->clickNumber = free;
    }
}

bool chooseName(const Request &request, ResultPlace &place, ResultFolderLock *lock, Written *written)
{
    written->clickNumber = place.clickNumberFor(request.a.clickNumber);
    if (written->clickNumber.isNull())
        return false;
    return !lock || lock->isTaken() || reserveFolder(request, place, *lock, written);
}

void fillSection(CPLSection &section, const QString &key, const CPLSection *source, const Request &request,
                 const ResultFacts &facts)
{
    if (key == SECTION_CLICK_NUMBER) {
        fillClickNumber(section, source, facts);
    } else if (key == SECTION_LUMINESCENT) {
        fillLuminescent(section, source, facts);
    } else if (key == SECTION_PHOTOGRAPH) {
        CPLClickInfo infoB; // outlives the source that points into it
        if (request.photograph == PhotographSource::B)
            sourceFrom(request.b.clickInfoPath, key, infoB, source);
        copyName(section, source);
        fillPhotograph(section, source);
    } else if (key == SECTION_GRAPH_CONTROLS) {
        fillGraphControls(section, source, request.display);
    } else {
        copyPairs(section, source);
    }
}

Written failed(Written written, ESTATUS status, const QString &reason = QString())
{
    written.status = status;
    if (written.reason.isEmpty())
        written.reason = reason;
    return written;
}

ESTATUS fillOperandSection(CPLSection &section, bool isA, const QString &analyzedPath,
                           const CPLSection *source, const Request &request)
{
    section.setSectionName(isA ? FILE_LUMINESCENT_A : FILE_LUMINESCENT_B);
    CPLClickInfo operand;
    const ESTATUS status =
        operand.loadClickInfo(resultimages::folderOf(analyzedPath) + FILE_CLICK_INFO, false);
    const CPLSection *luminescent = operand[SECTION_LUMINESCENT];
    copyPairs(section, luminescent ? luminescent : source);
    // Both operands' sections name B's unit.
    const CVXSDataset *b = request.b.dataset;
    section.addKeyValue(KEY_INTENSITY_CALIBRATION, b ? unitKey(b->getUnit()) : QString());
    return status;
}

/// Of the sections that are taken from the result's own ClickInfo.txt.
ESTATUS fillOwnSection(CPLSection &section, const QString &key, const QString &ownClickInfo,
                       const CPLSection *source)
{
    CPLClickInfo own;
    if (key == SECTION_GRAPH_CONTROLS) {
        const ESTATUS status = own.loadClickInfo(ownClickInfo, false);
        copyPairs(section, own[key] ? own[key] : source);
        return status;
    }
    const ESTATUS status = sourceFrom(ownClickInfo, key, own, source);
    copyName(section, source);
    copyPairs(section, source);
    return status;
}

/// Why the operands' imaging angles stand in the way; empty when they do not.
QString obstacleOfAngles(const Request &request)
{
    CPLClickInfo infoA;
    CPLClickInfo infoB;
    infoA.loadClickInfo(request.a.clickInfoPath, false);
    infoB.loadClickInfo(request.b.clickInfoPath, false);
    const auto angles = imagingangles::compare(infoA[SECTION_LUMINESCENT], infoB[SECTION_LUMINESCENT]);
    if (angles == imagingangles::Comparison::Different && !request.mayAnglesDiffer)
        return QStringLiteral("%1 and %2 were taken from different imaging angles")
            .arg(request.a.clickNumber, request.b.clickNumber);
    if (angles != imagingangles::Comparison::Unknown)
        return QString();
    const bool isOfA = !infoA[SECTION_LUMINESCENT];
    const QString error = (isOfA ? infoA : infoB).lastError();
    return !error.isEmpty()
               ? error
               : QStringLiteral("%1: it has no section \"%2\"")
                     .arg(isOfA ? request.a.clickInfoPath : request.b.clickInfoPath, SECTION_LUMINESCENT);
}

QString analyzedBeside(const QString &clickInfoPath)
{
    return resultimages::folderOf(clickInfoPath) + FILE_ANALYZED_CLICK_INFO;
}

/// The half before AnalyzedClickInfo.txt has to be whole, or the folder must not get that file. Empty when it
/// is, else why not, with the file that is to blame.
QString obstacleOfImages(const Request &request, const QString &folder)
{
    struct Image
    {
        QLatin1String name;
        const Operand *operand; ///< of whose file it is a copy; null: the result itself
        tag_eimagetype type;
    };
    const Image images[] = {{FILE_LUMINESCENT_A, &request.a, EIMAGE_LUMINESCENT},
                            {FILE_LUMINESCENT_B, &request.b, EIMAGE_LUMINESCENT},
                            {FILE_PHOTOGRAPH, request.photographed(), EIMAGE_PHOTOGRAPH},
                            {FILE_LUMINESCENT, nullptr, EIMAGE_LUMINESCENT}};
    for (const Image &image : images) {
        const bool isWanted = image.type == EIMAGE_LUMINESCENT || image.operand;
        if (!isWanted || QFile::exists(folder + image.name))
            continue;
        const QString source = image.operand ? resultimages::fileOf(*image.operand, image.type) : QString();
        if (!source.isEmpty() && !QFile::exists(source))
            return source + QStringLiteral(": there is no such file");
        return folder + image.name + QStringLiteral(": it could not be written");
    }
    return QString();
}

void removeWhatWasWritten(const Written &written)
{
    if (written.folder.isEmpty())
        return;
    for (const QString &name :
         {QString(FILE_CLICK_INFO), QString(FILE_ANALYZED_CLICK_INFO), QString(FILE_LUMINESCENT),
          QString(FILE_LUMINESCENT_A), QString(FILE_LUMINESCENT_B), QString(FILE_PHOTOGRAPH)})
        QFile::remove(written.folder + name);
}

Written writeAll(const Request &request, ResultPlace &place, ResultFolderLock &lock)
{
    Written written = writeClickInfo(request, place, &lock);
    if (written.status != ESTATUS_SUCCESS)
        return written;
    const QString obstacle = obstacleOfImages(request, written.folder);
    if (!obstacle.isEmpty())
        return failed(written, ESTATUS_NOT_COMPLETE, obstacle);
    const ESTATUS analyzed = writeAnalyzedClickInfo(request, written, analyzedBeside(request.a.clickInfoPath),
                                                    analyzedBeside(request.b.clickInfoPath));
    if (analyzed != ESTATUS_SUCCESS)
        return failed(written, analyzed,
                      written.folder + FILE_CLICK_INFO + QStringLiteral(": ") + statusText(analyzed));
    ESTATUS status = ESTATUS_SUCCESS;
    QString reason;
    const std::unique_ptr<CVXSDataset> result(CVXSDataset::open(written.folder, &status, &reason));
    if (result)
        status = result->checkComplete(&reason);
    return status == ESTATUS_SUCCESS ? written : failed(written, status, reason);
}

} // namespace

const Operand *Request::photographed() const
{
    switch (photograph) {
    case PhotographSource::A:
        return &a;
    case PhotographSource::B:
        return &b;
    case PhotographSource::None:
        break;
    }
    return nullptr;
}

Written writeClickInfo(const Request &request, ResultPlace &place, ResultFolderLock *lock)
{
    Written written;
    CPLClickInfo infoA;
    written.status = infoA.loadClickInfo(request.a.clickInfoPath, false);
    if (written.status != ESTATUS_SUCCESS)
        return failed(written, written.status, infoA.lastError());
    const ResultFacts facts = factsOf(request);
    CPLClickInfo result;
    for (const QString &key : sectionKeys()) {
        if (key == SECTION_PHOTOGRAPH && !request.photographed())
            continue;
        if (!chooseName(request, place, lock, &written))
            return failed(written, ESTATUS_RESULT_FOLDER,
                          QStringLiteral("every click number for a result of %1 is taken").arg(facts.clickA));
        auto section = newSection(key, infoA[key], written.clickNumber);
        fillSection(*section, key, infoA[key], request, facts);
        result.addSection(section.release());
    }
    if (place.prepareFolder(written.clickNumber, &written.folder, &written.reason) != ESTATUS_SUCCESS)
        return failed(written, ESTATUS_RESULT_FOLDER);
    written.status = result.saveClickInfo(written.folder + FILE_CLICK_INFO);
    if (written.status != ESTATUS_SUCCESS)
        return failed(written, written.status, result.lastError());
    resultimages::write(request, written.folder);
    return written;
}

ESTATUS writeAnalyzedClickInfo(const Request &request, const Written &first, const QString &analyzedPathA,
                               const QString &analyzedPathB)
{
    CPLClickInfo analyzedA;
    analyzedA.loadClickInfo(analyzedPathA, false);
    const ResultFacts facts = factsOf(request);
    ESTATUS lastRead = ESTATUS_SUCCESS;
    CPLClickInfo result;
    for (const QString &key : analyzedSectionKeys()) {
        if (key == SECTION_PHOTOGRAPH && !request.photographed())
            continue;
        const CPLSection *source = analyzedA[key];
        auto section = newSection(key, source, first.clickNumber);
        const bool isA = key == SECTION_LUMINESCENT_A;
        if (key == SECTION_CLICK_NUMBER)
            fillAnalyzedClickNumber(*section, source, facts);
        else if (key == SECTION_PHOTOGRAPH || key == SECTION_LUMINESCENT || key == SECTION_GRAPH_CONTROLS)
            lastRead = fillOwnSection(*section, key, first.folder + FILE_CLICK_INFO, source);
        else if (isA || key == SECTION_LUMINESCENT_B)
            lastRead =
                fillOperandSection(*section, isA, isA ? analyzedPathA : analyzedPathB, source, request);
        else if (key != SECTION_ROIS)
            copyPairs(*section, source);
        result.addSection(section.release());
    }
    result.saveClickInfo(first.folder + FILE_ANALYZED_CLICK_INFO);
    return lastRead;
}

Written write(const Request &request, ResultPlace &place)
{
    const QString obstacle = obstacleOfAngles(request);
    if (!obstacle.isEmpty())
        return failed(Written(), ESTATUS_IMAGING_ANGLES, obstacle);
    Written written;
    {
        ResultFolderLock lock;
        written = writeAll(request, place, lock);
        if (written.status != ESTATUS_SUCCESS)
            removeWhatWasWritten(written);
    }
    // Empty by now, or it holds what is not ours.
    if (written.status != ESTATUS_SUCCESS && !written.clickNumber.isEmpty())
        QDir().rmdir(place.folderOf(written.clickNumber));
    return written;
}

} // namespace resultwriter
