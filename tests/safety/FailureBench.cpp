// SPDX-License-Identifier: MIT
#include "tests/safety/FailureBench.h"

#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxparser/CPLClickInfo.h"
#include "tests/support/TestStudy.h"

#include <QDir>
#include <QFile>

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
    m_log.restart();
    const bool isMade = m_tool->pressDisplayResult();
    m_error = isMade ? QString() : m_tool->why() + QLatin1Char('\n') + failures().join(QLatin1Char('\n'));
    return isMade;
}

QString FailureBench::clickFolder(const QString &click) const
{
    return m_folder.sequence() + QLatin1Char('/') + click + QLatin1Char('/');
}

QString FailureBench::resultFolder(const QString &click) const
{
    return m_folder.data() + QLatin1Char('/') + click + QLatin1Char('/');
}

QString failing::clickInfoOf(const FailureBench &bench, const QString &click)
{
    return bench.clickFolder(click) + QStringLiteral("ClickInfo.txt");
}

bool failing::setLuminescent(const FailureBench &bench, const QString &click, const QString &key,
                             const QString &value)
{
    CPLClickInfo info;
    const QString path = clickInfoOf(bench, click);
    if (info.loadClickInfo(path, false) != ESTATUS_SUCCESS)
        return false;
    info[QStringLiteral("luminescent image")]->setValue(key, value);
    return info.saveClickInfo(path) == ESTATUS_SUCCESS;
}

bool failing::noResultFolder(const FailureBench &bench)
{
    return !QFileInfo::exists(bench.resultFolder(M));
}
