// SPDX-License-Identifier: MIT
#include "tests/support/BoundWindow.h"

#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"

#include <QCoreApplication>

BoundWindow::BoundWindow(const QString &sequenceID)
    : m_study(std::make_unique<TestStudy>(sequenceID)),
      m_workspace(std::make_unique<CVXSWorkspace>()),
      m_window(new WindowProbe)
{
    m_workspace->resize(1300, 950);
    m_workspace->show();
    m_workspace->addToolWidget(m_window);
}

BoundWindow::~BoundWindow()
{
    // The window goes before what it is bound to.
    m_workspace.reset();
}

CVXSDataset *BoundWindow::addClick(const QString &number, bool photograph, float first)
{
    ClickSpec spec;
    spec.clickNumber = number;
    spec.counts = [first](int x, int y) { return first + float(x) + 2.0f * float(y); };
    if (photograph)
        spec.photograph = [](int x, int y) { return float(x > 16 && y > 16 ? 200 : 20); };
    return m_study->add(spec);
}

CVXSDataset *BoundWindow::addPhotographOnly(const QString &number)
{
    ClickSpec spec;
    spec.clickNumber = number;
    spec.counts = nullptr;
    spec.photograph = [](int x, int y) { return float(x + y); };
    return m_study->add(spec);
}

bool BoundWindow::bindClicks(const QVector<float> &firsts)
{
    for (int i = 0; i < firsts.size(); ++i)
        addClick(QStringLiteral("A%1").arg(i + 1), false, firsts.at(i));
    return saveAndBind();
}

bool BoundWindow::showClicks(const QVector<float> &firsts)
{
    const bool isBound = bindClicks(firsts);
    show();
    return isBound;
}

bool BoundWindow::saveAndBind()
{
    return m_study->save() && bind();
}

bool BoundWindow::bind()
{
    return m_window->bindToSequence(m_study->sequence()->getSequenceID());
}

void BoundWindow::show()
{
    m_window->doSettings();
    m_window->refreshImages();
    subWindow()->resize(900, 800);
    subWindow()->showWindow();
    QCoreApplication::processEvents();
}

CVXSMdiSubWindow *BoundWindow::subWindow() const
{
    return qobject_cast<CVXSMdiSubWindow *>(m_window->parentWidget());
}

QStringList BoundWindow::textsOf(const QListWidget *list)
{
    QStringList texts;
    for (int i = 0; i < list->count(); ++i)
        texts << list->item(i)->text();
    return texts;
}

QStringList BoundWindow::itemsOf(const QComboBox *box)
{
    QStringList items;
    for (int i = 0; i < box->count(); ++i)
        items << box->itemText(i);
    return items;
}
