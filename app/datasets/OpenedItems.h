// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/view/windows/CVXSChildWindow.h"
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"

#include <QEvent>
#include <QList>
#include <QPointer>

/// What the owners of the open sequences and of the open loose datasets share. An item lives as long as its
/// window: closing the window asks whether the item may go, and takes it along.
///
///     class LooseDatasets : public OpenedItems<CVXSDataset> // says how one is asked about and how it goes
///     if (!loose.areReadyToClose())                         // the user wants to go on: all is as it was
///         return;
///     loose.closeAllUnasked();
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

    /// Asks for all that need it: false when the user wants to go on. Nothing is closed yet.
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
        const QList<Item *> all = m_items;
        for (Item *item : all)
            remove(item);
        return true;
    }

    void closeAllUnasked()
    {
        while (!m_items.isEmpty())
            remove(m_items.last());
    }

protected:
    /// False when the user wants to go on with it.
    virtual bool isReadyToClose(Item *item) = 0;
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
    void remove(Item *item)
    {
        m_items.removeOne(item);
        takeLeave(item);
        delete item;
    }

    QList<Item *> m_items;
};
