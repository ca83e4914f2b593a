// SPDX-License-Identifier: MIT
#include "host/vxapi/view/windows/CVXSChildWindow.h"

#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"

#include <QApplication>
#include <QClipboard>
#include <QList>

namespace {

/// Child windows that were active, the latest last.
QList<CVXSChildWindow *> &activationOrder()
{
    static QList<CVXSChildWindow *> order;
    return order;
}

} // namespace

CVXSChildWindow::CVXSChildWindow(QWidget *parent) : QWidget(parent) {}

CVXSChildWindow::~CVXSChildWindow()
{
    activationOrder().removeAll(this);
}

CVXSChildWindow *CVXSChildWindow::getActiveChildWnd()
{
    const QList<CVXSChildWindow *> &order = activationOrder();
    return order.isEmpty() ? nullptr : order.last();
}

void CVXSChildWindow::setActiveChildWnd(CVXSChildWindow *window)
{
    QList<CVXSChildWindow *> &order = activationOrder();
    if (!window) {
        order.clear();
        return;
    }
    order.removeAll(window);
    order.append(window);
}

QImage CVXSChildWindow::picture()
{
    return grab().toImage();
}

void CVXSChildWindow::copyPicture()
{
    QApplication::clipboard()->setImage(picture());
}

CVXSMdiSubWindow *CVXSChildWindow::subWindow() const
{
    return qobject_cast<CVXSMdiSubWindow *>(parentWidget());
}
