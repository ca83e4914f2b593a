// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/CILImage.h"
#include "math/ResultRecord.h"
#include "result/ResultClickInfo.h"
#include "result/ResultPlace.h"

class CVXSDataset;
class ResultFolderLock;

/// A result becomes a dataset on disk: a request in, a complete folder or a status with a reason out. No
/// widget, nobody to ask.
///
///     resultwriter::Request request; // operands, formula, k, the computed image and its record
///     ProgramDataPlace place;
///     const resultwriter::Written written = resultwriter::write(request, place);
///     if (written.status != ESTATUS_SUCCESS)
///         std::cerr << qPrintable(written.reason);
///
/// The folder receives ClickInfo.txt, luminescentA.TIF and luminescentB.TIF (byte copies of the operands'
/// images), luminescent.tif (the result, with the record of its making), photograph.tif when there is to be
/// one, and last AnalyzedClickInfo.txt, without which a folder counts as left over. Every file is written
/// beside its target and renamed over it.
namespace resultwriter {

/// Whose photograph a result carries.
enum class PhotographSource { None, A, B };

/// An operand as it lies on disk.
struct Operand
{
    QString clickNumber;
    QString clickInfoPath;                ///< its ClickInfo.txt; the image files lie beside it. Empty: none
    const CVXSDataset *dataset = nullptr; ///< null: nothing is known of corrections and names of its files
};

struct Request
{
    Operand a;
    Operand b;
    QString operation; ///< the formula's text
    QString k;         ///< as the user typed or saw it; the record has the number
    PhotographSource photograph = PhotographSource::None;
    resultclickinfo::DisplayFacts display;
    CILImage image; ///< 32-bit float, with the palette in which it was shown
    imagemath::ResultRecord
        record;                   ///< of the computation; the files' hashes are noted here when it is written
    bool mayAnglesDiffer = false; ///< operands of different imaging angles are refused unless this is set

    /// The operand whose photograph it is; null for none.
    const Operand *photographed() const;
};

struct Written
{
    ESTATUS status = ESTATUS_SUCCESS;
    QString reason;      ///< of a failure, names file and reason
    QString clickNumber; ///< of the result
    QString folder;      ///< ends in "/"
};

/// All of it. Another program that writes a result of the same name is waited for; on failure nothing is left
/// that was not there before.
Written write(const Request &request, ResultPlace &place);

/// The first half: the name is chosen, the folder prepared, ClickInfo.txt and the images are written. With a
/// lock, the folder is kept to this program while the lock lives. An image that cannot be written or copied
/// is told in the log (not one whose source is not there) and changes nothing else: it is missing then.
Written writeClickInfo(const Request &request, ResultPlace &place, ResultFolderLock *lock);
/// The second half: AnalyzedClickInfo.txt, made from the operands' analyzed files and the ClickInfo.txt of
/// the first half. The status is that of the last file read; that of the writing is not looked at, because
/// the host takes no folder without this file for a dataset.
ESTATUS writeAnalyzedClickInfo(const Request &request, const Written &first, const QString &analyzedPathA,
                               const QString &analyzedPathB);

} // namespace resultwriter
