// SPDX-License-Identifier: MIT
#include "tests/safety/SafetyStudy.h"

#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxparser/CPLClickInfo.h"
#include "tests/support/TestStudy.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

const QString safetystudy::CLICK_A = QStringLiteral("AB20260102030406");
const QString safetystudy::CLICK_B = QStringLiteral("AB20260102030507");
const QString safetystudy::MEMORY_A = QStringLiteral("AB20260102031008");
const QString safetystudy::MEMORY_B = QStringLiteral("AB20260102031109");

float safetystudy::countsA(int x, int y)
{
    return float(500 + 7 * x + 3 * y);
}

float safetystudy::countsB(int x, int y)
{
    return float(90 + 2 * x + y % 5);
}

float safetystudy::photograph(int x, int y)
{
    return float(20 + x + y);
}

ClickSpec safetystudy::specOf(const QString &click)
{
    ClickSpec spec;
    spec.clickNumber = click;
    spec.width = WIDTH;
    spec.height = HEIGHT;
    spec.counts = click == CLICK_A || click == MEMORY_A ? countsA : countsB;
    spec.photograph = photograph;
    return spec;
}

QString safetystudy::write(const QString &parentFolder)
{
    TestStudy study;
    if (!study.add(specOf(CLICK_A)) || !study.add(specOf(CLICK_B)) ||
        study.sequence()->save(parentFolder) != ESTATUS_SUCCESS)
        return QString();
    return study.sequence()->getSequenceInfoPath();
}

bool safetystudy::addInMemory(CVXSSequenceDataset *sequence, const QString &click)
{
    // Made where a study makes its clicks, then moved over as the host's own computations hand theirs over.
    TestStudy source(QStringLiteral("ZZ20260102030405_SEQ"));
    const CVXSDataset *made = source.add(specOf(click));
    if (!made)
        return false;
    auto copy = std::make_unique<CVXSDataset>(click);
    QString error;
    if (copy->getClickInfo()->fromText(made->getClickInfo()->toText(), &error) != ESTATUS_SUCCESS)
        return false;
    for (const tag_eimagetype type : {EIMAGE_LUMINESCENT, EIMAGE_PHOTOGRAPH})
        copy->setCoreImage(type, *made->getCoreImage(type));
    source.close();
    return sequence->addDataset(copy.get()) && copy.release()->getDatasetType() == EDATASET_IN_MEMORY;
}

QString firstHarm(const QMap<QString, QByteArray> &before, const QMap<QString, QByteArray> &after)
{
    for (auto it = before.begin(); it != before.end(); ++it) {
        if (!after.contains(it.key()))
            return it.key() + QStringLiteral(" is missing");
        if (after.value(it.key()) != it.value())
            return it.key() + QStringLiteral(" is not what it was");
    }
    return QString();
}

bool copyTree(const QString &from, const QString &to)
{
    bool done = QDir().mkpath(to);
    QDirIterator all(from, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                     QDirIterator::Subdirectories);
    const QDir root(from);
    while (all.hasNext()) {
        const QString path = all.next();
        const QString target = to + QLatin1Char('/') + root.relativeFilePath(path);
        if (all.fileInfo().isDir())
            done = QDir().mkpath(target) && done;
        else
            done = QDir().mkpath(QFileInfo(target).path()) && QFile::copy(path, target) && done;
    }
    return done;
}
