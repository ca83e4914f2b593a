// SPDX-License-Identifier: MIT
#include "host/vxapi/view/windows/CVXSWorkspace.h"

#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/canvas/KeepInSight.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"
#include "host/vxapi/view/windows/CVXSSequenceWindow.h"
#include "host/vxapi/view/windows/WindowPlacing.h"

#include <QList>
#include <QPointer>
#include <QStyle>

#include <algorithm>

namespace {

constexpr QSize ENOUGH_FOR_THUMBNAILS(360, 280);
constexpr QSize ENOUGH_FOR_IMAGE(560, 480);

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
    place(subWindow);
    // Said here as well: a workspace that is not on the screen yet activates no sub-window.
    onSubWindowActivated(subWindow);
    return subWindow;
}

void CVXSWorkspace::place(QMdiSubWindow *window)
{
    if (!isVisible() || window->isMaximized())
        return;
    m_placements.erase(std::remove_if(m_placements.begin(), m_placements.end(),
                                      [](const Placement &placement) { return !placement.window; }),
                       m_placements.end());
    m_placements.append({window, QRect(), window->size()});
    placeAnew({window});
}

QList<QMdiSubWindow *> CVXSWorkspace::shownWindows() const
{
    QList<QMdiSubWindow *> shown;
    const QList<QMdiSubWindow *> all = subWindowList(QMdiArea::CreationOrder);
    for (QMdiSubWindow *window : all) {
        if (!window->isHidden() && !window->isMinimized() && !window->isMaximized())
            shown.append(window);
    }
    return shown;
}

bool CVXSWorkspace::isPlacedHere(const QMdiSubWindow *window) const
{
    return std::any_of(m_placements.begin(), m_placements.end(), [window](const Placement &placement) {
        return placement.window == window && placement.rect == window->geometry();
    });
}

QVector<QRect> CVXSWorkspace::occupiedBut(const QList<QMdiSubWindow *> &left) const
{
    QVector<QRect> occupied;
    const QList<QMdiSubWindow *> shown = shownWindows();
    for (const QMdiSubWindow *window : shown) {
        if (!left.contains(const_cast<QMdiSubWindow *>(window)))
            occupied.append(window->geometry());
    }
    return occupied;
}

void CVXSWorkspace::placeAnew(const QList<QMdiSubWindow *> &windows)
{
    QVector<QRect> occupied = occupiedBut(windows);
    for (Placement &placement : m_placements) {
        if (!placement.window || !windows.contains(placement.window))
            continue;
        // A sequence's thumbnails scroll; an image needs its picture and what stands around it.
        const auto *child = qobject_cast<CVXSChildWindow *>(placement.window->widget());
        const QSize useful = child && child->isSequenceWindow() ? ENOUGH_FOR_THUMBNAILS : ENOUGH_FOR_IMAGE;
        const QSize enough = useful.boundedTo(placement.wanted)
                                 .boundedTo(viewport()->size())
                                 .expandedTo(placement.window->minimumSizeHint());
        placement.rect = windowplacing::freePlace({placement.wanted, enough}, viewport()->rect(), occupied);
        placement.window->setGeometry(placement.rect);
        placement.rect = placement.window->geometry();
        occupied.append(placement.rect);
    }
}

void CVXSWorkspace::makeRoomFor(QMdiSubWindow *window)
{
    QList<QMdiSubWindow *> covered;
    const QList<QMdiSubWindow *> shown = shownWindows();
    for (QMdiSubWindow *other : shown) {
        if (other != window && isPlacedHere(other) && other->geometry().intersects(window->geometry()))
            covered.append(other);
    }
    placeAnew(covered);
}

// A panel beside the area takes its room from the windows.
void CVXSWorkspace::resizeEvent(QResizeEvent *event)
{
    QMdiArea::resizeEvent(event);
    QList<QMdiSubWindow *> outside;
    const QList<QMdiSubWindow *> shown = shownWindows();
    for (QMdiSubWindow *window : shown) {
        if (isPlacedHere(window) && !viewport()->rect().contains(window->geometry()))
            outside.append(window);
    }
    placeAnew(outside);
}

void CVXSWorkspace::tileWindows()
{
    const QList<QMdiSubWindow *> windows = shownWindows();
    QVector<QSize> least;
    for (const QMdiSubWindow *window : windows)
        least.append(window->minimumSizeHint().expandedTo(window->minimumSize()));
    const QRect area = viewport()->rect();
    const QVector<QRect> rects = windowplacing::tiles(area, least);
    if (rects.isEmpty())
        tileSubWindows();
    for (int i = 0; i < windows.size(); ++i) {
        QMdiSubWindow *window = windows[i];
        if (!rects.isEmpty())
            window->setGeometry(rects[i]);
        window->resize(window->size().boundedTo(area.size()).expandedTo(least[i]));
        window->move(placeInSight(window->pos(), window->size(), area));
    }
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
