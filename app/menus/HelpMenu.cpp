// SPDX-License-Identifier: MIT
#include "app/menus/HelpMenu.h"

#include "app/datasets/SequenceManager.h"
#include "app/help/AboutBox.h"
#include "app/help/GuideWindow.h"
#include "app/help/SampleStudy.h"
#include "app/menus/newAction.h"
#include "host/vxutils/CVXUtilityFns.h"

#include <QMainWindow>
#include <QWhatsThis>

HelpMenu::HelpMenu(QMenu *menu, SequenceManager *sequences, QMainWindow *window)
    : QObject(window), m_window(window), m_sample(new SampleStudy(this))
{
    connect(newAction(menu, tr("User's &Guide: Image Math"), "actionGuide", QKeySequence::HelpContents),
            &QAction::triggered, this, [this] { showGuide(QStringLiteral("image-math")); });
    connect(newAction(menu, tr("User's Guide: The &Workspace"), "actionGuideWorkspace"), &QAction::triggered,
            this, [this] { showGuide(QStringLiteral("workspace")); });
    QAction *sample = newAction(menu, tr("Open &Sample Study"), "actionSampleStudy");
    connect(sample, &QAction::triggered, m_sample, &SampleStudy::open);
    connect(m_sample, &SampleStudy::ready, sequences,
            [sequences](const QString &folder) { sequences->open(folder); });
    connect(m_sample, &SampleStudy::beingMadeChanged, this, [this, sample](bool isBeingMade) {
        sample->setEnabled(!isBeingMade);
        sample->setText(isBeingMade ? tr("The Sample Study Is Being Made...") : tr("Open &Sample Study"));
    });
    QAction *whatsThis = QWhatsThis::createAction(this); // Shift+F1
    whatsThis->setObjectName(QStringLiteral("actionWhatsThis"));
    menu->addAction(whatsThis);
    menu->addSeparator();
    connect(newAction(menu, tr("&About %1").arg(CVXUtilityFns::getAppName()), "actionAbout"),
            &QAction::triggered, this, [this] { showAboutBox(m_window); });
}

void HelpMenu::showGuide(const QString &page)
{
    if (!m_guide)
        m_guide = new GuideWindow(m_window);
    m_guide->showPage(page);
}
