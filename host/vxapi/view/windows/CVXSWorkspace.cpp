// SPDX-License-Identifier: MIT
#include "host/vxapi/view/windows/CVXSWorkspace.h"

#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/canvas/KeepInSight.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"
#include "host/vxapi/view/windows/CVXSSequenceWindow.h"

#include <QList>
#include <QPointer>
#include <QStyle>

namespace {

QList<CVXSWorkspace *> &workspaces()
{
    static QList<CVXSWorkspace *> list;
    return list;
}

} // namespace

CVXSWorkspace::CVXSWorkspace(QWidget *parent) : QMdiArea(parent)
{
    workspaces().append(this);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    // When a window is closed, the one from which it was opened is active again.
    setActivationOrder(QMdiArea::ActivationHistoryOrder);
    connect(this, &QMdiArea::subWindowActivated, this, &CVXSWorkspace::onSubWindowActivated);
}

CVXSWorkspace::~CVXSWorkspace()
{
    workspaces().removeAll(this);
    // The windows die later, in QObject's destructor, when nobody may be told any more.
    disconnect(this, nullptr, nullptr, nullptr);
    for (CVXSChildWindow *window : findChildren<CVXSChildWindow *>())
        disconnect(window, nullptr, this, nullptr);
}

CVXSWorkspace *CVXSWorkspace::instance()
{
    return workspaces().isEmpty() ? nullptr : workspaces().last();
}

CVXSMdiSubWindow *CVXSWorkspace::addChildWindow(CVXSChildWindow *window)
{
    if (!window)
        return nullptr;
    auto *subWindow = new CVXSMdiSubWindow;
    subWindow->setAttribute(Qt::WA_DeleteOnClose);
    const QSize wanted = window->testAttribute(Qt::WA_Resized) ? window->size() : window->sizeHint();
    subWindow->setWidget(window);
    addSubWindow(subWindow);
    if (wanted.isValid()) {
        const int frame = style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth);
        const int title = style()->pixelMetric(QStyle::PM_TitleBarHeight);
        subWindow->resize(wanted + QSize(2 * frame, frame + title));
    }
    connect(window, &QObject::destroyed, this, &CVXSWorkspace::announceActiveChild);
    subWindow->showWindow();
    keepInSight(subWindow);
    // Said here as well: a workspace that is not on the screen yet activates no sub-window.
    onSubWindowActivated(subWindow);
    return subWindow;
}

// The area places a new window below and right of the last one, which may be half outside.
void CVXSWorkspace::keepInSight(QMdiSubWindow *window) const
{
    if (!isVisible() || window->isMaximized())
        return;
    const QRect area = viewport()->rect();
    window->resize(window->size().boundedTo(area.size()).expandedTo(window->minimumSizeHint()));
    window->move(placeInSight(window->pos(), window->size(), area));
}

CVXSMdiSubWindow *CVXSWorkspace::addToolWidget(QWidget *widget)
{
    if (!widget)
        return nullptr;
    // Not deleted on close: a tool hides its window and shows it again.
    auto *subWindow = new CVXSMdiSubWindow;
    subWindow->setAttribute(Qt::WA_DeleteOnClose, false);
    subWindow->setWidget(widget);
    subWindow->hide();
    // With a help button: a tool's controls explain themselves.
    addSubWindow(subWindow, Qt::SubWindow | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                                Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint |
                                Qt::WindowContextHelpButtonHint);
    subWindow->hide();
    return subWindow;
}

CVXSSequenceWindow *CVXSWorkspace::showSequence(CVXSSequenceDataset *sequence)
{
    if (!sequence)
        return nullptr;
    if (CVXSSequenceWindow *window = CVXSSequenceWindow::getSequenceWindow(sequence)) {
        showAgain(window);
        return window;
    }
    auto *window = new CVXSSequenceWindow(sequence);
    connect(window, &CVXSSequenceWindow::datasetActivated, this,
            [this, sequence = QPointer<CVXSSequenceDataset>(sequence)](const QString &clickNumber) {
                if (sequence)
                    showDataset(sequence->getDataset(clickNumber));
            });
    addChildWindow(window);
    return window;
}

CVXSImageWindow *CVXSWorkspace::showDataset(CVXSDataset *dataset)
{
    if (!dataset)
        return nullptr;
    if (CVXSImageWindow *window = CVXSImageWindow::getImageWindow(dataset)) {
        showAgain(window);
        return window;
    }
    auto *window = new CVXSImageWindow(dataset);
    addChildWindow(window);
    return window;
}

void CVXSWorkspace::showAgain(CVXSChildWindow *window)
{
    if (CVXSMdiSubWindow *subWindow = window->subWindow()) {
        subWindow->showWindow();
        onSubWindowActivated(subWindow);
    } else {
        window->show();
        window->raise();
    }
}

void CVXSWorkspace::onSubWindowActivated(QMdiSubWindow *window)
{
    // A tool's window, or none while another application has the focus: the child window before stays the
    // active one.
    auto *child = window ? qobject_cast<CVXSChildWindow *>(window->widget()) : nullptr;
    if (!child)
        return;
    CVXSChildWindow::setActiveChildWnd(child);
    announceActiveChild();
}

void CVXSWorkspace::announceActiveChild()
{
    CVXSChildWindow *active = CVXSChildWindow::getActiveChildWnd();
    if (active == m_announced)
        return;
    m_announced = active;
    Q_EMIT activeChildChanged(active);
}
