// SPDX-License-Identifier: MIT
#include "tests/window/result/ResultBench.h"

#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxutils/CVXPreference.h"
#include "host/vxutils/CVXUtilityFns.h"
#include "tests/support/Files.h"

#include <QCoreApplication>
#include <QDir>

ResultBench::ResultBench(const QString &dataFolder)
    : m_dataPath(m_folder.path() + QLatin1Char('/') + dataFolder), m_bound(std::make_unique<BoundWindow>())
{
}

ResultBench::~ResultBench() = default;

bool ResultBench::make()
{
    QString why;
    if (!CVXPreference::setProgramDataPath(m_dataPath, &why) ||
        CVXPreference::getProgramDataPath() != m_dataPath)
        return false;
    CVXUtilityFns::setkValue(QStringLiteral("2.50"));
    ClickSpec a;
    a.clickNumber = clickA();
    a.photograph = [](int x, int y) { return float(x > 16 && y > 16 ? 200 : 20); };
    a.flatField = [](int, int) { return 1.0f; };
    ClickSpec b;
    b.clickNumber = clickB();
    b.counts = [](int, int) { return 10.0f; };
    b.photograph = [](int x, int y) { return float(x < 40 && y < 40 ? 150 : 10); };
    m_a = m_bound->study().add(a);
    m_b = m_bound->study().add(b);
    tag_simageadjust adjust;
    adjust.colorTable = VXS_CT_BLUEHOT;
    m_bound->sequence()->setImageAdjust(adjust);
    if (!m_a || !m_b || !m_bound->saveAndBind())
        return false;
    QCoreApplication::processEvents();
    return writeFile(clickInfo(clickA()), recordtext::clickInfoA()) &&
           writeFile(clickInfo(clickB()), recordtext::clickInfoB()) &&
           writeFile(analyzed(clickA()), recordtext::analyzedA()) &&
           writeFile(analyzed(clickB()), recordtext::analyzedB());
}

void ResultBench::choosePhotograph(const QString &from)
{
    window()->m_pWithPhotoChkBox->setChecked(!from.isEmpty());
    if (!from.isEmpty())
        window()->m_pPhotoFromCB->setCurrentText(from);
}

QString ResultBench::folderOf(const QString &click) const
{
    return m_bound->sequence()->getDatasetFolderPath(click);
}
