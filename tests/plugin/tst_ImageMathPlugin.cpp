// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "tests/plugin/PluginFixture.h"

#include <QAction>
#include <QIcon>
#include <QMetaMethod>
#include <QPointer>
#include <QtTest>

/// What the plug-in is, and when its action is valid.
class tst_ImageMathPlugin : public PluginFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void methods_data();
    void methods();
    void names();
    void actionIsMadeOnce();
    void nothingHappensOnTheseSignals_data();
    void nothingHappensOnTheseSignals();
    void updateValidity_data();
    void updateValidity();
    void validityOfADataset_data();
    void validityOfADataset();
    void validityOfASequence_data();
    void validityOfASequence();
    void anAddedSequenceIsAlwaysValid_data();
    void anAddedSequenceIsAlwaysValid();
};

void tst_ImageMathPlugin::methods_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QByteArray>("signature");
    QTest::addColumn<QList<QByteArray>>("names");
    QTest::addColumn<bool>("isPublic");
    QTest::addColumn<bool>("isCloned");
    using Names = QList<QByteArray>;
    int index = 0;
    const auto row = [&index](const char *signature, const Names &names, bool isPublic = true,
                              bool isCloned = false) {
        QTest::newRow(signature) << index++ << QByteArray(signature) << names << isPublic << isCloned;
    };
    row("onSignalDatasetChanged(CVXSDataset*)", {""});
    row("onSignalSequenceChanged(CVXSSequenceDataset*)", {""});
    row("onSignalDatasetRemoved(CVXSDataset*)", {""});
    row("onSignalSequenceAdded(CVXSSequenceDataset*)", {""});
    row("onSignalSequenceRemoved(CVXSSequenceDataset*)", {""});
    row("onSignalROIModified(QString)", {""});
    row("onSignalROIDeleted()", {});
    row("onSignalupdateROIList()", {});
    row("signalAddWidgetToWorkspace(QWidget*)", {"pWidget"});
    row("onSignalCopyToClipboard(QString)", {"strObjectName"});
    row("onSignalLoadImageMathResult(QString,bool,ESTATUS*,downloaded_save_data*)",
        {"", "", "", "pDownloadData"}, false);
    row("onSignalLoadImageMathResult(QString,bool,ESTATUS*)", {"", "", ""}, false, true);
}

void tst_ImageMathPlugin::methods()
{
    QFETCH(int, index);
    QFETCH(QByteArray, signature);
    QFETCH(QList<QByteArray>, names);
    QFETCH(bool, isPublic);
    QFETCH(bool, isCloned);
    const QMetaObject *meta = m_plugin->metaObject();
    QCOMPARE(meta->methodCount() - meta->methodOffset(), 12);
    const QMetaMethod method = meta->method(meta->methodOffset() + index);
    QCOMPARE(method.methodSignature(), signature);
    QCOMPARE(method.parameterNames(), names);
    QCOMPARE(method.methodType(), QMetaMethod::Slot);
    QCOMPARE(method.access(), isPublic ? QMetaMethod::Public : QMetaMethod::Protected);
    QCOMPARE(method.returnType(), int(QMetaType::Void));
    QCOMPARE(bool(method.attributes() & QMetaMethod::Cloned), isCloned);
}

void tst_ImageMathPlugin::names()
{
    QCOMPARE(m_plugin->getToolKind(), 0);
    QCOMPARE(m_plugin->getToolName(), QStringLiteral("Image Math"));
    QCOMPARE(m_plugin->getToolGroupName(), QStringLiteral("Image Overlay"));
    QVERIFY(m_plugin->getIcon().isNull());
    QVERIFY(!m_plugin->isToolWindowShown());
    QVERIFY(windows().isEmpty());
}

void tst_ImageMathPlugin::actionIsMadeOnce()
{
    QVERIFY(m_plugin->findChildren<QAction *>().isEmpty());
    QAction *action = m_plugin->getAction();
    QVERIFY(action);
    QCOMPARE(action->text(), QStringLiteral("Image Math"));
    QCOMPARE(action->objectName(), QStringLiteral("Image Math"));
    QCOMPARE(action->parent(), static_cast<QObject *>(m_plugin));
    QCOMPARE(m_plugin->getAction(), action);
    QCOMPARE(m_plugin->findChildren<QAction *>().size(), 1);
}

void tst_ImageMathPlugin::nothingHappensOnTheseSignals_data()
{
    QTest::addColumn<QByteArray>("slot");
    QTest::newRow("a dataset was removed") << QByteArray("onSignalDatasetRemoved");
    QTest::newRow("a region of interest was modified") << QByteArray("onSignalROIModified");
    QTest::newRow("a region of interest was deleted") << QByteArray("onSignalROIDeleted");
    QTest::newRow("the list of regions changed") << QByteArray("onSignalupdateROIList");
}

void tst_ImageMathPlugin::nothingHappensOnTheseSignals()
{
    QFETCH(QByteArray, slot);
    QVERIFY(launchAndShow());
    QPointer<QWidget> before = window();
    m_plugin->getAction()->setEnabled(false);
    m_plugin->getAction()->setVisible(false);
    bool invoked = false;
    if (slot == "onSignalDatasetRemoved") {
        CVXSDataset *dataset = m_study->sequence()->getDatasets().first();
        invoked = QMetaObject::invokeMethod(m_plugin, slot.constData(), Qt::DirectConnection,
                                            QArgument<CVXSDataset *>("CVXSDataset*", dataset));
    } else if (slot == "onSignalROIModified") {
        invoked = QMetaObject::invokeMethod(m_plugin, slot.constData(), Qt::DirectConnection,
                                            Q_ARG(QString, QStringLiteral("ROI 1")));
    } else {
        invoked = QMetaObject::invokeMethod(m_plugin, slot.constData(), Qt::DirectConnection);
    }
    QVERIFY(invoked);
    QVERIFY(!m_plugin->getAction()->isEnabled());
    QVERIFY(!m_plugin->getAction()->isVisible());
    QVERIFY(before && before->isVisible());
    QVERIFY(m_plugin->isToolWindowShown());
}

void tst_ImageMathPlugin::updateValidity_data()
{
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("visible");
    QTest::newRow("enabled and visible") << true << true;
    QTest::newRow("enabled and not visible") << true << false;
    QTest::newRow("disabled and visible") << false << true;
    QTest::newRow("disabled and not visible") << false << false;
}

void tst_ImageMathPlugin::updateValidity()
{
    QFETCH(bool, enabled);
    QFETCH(bool, visible);
    // QAction::isEnabled() is false for an invisible action whatever was set: showing it again tells.
    QAction other(QStringLiteral("other"));
    other.setEnabled(!enabled);
    other.setVisible(!visible);
    m_plugin->updateValidity(&other, enabled, visible);
    QCOMPARE(other.isVisible(), visible);
    other.setVisible(true);
    QCOMPARE(other.isEnabled(), enabled);
}

void tst_ImageMathPlugin::validityOfADataset_data()
{
    QTest::addColumn<QString>("which");
    QTest::addColumn<bool>("valid");
    QTest::newRow("a dataset of a sequence enables and shows the action") << "member" << true;
    QTest::newRow("a dataset of no sequence disables and hides it") << "single" << false;
    QTest::newRow("no dataset disables and hides it") << "null" << false;
}

void tst_ImageMathPlugin::validityOfADataset()
{
    QFETCH(QString, which);
    QFETCH(bool, valid);
    CVXSDataset single(QStringLiteral("SG20260102030409"));
    CVXSDataset *dataset = which == QLatin1String("member")   ? m_study->sequence()->getDatasets().first()
                           : which == QLatin1String("single") ? &single
                                                              : nullptr;
    for (const bool throughMetaObject : {false, true}) {
        m_plugin->getAction()->setEnabled(!valid);
        m_plugin->getAction()->setVisible(!valid);
        if (throughMetaObject)
            QVERIFY(QMetaObject::invokeMethod(m_plugin, "onSignalDatasetChanged", Qt::DirectConnection,
                                              QArgument<CVXSDataset *>("CVXSDataset*", dataset)));
        else
            m_plugin->onSignalDatasetChanged(dataset);
        QCOMPARE(m_plugin->getAction()->isEnabled(), valid);
        QCOMPARE(m_plugin->getAction()->isVisible(), valid);
    }
}

void tst_ImageMathPlugin::validityOfASequence_data()
{
    QTest::addColumn<bool>("hasWindow");
    QTest::addColumn<bool>("is3DSceneOnly");
    QTest::addColumn<bool>("isNull");
    QTest::addColumn<bool>("valid");
    QTest::newRow("a sequence with a window enables the action") << true << false << false << true;
    QTest::newRow("a window that holds only a 3D scene disables it") << true << true << false << false;
    QTest::newRow("a sequence without a window enables it") << false << false << false << true;
    QTest::newRow("a 3D scene without a window enables it") << false << true << false << true;
    QTest::newRow("no sequence at all enables it") << false << false << true << true;
}

void tst_ImageMathPlugin::validityOfASequence()
{
    QFETCH(bool, hasWindow);
    QFETCH(bool, is3DSceneOnly);
    QFETCH(bool, isNull);
    QFETCH(bool, valid);
    m_study->sequence()->set3DSceneOnly(is3DSceneOnly);
    if (hasWindow)
        m_workspace->showSequence(m_study->sequence());
    CVXSSequenceDataset *sequence = isNull ? nullptr : m_study->sequence();
    for (const bool throughMetaObject : {false, true}) {
        m_plugin->getAction()->setEnabled(!valid);
        m_plugin->getAction()->setVisible(!valid);
        if (throughMetaObject)
            QVERIFY(QMetaObject::invokeMethod(
                m_plugin, "onSignalSequenceChanged", Qt::DirectConnection,
                QArgument<CVXSSequenceDataset *>("CVXSSequenceDataset*", sequence)));
        else
            m_plugin->onSignalSequenceChanged(sequence);
        QCOMPARE(m_plugin->getAction()->isEnabled(), valid);
        QCOMPARE(m_plugin->getAction()->isVisible(), valid);
    }
}

void tst_ImageMathPlugin::anAddedSequenceIsAlwaysValid_data()
{
    QTest::addColumn<bool>("is3DSceneOnly");
    QTest::addColumn<bool>("isNull");
    QTest::newRow("a sequence of images") << false << false;
    QTest::newRow("even one that holds only a 3D scene") << true << false;
    QTest::newRow("even a null one") << false << true;
}

void tst_ImageMathPlugin::anAddedSequenceIsAlwaysValid()
{
    QFETCH(bool, is3DSceneOnly);
    QFETCH(bool, isNull);
    m_study->sequence()->set3DSceneOnly(is3DSceneOnly);
    m_workspace->showSequence(m_study->sequence());
    m_plugin->getAction()->setEnabled(false);
    m_plugin->getAction()->setVisible(false);
    m_plugin->onSignalSequenceAdded(isNull ? nullptr : m_study->sequence());
    QVERIFY(m_plugin->getAction()->isEnabled());
    QVERIFY(m_plugin->getAction()->isVisible());
}

QTEST_MAIN(tst_ImageMathPlugin)
#include "tst_ImageMathPlugin.moc"
