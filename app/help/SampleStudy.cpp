// SPDX-License-Identifier: MIT
#include "app/help/SampleStudy.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxutils/CVXPreference.h"
#include "host/vxutils/CVXSLog.h"
#include "host/vxutils/deleteFolderTree.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>

namespace {

QString studyFolder()
{
    return CVXPreference::getProgramDataPath() + QStringLiteral("/sample-study");
}

/// Made beside its place and renamed, so that a study is there completely or not at all.
QString unfinishedFolder()
{
    return studyFolder() + QStringLiteral(".part");
}

/// The folder of the sequence in the study; empty when there is none.
QString sequenceFolder()
{
    const QDir study(studyFolder());
    const QStringList folders = study.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString &folder : folders) {
        if (QFileInfo(study.filePath(folder + QLatin1Char('/') + clickinfo::FILE_SEQUENCE_INFO)).isFile())
            return study.filePath(folder);
    }
    return QString();
}

} // namespace

SampleStudy::SampleStudy(QObject *parent) : QObject(parent) {}

SampleStudy::~SampleStudy()
{
    if (!m_maker)
        return;
    m_maker->disconnect(this);
    m_maker->kill();
    m_maker->waitForFinished();
    deleteFolderTree(QDir(unfinishedFolder()));
}

void SampleStudy::open()
{
    const QString folder = sequenceFolder();
    if (!folder.isEmpty())
        Q_EMIT ready(folder);
    else if (!m_maker)
        make();
}

void SampleStudy::make()
{
    if (QFileInfo::exists(unfinishedFolder()))
        deleteFolderTree(QDir(unfinishedFolder()));
    const QString program =
        QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../bin/vexa-make-sample"));
    m_maker = new QProcess(this);
    m_maker->setProcessChannelMode(QProcess::MergedChannels);
    connect(m_maker, &QProcess::errorOccurred, this, [this, program](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            finish(false, QDir::toNativeSeparators(program) + QStringLiteral(": ") + m_maker->errorString());
    });
    connect(m_maker, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            [this](int code, QProcess::ExitStatus status) {
                const bool isDone = status == QProcess::NormalExit && code == 0;
                finish(isDone, isDone ? QString() : QString::fromLocal8Bit(m_maker->readAll()).trimmed());
            });
    Q_EMIT beingMadeChanged(true);
    m_maker->start(program, {unfinishedFolder()});
}

void SampleStudy::finish(bool isMade, const QString &reason)
{
    m_maker->disconnect(this);
    m_maker->deleteLater();
    m_maker = nullptr;
    QString why = reason;
    if (isMade) {
        QDir().rmdir(studyFolder());
        if (!QDir().rename(unfinishedFolder(), studyFolder()))
            why = tr("%1 cannot be renamed to %2").arg(unfinishedFolder(), studyFolder());
    }
    Q_EMIT beingMadeChanged(false);
    const QString folder = sequenceFolder();
    if (why.isEmpty() && !folder.isEmpty()) {
        Q_EMIT ready(folder);
        return;
    }
    deleteFolderTree(QDir(unfinishedFolder()));
    vxLog(ELOG_FAILURE, tr("The sample study could not be made. %1").arg(why));
}
