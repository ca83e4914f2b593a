// SPDX-License-Identifier: MIT
#include "tests/support/DialogAnswerer.h"
#include "tests/support/RoiWindowFixture.h"
#include "tests/support/Rows.h"

#include <QComboBox>
#include <QInputDialog>
#include <QLabel>
#include <QSpinBox>
#include <QToolBar>

namespace {

/// Whether two boxes agree to what a mouse can do, edge by edge.
bool isNear(const QRectF &a, const QRectF &b, double tolerance)
{
    return std::abs(a.left() - b.left()) <= tolerance && std::abs(a.top() - b.top()) <= tolerance &&
           std::abs(a.right() - b.right()) <= tolerance && std::abs(a.bottom() - b.bottom()) <= tolerance;
}

QString text(const QRectF &box)
{
    return QStringLiteral("%1 %2 %3 %4").arg(box.left()).arg(box.top()).arg(box.right()).arg(box.bottom());
}

bool isNumberedOne(const CROIBase *roi, const QString &name)
{
    return roi && roi->name() == name;
}

} // namespace

#define VERIFY_NEAR(box, wanted, tolerance) QVERIFY2(isNear(box, wanted, tolerance), qPrintable(text(box)))

class tst_RoiEditor : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aBoxShapeIsDrawn_data()
    {
        QTest::addColumn<QByteArray>("tool");
        QTest::addColumn<int>("shape");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QSize>("window");
        QTest::newRow("a rectangle") << QByteArray("RoiRectangleTool") << int(EROI_RECTANGLE) << "ROI 1"
                                     << QSize(760, 680);
        QTest::newRow("an ellipse") << QByteArray("RoiEllipseTool") << int(EROI_ELLIPSE) << "ROI 1"
                                    << QSize(760, 680);
        QTest::newRow("a grid") << QByteArray("RoiGridTool") << int(EROI_GRID) << "Grid 1" << QSize(760, 680);
        QTest::newRow("a rectangle in a small window")
            << QByteArray("RoiRectangleTool") << int(EROI_RECTANGLE) << "ROI 1" << QSize(480, 500);
        QTest::newRow("a rectangle in a large window")
            << QByteArray("RoiRectangleTool") << int(EROI_RECTANGLE) << "ROI 1" << QSize(1201, 1003);
    }
    void aBoxShapeIsDrawn()
    {
        QFETCH(QByteArray, tool);
        QFETCH(int, shape);
        QFETCH(QString, name);
        QFETCH(QSize, window);
        RoiWindowFixture f(RoiWindowFixture::spec(), window);
        f.trigger(tool.constData());
        f.drag(f.at(3.0, 4.0), f.at(9.0, 8.0));
        QVERIFY(isNumberedOne(f.only(), name));
        QCOMPARE(int(f.only()->shape()), shape);
        QCOMPARE(f.only()->kind(), EROI_MEASUREMENT);
        VERIFY_NEAR(f.only()->boundingBox(), QRectF(3.0, 4.0, 6.0, 4.0), f.tolerance());
        QCOMPARE(f.manager->selectedROI(), f.only());
        // One drawing, then selecting again.
        QVERIFY(f.child<QAction>("RoiSelectTool")->isChecked());
    }

    void aDrawingEndsAtTheFieldsEdge()
    {
        RoiWindowFixture f;
        f.trigger("RoiRectangleTool");
        f.drag(f.at(15.0, 14.0), f.at(22.0, 13.0));
        VERIFY_NEAR(f.only()->boundingBox(), QRectF(15.0, 13.0, 1.0, 1.0), f.tolerance());
        QVERIFY(f.only()->boundingBox().right() <= 16.0 + 1e-12);
    }

    void shiftMakesItSquare()
    {
        RoiWindowFixture f;
        f.trigger("RoiEllipseTool");
        f.drag(f.at(3.0, 4.0), f.at(10.0, 7.0), Qt::ShiftModifier);
        VERIFY_NEAR(f.only()->boundingBox(), QRectF(3.0, 4.0, 3.0, 3.0), f.tolerance());
    }

    void aClickWithADrawingToolDrawsNothing()
    {
        RoiWindowFixture f;
        f.trigger("RoiRectangleTool");
        f.click(f.at(5.0, 5.0));
        QVERIFY(f.manager->rois().isEmpty());
        QVERIFY(f.child<QAction>("RoiRectangleTool")->isChecked());
    }

    void aDrawingWhoseEndWasNeverSeenStartsAnew()
    {
        RoiWindowFixture f;
        f.trigger("RoiRectangleTool");
        f.press(f.at(2.0, 2.0));
        f.move(f.at(5.0, 5.0));
        f.drag(f.at(8.0, 8.0), f.at(10.0, 11.0));
        VERIFY_NEAR(f.only()->boundingBox(), QRectF(8.0, 8.0, 2.0, 3.0), f.tolerance());
    }

    void aGridHasTheRowsAndColumnsThatAreAskedFor()
    {
        RoiWindowFixture f;
        auto *rows = f.child<QSpinBox>("RoiGridRows");
        QVERIFY(!rows->isVisible());
        f.trigger("RoiGridTool");
        QVERIFY(rows->isVisible());
        rows->setValue(2);
        f.child<QSpinBox>("RoiGridColumns")->setValue(5);
        f.drag(f.at(3.0, 4.0), f.at(13.0, 8.0));
        QCOMPARE(f.only()->rows(), 2);
        QCOMPARE(f.only()->columns(), 5);
    }

    void aPolygonIsClicked_data()
    {
        QTest::addColumn<int>("ending");
        QTest::newRow("ended with Return") << 0;
        QTest::newRow("ended with a double click") << 1;
        QTest::newRow("ended on the first corner") << 2;
        QTest::newRow("with a corner taken back") << 3;
    }
    void aPolygonIsClicked()
    {
        QFETCH(int, ending);
        RoiWindowFixture f;
        f.trigger("RoiPolygonTool");
        const QVector<QPointF> corners = {{4.0, 4.0}, {10.0, 5.0}, {8.0, 11.0}};
        for (const QPointF &corner : corners) {
            f.move(f.at(corner.x(), corner.y()));
            f.click(f.at(corner.x(), corner.y()));
        }
        QVERIFY(f.manager->rois().isEmpty());
        if (ending == 0) {
            f.move(f.at(1.0, 1.0)); // the mouse's place is no corner
            f.key(Qt::Key_Return);
        } else if (ending == 1) {
            QTest::mouseDClick(f.view, Qt::LeftButton, Qt::NoModifier, f.at(8.0, 11.0));
        } else if (ending == 2) {
            f.move(f.at(4.0, 4.0));
            f.click(f.at(4.0, 4.0));
        } else {
            f.click(f.at(2.0, 14.0));
            f.key(Qt::Key_Backspace);
            f.key(Qt::Key_Enter);
        }
        f.settle();
        QVERIFY(f.only());
        QCOMPARE(f.only()->shape(), EROI_POLYGON);
        QCOMPARE(f.only()->outline().size(), 3);
        for (int i = 0; i < 3; ++i)
            QVERIFY(QLineF(f.only()->outline()[i], corners[i]).length() <= 1.5 * f.tolerance());
    }

    void escapeCancelsWhatIsUnderWay()
    {
        RoiWindowFixture f;
        f.trigger("RoiPolygonTool");
        f.click(f.at(4.0, 4.0));
        f.click(f.at(8.0, 4.0));
        f.click(f.at(8.0, 8.0));
        f.key(Qt::Key_Escape);
        f.key(Qt::Key_Return);
        QVERIFY(f.manager->rois().isEmpty());
        QVERIFY(f.child<QAction>("RoiPolygonTool")->isChecked());
        f.key(Qt::Key_Escape); // nothing under way: the tool
        QVERIFY(f.child<QAction>("RoiSelectTool")->isChecked());
        const CROIBase *roi = f.add(QRectF(4.0, 4.0, 4.0, 4.0));
        f.press(f.at(6.0, 6.0));
        f.move(f.at(9.0, 9.0));
        f.key(Qt::Key_Escape);
        f.release(f.at(9.0, 9.0));
        QCOMPARE(roi->boundingBox(), QRectF(4.0, 4.0, 4.0, 4.0));
    }

    void aFreeHandLineIsDrawnInOneStroke()
    {
        RoiWindowFixture f;
        f.trigger("RoiFreehandTool");
        f.press(f.at(11.0, 8.0));
        for (int i = 1; i < 60; ++i)
            f.move(f.at(8.0 + 3.0 * std::cos(i * 0.1047), 8.0 + 3.0 * std::sin(i * 0.1047)));
        f.release(f.at(11.0, 8.0));
        QVERIFY(f.only());
        QCOMPARE(f.only()->shape(), EROI_FREEHAND);
        QVERIFY(f.only()->outline().size() > 20);
        VERIFY_NEAR(f.only()->boundingBox(), QRectF(5.0, 5.0, 6.0, 6.0), 2.0 * f.tolerance());
        QVERIFY(f.only()->contains(QPointF(8.0, 8.0)));
    }

    void aClickSelects()
    {
        RoiWindowFixture f;
        CROIBase *large = f.add(QRectF(2.0, 2.0, 10.0, 10.0));
        CROIBase *small = f.add(QRectF(4.0, 4.0, 2.0, 2.0));
        f.click(f.at(10.0, 10.0));
        QCOMPARE(f.manager->selectedROI(), large);
        f.click(f.at(5.0, 5.0)); // in both: the smaller one
        QCOMPARE(f.manager->selectedROIs(), QList<CROIBase *>{small});
        f.click(f.at(10.0, 10.0), Qt::ControlModifier);
        QCOMPARE(f.manager->selectedROIs(), (QList<CROIBase *>{small, large}));
        f.click(f.at(14.0, 14.0));
        QVERIFY(f.manager->selectedROIs().isEmpty());
        QCOMPARE(large->boundingBox(), QRectF(2.0, 2.0, 10.0, 10.0)); // a click moves nothing
    }

    void theMouseMovesWhatIsSelected()
    {
        RoiWindowFixture f;
        CROIBase *a = f.add(QRectF(2.0, 2.0, 2.0, 2.0));
        CROIBase *b = f.add(QRectF(6.0, 6.0, 2.0, 2.0));
        f.drag(f.at(3.0, 3.0), f.at(5.0, 4.0)); // not selected before
        VERIFY_NEAR(a->boundingBox(), QRectF(4.0, 3.0, 2.0, 2.0), 2.0 * f.tolerance());
        QCOMPARE(b->boundingBox(), QRectF(6.0, 6.0, 2.0, 2.0));
        f.click(f.at(7.0, 7.0), Qt::ShiftModifier);
        const QPointF apart = b->boundingBox().topLeft() - a->boundingBox().topLeft();
        f.drag(f.at(7.0, 7.0), f.at(30.0, 7.0)); // both, as far as the field goes
        QVERIFY(std::abs(b->boundingBox().right() - 16.0) < 1e-9);
        QVERIFY(QLineF(b->boundingBox().topLeft() - a->boundingBox().topLeft(), apart).length() < 1e-9);
        QCOMPARE(b->boundingBox().size(), QSizeF(2.0, 2.0));
    }

    void aHandleResizes_data()
    {
        QTest::addColumn<QPointF>("handle");
        QTest::addColumn<QPointF>("to");
        QTest::addColumn<QRectF>("box");
        QTest::newRow("the lower right corner")
            << QPointF(10.0, 8.0) << QPointF(12.0, 11.0) << QRectF(QPointF(4.0, 4.0), QPointF(12.0, 11.0));
        QTest::newRow("the left side")
            << QPointF(4.0, 6.0) << QPointF(2.0, 12.0) << QRectF(QPointF(2.0, 4.0), QPointF(10.0, 8.0));
        QTest::newRow("beyond the opposite side: a pixel is left")
            << QPointF(10.0, 6.0) << QPointF(1.0, 6.0) << QRectF(QPointF(4.0, 4.0), QPointF(4.25, 8.0));
        QTest::newRow("beyond the field: to its edge")
            << QPointF(7.0, 8.0) << QPointF(7.0, 40.0) << QRectF(QPointF(4.0, 4.0), QPointF(10.0, 16.0));
    }
    void aHandleResizes()
    {
        QFETCH(QPointF, handle);
        QFETCH(QPointF, to);
        QFETCH(QRectF, box);
        RoiWindowFixture f;
        CROIBase *roi = f.add(QRectF(4.0, 4.0, 6.0, 4.0));
        f.manager->selectROI(roi, false);
        f.drag(f.at(handle.x(), handle.y()), f.at(to.x(), to.y()));
        VERIFY_NEAR(roi->boundingBox(), box, 2.0 * f.tolerance());
    }

    void theKeysMoveByPixelsOfTheImage()
    {
        RoiWindowFixture f;
        CROIBase *roi = f.add(QRectF(4.0, 4.0, 2.0, 2.0));
        f.manager->selectROI(roi, false);
        f.key(Qt::Key_Right);
        f.key(Qt::Key_Down, Qt::ShiftModifier);
        VERIFY_NEAR(roi->boundingBox(), QRectF(4.25, 6.5, 2.0, 2.0), 1e-9);
        f.key(Qt::Key_Left, Qt::ShiftModifier);
        f.key(Qt::Key_Up);
        VERIFY_NEAR(roi->boundingBox(), QRectF(1.75, 6.25, 2.0, 2.0), 1e-9);
        f.key(Qt::Key_Left, Qt::ShiftModifier); // the field ends
        QVERIFY(std::abs(roi->boundingBox().left()) < 1e-9);
    }

    void delRemovesWhatIsSelected()
    {
        RoiWindowFixture f;
        f.add(QRectF(2.0, 2.0, 2.0, 2.0));
        CROIBase *b = f.add(QRectF(6.0, 6.0, 2.0, 2.0));
        f.key(Qt::Key_Delete); // nothing selected
        QCOMPARE(f.manager->rois().size(), 2);
        f.manager->selectROI(b, false);
        f.key(Qt::Key_Delete);
        QVERIFY(isNumberedOne(f.only(), QStringLiteral("ROI 1")));
        f.key(Qt::Key_A, Qt::ControlModifier);
        f.trigger("RoiDelete");
        QVERIFY(f.manager->rois().isEmpty());
    }

    void aCopyInTheSameDatasetLiesBesideAndElsewhereOnTheSamePlace()
    {
        RoiWindowFixture f;
        CROIBase *roi = f.add(QRectF(4.0, 4.0, 2.0, 2.0), QStringLiteral("Tumor"), EROI_ELLIPSE);
        f.manager->selectROI(roi, false);
        f.key(Qt::Key_C, Qt::ControlModifier);
        f.key(Qt::Key_V, Qt::ControlModifier);
        f.key(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(f.manager->rois().size(), 3);
        VERIFY_NEAR(f.manager->rois()[1]->boundingBox(), QRectF(6.5, 6.5, 2.0, 2.0), 1e-9);
        VERIFY_NEAR(f.manager->rois()[2]->boundingBox(), QRectF(9.0, 9.0, 2.0, 2.0), 1e-9);
        QCOMPARE(f.manager->selectedROI(), f.manager->rois()[2]);
        QCOMPARE(roi->boundingBox(), QRectF(4.0, 4.0, 2.0, 2.0));

        RoiWindowFixture other(RoiWindowFixture::spec(QStringLiteral("RW20260102030409")));
        other.trigger("RoiPaste");
        QVERIFY(other.only());
        QCOMPARE(other.only()->boundingBox(), QRectF(4.0, 4.0, 2.0, 2.0));
        QCOMPARE(other.only()->shape(), EROI_ELLIPSE);
        other.manager->selectROI(nullptr, false);
        other.key(Qt::Key_C, Qt::ControlModifier); // nothing selected: the copy stays
        other.key(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(other.manager->rois().size(), 2);
    }

    void whatIsCopiedTogetherIsPastedTogether()
    {
        RoiWindowFixture f;
        CROIBase *a = f.add(QRectF(4.0, 4.0, 2.0, 2.0), QStringLiteral("a"));
        CROIBase *b = f.add(QRectF(9.0, 12.0, 3.0, 2.0), QStringLiteral("b"));
        f.add(QRectF(1.0, 1.0, 1.0, 1.0), QStringLiteral("c"));
        f.manager->selectROI(b, false);
        f.manager->selectROI(a, true);
        f.key(Qt::Key_C, Qt::ControlModifier);
        f.manager->selectROI(nullptr, false);
        f.key(Qt::Key_V, Qt::ControlModifier);
        // In the order in which they were made, as they lie to each other, as far beside as the field goes.
        QCOMPARE(f.manager->rois().size(), 5);
        const CROIBase *copyOfA = f.manager->rois()[3];
        const CROIBase *copyOfB = f.manager->rois()[4];
        VERIFY_NEAR(copyOfA->boundingBox(), QRectF(6.5, 6.0, 2.0, 2.0), 1e-9);
        VERIFY_NEAR(copyOfB->boundingBox(), QRectF(11.5, 14.0, 3.0, 2.0), 1e-9);
        QCOMPARE(copyOfA->name(), QStringLiteral("a 2"));
        QCOMPARE(f.manager->selectedROIs().size(), 2);
        QCOMPARE(f.manager->selectedROI(), copyOfB);
    }

    void theKindIsThatOfTheSelectedAndOfTheNext()
    {
        RoiWindowFixture f;
        auto *kind = f.child<QComboBox>("RoiKind");
        CROIBase *roi = f.add(QRectF(4.0, 4.0, 2.0, 2.0));
        f.manager->selectROI(roi, false);
        kind->setCurrentIndex(1);
        Q_EMIT kind->activated(1);
        QCOMPARE(roi->kind(), EROI_BACKGROUND);
        f.click(f.at(14.0, 14.0));
        f.trigger("RoiRectangleTool");
        f.drag(f.at(8.0, 8.0), f.at(10.0, 10.0));
        QVERIFY(isNumberedOne(f.manager->selectedROI(), QStringLiteral("Bkg 1")));
        CROIBase *measurement = f.add(QRectF(1.0, 1.0, 1.0, 1.0));
        f.manager->selectROI(measurement, false);
        QCOMPARE(kind->currentText(), QStringLiteral("Measurement"));
    }

    void anRoiIsRenamed_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("status");
        row("a new name", "  Left flank ", "Left flank", QString());
        row("a name that is taken", "tumor", "ROI 1", "\"ROI 1\" keeps its name: \"tumor\" is taken.");
        row("no name", "  ", "ROI 1", "\"ROI 1\" keeps its name: the new one is empty.");
    }
    void anRoiIsRenamed()
    {
        QFETCH(QString, typed);
        QFETCH(QString, name);
        QFETCH(QString, status);
        RoiWindowFixture f;
        f.add(QRectF(8.0, 8.0, 2.0, 2.0), QStringLiteral("Tumor"));
        CROIBase *roi = f.add(QRectF(4.0, 4.0, 2.0, 2.0));
        f.key(Qt::Key_F2); // nothing selected: nothing asked
        f.manager->selectROI(roi, false);
        const DialogAnswerer user({DialogAnswer::call([typed](QDialog *dialog) {
            auto *question = qobject_cast<QInputDialog *>(dialog);
            QVERIFY(question);
            QCOMPARE(question->textValue(), QStringLiteral("ROI 1"));
            question->setTextValue(typed);
            question->accept();
        })});
        QTest::keyClick(f.view, Qt::Key_F2);
        QCOMPARE(user.count(), 1);
        QCOMPARE(roi->name(), name);
        QCOMPARE(f.child<QLabel>("RoiStatus")->text(), status);
    }

    void roisArePaintedAndMarked()
    {
        RoiWindowFixture f;
        const QImage empty = f.view->rasterImage();
        CROIBase *roi = f.add(QRectF(4.0, 4.0, 5.0, 5.0));
        const QImage plain = f.view->rasterImage();
        QVERIFY(plain != empty);
        f.manager->selectROI(roi, false);
        const QImage selected = f.view->rasterImage();
        QVERIFY(selected != plain);
        // A handle on the corner, nothing in the middle.
        QCOMPARE(selected.pixelColor(f.at(4.0, 4.0)), QColor(0xff, 0xd9, 0x3b));
        QCOMPARE(selected.pixelColor(f.at(6.5, 6.5)), empty.pixelColor(f.at(6.5, 6.5)));
        f.manager->selectROI(nullptr, false);
        f.manager->setROIKind(roi, EROI_BACKGROUND);
        QVERIFY(f.view->rasterImage() != plain);
        f.manager->selectROI(roi, false);
        f.manager->removeROIObject();
        QCOMPARE(f.view->rasterImage(), empty);
    }

    void bothEnginesPaintThemTheSame()
    {
        RoiWindowFixture f;
        f.add(QRectF(4.0, 4.0, 5.0, 5.0), QString(), EROI_ELLIPSE);
        f.manager->addROI(CROIBase(EROI_MEASUREMENT, QRectF(9.0, 9.0, 5.0, 4.0), 3, 4));
        f.settle();
        QVERIFY(f.view->isOpenGL());
        QImage drawn;
        f.view->getImage(drawn);
        const QImage raster = f.view->rasterImage();
        int different = 0;
        for (int y = 0; y < raster.height(); ++y) {
            for (int x = 0; x < raster.width(); ++x)
                different += std::abs(qGreen(drawn.pixel(x, y)) - qGreen(raster.pixel(x, y))) > 10 ? 1 : 0;
        }
        QVERIFY2(different <= 4, qPrintable(QString::number(different)));
    }

    void anRoiCoversTheSameTissueOnThePhotographAlone()
    {
        RoiWindowFixture f;
        const QPoint corner = f.at(4.0, 4.0);
        CROIBase *roi = f.add(QRectF(4.0, 4.0, 5.0, 5.0));
        f.manager->selectROI(roi, false);
        f.child<QComboBox>("ImageChoice")->setCurrentIndex(2);
        f.settle();
        QCOMPARE(f.child<QComboBox>("ImageChoice")->currentText(), QStringLiteral("Photograph"));
        QCOMPARE(f.view->rasterImage().pixelColor(corner), QColor(0xff, 0xd9, 0x3b));
        f.drag(f.at(6.0, 6.0), f.at(8.0, 6.0));
        VERIFY_NEAR(roi->boundingBox(), QRectF(6.0, 4.0, 5.0, 5.0), 2.0 * f.tolerance());
    }

    void withoutFieldOfViewTheToolsSayWhyTheyAreOff()
    {
        ClickSpec spec = RoiWindowFixture::spec(QStringLiteral("RW3"));
        spec.luminescentKeys = {{clickinfo::KEY_FOV, QString()}};
        RoiWindowFixture f(spec);
        auto *bar = f.child<QToolBar>("RoiToolBar");
        QVERIFY(!bar->isEnabled());
        QVERIFY(bar->toolTip().contains(QStringLiteral("field of view is not recorded")));
        QCOMPARE(f.child<QAction>("RoiRectangleTool")->toolTip(), bar->toolTip());
        f.child<QAction>("RoiRectangleTool")->trigger();
        const QPoint middle = f.view->imagePlace(0).center().toPoint();
        f.drag(middle, middle + QPoint(50, 50));
        f.key(Qt::Key_V, Qt::ControlModifier);
        QVERIFY(f.manager->rois().isEmpty());
    }

    void anRoiThatGoesWhileItIsDraggedIsForgotten()
    {
        RoiWindowFixture f;
        CROIBase *roi = f.add(QRectF(4.0, 4.0, 4.0, 4.0));
        f.press(f.at(6.0, 6.0));
        f.move(f.at(8.0, 8.0));
        f.manager->selectROI(roi, false);
        f.manager->removeROIObject();
        f.move(f.at(9.0, 9.0));
        f.release(f.at(9.0, 9.0));
        QVERIFY(f.manager->rois().isEmpty());
        // The same with the dataset itself.
        f.add(QRectF(4.0, 4.0, 4.0, 4.0));
        f.press(f.at(6.0, 6.0));
        f.move(f.at(8.0, 8.0));
        QPointer<CVXSImageWindow> window = f.window.release();
        f.study.close();
        f.move(f.at(9.0, 9.0));
        QTest::mouseRelease(f.view, Qt::LeftButton, Qt::NoModifier, f.at(9.0, 9.0));
        QTest::keyClick(f.view, Qt::Key_Delete);
        QVERIFY(!f.view->rasterImage().isNull());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!window);
    }

    void otherKeysAndButtonsAreLeftToOthers()
    {
        RoiWindowFixture f;
        CROIBase *roi = f.add(QRectF(4.0, 4.0, 4.0, 4.0));
        QTest::mouseClick(f.view, Qt::RightButton, Qt::NoModifier, f.at(6.0, 6.0));
        QVERIFY(!f.manager->selectedROI());
        f.manager->selectROI(roi, false);
        for (const int other : {int(Qt::Key_S), int(Qt::Key_Tab), int(Qt::Key_Return)}) {
            QKeyEvent event(QEvent::ShortcutOverride, other, Qt::NoModifier);
            event.ignore();
            QCoreApplication::sendEvent(f.view, &event);
            QVERIFY(!event.isAccepted());
        }
        QKeyEvent del(QEvent::ShortcutOverride, Qt::Key_Delete, Qt::NoModifier);
        del.ignore();
        QCoreApplication::sendEvent(f.view, &del);
        QVERIFY(del.isAccepted());
    }
};

QTEST_MAIN(tst_RoiEditor)
#include "tst_RoiEditor.moc"
