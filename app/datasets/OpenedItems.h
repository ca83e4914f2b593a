// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/view/windows/CVXSChildWindow.h"
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"

#include <QEvent>
#include <QList>
#include <QPointer>
#include <QStringList>

/// What the owners of the open sequences and of the open loose datasets share. An item lives as long as its
/// window: closing the window asks whether the item may go, and takes it along.
///
///     class LooseDatasets : public OpenedItems<CVXSDataset> // says how one is asked about and how it goes
///     if (!loose.close(dataset))                            // the user wants to go on: all is as it was
///         return;
///
/// What closing an item would lose is found out by comparing it with its files; an item that would lose
/// nothing closes without a question.
///
/// `Item` is a QObject. A derived class closes all in its own destructor, where its overrides still count.
template <typename Item>
class OpenedItems : public QObject
{
public:
    using QObject::QObject;

    /// Closes an item with its windows: false when the user wants it to stay.
    bool close(Item *item)
    {
        if (!isReadyToClose(item))
            return false;
        remove(item);
        return true;
    }

    /// What closing them would lose, a line for each that would lose something.
    QStringList losses() const
    {
        QStringList lines;
        for (Item *item : m_items) {
            const QString loss = lossOf(item);
            if (!loss.isEmpty())
                lines += lineOf(item, loss);
        }
        return lines;
    }

    /// Asks about each that would lose something: false when the user wants to go on. Nothing is closed yet.
    bool areReadyToClose()
    {
        const QList<Item *> all = m_items;
        for (Item *item : all) {
            if (!isReadyToClose(item))
                return false;
        }
        return true;
    }

    /// All are asked for before the first goes, so that "Cancel" leaves everything as it was.
    bool closeAll()
    {
        if (!areReadyToClose())
            return false;
        closeAllUnasked();
        return true;
    }

    /// Saves each that would lose something: false when one is not saved.
    bool saveAll()
    {
        const QList<Item *> all = m_items;
        for (Item *item : all) {
            if (!lossOf(item).isEmpty() && !save(item))
                return false;
        }
        return true;
    }

    /// Saves an item, asking where it has to. False when it is not saved.
    virtual bool save(Item *item) = 0;

    void closeAllUnasked()
    {
        while (!m_items.isEmpty())
            remove(m_items.last());
    }

protected:
    /// What closing it would lose, in a few words for the user; empty: nothing.
    virtual QString lossOf(Item *item) const = 0;
    /// How a list names an item that would lose that.
    virtual QString lineOf(Item *item, const QString &loss) const = 0;
    /// Asks about one that would lose something: false when the user wants to go on with it.
    virtual bool askAbout(Item *item, const QString &loss) = 0;
    /// Destroys the item's windows and tells that it goes; the item itself is deleted next.
    virtual void takeLeave(Item *item) = 0;
    /// The item that closes with this window; null when the window is not of one of these.
    virtual Item *itemOf(const CVXSChildWindow *window) const = 0;

    const QList<Item *> &items() const { return m_items; }
    bool contains(const Item *item) const { return m_items.contains(const_cast<Item *>(item)); }
    void append(Item *item) { m_items.append(item); }

    /// From here on closing the window is a question about its item.
    void watch(const CVXSChildWindow *window)
    {
        if (CVXSMdiSubWindow *subWindow = window->subWindow())
            subWindow->installEventFilter(this);
    }

    static void destroyWindow(CVXSChildWindow *window)
    {
        if (!window)
            return;
        if (CVXSMdiSubWindow *subWindow = window->subWindow())
            delete subWindow;
        else
            delete window;
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *subWindow = event->type() == QEvent::Close ? qobject_cast<QMdiSubWindow *>(watched) : nullptr;
        Item *item = itemOf(subWindow ? qobject_cast<CVXSChildWindow *>(subWindow->widget()) : nullptr);
        if (!item)
            return QObject::eventFilter(watched, event);
        // Later, because a window cannot be deleted while it is being closed.
        event->ignore();
        QMetaObject::invokeMethod(
            this,
            [this, guarded = QPointer<Item>(item)] {
                if (guarded && m_items.contains(guarded))
                    close(guarded);
            },
            Qt::QueuedConnection);
        return true;
    }

private:
    bool isReadyToClose(Item *item)
    {
        const QString loss = lossOf(item);
        return loss.isEmpty() || askAbout(item, loss);
    }

    void remove(Item *item)
    {
        m_items.removeOne(item);
        takeLeave(item);
        delete item;
    }

    QList<Item *> m_items;
};
