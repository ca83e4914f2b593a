// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/CVXSImageList.h"
#include "host/vximage/CILImage.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <QDateTime>
#include <QString>
#include <QStringList>

class CPLClickInfo;

/// What is fixed for an image by its type.
struct ImageKind
{
    tag_eimagetype type;
    QLatin1String section;  ///< of ClickInfo
    QLatin1String fileName; ///< unless the section's name says otherwise
    const char *name;       ///< for messages
};

/// The stored images of a dataset: which there are, in which files, and their pixels once they were asked
/// for.
class DatasetImages
{
public:
    static constexpr std::size_t COUNT = 6;
    static const std::array<ImageKind, COUNT> &kinds();
    static const ImageKind &kind(tag_eimagetype type);
    static bool isImageType(int type) { return type >= 0 && type < int(COUNT); }

    /// Finds out which images are there: those whose section is in the record and whose file is in the
    /// folder. A section's name that is not a safe file name is told in `refused` ("file name ...: reason")
    /// and its image is not there.
    void scan(const CPLClickInfo &info, const QString &folder, QStringList *refused);

    const CVXSImageList &list() const { return m_list; }
    bool isPresent(tag_eimagetype type) const { return m_list.isPresent(type); }

    /// The image, read from `folder` on first use; null when there is none or it cannot be read. A file that
    /// could not be read is not read again; error() tells why.
    CILImage *image(tag_eimagetype type, const QString &folder);
    /// "file: reason" when the last reading of that image failed; empty otherwise.
    QString error(tag_eimagetype type) const;
    /// Whether image() has read, or tried to read, that image, or was given it.
    bool isLoaded(tag_eimagetype type) const;
    /// The binning that the description of a result's luminescent image tells, see RecordedBinning.h; NaN when it
    /// tells none. No pixel is read for it.
    double recordedBinning(const QString &folder);
    /// Replaces the image; its section gets a name when it has none.
    void set(tag_eimagetype type, const CILImage &image, CPLClickInfo *info);

    QString fileName(tag_eimagetype type) const;
    /// False when that image was read from a file that is no longer what lies in `folder` (by size and time).
    bool isFileAsRead(tag_eimagetype type, const QString &folder) const;
    /// Writes the images into `target`: byte for byte as they are in `folder` when they were not changed.
    /// `error` receives "file: reason".
    ESTATUS save(const QString &folder, const QString &target, QString *error) const;
    /// Whether pixels are there that the file in `folder` does not hold: changed, never written, or the file is
    /// gone.
    bool holdsUnsaved(const QString &folder) const;
    /// To be called when everything of the dataset lies where its folder is from now on.
    void markSaved(const QString &folder);

private:
    /// What tells a file from another one of its name without reading it.
    struct Stamp
    {
        qint64 size = -1; ///< -1: not from a file
        QDateTime modified;
        bool operator==(const Stamp &other) const { return size == other.size && modified == other.modified; }
    };
    static Stamp stampOf(const QString &path);
    struct Slot
    {
        QString fileName;
        std::unique_ptr<CILImage> image;
        std::uint64_t storedContent = 0; ///< content ID of what the file holds; 0 when that is not known
        Stamp stamp;
        QString error;
    };
    /// Who holds the pointer to a stored image may have written into it.
    static bool isChanged(const Slot &slot);
    Slot &slot(tag_eimagetype type) { return m_slots[std::size_t(type)]; }
    const Slot &slot(tag_eimagetype type) const { return m_slots[std::size_t(type)]; }
    ESTATUS saveOne(const Slot &slot, const QString &folder, const QString &target, QString *error) const;

    CVXSImageList m_list;
    std::array<Slot, COUNT> m_slots;
    std::optional<double> m_recordedBinning;
};
