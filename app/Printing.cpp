// SPDX-License-Identifier: MIT
#include "app/Printing.h"

#include "app/PluginManager.h"
#include "host/vxapi/view/windows/CVXSChildWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "host/vxutils/CVXSLog.h"

#include <QMdiSubWindow>
#include <QPainter>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>

Printing::Printing(CVXSWorkspace *workspace, PluginManager *plugins, QWidget *window)
    : QObject(window), m_workspace(workspace), m_plugins(plugins), m_window(window)
{
}

void Printing::print()
{
    const QMdiSubWindow *front = m_workspace->currentSubWindow();
    if (!front || front->isHidden() || !front->widget())
        return;
    const QImage picture = pictureOf(front->widget());
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(front->windowTitle());
    // The windows may be closed while the dialog is open; the picture is taken already.
    const QPointer<QPrintDialog> dialog = new QPrintDialog(&printer, m_window);
    dialog->setObjectName(QStringLiteral("PrintDialog"));
    const bool isWanted = dialog->exec() == QDialog::Accepted;
    delete dialog.data();
    if (isWanted)
        printImage(&printer, picture);
}

QImage Printing::pictureOf(QWidget *front)
{
    if (auto *child = qobject_cast<CVXSChildWindow *>(front))
        return child->picture();
    // A tool knows best how its window is to look on paper.
    m_plugins->preparePrinting(true);
    const QImage picture = front->grab().toImage();
    m_plugins->preparePrinting(false);
    return picture;
}

bool Printing::printImage(QPrinter *printer, const QImage &image)
{
    QPainter painter;
    if (image.isNull() || !painter.begin(printer)) {
        vxLog(ELOG_FAILURE, tr("Nothing was printed: %1")
                                .arg(image.isNull() ? tr("the window has no picture")
                                                    : tr("the printer %1 takes nothing")
                                                          .arg(printer->outputFileName().isEmpty()
                                                                   ? printer->printerName()
                                                                   : printer->outputFileName())));
        return false;
    }
    const QRect page = painter.viewport();
    QRect target(QPoint(), image.size().scaled(page.size(), Qt::KeepAspectRatio));
    target.moveCenter(page.center());
    // Pixels stay pixels: nothing is blurred that was not.
    painter.drawImage(target, image);
    return true;
}
