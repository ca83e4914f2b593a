// SPDX-License-Identifier: MIT
#include "tests/support/VirtualPlace.h"
#include "window/CVXSImageMathWnd.h"

#include <QMetaMethod>
#include <QtTest>

// The table by which the host and other tools know the window's signals and slots.
class tst_WindowMetaObject : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theClass();
    void methods_data();
    void methods();
    void theResultOperationsStandInTheirOrder();
};

void tst_WindowMetaObject::theClass()
{
    const QMetaObject &meta = CVXSImageMathWnd::staticMetaObject;
    QCOMPARE(meta.className(), "CVXSImageMathWnd");
    QCOMPARE(meta.superClass(), &QWidget::staticMetaObject);
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 22);
}

void tst_WindowMetaObject::methods_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QByteArray>("signature");
    QTest::addColumn<QByteArray>("returns");
    QTest::addColumn<QList<QByteArray>>("names");
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("access");
    QTest::addColumn<bool>("isCloned");
    using Names = QList<QByteArray>;
    int index = 0;
    const auto row = [&index](QMetaMethod::MethodType kind, const char *signature, const Names &names = {},
                              const char *returns = "void", QMetaMethod::Access access = QMetaMethod::Public,
                              bool isCloned = false) {
        QTest::newRow(signature) << index++ << QByteArray(signature) << QByteArray(returns) << names
                                 << int(kind) << int(access) << isCloned;
    };
    const auto signal = QMetaMethod::Signal;
    const auto slot = QMetaMethod::Slot;
    row(signal, "colorRangeABChanged()");
    row(signal, "colorRangeResultChanged()");
    row(signal, "signalLoadImageMathReuslt(QString,bool,ESTATUS*,downloaded_save_data*)",
        {"", "", "", "pDownloadData"});
    row(signal, "signalLoadImageMathReuslt(QString,bool,ESTATUS*)", {"", "", ""}, "void", QMetaMethod::Public,
        true);
    row(slot, "onClickDisplayResultForMeasuring()");
    row(slot, "onChangeStatusOfWithPhotoFrom(int)", {"nState"});
    row(slot, "onChangeMathOperation(int)", {"nIndex"});
    row(slot, "onSelectClickNumberFromList()");
    row(slot, "onChangeValueK()");
    row(slot, "refreshImages()");
    row(slot, "getSequenceID()", {}, "QString");
    row(slot, "closeEvent(QCloseEvent*)", {"e"});
    row(slot, "resizeEvent(QResizeEvent*)", {"e"});
    row(slot, "setHandleClose(bool)", {"bDontHandleClose"});
    row(slot, "onChangeColorRangeAB()");
    row(slot, "onChangeColorRangeResult()");
    row(slot, "onChangeMinZeroStatus(bool)", {"bMinStatus"});
    row(slot, "doSettings()");
    row(slot, "updateImageMathWindow()");
    row(slot, "onShowROIListPopupMenu()");
    row(slot, "onSelectROIFromMenu(QAction*)", {"pAction"});
    row(slot, "languageChange()", {}, "void", QMetaMethod::Protected);
}

void tst_WindowMetaObject::methods()
{
    QFETCH(int, index);
    QFETCH(QByteArray, signature);
    QFETCH(QByteArray, returns);
    QFETCH(QList<QByteArray>, names);
    QFETCH(int, kind);
    QFETCH(int, access);
    QFETCH(bool, isCloned);
    const QMetaObject &meta = CVXSImageMathWnd::staticMetaObject;
    const QMetaMethod method = meta.method(meta.methodOffset() + index);
    QCOMPARE(method.methodSignature(), signature);
    QCOMPARE(QByteArray(method.typeName()), returns);
    QCOMPARE(method.parameterNames(), names);
    QCOMPARE(int(method.methodType()), kind);
    QCOMPARE(int(method.access()), access);
    QCOMPARE(bool(method.attributes() & QMetaMethod::Cloned), isCloned);
}

// Who was built against the window's table calls an operation by its place.
void tst_WindowMetaObject::theResultOperationsStandInTheirOrder()
{
    using W = CVXSImageMathWnd;
    const QVector<std::ptrdiff_t> places{placeOf(&W::compactExponent),
                                         placeOf(&W::appendNoteEntry),
                                         placeOf(&W::removeNoteEntry),
                                         placeOf(&W::replaceNoteEntry),
                                         placeOf(&W::makeResultClickNumber),
                                         placeOf(&W::clickNumberStem),
                                         placeOf(&W::userInitials),
                                         placeOf(&W::letterSuffixValue),
                                         placeOf(&W::letterSuffixFromValue),
                                         placeOf(&W::prepareResultFolder),
                                         placeOf(&W::writeResultClickInfo),
                                         placeOf(&W::writeAnalyzedClickInfo),
                                         placeOf(&W::onClickDisplayResultForMeasuring)};
    for (int i = 1; i < places.size(); ++i)
        QVERIFY2(places[i] == places[0] + i,
                 qPrintable(QString("operation %1 stands in place %2 behind the first")
                                .arg(i)
                                .arg(places[i] - places[0])));
}

QTEST_APPLESS_MAIN(tst_WindowMetaObject)
#include "tst_WindowMetaObject.moc"
