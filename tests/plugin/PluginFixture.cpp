// SPDX-License-Identifier: MIT
#include "tests/plugin/PluginFixture.h"

#include "host/vxapi/view/windows/CVXSChildWindow.h"

#include <QApplication>
#include <QClipboard>
#include <QtTest>

void PluginFixture::setUp()
{
    m_workspace = std::make_unique<CVXSWorkspace>();
    m_workspace->resize(1400, 1000);
    m_workspace->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_workspace.get()));
    m_plugin = qobject_cast<CVXToolPluginBase *>(m_loader.instance());
    QVERIFY2(m_plugin, qPrintable(m_loader.errorString()));
    makeStudy(m_study, QStringLiteral("AB20260102030405_SEQ"), QStringLiteral("AB2026010203040"));
}

void PluginFixture::tearDown()
{
    delete m_loader.instance();
    m_plugin = nullptr;
    const QList<QWidget *> left = windows();
    for (QWidget *one : left)
        delete (one->parentWidget() ? one->parentWidget() : one);
    m_workspace.reset();
    CVXSChildWindow::setActiveChildWnd(nullptr);
    m_second.reset();
    m_study.reset();
    QApplication::clipboard()->clear();
}

QList<QWidget *> PluginFixture::windows() const
{
    QList<QWidget *> found;
    for (QWidget *widget : QApplication::allWidgets()) {
        if (qstrcmp(widget->metaObject()->className(), "CVXSImageMathWnd") == 0)
            found << widget;
    }
    return found;
}

QString PluginFixture::boundID(QWidget *window) const
{
    QString id;
    if (!window ||
        !QMetaObject::invokeMethod(window, "getSequenceID", Qt::DirectConnection, Q_RETURN_ARG(QString, id)))
        return QStringLiteral("no window");
    return id;
}

void PluginFixture::makeStudy(std::unique_ptr<TestStudy> &study, const QString &id, const QString &prefix)
{
    study = std::make_unique<TestStudy>(id);
    QVERIFY(study->add(ClickSpec::of(prefix + QStringLiteral("1"))));
    QVERIFY(study->add(ClickSpec::of(prefix + QStringLiteral("2"))));
    QVERIFY(study->save());
}

void PluginFixture::showUnsavedSequence()
{
    m_second = std::make_unique<TestStudy>(QStringLiteral("NS20260102030405_SEQ"));
    QVERIFY(m_second->add(ClickSpec::of(QStringLiteral("NS20260102030401"))));
    QVERIFY(m_second->add(ClickSpec::of(QStringLiteral("NS20260102030402"))));
    m_workspace->showSequence(m_second->sequence());
}

bool PluginFixture::launchAndShow()
{
    m_workspace->showSequence(m_study->sequence());
    if (!m_plugin->launchTool())
        return false;
    m_plugin->showToolWindow();
    QCoreApplication::processEvents();
    return window() && window()->isVisible();
}

bool PluginFixture::requestLoad(QWidget *window, const QString &path, bool flag, ESTATUS *status,
                                downloaded_save_data *data)
{
    return QMetaObject::invokeMethod(window, "signalLoadImageMathReuslt", Qt::DirectConnection,
                                     Q_ARG(QString, path), Q_ARG(bool, flag),
                                     QArgument<ESTATUS *>("ESTATUS*", status),
                                     QArgument<downloaded_save_data *>("downloaded_save_data*", data));
}
