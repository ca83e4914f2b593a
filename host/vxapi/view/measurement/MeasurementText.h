// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/CRoiMeasurementManager.h"

#include <QStringList>
#include <QVector>

class CVXSDataset;

/// The numbers of measurement records as the user and programs read them. Always in the C locale.
namespace measurementtext {

/// A dataset's records: in the order of its ROIs, a grid's cells behind it row by row. `unit` becomes the one
/// that they were measured in (without records, the dataset's).
VXAPI_EXPORT QVector<CRoiMeasInfo> recordsOf(const CVXSDataset &dataset, tag_edisplayunit *unit);

/// The columns of a table of records in that unit. In counts there is no calibrated total beside the total
/// counts: it is the same number.
VXAPI_EXPORT QStringList headers(tag_edisplayunit unit);
/// The values of a record under those headers. Shown: numbers with 6 significant digits, an en dash for what
/// is no number. Exact: the shortest text that reads back as the same number, "NaN" for what is none. A value
/// that depends on the unit is none for a record in another one.
VXAPI_EXPORT QStringList shownValues(const CRoiMeasInfo &record, tag_edisplayunit unit);
VXAPI_EXPORT QStringList exactValues(const CRoiMeasInfo &record, tag_edisplayunit unit);

/// A table with a header line, the dataset's click number in front of every line, exact values; lines end in
/// "\n". Tabs and line breaks in a name become spaces.
VXAPI_EXPORT QString asTabbed(const QVector<CRoiMeasInfo> &records, tag_edisplayunit unit);
/// The same with commas, values quoted where they must be (RFC 4180). The header line is ASCII: "cm^2", "uW".
VXAPI_EXPORT QString asCsv(const QVector<CRoiMeasInfo> &records, tag_edisplayunit unit);

} // namespace measurementtext
