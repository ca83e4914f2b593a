// SPDX-License-Identifier: MIT
#include "host/vxapi/model/roi/RoiMimeData.h"
#include "tests/support/Rows.h"

#include <QMimeData>
#include <QtTest>

namespace {

const QString TYPE = QStringLiteral("application/x-vexa-rois");

/// One of each kind of shape, with numbers that no decimal has exactly and names that a file must escape.
std::vector<CROIBase> someOfAll()
{
    const QRectF box(1.0 / 3.0, 0.1, 2.0 / 7.0, 1e-3);
    std::vector<CROIBase> rois = {
        CROIBase(EROI_RECTANGLE, EROI_MEASUREMENT, box), CROIBase(EROI_ELLIPSE, EROI_BACKGROUND, box),
        CROIBase(EROI_POLYGON, EROI_MEASUREMENT, QVector<QPointF>{{0.1, 0.2}, {1.0 / 3.0, 5.0}, {2.0, 0.7}}),
        CROIBase(EROI_MEASUREMENT, box, 3, 4)};
    rois[0].setName(QStringLiteral("Tumor"));
    rois[1].setName(QString::fromUtf8("Ohr = links \\ ä"));
    rois[2].setName(QStringLiteral("# [1]\nsecond line"));
    rois[3].setName(QStringLiteral(" Wells "));
    return rois;
}

} // namespace

class tst_RoiMimeData : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyRoiComesBackAsItWas()
    {
        const std::vector<CROIBase> written = someOfAll();
        QMimeData data;
        roimime::write(written, &data);
        QVERIFY(roimime::isPresent(&data));
        QString reason;
        const std::vector<CROIBase> read = roimime::read(&data, &reason);
        QCOMPARE(reason, QString());
        QCOMPARE(read.size(), written.size());
        for (std::size_t i = 0; i < read.size(); ++i) {
            QCOMPARE(read[i].name(), written[i].name());
            QCOMPARE(read[i].shape(), written[i].shape());
            QCOMPARE(read[i].kind(), written[i].kind());
            QCOMPARE(read[i].rows() * 100 + read[i].columns(),
                     written[i].rows() * 100 + written[i].columns());
            QVERIFY(read[i].boundingBox().left() == written[i].boundingBox().left());
            QVERIFY(read[i].boundingBox().height() == written[i].boundingBox().height());
            QCOMPARE(read[i].outline(), written[i].outline());
        }
    }

    void aTextEditorGetsTheLinesOfTheFile()
    {
        QMimeData data;
        CROIBase roi(EROI_ELLIPSE, EROI_MEASUREMENT, QRectF(2.5, 3.0, 1.25, 1.0));
        roi.setName(QStringLiteral("Tumor"));
        roimime::write({roi}, &data);
        QCOMPARE(data.text(), QStringLiteral("[ROIs]\nTumor = measurement ellipse; left 2.5; top 3; "
                                             "width 1.25; height 1\n"));
        QMimeData table;
        table.setText(QStringLiteral("its own text"));
        roimime::write({roi}, &table);
        QCOMPARE(table.text(), QStringLiteral("its own text"));
    }

    void whatIsNoRoiIsToldAndGivesNone_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("reason");
        row("no ROIs at all", QByteArray(), "There is no ROI to be pasted: select ROIs and copy them first.");
        row("an empty section", QByteArray("[ROIs]\n"), "The copied ROIs cannot be read: there is none");
        row("another section", QByteArray("[Other]\nA = measurement ellipse\n"),
            "The copied ROIs cannot be read: there is none");
        row("a text that is no record", QByteArray("Tumor\t1\n"), "The copied ROIs cannot be read: line 1: ");
        row("a damaged one behind a whole one",
            QByteArray("[ROIs]\nA = measurement ellipse; left 1; top 1; width 1; height 1\n"
                       "B = measurement ellipse; left 2x; top 1; width 1; height 1\n"),
            "The copied ROIs cannot be read: \"2x\" is not a finite number");
    }
    void whatIsNoRoiIsToldAndGivesNone()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, reason);
        QMimeData data;
        data.setText(QStringLiteral("Tumor = measurement ellipse; left 1; top 1; width 1; height 1"));
        if (!text.isNull())
            data.setData(TYPE, text);
        QString told;
        QVERIFY(roimime::read(&data, &told).empty());
        QVERIFY2(told.startsWith(reason), qPrintable(told));
    }

    void withoutAClipboardThereIsNothing()
    {
        QString told;
        QVERIFY(!roimime::isPresent(nullptr));
        QVERIFY(roimime::read(nullptr, &told).empty());
        QVERIFY(!told.isEmpty());
    }
};

QTEST_GUILESS_MAIN(tst_RoiMimeData)
#include "tst_RoiMimeData.moc"
