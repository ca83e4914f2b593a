// SPDX-License-Identifier: MIT
#include "host/vxapi/view/windows/TableBelowPicture.h"

#include "host/vxapi/view/windows/CVXSChildWindow.h"
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"

#include <algorithm>
#include <QGuiApplication>
#include <QScreen>
#include <QSplitter>
#include <QWindow>

namespace {

constexpr int TABLE_HEIGHT = 170; ///< wished for: some rows and the header

} // namespace

TableBelowPicture::TableBelowPicture(CVXSChildWindow *window, QSplitter *splitter)
    : m_window(window), m_splitter(splitter)
{
}

QWidget *TableBelowPicture::frame() const
{
    if (QWidget *subWindow = m_window->subWindow())
        return subWindow;
    return m_window->isWindow() ? m_window : nullptr;
}

int TableBelowPicture::tableHeight() const
{
    const QWidget *table = m_splitter->widget(1);
    return std::max(TABLE_HEIGHT, table->minimumSizeHint().height());
}

bool TableBelowPicture::hasRoom() const
{
    const QWidget *grows = frame();
    if (!grows || grows->isMaximized() || grows->isFullScreen() || grows->isMinimized())
        return false;
    const int needed = tableHeight() + m_splitter->handleWidth();
    if (const QWidget *area = grows->isWindow() ? nullptr : grows->parentWidget())
        return grows->geometry().bottom() + needed <= area->rect().bottom();
    const QScreen *screen =
        grows->windowHandle() ? grows->windowHandle()->screen() : QGuiApplication::primaryScreen();
    return screen && grows->frameGeometry().bottom() + needed <= screen->availableGeometry().bottom();
}

void TableBelowPicture::show(bool on)
{
    QWidget *table = m_splitter->widget(1);
    if (table->isHidden() != on)
        return;
    const int pictureHeight = m_splitter->widget(0)->height();
    QWidget *grows = frame();
    if (on) {
        m_hasGrown = hasRoom();
        const int height = tableHeight();
        if (m_hasGrown)
            grows->resize(grows->width(), grows->height() + height + m_splitter->handleWidth());
        table->show();
        m_splitter->setSizes(
            {m_hasGrown ? pictureHeight : std::max(1, m_splitter->height() - height), height});
        return;
    }
    const int freed = table->height() + m_splitter->handleWidth();
    table->hide();
    // Maximised meanwhile, there is nothing to shrink.
    if (m_hasGrown && grows && !grows->isMaximized() && !grows->isFullScreen())
        grows->resize(grows->width(), grows->height() - freed);
    m_hasGrown = false;
}
