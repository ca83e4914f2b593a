// SPDX-License-Identifier: MIT
#pragma once

#include "app/MainWindow.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxutils/CVXSLog.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/TestStudy.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

/// A main window with a profile of its own, shown.
class WorkspaceFixture
{
public:
    WorkspaceFixture()
    {
        qputenv("VEXA_PROFILE_DIR", QFile::encodeName(m_profile.path()));
        getLogObject()->clear();
        window = std::make_unique<MainWindow>();
        window->show();
    }
    QString profile() const { return m_profile.path(); }

    LogCatcher log;
    std::unique_ptr<MainWindow> window;

private:
    QTemporaryDir m_profile;
};

/// Writes a sequence of two clicks into a folder and returns the sequence's folder, or an empty text.
inline QString writeSequence(const QString &parentFolder, const QString &id, const QString &initials)
{
    TestStudy study(id);
    ClickSpec one;
    one.clickNumber = initials + QStringLiteral("20260102030406");
    ClickSpec two;
    two.clickNumber = initials + QStringLiteral("20260102030507");
    two.photograph = [](int x, int y) { return float(x + y); };
    if (!study.add(one) || !study.add(two) || study.sequence()->save(parentFolder) != ESTATUS_SUCCESS)
        return QString();
    return study.sequence()->getSequenceInfoPath();
}
