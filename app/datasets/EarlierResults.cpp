// SPDX-License-Identifier: MIT
#include "app/datasets/EarlierResults.h"

#include "app/datasets/ResultSources.h"
#include "check/StoredRecord.h"
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/StoredDatasets.h"
#include "host/vxutils/CVXPreference.h"

#include <QDir>
#include <QMenu>

#include <algorithm>
#include <memory>

namespace {

constexpr int MAX_TEXT = 100; // characters; longer ones are no text of ours
constexpr int WIDTH = 300;    ///< of the names of files

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
    std::stable_sort(results.begin(), results.end(),
                     [this](const StoredDataset &one, const StoredDataset &other) {
                         return about(one).made > about(other).made;
                     });
    for (const StoredDataset &result : qAsConst(results).mid(0, MAX_COUNT)) {
        const About &told = about(result);
        QString text =
            QStringLiteral("%1    %2    %3").arg(result.clickNumber, told.formula, told.operands);
        if (!told.sources.isEmpty())
            text += QStringLiteral("    ") +
                    m_menu->fontMetrics().elidedText(told.sources, Qt::ElideMiddle, WIDTH);
        text += QLatin1Char('\t') + told.made.toLocalTime().toString(QStringLiteral("yyyy-MM-dd hh:mm"));
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

const EarlierResults::About &EarlierResults::about(const StoredDataset &result)
{
    About &known = m_known[result.folder];
    if (known.written != result.written)
        known = read(result);
    return known;
}

EarlierResults::About EarlierResults::read(const StoredDataset &result)
{
    About told;
    told.written = told.made = result.written;
    told.sources = ResultSources::of(result.folder).text();
    const std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(result.folder, nullptr, nullptr));
    if (!dataset)
        return told;
    const auto line = [&told](const QString &operation, const QString &k, const QString &a,
                              const QString &b) {
        told.formula = tr("%1, k = %2").arg(operation, k).left(MAX_TEXT);
        told.operands = tr("A: %1, B: %2").arg(a, b).left(MAX_TEXT);
    };
    const StoredRecord stored = StoredRecord::of(*dataset);
    if (stored.isThere()) {
        const imagemath::ResultRecord &record = stored.record;
        line(record.operation, imagemath::decimalOf(record.k), record.a.clickNumber, record.b.clickNumber);
        const QDateTime computed = QDateTime::fromString(record.computed, Qt::ISODate);
        if (computed.isValid())
            told.made = computed;
    } else {
        const auto text = [&dataset](QLatin1String key) {
            return clickinfo::textOf(*dataset->getClickInfo(), clickinfo::SECTION_LUMINESCENT, key);
        };
        line(text(clickinfo::KEY_MATH_OPERATION), text(clickinfo::KEY_MATH_K), text(clickinfo::KEY_MATH_A),
             text(clickinfo::KEY_MATH_B));
    }
    return told;
}
