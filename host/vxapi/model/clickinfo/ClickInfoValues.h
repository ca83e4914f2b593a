// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/vxapi_global.h"

#include <QString>

class CPLClickInfo;
class CPLSection;

/// Typed reading and writing of ClickInfo records. Numbers are in the C locale.
///
///     const double exposure = numberOf(info, SECTION_LUMINESCENT, KEY_EXPOSURE); // [s]; NaN: not there
///     const QString kind = textOf(info, SECTION_LUMINESCENT, KEY_KIND);          // null: not there
///     ensureSection(&info, SECTION_LUMINESCENT)->setValue(KEY_FNUMBER, textOfNumber(1.4));
///
/// ClickInfoKeys.h names every section and key with its unit, ConstantRanges.h the range of every constant.
namespace clickinfo {

/// The first section with that key, appended when the record has none.
VXAPI_EXPORT CPLSection *ensureSection(CPLClickInfo *info, QLatin1String section);

/// The value of a key; a null text when section or key is missing.
VXAPI_EXPORT QString textOf(const CPLClickInfo &info, QLatin1String section, QLatin1String key);
/// True for "1" alone.
VXAPI_EXPORT bool flagOf(const CPLClickInfo &info, QLatin1String section, QLatin1String key);
/// NaN when section or key is missing or the value is no finite number.
VXAPI_EXPORT double numberOf(const CPLClickInfo &info, QLatin1String section, QLatin1String key);

/// Whether the record is that of a result of image math: a computed image, made by no camera.
VXAPI_EXPORT bool isMathResult(const CPLClickInfo &info);

/// What the pixels of a result are by its operations. A sum or difference is what its operand A is, whose
/// operation stands before its own in the record.
enum class ResultValues {
    InUnit, ///< of the unit in which it was computed
    Product,
    Ratio
};
/// InUnit also for what is no result.
VXAPI_EXPORT ResultValues resultValuesOf(const CPLClickInfo &info);

/// The name of the file that the image of that section was imported from. Null when it was not imported, and
/// for an image that was computed: the name that stands there is that of an operand's file.
VXAPI_EXPORT QString sourceFileOf(const CPLClickInfo &info, QLatin1String section);

/// The shortest text that reads back as the same number.
VXAPI_EXPORT QString textOfNumber(double value);
/// "1" or "0".
VXAPI_EXPORT QString textOfFlag(bool value);

} // namespace clickinfo
