// SPDX-License-Identifier: MIT
#include "host/vxapi/model/DatasetImages.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/clickinfo/RecordedBinning.h"
#include "host/vxapi/model/DatasetFiles.h"
#include "host/vxparser/CPLClickInfo.h"
#include "host/vxutils/CVXUtilityFns.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

using namespace clickinfo;

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(Dataset)
};

/// The file name that a section gives its image; the type's own when it gives none.
QString nameOf(const CPLSection &section, const ImageKind &kind)
{
    QString name;
    section.getSectionName(&name, false);
    return name.isEmpty() ? QString(kind.fileName) : name;
}

} // namespace

const std::array<ImageKind, DatasetImages::COUNT> &DatasetImages::kinds()
{
    // In the order of tag_eimagetype.
    static const std::array<ImageKind, COUNT> all = {{
        {EIMAGE_PHOTOGRAPH, SECTION_PHOTOGRAPH, FILE_PHOTOGRAPH, "photograph"},
        {EIMAGE_LUMINESCENT, SECTION_LUMINESCENT, FILE_LUMINESCENT, "luminescent image"},
        {EIMAGE_XRAY, SECTION_XRAY, FILE_XRAY, "X-ray image"},
        {EIMAGE_FLATFIELD, SECTION_FLATFIELD, FILE_FLATFIELD, "flat-field image"},
        {EIMAGE_BACKGROUND, SECTION_BACKGROUND, FILE_BACKGROUND, "background image"},
        {EIMAGE_EXCITATION, SECTION_EXCITATION, FILE_EXCITATION, "excitation reference"},
    }};
    return all;
}

const ImageKind &DatasetImages::kind(tag_eimagetype type)
{
    return kinds()[std::size_t(type)];
}

void DatasetImages::scan(const CPLClickInfo &info, const QString &folder, QStringList *refused)
{
    // The tool writes a result's images under these names, whatever the operand's were called.
    const bool isResult = isMathResult(info);
    m_recordedBinning.reset();
    for (const ImageKind &kind : kinds()) {
        Slot &found = slot(kind.type);
        found = Slot();
        found.fileName = kind.fileName;
        m_list.setPresent(kind.type, false);
        const CPLSection *section = info[kind.section];
        if (!section)
            continue;
        const QString name = isResult ? QString(kind.fileName) : nameOf(*section, kind);
        if (!CVXUtilityFns::isSafeFileName(name)) {
            *refused += Text::tr("\"%1\" is refused as the file of the %2: it is not a plain file name")
                            .arg(name, Text::tr(kind.name));
            continue;
        }
        found.fileName = name;
        // A folder or a pipe of that name is no image file; a pipe would even keep the reader waiting.
        const bool isFile = QFileInfo(folder + name).isFile();
        m_list.setPresent(kind.type, isFile);
        if (!isFile)
            *refused += Text::tr("the file \"%1\" of the %2 is not there").arg(name, Text::tr(kind.name));
    }
}

CILImage *DatasetImages::image(tag_eimagetype type, const QString &folder)
{
    Slot &wanted = slot(type);
    if (!isPresent(type) || wanted.image || !wanted.error.isEmpty())
        return wanted.image.get();
    const QString path = folder + wanted.fileName;
    const Stamp stamp = stampOf(path); // before the reading, so that what changes meanwhile is seen
    auto read = std::make_unique<CILImage>();
    if (read->loadTIFF(QFile::encodeName(path).constData()) != EIL_SUCCESS) {
        wanted.error = QString::fromStdString(CILImage::lastError());
        return nullptr;
    }
    wanted.storedContent = read->contentId();
    wanted.stamp = stamp;
    wanted.image = std::move(read);
    return wanted.image.get();
}

QString DatasetImages::error(tag_eimagetype type) const
{
    return slot(type).error;
}

bool DatasetImages::isLoaded(tag_eimagetype type) const
{
    return slot(type).image || !slot(type).error.isEmpty();
}

double DatasetImages::recordedBinning(const QString &folder)
{
    if (m_recordedBinning)
        return *m_recordedBinning;
    const Slot &luminescent = slot(EIMAGE_LUMINESCENT);
    std::string description;
    if (luminescent.image)
        description = luminescent.image->description();
    else if (isPresent(EIMAGE_LUMINESCENT))
        CILImage::loadDescription(QFile::encodeName(folder + luminescent.fileName).constData(), &description);
    m_recordedBinning = clickinfo::recordedBinning(description);
    return *m_recordedBinning;
}

void DatasetImages::set(tag_eimagetype type, const CILImage &image, CPLClickInfo *info)
{
    if (type == EIMAGE_LUMINESCENT)
        m_recordedBinning.reset();
    CPLSection *section = ensureSection(info, kind(type).section);
    const QString name = nameOf(*section, kind(type));
    Slot &changed = slot(type);
    changed = Slot();
    changed.fileName = CVXUtilityFns::isSafeFileName(name) ? name : QString(kind(type).fileName);
    section->setSectionName(changed.fileName);
    changed.image = std::make_unique<CILImage>(image);
    m_list.setPresent(type, true);
}

QString DatasetImages::fileName(tag_eimagetype type) const
{
    return slot(type).fileName;
}

ESTATUS DatasetImages::save(const QString &folder, const QString &target, QString *error) const
{
    for (const ImageKind &kind : kinds()) {
        if (!isPresent(kind.type))
            continue;
        const ESTATUS status = saveOne(slot(kind.type), folder, target, error);
        if (status != ESTATUS_SUCCESS)
            return status;
    }
    return ESTATUS_SUCCESS;
}

ESTATUS DatasetImages::saveOne(const Slot &slot, const QString &folder, const QString &target,
                               QString *error) const
{
    const QString from = folder + slot.fileName;
    const QString to = target + slot.fileName;
    if (!isChanged(slot) && !folder.isEmpty() && QFileInfo(from).isFile())
        return datasetfiles::isSame(from, to) ? ESTATUS_SUCCESS : datasetfiles::copyFile(from, to, error);
    if (!slot.image) {
        *error = from + QStringLiteral(": ") + Text::tr("there is no such file any more");
        return ESTATUS_FILE_NOT_FOUND;
    }
    if (slot.image->saveTIFF(QFile::encodeName(to).constData()) != EIL_SUCCESS) {
        *error = QString::fromStdString(CILImage::lastError());
        return ESTATUS_FILE_NOT_WRITABLE;
    }
    return ESTATUS_SUCCESS;
}

bool DatasetImages::isChanged(const Slot &slot)
{
    return slot.image && (slot.storedContent == 0 || slot.image->contentId() != slot.storedContent);
}

bool DatasetImages::holdsUnsaved(const QString &folder) const
{
    for (const ImageKind &kind : kinds()) {
        const Slot &held = slot(kind.type);
        if (isPresent(kind.type) && (isChanged(held) || !QFileInfo(folder + held.fileName).isFile()))
            return true;
    }
    return false;
}

void DatasetImages::markSaved(const QString &folder)
{
    for (Slot &slot : m_slots) {
        if (!slot.image)
            continue;
        slot.storedContent = slot.image->contentId();
        slot.stamp = stampOf(folder + slot.fileName);
    }
}

DatasetImages::Stamp DatasetImages::stampOf(const QString &path)
{
    const QFileInfo file(path);
    return {file.size(), file.lastModified()};
}

bool DatasetImages::isFileAsRead(tag_eimagetype type, const QString &folder) const
{
    const Slot &read = slot(type);
    return !read.image || read.stamp.size < 0 || read.stamp == stampOf(folder + read.fileName);
}
