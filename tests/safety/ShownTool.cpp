// SPDX-License-Identifier: MIT
#include "tests/safety/ShownTool.h"

#include "app/MainWindow.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/model/StoredDatasets.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"
#include "tests/support/GuiDriver.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiSubWindow>
#include <QMenu>
#include <QTest>

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
    GuiDriver user(m_window.get());
    const auto find = [this] { return m_window->findChild<QWidget *>(QStringLiteral("Image Math Window")); };
    if (!user.chooseFromMenu("menuTools", QStringLiteral("Image Math")) ||
        !user.waitFor([&find] { return find() && find()->isVisible(); },
                      QStringLiteral("the opening of the tool")))
        return fail(user.why());
    m_tool = find();
    if (auto *sub = qobject_cast<QMdiSubWindow *>(m_tool->parentWidget())) {
        sub->move(2, 2);
        sub->resize(900, 800);
    }
    return true;
}

bool ShownTool::select(const QString &clickA, const QString &clickB)
{
    GuiDriver user(m_tool);
    return (user.pick("m_pListBoxA", clickA) && user.pick("m_pListBoxB", clickB)) || fail(user.why());
}

bool ShownTool::choosePhotograph(const QString &from)
{
    GuiDriver user(m_tool);
    if (button("m_pWithPhotoChkBox")->isChecked() == from.isEmpty() && !user.press("m_pWithPhotoChkBox"))
        return fail(user.why());
    const int item = combo("m_pPhotoFromCB")->findText(from);
    return from.isEmpty() || user.choose("m_pPhotoFromCB", item) ||
           fail(QStringLiteral("no photograph of ") + from);
}

bool ShownTool::pressDisplayResult()
{
    const QStringList before = knownResults();
    m_result = nullptr;
    GuiDriver user(m_tool);
    if (!user.press("m_pDisplayBtn"))
        return fail(user.why());
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
    // What the user answers with "Discard": the files stay.
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
