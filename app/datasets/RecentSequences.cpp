// SPDX-License-Identifier: MIT
#include "app/datasets/RecentSequences.h"

#include "host/vxutils/CVXPreference.h"

#include <QDir>
#include <QFontMetrics>
#include <QMenu>
#include <QSettings>

namespace {

constexpr char KEY[] = "RecentSequences";
constexpr int MAX_WIDTH = 480; // pixels; longer entries would make the menu as wide as the screen

/// One folder is one entry, however it was spelled.
QString normalized(const QString &folder)
{
    return QDir::cleanPath(QDir(folder).absolutePath());
}

} // namespace

RecentSequences::RecentSequences(QObject *parent) : QObject(parent) {}

QStringList RecentSequences::folders() const
{
    return CVXPreference::settings()->value(QLatin1String(KEY)).toStringList();
}

void RecentSequences::add(const QString &folder)
{
    QStringList list = folders();
    const QString entry = normalized(folder);
    list.removeAll(entry);
    list.prepend(entry);
    store(list.mid(0, MAX_COUNT));
}

void RecentSequences::remove(const QString &folder)
{
    QStringList list = folders();
    list.removeAll(normalized(folder));
    store(list);
}

void RecentSequences::clear()
{
    store(QStringList());
}

void RecentSequences::store(const QStringList &folders)
{
    CVXPreference::settings()->setValue(QLatin1String(KEY), folders);
}

void RecentSequences::attach(QMenu *menu)
{
    menu->setToolTipsVisible(true);
    connect(menu, &QMenu::aboutToShow, this, [this, menu] { fill(menu); });
    fill(menu);
}

void RecentSequences::fill(QMenu *menu)
{
    menu->clear();
    const QStringList list = folders();
    for (const QString &folder : list) {
        // An ampersand of the path is no shortcut.
        // Its end tells it from others; whole it is in the tool tip.
        const QString path = QDir::toNativeSeparators(folder);
        QString text = menu->fontMetrics().elidedText(path, Qt::ElideMiddle, MAX_WIDTH);
        QAction *action = menu->addAction(text.replace(QLatin1Char('&'), QLatin1String("&&")));
        action->setToolTip(path);
        connect(action, &QAction::triggered, this, [this, folder] { Q_EMIT chosen(folder); });
    }
    if (list.isEmpty()) {
        menu->addAction(tr("None yet"))->setEnabled(false);
        return;
    }
    menu->addSeparator();
    connect(menu->addAction(tr("Clear List")), &QAction::triggered, this, &RecentSequences::clear);
}
