// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxparser/CPLSection.h"

#include <memory>
#include <vector>

/// The record that describes a dataset: sections in order, in a UTF-8 text file made for people to read and
/// to compare. Every QString comes back as it was written; see docs/clickinfo-format.md for the syntax.
class VXPARSER_EXPORT CPLClickInfo
{
public:
    CPLClickInfo();
    ~CPLClickInfo();
    CPLClickInfo(const CPLClickInfo &) = delete;
    CPLClickInfo &operator=(const CPLClickInfo &) = delete;

    /// Replaces the record by the file's content. A damaged file gives a status, a log line with file and
    /// line number, and an empty record; a file that is not there only the status. The flag is not used and
    /// kept for the interface.
    ESTATUS loadClickInfo(const QString &path, bool unused);
    /// Writes the file whole or not at all (beside its target, then renamed over it). A failure gives a
    /// status and a log line with file and reason.
    ESTATUS saveClickInfo(const QString &path) const;
    /// "file: reason" of the last load or save of this record that failed.
    QString lastError() const;

    /// A file (or a record's text) of more bytes than this is refused: no record of a dataset comes near it.
    static constexpr qint64 MAX_FILE_BYTES = 64 * 1024 * 1024;

    /// The same from and to text. `error` (may be null) receives "line N: reason".
    ESTATUS fromText(const QByteArray &utf8, QString *error);
    QByteArray toText() const;

    void getSectionCount(int *count) const;
    /// The section at a position, 0 <= index < count.
    CPLSection *sectionAt(int index) const;
    /// The first section with that key (exact match), or null.
    CPLSection *operator[](const QString &sectionKey) const;
    /// Appends a section allocated by the caller and takes ownership of it.
    void addSection(CPLSection *section);

private:
    ESTATUS fail(ESTATUS status, const QString &path, const QString &reason) const;

    std::vector<std::unique_ptr<CPLSection>> m_sections;
    mutable QString m_lastError;
};
