// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxutils/ESTATUS.h"

#include <QString>

/// Where a result goes: who names it and makes room for it. The window answers with its own operations,
/// everybody else takes ProgramDataPlace.
class ResultPlace
{
public:
    virtual ~ResultPlace() = default;

    /// A free click number for a result of that operand; a null text when there is none. Asked again while
    /// the result is written, because the name is free until somebody has finished a result of it.
    virtual QString clickNumberFor(const QString &clickA) = 0;
    /// The folder of the result of that name, emptied of earlier files; `folder` receives its path, which
    /// ends in "/". On failure a status, and `reason` names file and reason unless that was told already.
    virtual ESTATUS prepareFolder(const QString &clickNumber, QString *folder, QString *reason) = 0;
    /// Where the result of that name lies, or will, without "/" at its end.
    virtual QString folderOf(const QString &clickNumber) const = 0;
};

/// The folder of all results, as CVXPreference names it: one folder a result directly under it, named by its
/// click number.
class ProgramDataPlace : public ResultPlace
{
public:
    QString clickNumberFor(const QString &clickA) override;
    ESTATUS prepareFolder(const QString &clickNumber, QString *folder, QString *reason) override;
    QString folderOf(const QString &clickNumber) const override;

    /// The first free click number for a result of that operand, or null: "M" and so on, asked of the host,
    /// which knows the datasets that are open and those that lie complete in the program-data folder.
    static QString freeClickNumber(const QString &clickA);
    /// The folder of a result, without "/" at its end.
    static QString folderNamed(const QString &clickNumber);
    /// Creates the folder and removes the files in it, in the order of their names; sub-folders stay. The
    /// first that cannot be removed ends it, with "file: reason".
    static ESTATUS empty(const QString &clickNumber, QString *reason);
};
