// SPDX-License-Identifier: MIT
#include "host/vxapi/view/measurement/MeasurementPane.h"
#include "host/vxapi/view/measurement/MeasurementTableModel.h"
#include "host/vxapi/view/measurement/MeasurementText.h"
#include "tests/support/DialogAnswerer.h"
#include "tests/support/RoiWindowFixture.h"
#include "tests/support/Rows.h"

#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

namespace {

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

CRoiMeasInfo record(const QString &name = QStringLiteral("Tumor"), tag_edisplayunit unit = EUNIT_RADIANCE)
{
    CRoiMeasInfo info;
    info.clickNumber = QStringLiteral("MT1");
    info.roiName = name;
    info.unit = unit;
    info.counts.sum = 1234567.25;
    info.calibrated = {12, 3, 6.0e9 / 7.0, 1.0e8 / 7.0, NOT_A_NUMBER, -0.5, 1e300};
    info.calibratedTotal = 1.0 / 3.0;
    info.area = 0.75;
    info.saturatedPixels = 5;
    info.isValid = true;
    return info;
}

class TableFixture : public RoiWindowFixture
{
public:
    using RoiWindowFixture::RoiWindowFixture;

    QTableView *table() const { return child<QTableView>("MeasurementTable"); }
    int rows() const { return table()->model()->rowCount(); }
    QString header(int column) const
    {
        // Shown in two lines.
        return table()->model()->headerData(column, Qt::Horizontal).toString().replace('\n', ' ');
    }
    QString cell(int row, const QString &header) const
    {
        for (int column = 0; column < table()->model()->columnCount(); ++column) {
            if (this->header(column) == header)
                return table()->model()->index(row, column).data().toString();
        }
        return QStringLiteral("no such column");
    }
    QStringList names() const
    {
        QStringList list;
        for (int row = 0; row < rows(); ++row)
            list.append(cell(row, QStringLiteral("ROI")));
        return list;
    }
    QList<int> selectedRows() const
    {
        QList<int> list;
        const QModelIndexList rows = table()->selectionModel()->selectedRows();
        for (const QModelIndex &index : rows)
            list.append(index.row());
        return list;
    }
    QString status() const { return child<QLabel>("RoiStatus")->text(); }
};

QStringList clipboardLines()
{
    return QApplication::clipboard()->text().split(QLatin1Char('\n'));
}

} // namespace

class tst_MeasurementTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }

    void headersTellTheUnit_data()
    {
        QTest::addColumn<int>("unit");
        QTest::addColumn<QString>("total");
        QTest::addColumn<QString>("mean");
        row("counts", int(EUNIT_COUNTS), "Total counts", "Mean [counts]");
        row("radiance", int(EUNIT_RADIANCE), "Total flux [p/s]", "Mean [p/s/cm²/sr]");
        row("radiant efficiency", int(EUNIT_RADIANT_EFFICIENCY), "Total radiant efficiency [(p/s)/(µW/cm²)]",
            "Mean [(p/s/cm²/sr)/(µW/cm²)]");
        row("efficiency", int(EUNIT_EFFICIENCY), "Total efficiency [cm²]", "Mean");
    }
    void headersTellTheUnit()
    {
        QFETCH(int, unit);
        QFETCH(QString, total);
        QFETCH(QString, mean);
        const QStringList headers = measurementtext::headers(tag_edisplayunit(unit));
        QVERIFY(headers.contains(total));
        QVERIFY(headers.contains(mean));
        QVERIFY(headers.contains(QStringLiteral("Area [cm²]")));
        QCOMPARE(headers.count(QStringLiteral("Total counts")), 1);
        const auto values = measurementtext::shownValues(record(), tag_edisplayunit(unit));
        QCOMPARE(values.size(), headers.size());
    }

    void productsAndRatiosHaveNoTotals_data()
    {
        QTest::addColumn<int>("unit");
        QTest::addColumn<QString>("name");
        row("product", int(EUNIT_PRODUCT), "product");
        row("ratio", int(EUNIT_RATIO), "ratio");
    }
    void productsAndRatiosHaveNoTotals()
    {
        QFETCH(int, unit);
        QFETCH(QString, name);
        const QString in = " [" + name + "]";
        const QStringList expected = {"ROI",       "Kind",           "Pixels",   "Saturated", "Area [cm²]",
                                      "Mean" + in, "Std. dev." + in, "Min" + in, "Max" + in};
        QCOMPARE(measurementtext::headers(tag_edisplayunit(unit)), expected);
        CRoiMeasInfo of = record();
        of.unit = tag_edisplayunit(unit);
        QCOMPARE(measurementtext::shownValues(of, of.unit).size(), expected.size());
        QCOMPARE(measurementtext::shownValues(of, of.unit)[5],
                 measurementtext::shownValues(record(), EUNIT_RADIANCE)[7]);
        const QString csv = measurementtext::asCsv({of}, of.unit);
        QVERIFY2(!csv.contains("Total") && csv.contains("Mean" + in), qPrintable(csv));
    }

    void numbersHaveSixDigitsShownAndAllOfThemCopied()
    {
        const QLocale before;
        QLocale::setDefault(QLocale(QLocale::German)); // its comma must show nowhere
        const QStringList shown = measurementtext::shownValues(record(), EUNIT_RADIANCE);
        const QStringList exact = measurementtext::exactValues(record(), EUNIT_RADIANCE);
        QLocale::setDefault(before);
        QCOMPARE(shown, QStringList({"Tumor", "Measurement", "12", "5", "0.75", "1.23457e+06", "0.333333",
                                     "1.42857e+07", QString(QChar(0x2013)), "-0.5", "1e+300"}));
        QCOMPARE(exact[5], QStringLiteral("1234567.25"));
        QCOMPARE(exact[6].toDouble(), 1.0 / 3.0);
        QCOMPARE(exact[7].toDouble(), 1.0e8 / 7.0);
        QCOMPARE(exact[8], QStringLiteral("NaN"));
        // Values of another unit than the table's would lie under its headers.
        const QStringList foreign = measurementtext::shownValues(record(), EUNIT_RADIANT_EFFICIENCY);
        QCOMPARE(foreign[6], QString(QChar(0x2013)));
        QCOMPARE(foreign[9], QString(QChar(0x2013)));
        QCOMPARE(foreign[5], QStringLiteral("1.23457e+06"));
    }

    void namesDoNotBreakTheText()
    {
        const QVector<CRoiMeasInfo> records = {record(QStringLiteral("a,\"b\"\tc\nd"))};
        const QString tabbed = measurementtext::asTabbed(records, EUNIT_RADIANCE);
        QCOMPARE(tabbed.count(QLatin1Char('\n')), 2);
        QVERIFY(tabbed.contains(QStringLiteral("\nMT1\ta,\"b\" c d\tMeasurement\t12\t")));
        const QString csv = measurementtext::asCsv(records, EUNIT_RADIANCE);
        QVERIFY(csv.startsWith(
            QStringLiteral("Dataset,ROI,Kind,Pixels,Saturated,Area [cm^2],Total counts,Total flux [p/s],")));
        QVERIFY(
            csv.contains(QStringLiteral("\nMT1,\"a,\"\"b\"\"\tc\nd\",Measurement,12,5,0.75,1234567.25,")));
    }

    void aDrawnRoiIsMeasured()
    {
        TableFixture f;
        QCOMPARE(f.rows(), 0);
        f.trigger("RoiRectangleTool");
        f.drag(f.at(4.0, 4.0), f.at(6.1, 6.1));
        QTRY_COMPARE(f.rows(), 1);
        f.manager->setROIBox(f.only(), QRectF(4.0, 4.0, 2.0, 2.0));
        QTRY_COMPARE(f.cell(0, QStringLiteral("Pixels")), QStringLiteral("64"));
        QCOMPARE(f.cell(0, QStringLiteral("Area [cm²]")), QStringLiteral("4"));
        QCOMPARE(f.cell(0, QStringLiteral("Total counts")), QStringLiteral("10144"));
        QCOMPARE(f.cell(0, QStringLiteral("Mean [counts]")), QStringLiteral("158.5"));
        QCOMPARE(f.cell(0, QStringLiteral("Std. dev. [counts]")), QStringLiteral("5.16398"));
        QCOMPARE(f.cell(0, QStringLiteral("Min [counts]")), QStringLiteral("148"));
        QCOMPARE(f.cell(0, QStringLiteral("Max [counts]")), QStringLiteral("169"));
        QCOMPARE(f.status(), QString());
        f.key(Qt::Key_Delete);
        QTRY_COMPARE(f.rows(), 0);
    }

    void itFollowsPixelsAndUnit()
    {
        TableFixture f;
        f.add(QRectF(4.0, 4.0, 2.0, 2.0));
        QTRY_COMPARE(f.cell(0, QStringLiteral("Total counts")), QStringLiteral("10144"));
        CILImage doubled = *f.dataset->getCoreImage(EIMAGE_LUMINESCENT);
        doubled *= 2.0;
        f.dataset->setCoreImage(EIMAGE_LUMINESCENT, doubled);
        QTRY_COMPARE(f.cell(0, QStringLiteral("Total counts")), QStringLiteral("20288"));
        f.dataset->setUnit(EUNIT_RADIANCE);
        QTRY_VERIFY(f.cell(0, QStringLiteral("Total flux [p/s]")).toDouble() > 1e4);
        const double mean = f.cell(0, QStringLiteral("Mean [p/s/cm²/sr]")).toDouble();
        const double flux = f.cell(0, QStringLiteral("Total flux [p/s]")).toDouble();
        QVERIFY(std::abs(flux / (mean * 4.0 * 4.0 * M_PI) - 1.0) < 2e-5); // area 4 cm^2, 4 pi sr
        QCOMPARE(f.cell(0, QStringLiteral("Total counts")), QStringLiteral("20288"));
    }

    void theUnitForthAndBackAtOnceChangesNothing()
    {
        TableFixture f;
        f.add(QRectF(4.0, 4.0, 2.0, 2.0));
        QTRY_COMPARE(f.rows(), 1);
        const QImage before = f.view->rasterImage();
        f.dataset->setUnit(EUNIT_RADIANCE);
        f.dataset->setUnit(EUNIT_COUNTS);
        f.settle();
        QTRY_COMPARE(f.cell(0, QStringLiteral("Total counts")), QStringLiteral("10144"));
        QVERIFY(!f.table()->model()->index(0, 0).data(Qt::ForegroundRole).isValid());
        QCOMPARE(f.view->rasterImage(), before);
    }

    void whatIsOutOfDateIsGrey()
    {
        MeasurementTableModel model;
        CRoiMeasInfo old = record();
        model.setRecords({old}, EUNIT_RADIANCE);
        const QModelIndex index = model.index(0, 4);
        QVERIFY(!index.data(Qt::ForegroundRole).isValid());
        old.isValid = false;
        model.setRecords({old}, EUNIT_RADIANCE);
        QCOMPARE(index.data(Qt::ForegroundRole).value<QColor>(), QColor(Qt::gray));
        QCOMPARE(index.data(Qt::ToolTipRole).toString(), QStringLiteral("out of date"));
    }

    void saturatedPixelsStandOut_data()
    {
        QTest::addColumn<int>("saturated");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("isWarning");
        row("none", 0, "0", false);
        row("some", 5, "5", true);
        row("of a result, which no camera took", -1, QString(QChar(0x2013)), false);
    }
    void saturatedPixelsStandOut()
    {
        QFETCH(int, saturated);
        QFETCH(QString, text);
        QFETCH(bool, isWarning);
        MeasurementTableModel model;
        CRoiMeasInfo info = record();
        info.saturatedPixels = saturated;
        model.setRecords({info}, EUNIT_RADIANCE);
        QCOMPARE(model.headerData(3, Qt::Horizontal).toString(), QStringLiteral("Saturated"));
        QCOMPARE(model.index(0, 3).data().toString(), text);
        QCOMPARE(model.index(0, 3).data(Qt::ForegroundRole).isValid(), isWarning);
        QVERIFY(!model.index(0, 2).data(Qt::ForegroundRole).isValid());
        const QString toolTip = model.index(0, 0).data(Qt::ToolTipRole).toString();
        QVERIFY(toolTip.contains(QStringLiteral("3 pixels that are not finite are left out")));
        QCOMPARE(toolTip.contains(QStringLiteral("5 pixels are saturated: the totals are too low")),
                 isWarning);
        QCOMPARE(measurementtext::exactValues(info, EUNIT_RADIANCE)[3],
                 saturated < 0 ? QStringLiteral("NaN") : text);
    }

    void whatAToolMarksOutOfDateIsMeasuredAgain()
    {
        TableFixture f;
        CROIBase *roi = f.add(QRectF(4.0, 4.0, 2.0, 2.0));
        QTRY_COMPARE(f.rows(), 1);
        const auto isUpToDate = [&] {
            return CRoiMeasurementManager::getRoiMeasurementManager()->isUpToDate(f.dataset->getClickNumber(),
                                                                                  QStringLiteral("ROI 1"));
        };
        QVERIFY(isUpToDate());
        f.manager->setMeasurementInvalid(roi);
        QVERIFY(!isUpToDate());
        QTRY_VERIFY(isUpToDate());
        f.settle();
        QVERIFY(!f.table()->model()->index(0, 4).data(Qt::ForegroundRole).isValid());
    }

    void gridCellsHaveRowsOfTheirOwn()
    {
        TableFixture f;
        f.manager->addROI(CROIBase(EROI_MEASUREMENT, QRectF(8.0, 8.0, 4.0, 2.0), 1, 2));
        f.add(QRectF(1.0, 1.0, 1.0, 1.0));
        QTRY_COMPARE(f.names(), QStringList({"Grid 1", "Grid 1 [1, 1]", "Grid 1 [1, 2]", "ROI 1"}));
        QCOMPARE(f.cell(1, QStringLiteral("Pixels")), QStringLiteral("64"));
        // A cell stands for its grid, and stays selected itself.
        f.table()->selectRow(2);
        QCOMPARE(f.manager->selectedROI()->name(), QStringLiteral("Grid 1"));
        QCOMPARE(f.selectedRows(), QList<int>{2});
    }

    void selectionGoesBothWays()
    {
        TableFixture f;
        CROIBase *a = f.add(QRectF(2.0, 2.0, 2.0, 2.0));
        CROIBase *b = f.add(QRectF(6.0, 6.0, 2.0, 2.0));
        QTRY_COMPARE(f.rows(), 2);
        f.click(f.at(7.0, 7.0));
        QCOMPARE(f.selectedRows(), QList<int>{1});
        f.table()->selectRow(0);
        QCOMPARE(f.manager->selectedROIs(), QList<CROIBase *>{a});
        f.table()->selectAll();
        QCOMPARE(f.manager->selectedROIs(), (QList<CROIBase *>{a, b}));
        f.click(f.at(14.0, 14.0));
        QVERIFY(f.selectedRows().isEmpty());
        f.table()->selectRow(1);
        f.table()->clearSelection();
        QVERIFY(f.manager->selectedROIs().isEmpty());
        // It stays when values and rows change.
        f.manager->selectROI(b, false);
        f.add(QRectF(10.0, 10.0, 2.0, 2.0));
        QTRY_COMPARE(f.rows(), 3);
        QCOMPARE(f.selectedRows(), QList<int>{1});
        QCOMPARE(f.manager->selectedROI(), b);
    }

    void delInTheTableDeletesTheRoi()
    {
        TableFixture f;
        f.add(QRectF(2.0, 2.0, 2.0, 2.0));
        f.add(QRectF(6.0, 6.0, 2.0, 2.0));
        QTRY_COMPARE(f.rows(), 2);
        f.table()->selectRow(0);
        QTest::keyClick(f.table(), Qt::Key_Delete);
        QTRY_COMPARE(f.names(), QStringList({"ROI 2"}));
        QVERIFY(f.selectedRows().isEmpty());
        QTest::keyClick(f.table(), Qt::Key_Delete); // nothing selected
        f.settle();
        QCOMPARE(f.rows(), 1);
    }

    void theTableIsCopied()
    {
        TableFixture f;
        f.add(QRectF(4.0, 4.0, 2.0, 2.0), QStringLiteral("Tumor"));
        f.add(QRectF(8.0, 8.0, 2.0, 2.0));
        // Not measured yet: copying does it first.
        f.manager->moveROI(f.manager->rois()[1], QPointF(1.0, 0.0));
        f.child<QPushButton>("CopyTableButton")->click();
        QStringList lines = clipboardLines();
        QCOMPARE(lines.size(), 4);
        QCOMPARE(lines[3], QString());
        QVERIFY(lines[0].startsWith(
            QStringLiteral("Dataset\tROI\tKind\tPixels\tSaturated\tArea [cm²]\tTotal counts")));
        const QStringList values = lines[1].split(QLatin1Char('\t'));
        QCOMPARE(values[1], QStringLiteral("Tumor"));
        QCOMPARE(values[6], QStringLiteral("10144"));
        QVERIFY(values[8].startsWith(QStringLiteral("5.16397779"))); // all its digits
        QCOMPARE(lines[2].split(QLatin1Char('\t'))[7], QStringLiteral("210.5"));
        f.table()->selectRow(1);
        QTest::keyClick(f.table(), Qt::Key_C, Qt::ControlModifier);
        lines = clipboardLines();
        QCOMPARE(lines.size(), 3);
        QVERIFY(lines[1].contains(QStringLiteral("ROI 1")));
    }

    void theTableIsSaved()
    {
        TableFixture f;
        f.add(QRectF(4.0, 4.0, 2.0, 2.0), QString::fromUtf8("Tumör"));
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("rois"));
        const DialogAnswerer user({DialogAnswer::choose(path)});
        f.child<QPushButton>("SaveTableButton")->click();
        QCOMPARE(user.shown(0).objectName, QStringLiteral("SaveTableDialog"));
        QVERIFY(user.shown(0).proposedFile.endsWith(QStringLiteral("RW20260102030405_ROIs.csv")));
        QVERIFY(user.shown(0).closed);
        QFile file(path + QStringLiteral(".csv"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
        QCOMPARE(lines.size(), 3);
        QVERIFY(
            lines[1].startsWith(QString::fromUtf8("RW20260102030405,Tumör,Measurement,64,0,4,10144,158.5,")));
    }

    void aFileThatCannotBeWrittenIsToldAndStaysAsItWas()
    {
        TableFixture f;
        f.add(QRectF(4.0, 4.0, 2.0, 2.0));
        QTemporaryDir folder;
        const QString missing = folder.filePath(QStringLiteral("no such folder/rois.csv"));
        QString error;
        QVERIFY(!f.child<MeasurementPane>("MeasurementPane")->saveTable(missing, &error));
        QVERIFY(error.startsWith(missing + QStringLiteral(": ")));
        QVERIFY(error.size() > missing.size() + 5);
        QCOMPARE(QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
        // Through the dialog: the folder goes between the choice and the writing.
        const QString path = folder.filePath(QStringLiteral("rois.csv"));
        const auto chosenThenGone = DialogAnswer::call([&](QDialog *dialog) {
            dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(path);
            connect(static_cast<QFileDialog *>(dialog), &QFileDialog::fileSelected, this,
                    [&] { folder.remove(); });
            QVERIFY(QMetaObject::invokeMethod(dialog, "accept"));
        });
        const DialogAnswerer user({chosenThenGone, DialogAnswer::FIRST_BUTTON});
        f.child<QPushButton>("SaveTableButton")->click();
        QCOMPARE(user.count(), 2);
        QVERIFY(user.shown(1).text.contains(path));
    }

    void aCancelledSavingSavesNothing()
    {
        TableFixture f;
        QTemporaryDir folder;
        const DialogAnswerer user({DialogAnswer::call([&](QDialog *dialog) {
            dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))
                ->setText(folder.filePath(QStringLiteral("rois.csv")));
            dialog->reject();
        })});
        f.child<QPushButton>("SaveTableButton")->click();
        QCOMPARE(user.count(), 1);
        QVERIFY(QDir(folder.path()).isEmpty());
    }

    void theWindowMayCloseWhileItsDialogIsOpen()
    {
        TableFixture f;
        const DialogAnswerer user({DialogAnswer::call([&](QDialog *) { f.window.reset(); })});
        f.child<QPushButton>("SaveTableButton")->click();
        QVERIFY(!f.window);
        QCOMPARE(user.shown(0).className, QStringLiteral("QFileDialog"));
        QVERIFY(user.shown(0).closed);
    }

    void aUnitThatCannotBeHadIsToldInTheStatus()
    {
        ClickSpec spec = RoiWindowFixture::spec(QStringLiteral("RW20260102030407"));
        spec.luminescentKeys = {{clickinfo::KEY_EXPOSURE, QStringLiteral("0")}};
        TableFixture f(spec);
        f.add(QRectF(4.0, 4.0, 2.0, 2.0));
        QTRY_COMPARE(f.rows(), 1);
        f.dataset->setUnit(EUNIT_RADIANCE);
        QTRY_VERIFY(f.status().startsWith(QStringLiteral("The ROIs cannot be measured: ")));
        QVERIFY(f.status().contains(QStringLiteral("RW20260102030407")));
        QTRY_COMPARE(f.rows(), 0);
        f.dataset->setUnit(EUNIT_COUNTS);
        QTRY_COMPARE(f.rows(), 1);
        QTRY_COMPARE(f.status(), QString());
    }

    void theTableComesWithTheFirstRoiAndCanBeHidden()
    {
        TableFixture f;
        auto *button = f.child<QToolButton>("MeasurementTableButton");
        auto *pane = f.child<MeasurementPane>("MeasurementPane");
        button->setChecked(false);
        QVERIFY(!pane->isVisible());
        f.add(QRectF(4.0, 4.0, 2.0, 2.0));
        QTRY_VERIFY(pane->isVisible());
        button->click();
        QVERIFY(!pane->isVisible());
        f.add(QRectF(8.0, 4.0, 2.0, 2.0));
        f.settle();
        QVERIFY(!pane->isVisible()); // the user's choice stays
        QCOMPARE(f.rows(), 2);
    }

    void roisThatAToolPastesAndRemovesLeaveNoTrace()
    {
        TableFixture f;
        CROIBase *roi = f.add(QRectF(4.0, 4.0, 2.0, 2.0));
        f.manager->selectROI(roi, false);
        QVERIFY(f.manager->copyROIObject());
        QTRY_COMPARE(f.rows(), 1);
        QVERIFY(f.manager->pasteROIObject(false));
        f.manager->selectLastCreatedROI();
        QCOMPARE(f.dataset->MeasureROIAndMakeMeasRecords(true), ESTATUS_SUCCESS);
        QVERIFY(f.manager->removeROIObject());
        f.settle();
        QTRY_COMPARE(f.names(), QStringList({"ROI 1"}));
        QVERIFY(f.selectedRows().isEmpty());
        QVERIFY(!f.manager->selectedROI());
    }
};

QTEST_MAIN(tst_MeasurementTable)
#include "tst_MeasurementTable.moc"
