// SPDX-License-Identifier: MIT
#include "app/datasets/EarlierResults.h"

#include "app/datasets/ResultSources.h"
#include "host/vxapi/model/StoredDatasets.h"
#include "host/vxutils/CVXPreference.h"

#include <QDir>
#include <QMenu>

#include <algorithm>

namespace {

constexpr int WIDTH = 400; ///< of the names of files

} // namespace

EarlierResults::EarlierResults(QMenu *menu, QObject *parent) : QObject(parent), m_menu(menu)
{
    menu->setToolTipsVisible(true);
    connect(menu, &QMenu::aboutToShow, this, &EarlierResults::fill);
    menu->addAction(tr("None yet"))->setEnabled(false); // a menu without entries would not open
}

void EarlierResults::fill()
{
    m_menu->clear();
    StoredDatasets &stored = StoredDatasets::instance();
    stored.registerFolder(CVXPreference::getProgramDataPath()); // others may have written there
    QList<StoredDataset> results = stored.list();
    results.erase(std::remove_if(results.begin(), results.end(),
                                 [](const StoredDataset &dataset) { return !dataset.isResult; }),
                  results.end());
    std::stable_sort(
        results.begin(), results.end(),
        [](const StoredDataset &one, const StoredDataset &other) { return one.written > other.written; });
    for (const StoredDataset &result : qAsConst(results).mid(0, MAX_COUNT)) {
        QString text =
            QStringLiteral("%1    %2")
                .arg(result.clickNumber, result.written.toString(QStringLiteral("yyyy-MM-dd hh:mm")));
        const QString sources = ResultSources::of(result.folder).text();
        if (!sources.isEmpty())
            text +=
                QStringLiteral("    ") + m_menu->fontMetrics().elidedText(sources, Qt::ElideMiddle, WIDTH);
        QAction *action = m_menu->addAction(text.replace(QLatin1Char('&'), QLatin1String("&&")));
        action->setToolTip(QDir::toNativeSeparators(result.folder));
        connect(action, &QAction::triggered, this, [this, folder = result.folder] { Q_EMIT chosen(folder); });
    }
    if (results.isEmpty())
        m_menu->addAction(tr("None yet"))->setEnabled(false);
    if (results.size() > MAX_COUNT) {
        m_menu->addSeparator();
        connect(m_menu->addAction(tr("Others...")), &QAction::triggered, this, &EarlierResults::othersWanted);
    }
}
