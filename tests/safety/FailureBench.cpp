// SPDX-License-Identifier: MIT
#include "tests/safety/FailureBench.h"

#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxutils/CVXSLog.h"
#include "tests/support/TestStudy.h"

#include <QDir>
#include <QFile>

#include <algorithm>

FailureBench::~FailureBench()
{
    m_tool.reset();
    CVXSDataset::registerStoredDatasets(QString());
}

bool FailureBench::start(const QList<ClickSpec> &clicks, const QString &photographFrom)
{
    if (!QDir().mkpath(m_folder.data()) || !QDir().mkpath(m_folder.study()))
        return false;
    {
        TestStudy study;
        for (const ClickSpec &click : clicks)
            study.add(click);
        if (study.sequence()->save(m_folder.study()) != ESTATUS_SUCCESS)
            return false;
    }
    qputenv("VEXA_PROFILE_DIR", QFile::encodeName(QFileInfo(m_folder.data()).path()));
    m_tool = std::make_unique<ShownTool>();
    const bool isReady = m_tool->openSequence(m_folder.sequence()) && m_tool->openImageMath() &&
                         m_tool->select(clicks.at(0).clickNumber, clicks.at(1).clickNumber) &&
                         m_tool->choosePhotograph(photographFrom);
    m_error = m_tool->why();
    return isReady;
}

bool FailureBench::press()
{
    getLogObject()->clear();
    const bool isMade = m_tool->pressDisplayResult();
    m_error = isMade ? QString() : m_tool->why() + QLatin1Char('\n') + failures().join(QLatin1Char('\n'));
    return isMade;
}

QStringList FailureBench::failures() const
{
    QStringList lines;
    for (const SLogEntry &entry : getLogObject()->entries()) {
        if (entry.level >= 3)
            lines += (entry.message + QLatin1Char(' ') + entry.detail).trimmed();
    }
    return lines;
}

bool FailureBench::isLogged(const QStringList &words) const
{
    const QStringList lines = failures();
    return std::any_of(lines.begin(), lines.end(), [&words](const QString &line) {
        return std::all_of(words.begin(), words.end(),
                           [&line](const QString &word) { return line.contains(word); });
    });
}

QString FailureBench::clickFolder(const QString &click) const
{
    return m_folder.sequence() + QLatin1Char('/') + click + QLatin1Char('/');
}

QString FailureBench::resultFolder(const QString &click) const
{
    return m_folder.data() + QLatin1Char('/') + click + QLatin1Char('/');
}
