// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/canvas/CVXSMultiImageView.h"
#include "host/vxapi/view/measurement/MeasurementPane.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "tests/support/GuiDriver.h"
#include "tests/support/Rows.h"
#include "tests/support/TestStudy.h"

#include <QAction>
#include <QLabel>
#include <QToolButton>
#include <QtTest>

namespace {

/// An image window in a workspace of that size, under a mouse that draws.
class DrawnWindow
{
public:
    explicit DrawnWindow(const QSize &area, bool isMaximized = false, bool hasRoi = false)
        : m_study(QStringLiteral("TP20260102030405_SEQ"))
    {
        ClickSpec spec;
        spec.clickNumber = QStringLiteral("TP20260102030406");
        CVXSDataset *dataset = m_study.add(spec);
        dataset->registerDataset();
        rois = dataset->roiManager();
        if (hasRoi)
            rois->addROI(CROIBase(EROI_RECTANGLE, EROI_MEASUREMENT, QRectF(1.0, 1.0, 3.0, 3.0)));
        m_workspace.resize(area);
        m_workspace.show();
        QVERIFY(QTest::qWaitForWindowExposed(&m_workspace));
        window = m_workspace.showDataset(dataset);
        if (isMaximized)
            window->subWindow()->showMaximized();
        view = window->findChild<CVXSMultiImageView *>(QStringLiteral("ImageView"));
        GuiDriver::settle();
    }
    void draw(double left, double top, double right, double bottom) const
    {
        window->findChild<QAction *>(QStringLiteral("RoiRectangleTool"))->trigger();
        const QRectF place = view->imagePlace(0);
        const auto at = [&](double x, double y) {
            return QPointF(place.left() + x * place.width(), place.top() + y * place.height()).toPoint();
        };
        QTest::mousePress(view, Qt::LeftButton, Qt::NoModifier, at(left, top));
        QMouseEvent move(QEvent::MouseMove, at(right, bottom), view->mapToGlobal(at(right, bottom)),
                         Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view, &move);
        QTest::mouseRelease(view, Qt::LeftButton, Qt::NoModifier, at(right, bottom));
        GuiDriver::settle();
    }
    /// Where the picture is on the screen.
    QRectF place() const { return view->imagePlace(0).translated(QPointF(view->mapToGlobal(QPoint()))); }
    bool isTableShown() const { return window->findChild<MeasurementPane *>()->isVisible(); }
    QToolButton *button() const
    {
        return window->findChild<QToolButton *>(QStringLiteral("MeasurementTableButton"));
    }
    QString status() const { return window->findChild<QLabel *>(QStringLiteral("RoiStatus"))->text(); }

    CROIManager *rois = nullptr;
    CVXSImageWindow *window = nullptr;
    CVXSMultiImageView *view = nullptr;

private:
    TestStudy m_study; // outlives the windows of its datasets
    CVXSWorkspace m_workspace;
};

} // namespace

/// The picture of an image window stays under the mouse, whatever the table of measurements does.
class tst_TableBelowPicture : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFirstRoiLeavesThePictureInItsPlace_data()
    {
        QTest::addColumn<QSize>("area");
        QTest::addColumn<bool>("isMaximized");
        QTest::addColumn<bool>("isShown");
        row("room below: the window grows", QSize(1100, 1000), false, true);
        row("no room below", QSize(1100, 760), false, false);
        row("a maximised window", QSize(1100, 1000), true, false);
    }
    void theFirstRoiLeavesThePictureInItsPlace()
    {
        QFETCH(QSize, area);
        QFETCH(bool, isMaximized);
        QFETCH(bool, isShown);
        const DrawnWindow w(area, isMaximized);
        const QRectF place = w.place();
        const QImage before = w.view->rasterImage();
        w.draw(0.1, 0.1, 0.4, 0.4);
        QCOMPARE(w.rois->rois().size(), 1);
        QTRY_COMPARE(w.isTableShown() || !w.status().isEmpty(), true);
        QCOMPARE(w.place(), place);
        QCOMPARE(w.isTableShown(), isShown);
        QCOMPARE(w.status(),
                 isShown ? QString() : QStringLiteral("Measured: \"Measurements\" shows the numbers."));
        // The next one lands where it is drawn.
        w.draw(0.5, 0.5, 0.75, 0.75);
        QCOMPARE(w.rois->rois().size(), 2);
        const QRectF box = w.rois->rois()[1]->boundingBox();
        QVERIFY(std::abs(box.left() - 12.5 * 0.5) < 0.1 && std::abs(box.bottom() - 12.5 * 0.75) < 0.1);
        QCOMPARE(w.view->rasterImage().size(), before.size());
    }

    void theButtonShowsAndHidesTheTable_data()
    {
        QTest::addColumn<QSize>("area");
        QTest::addColumn<bool>("staysInPlace");
        row("with room the picture stays", QSize(1100, 1000), true);
        row("without room it makes place", QSize(1100, 760), false);
    }
    void theButtonShowsAndHidesTheTable()
    {
        QFETCH(QSize, area);
        QFETCH(bool, staysInPlace);
        const DrawnWindow w(area);
        const QRectF place = w.place();
        const QSize size = w.window->subWindow()->size();
        w.button()->click();
        GuiDriver::settle();
        QVERIFY(w.isTableShown());
        QCOMPARE(w.place() == place, staysInPlace);
        QVERIFY(w.window->findChild<MeasurementPane *>()->height() >= 100);
        w.button()->click();
        GuiDriver::settle();
        QVERIFY(!w.isTableShown());
        QCOMPARE(w.place(), place);
        QCOMPARE(w.window->subWindow()->size(), size);
    }

    void aTableHiddenInAMaximisedWindowLeavesItMaximised()
    {
        const DrawnWindow w(QSize(1100, 1000));
        w.button()->click();
        w.window->subWindow()->showMaximized();
        GuiDriver::settle();
        const QSize size = w.window->subWindow()->size();
        w.button()->click();
        GuiDriver::settle();
        QVERIFY(!w.isTableShown() && w.window->subWindow()->isMaximized());
        QCOMPARE(w.window->subWindow()->size(), size);
    }

    void roisThatAreThereComeWithTheirTable()
    {
        const DrawnWindow w(QSize(1100, 760), false, true);
        QVERIFY(w.isTableShown());
        const QRectF place = w.place();
        w.draw(0.5, 0.5, 0.75, 0.75);
        QCOMPARE(w.rois->rois().size(), 2);
        QCOMPARE(w.place(), place);
    }
};

QTEST_MAIN(tst_TableBelowPicture)
#include "tst_TableBelowPicture.moc"
