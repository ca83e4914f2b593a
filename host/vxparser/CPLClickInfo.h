// SPDX-License-Identifier: MIT
#pragma once

/// The text record of a dataset or a sequence: sections in order, each with its pairs of key and value in
/// order.
///
///     CPLClickInfo record;
///     if (record.loadClickInfo(folder + "ClickInfo.txt", false) != ESTATUS_SUCCESS)
///         return record.lastError();                      // "/data/ClickInfo.txt: line 7: ..."
///     if (CPLSection *image = record["luminescent image"])
///         image->setValue("Exposure Time", 60);           // its unit is that of the key: seconds
///     const ESTATUS status = record.saveClickInfo(folder + "ClickInfo.txt"); // the whole file or none
///
/// What holds for the whole room:
/// - Every QString comes back as it was, a null one as null; the file is UTF-8, and the same record
///   always gives the same bytes. The syntax is described in docs/clickinfo-format.md, what the keys mean
///   in host/vxapi/model/clickinfo/ClickInfoKeys.h: this room knows no key.
/// - Keys and sections are compared exactly, case included, and may occur more than once. The first
///   section of a key is found, but the last pair of one: what is put at the end of a section is what
///   counts.
/// - Values are text. Numbers are written and read in the C locale by those who know the key.
/// - Failures are an ESTATUS and a log line, never an exception.

#include "host/vxparser/CPLSection.h"

#include <memory>
#include <vector>

/// A record, and its file. It owns its sections; a pointer to one is good until the record is read anew or
/// destroyed.
class VXPARSER_EXPORT CPLClickInfo
{
public:
    CPLClickInfo();
    ~CPLClickInfo();
    CPLClickInfo(const CPLClickInfo &) = delete;
    CPLClickInfo &operator=(const CPLClickInfo &) = delete;

    /// Replaces the record by the file's content. A failure leaves the record empty and gives a log line with
    /// file and reason, the line number included: ESTATUS_BAD_SYNTAX (a damaged file),
    /// ESTATUS_FILE_NOT_READABLE (no permission, or no plain file), ESTATUS_FAILURE (too large).
    /// ESTATUS_FILE_NOT_FOUND gives no log line, because whether that matters is for the caller to say. The
    /// flag is not used and kept for the interface.
    ESTATUS loadClickInfo(const QString &path, bool unused);
    /// Writes the file whole or not at all (beside its target, then renamed over it). A failure leaves the
    /// old file and gives a log line with file and reason: ESTATUS_FILE_NOT_WRITABLE, ESTATUS_FAILURE (too
    /// large).
    ESTATUS saveClickInfo(const QString &path) const;
    /// "file: reason" of the last load or save of this record that failed.
    QString lastError() const;

    /// A file (or a record's text) of more bytes than this is refused: no record of a dataset comes near it.
    static constexpr qint64 MAX_FILE_BYTES = 64 * 1024 * 1024;

    /// The same from and to text, without a log line. A text that breaks the syntax gives ESTATUS_BAD_SYNTAX
    /// and an empty record; `error` (may be null) then receives "line N: reason", counted from 1.
    ESTATUS fromText(const QByteArray &utf8, QString *error);
    QByteArray toText() const;

    void getSectionCount(int *count) const;
    /// The section at a position, 0 <= index < count; null for any other. The record keeps it.
    CPLSection *sectionAt(int index) const;
    /// The first section with that key, or null. The record keeps it.
    CPLSection *operator[](const QString &sectionKey) const;
    /// Appends a section allocated by the caller with new and takes it over; null is ignored.
    void addSection(CPLSection *section);

private:
    ESTATUS fail(ESTATUS status, const QString &path, const QString &reason) const;

    std::vector<std::unique_ptr<CPLSection>> m_sections;
    mutable QString m_lastError;
};
