// SPDX-License-Identifier: MIT
#include "tests/safety/ShownTool.h"

#include "app/MainWindow.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/model/StoredDatasets.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiSubWindow>
#include <QMenu>
#include <QTest>

namespace {

constexpr int PATIENCE = 20000; // ms; sanitized builds are slow

bool clickButton(QAbstractButton *button)
{
    if (!button || !button->isEnabled())
        return false;
    // Check boxes take clicks on indicator and text only, not on the space beside them.
    QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
    return true;
}

} // namespace

ShownTool::ShownTool() : m_window(std::make_unique<MainWindow>())
{
    m_window->resize(1300, 950);
    m_window->loadPlugins(QStringLiteral(VEXA_BINARY_DIR "/lib/vexa/plugins"));
    m_window->show();
}

ShownTool::~ShownTool() = default;

bool ShownTool::fail(const QString &why)
{
    m_why = why;
    return false;
}

bool ShownTool::openSequence(const QString &folder)
{
    m_sequence = m_window->openSequence(folder);
    return m_sequence ? true : fail(folder + QStringLiteral(" could not be opened"));
}

bool ShownTool::openImageMath()
{
    const auto *menu = m_window->findChild<QMenu *>(QStringLiteral("menuTools"));
    const QList<QAction *> entries = menu ? menu->actions() : QList<QAction *>();
    for (QAction *entry : entries) {
        if (entry->text() == QLatin1String("Image Math") && entry->isEnabled())
            entry->trigger();
    }
    const auto find = [this] { return m_window->findChild<QWidget *>(QStringLiteral("Image Math Window")); };
    if (!QTest::qWaitFor([&find] { return find() && find()->isVisible(); }, PATIENCE))
        return fail(QStringLiteral("the Image Math Window did not appear"));
    m_tool = find();
    if (auto *sub = qobject_cast<QMdiSubWindow *>(m_tool->parentWidget())) {
        sub->move(2, 2);
        sub->resize(900, 800);
    }
    return true;
}

bool ShownTool::clickItem(QListWidget *list, const QString &text)
{
    const QList<QListWidgetItem *> items =
        list ? list->findItems(text, Qt::MatchExactly) : QList<QListWidgetItem *>();
    if (items.isEmpty())
        return fail(text + QStringLiteral(" is not in the list"));
    list->scrollToItem(items.first());
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list->visualItemRect(items.first()).center());
    return list->currentItem() == items.first() || fail(text + QStringLiteral(" did not take the click"));
}

bool ShownTool::select(const QString &clickA, const QString &clickB)
{
    return clickItem(listA(), clickA) && clickItem(listB(), clickB);
}

bool ShownTool::choosePhotograph(const QString &from)
{
    QAbstractButton *with = button("m_pWithPhotoChkBox");
    if (with->isChecked() == from.isEmpty() && !clickButton(with))
        return fail(QStringLiteral("the photograph cannot be switched"));
    QComboBox *choice = combo("m_pPhotoFromCB");
    if (from.isEmpty() || choice->currentText() == from)
        return true;
    // With the arrow keys: what an open list takes a click for depends on where the pointer happens to be.
    choice->setFocus(Qt::TabFocusReason);
    QTest::keyClick(choice, from == QLatin1String("A") ? Qt::Key_Up : Qt::Key_Down);
    return choice->currentText() == from || fail(QStringLiteral("no photograph of ") + from);
}

bool ShownTool::pressDisplayResult()
{
    const QStringList before = knownResults();
    m_result = nullptr;
    if (!clickButton(button("m_pDisplayBtn")))
        return fail(QStringLiteral("\"Display Result For Measuring\" is disabled"));
    const QStringList after = knownResults();
    for (const QString &click : after) {
        if (!before.contains(click) && CVXSDataset::getOpenDataset(click))
            m_result = CVXSDataset::getOpenDataset(click);
    }
    return m_result || fail(QStringLiteral("no result came of it"));
}

bool ShownTool::closeResult()
{
    CVXSImageWindow *shown = m_result ? CVXSImageWindow::getImageWindow(m_result) : nullptr;
    if (!shown || !shown->subWindow())
        return fail(QStringLiteral("the result has no window"));
    // What a person answers with "Discard": the files stay.
    m_result->setModified(false);
    m_result->setImageMathToBeSaved(false);
    shown->subWindow()->close();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return !m_result || fail(QStringLiteral("the result does not close"));
}

QListWidget *ShownTool::listA() const
{
    return m_tool->findChild<QListWidget *>(QStringLiteral("m_pListBoxA"));
}

QListWidget *ShownTool::listB() const
{
    return m_tool->findChild<QListWidget *>(QStringLiteral("m_pListBoxB"));
}

QAbstractButton *ShownTool::button(const char *name) const
{
    return m_tool->findChild<QAbstractButton *>(QString::fromLatin1(name));
}

QComboBox *ShownTool::combo(const char *name) const
{
    return m_tool->findChild<QComboBox *>(QString::fromLatin1(name));
}

QLineEdit *ShownTool::k() const
{
    return m_tool->findChild<QLineEdit *>(QStringLiteral("m_pKLineEdit"));
}

QStringList knownResults()
{
    QStringList clicks;
    const QList<StoredDataset> known = StoredDatasets::instance().list();
    for (const StoredDataset &dataset : known)
        clicks += dataset.clickNumber;
    return clicks;
}

double totalOf(const CILImage &image)
{
    const auto *pixels = static_cast<const float *>(image.get_data());
    double sum = 0.0;
    for (std::size_t i = 0; i < std::size_t(image.getWidth()) * image.getHeight(); ++i)
        sum += double(pixels[i]);
    return sum;
}
