// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <QLockFile>
#include <QString>

/// A result's folder, kept to this program while it is written: two workspaces on one program-data folder
/// choose the same name at the same moment, and each would empty the folder of the other.
///
/// It is a hidden file in the folder, gone with the object; that of a program that was killed counts for
/// nothing. Where it cannot be written (no rights, no room) nobody is kept off, and what follows tells why.
class ResultFolderLock
{
public:
    /// Waits for another program that has the folder, `patience` ms at most, and a second more for one that
    /// has not said yet who it is; false when it still has it. The folder that was taken before is free
    /// again.
    bool take(const QString &folder, int patience);
    bool isTaken() const { return m_file != nullptr; }

private:
    std::unique_ptr<QLockFile> m_file;
};
