// SPDX-License-Identifier: MIT
#include "tour/Stage.h"

#include "app/MainWindow.h"
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/canvas/CVXSMultiImageView.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "host/vxutils/CVXPreference.h"

#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>

void Stage::showImageMath()
{
    hand::chooseFromMenu(&window, {QStringLiteral("Tools"), QStringLiteral("Image Math")});
    const auto find = [this] { return window.findChild<QWidget *>(QStringLiteral("Image Math Window")); };
    if (!hand::waitFor([&find] { return find() && find()->isVisible(); }))
        hand::giveUp(QStringLiteral("the Image Math Window did not appear"));
    tool = find();
}

void Stage::openImageMath()
{
    showImageMath();
    tool->parentWidget()->move(4, 4);
    tool->parentWidget()->resize(900, 800);
}

void Stage::activate(const QString &title)
{
    hand::chooseFromMenu(&window,
                         {QStringLiteral("Window"), QStringLiteral("? ") + title + QLatin1Char('*')});
    const auto *area = window.findChild<QMdiArea *>();
    const auto isActive = [&] {
        const QMdiSubWindow *active = area->activeSubWindow();
        return active && active->windowTitle().startsWith(title);
    };
    if (!hand::waitFor(isActive))
        hand::giveUp(QStringLiteral("%1 did not become the active window").arg(title));
}

CVXSImageWindow *Stage::openImage(const QString &clickNumber)
{
    activate(sequence->getSequenceID());
    hand::openFromList(window.findChild<QListWidget *>(QStringLiteral("SequenceThumbnails")), clickNumber);
    const CVXSDataset *dataset = sequence->getDataset(clickNumber);
    if (!hand::waitFor([dataset] { return CVXSImageWindow::getImageWindow(dataset); }))
        hand::giveUp(QStringLiteral("the image window of %1 did not open").arg(clickNumber));
    return CVXSImageWindow::getImageWindow(dataset);
}

void Stage::chooseUnit(const QString &text)
{
    hand::chooseFromMenu(&window, {QStringLiteral("View"), QStringLiteral("Unit"), text});
    hand::settle(&window); // images and measurements follow when the event loop comes to them
}

void Stage::selectPair(const QString &clickA, const QString &clickB)
{
    hand::chooseFromList(find<QListWidget>(tool, "m_pListBoxA"), clickA);
    hand::chooseFromList(find<QListWidget>(tool, "m_pListBoxB"), clickB);
}

void Stage::chooseFormula(int index)
{
    hand::chooseFromCombo(find<QComboBox>(tool, "m_pOperationCB"), index);
}

void Stage::typeK(const QString &text)
{
    hand::type(find<QLineEdit>(tool, "m_pKLineEdit"), text);
}

QString Stage::shownK() const
{
    return find<QLineEdit>(tool, "m_pKLineEdit")->text();
}

void Stage::pressDisplay()
{
    hand::click(find<QPushButton>(tool, "m_pDisplayBtn"));
    hand::settle(&window);
}

const CILImage *Stage::shownResult() const
{
    const auto *view = tool->findChild<CVXSMultiImageView *>();
    return view ? view->imageAt(2) : nullptr;
}

QStringList Stage::storedResults()
{
    QStringList found;
    const QDir data(CVXPreference::getProgramDataPath());
    const QStringList folders = data.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString &folder : folders) {
        if (data.exists(folder + QLatin1Char('/') + clickinfo::FILE_CLICK_INFO))
            found += folder;
    }
    return found;
}

QString Stage::resultFolder(const QString &clickNumber)
{
    return CVXPreference::getProgramDataPath() + QLatin1Char('/') + clickNumber + QLatin1Char('/');
}

void Stage::picture(const QString &name, const QString &caption, QWidget *shown)
{
    QWidget *part = shown ? shown : &window;
    if (part->isWindow() && part != &window) { // a dialog
        report.picture(name, hand::photograph(part), caption);
        return;
    }
    const QPixmap whole = hand::photograph(&window);
    for (QWidget *frame = part; frame && frame != &window; frame = frame->parentWidget()) {
        if (qobject_cast<QMdiSubWindow *>(frame))
            part = frame;
    }
    report.picture(name, whole.copy(QRect(part->mapTo(&window, QPoint(0, 0)), part->size())), caption);
}
