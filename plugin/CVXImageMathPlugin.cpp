// SPDX-License-Identifier: MIT
#include "plugin/CVXImageMathPlugin.h"

#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/windows/CVXSChildWindow.h"
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"
#include "host/vxapi/view/windows/CVXSSequenceWindow.h"
#include "host/vxutils/CVXPreference.h"
#include "host/vxutils/CVXSErrorHandler.h"
#include "host/vxutils/CVXSMessageBox.h"
#include "host/vxutils/CVXUtilityFns.h"
#include "window/CVXSImageMathWnd.h"

#include <QAction>
#include <QIcon>

namespace {

const QString WINDOW_NAME = QStringLiteral("Image Math Window");

// A tool of this kind has no menu action.
constexpr int KIND_WITHOUT_ACTION = 5;

// What the sub-window's frame adds to the window's own size.
constexpr int FRAME_WIDTH = 15;
constexpr int FRAME_HEIGHT = 40;

CVXSMdiSubWindow *subWindowOf(const CVXSImageMathWnd *window)
{
    return window ? qobject_cast<CVXSMdiSubWindow *>(window->parentWidget()) : nullptr;
}

// The sequence that the user works on; null when there is none.
CVXSSequenceDataset *sequenceOf(const CVXSChildWindow &child)
{
    if (child.isSequenceWindow())
        return child.getSequenceDataset();
    const CVXSDataset *dataset = child.getDataset();
    return dataset && dataset->isPartOfSequence() ? dataset->getSequenceDataset() : nullptr;
}

} // namespace

CVXImageMathPlugin::CVXImageMathPlugin() = default;

CVXImageMathPlugin::~CVXImageMathPlugin()
{
    delete subWindowOf(m_pWindow);
}

int CVXImageMathPlugin::getToolKind()
{
    return 0;
}

QAction *CVXImageMathPlugin::getAction()
{
    if (getToolKind() != KIND_WITHOUT_ACTION && !m_pAction) {
        m_pAction = new QAction(CVXSImageMathWnd::tr("Image Math"), this);
        m_pAction->setObjectName(QStringLiteral("Image Math"));
    }
    return m_pAction;
}

QIcon CVXImageMathPlugin::getIcon()
{
    return {};
}

QString CVXImageMathPlugin::getToolName()
{
    return QStringLiteral("Image Math");
}

QString CVXImageMathPlugin::getToolGroupName()
{
    return QStringLiteral("Image Overlay");
}

void CVXImageMathPlugin::resetWindow()
{
    m_pWindow.clear();
    m_bToolWindowShown = false;
}

void CVXImageMathPlugin::showToolWindow()
{
    static_cast<CVXSMdiSubWindow *>(m_pWindow->parentWidget())->showWindow();
}

bool CVXImageMathPlugin::isToolWindowShown()
{
    return m_bToolWindowShown;
}

void CVXImageMathPlugin::signalAddWidgetToWorkspace(QWidget *pWidget)
{
    CVXToolPluginBase::addWidgetToWorkspace(pWidget);
}

void CVXImageMathPlugin::updateValidity(QAction *action, bool enabled, bool visible)
{
    CVXToolPluginBase::updateToolPluginValidity(action, enabled, visible);
}

void CVXImageMathPlugin::onSignalDatasetChanged(CVXSDataset *dataset)
{
    const bool valid = dataset && dataset->isPartOfSequence();
    updateValidity(getAction(), valid, valid);
}

void CVXImageMathPlugin::onSignalSequenceChanged(CVXSSequenceDataset *sequence)
{
    const CVXSSequenceWindow *window = CVXSSequenceWindow::getSequenceWindow(sequence);
    const bool valid = !window || !window->is3DSceneOnlySequence();
    updateValidity(getAction(), valid, valid);
}

void CVXImageMathPlugin::onSignalDatasetRemoved(CVXSDataset *) {}

void CVXImageMathPlugin::onSignalSequenceAdded(CVXSSequenceDataset *)
{
    updateValidity(getAction(), true, true);
}

void CVXImageMathPlugin::onSignalSequenceRemoved(CVXSSequenceDataset *sequence)
{
    if (!m_pWindow || !sequence || m_pWindow->getSequenceID() != sequence->getSequenceID())
        return;
    CVXSMdiSubWindow *subWindow = subWindowOf(m_pWindow);
    if (subWindow && (subWindow->isVisible() || subWindow->isMinimized())) {
        subWindow->hideWindow();
        m_bToolWindowShown = false;
    }
}

void CVXImageMathPlugin::onSignalROIModified(QString) {}

void CVXImageMathPlugin::onSignalROIDeleted() {}

void CVXImageMathPlugin::onSignalupdateROIList() {}

void CVXImageMathPlugin::onSignalCopyToClipboard(QString strObjectName)
{
    if (m_pWindow && strObjectName.toLower() == m_pWindow->objectName().toLower())
        m_pWindow->copyToClipboard();
}

// The download data stays here: the host always gets null.
void CVXImageMathPlugin::onSignalLoadImageMathResult(QString path, bool flag, ESTATUS *status,
                                                     downloaded_save_data *)
{
    Q_EMIT signalLoadFile(path, flag, status, nullptr);
}

bool CVXImageMathPlugin::launchTool()
{
    if (!runLauncher())
        return false;
    if (!m_pWindow || m_pWindow->isVisible())
        return true;
    // A window that was launched before and not shown yet gets one more connection; the host answers a
    // repeated load with success and adds nothing.
    connect(m_pWindow, SIGNAL(signalLoadImageMathReuslt(QString, bool, ESTATUS *, downloaded_save_data *)),
            this, SLOT(onSignalLoadImageMathResult(QString, bool, ESTATUS *, downloaded_save_data *)));
    return true;
}

bool CVXImageMathPlugin::runLauncher()
{
    const CVXSChildWindow *child = CVXSChildWindow::getActiveChildWnd();
    if (!child)
        return false;
    CVXSSequenceDataset *sequence = sequenceOf(*child);
    if (!sequence)
        return true; // the action is enabled only where there is one
    if (!isReady(sequence))
        return false;

    const QString sequenceID = sequence->getSequenceID();
    QPoint position;
    bool positionRemembered = false;
    if (m_pWindow) {
        CVXSMdiSubWindow *subWindow = subWindowOf(m_pWindow);
        if (subWindow && m_pWindow->getSequenceID() == sequenceID && subWindow->isVisible()) {
            subWindow->activateWindow();
            subWindow->raise();
            subWindow->showWindow();
            m_bToolWindowShown = true;
            subWindow->setFocus();
            return true;
        }
        if (subWindow) {
            // The window's place is that of the sub-window around it.
            position = subWindow->pos();
            positionRemembered = true;
            subWindow->hideWindow();
            m_bToolWindowShown = false;
            delete subWindow;
        } else {
            delete m_pWindow;
        }
    }

    createWindow();
    if (positionRemembered && subWindowOf(m_pWindow))
        subWindowOf(m_pWindow)->setWindowPosition(position);
    if (!m_pWindow) {
        CVXSErrorHandler::errorMessage(nullptr, ESTATUS_TOOL_WINDOW, QString());
        return false;
    }
    if (!m_pWindow->bindToSequence(sequenceID))
        return false;
    m_pWindow->doSettings();
    m_pWindow->refreshImages();
    m_bToolWindowShown = true;
    return true;
}

bool CVXImageMathPlugin::isReady(CVXSSequenceDataset *sequence) const
{
    if (CVXPreference::isSequenceLoading(sequence)) {
        CVXSMessageBox::information(
            nullptr, CVXUtilityFns::getAppName(),
            CVXSImageMathWnd::tr(
                "This sequence dataset is being loaded and therefore not ready for 'Image Math'. Please try "
                "again when the dataset is fully loaded."),
            QString(), QString(), QString(), 0, -1);
        return false;
    }
    const QStringList clickNumbers = sequence->getClickNumbers();
    QStringList present;
    for (int i = 0; i < clickNumbers.size(); ++i) {
        if ((*sequence)[unsigned(i)])
            present.append(clickNumbers.at(i));
    }
    if (present.size() < 2) {
        CVXSMessageBox::warning(nullptr, CVXUtilityFns::getAppName(),
                                sequence->getSequenceID() +
                                    CVXSImageMathWnd::tr(" contains only one image.\n") +
                                    CVXSImageMathWnd::tr("Need at least two image sets to use Image Math.\n"),
                                CVXSImageMathWnd::tr("&OK"), QString(), QString(), 0, -1);
        return false;
    }
    return true;
}

void CVXImageMathPlugin::createWindow()
{
    m_pWindow =
        new CVXSImageMathWnd(nullptr, "Image Math Window",
                             Qt::Window | Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint |
                                 Qt::WindowTitleHint | Qt::WindowSystemMenuHint);
    m_pWindow->setWindowTitle(CVXSImageMathWnd::tr("Image Math Window"));
    m_pWindow->setObjectName(WINDOW_NAME);
    signalAddWidgetToWorkspace(m_pWindow);
    if (CVXSMdiSubWindow *subWindow = subWindowOf(m_pWindow)) {
        const QRect frame = m_pWindow->frameGeometry();
        subWindow->setWindowPosition(frame.topLeft());
        subWindow->resize(frame.width() + FRAME_WIDTH, frame.height() + FRAME_HEIGHT);
    }
}
