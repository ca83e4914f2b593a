// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/CRoiMeasurementManager.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/view/canvas/CVXSMultiImageView.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "tests/support/GuiDriver.h"
#include "tests/support/TestStudy.h"

#include <memory>
#include <QAction>
#include <QToolButton>
#include <QtTest>

/// A shown image window of a dataset of 64 x 64 pixels over 16 cm (4 pixels a centimetre), whose pixel (x, y)
/// holds 100 + x + 2 y counts, with a photograph; and a hand with a mouse and a keyboard over it.
class RoiWindowFixture
{
public:
    static constexpr double FIELD = 16.0;
    static constexpr double PIXEL = 0.25; ///< [cm]

    static ClickSpec spec(const QString &click = QStringLiteral("RW20260102030405"))
    {
        ClickSpec spec;
        spec.clickNumber = click;
        spec.width = 64;
        spec.height = 64;
        spec.fieldOfView = FIELD;
        spec.photograph = [](int x, int y) { return float(x + y); };
        return spec;
    }

    explicit RoiWindowFixture(const ClickSpec &click = spec(), const QSize &size = QSize(760, 680))
        : study(click.clickNumber + QStringLiteral("_SEQ"))
    {
        dataset = study.add(click);
        dataset->registerDataset();
        manager = dataset->roiManager();
        open(size);
    }

    void open(const QSize &size = QSize(760, 680))
    {
        window = std::make_unique<CVXSImageWindow>(dataset);
        window->resize(size);
        window->show();
        // The table would come with the first ROI, and everything in the view would move.
        child<QToolButton>("MeasurementTableButton")->setChecked(true);
        view = window->findChild<CVXSMultiImageView *>(QStringLiteral("ImageView"));
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        settle();
    }

    static void settle() { GuiDriver::settle(); }

    template <typename T>
    T *child(const char *name) const
    {
        return window->findChild<T *>(QLatin1String(name));
    }
    void trigger(const char *action) const
    {
        child<QAction>(action)->trigger();
        settle();
    }

    /// The place in the view that shows that place of the field [cm].
    QPoint at(double x, double y) const
    {
        const QRectF place = view->imagePlace(0);
        return QPointF(place.left() + x / FIELD * place.width() - 0.5,
                       place.top() + y / FIELD * place.height() - 0.5)
            .toPoint();
    }
    /// How far [cm] a place may be off because a mouse knows whole places only.
    double tolerance() const { return FIELD / view->imagePlace(0).width(); }

    void press(const QPoint &place, Qt::KeyboardModifiers keys = Qt::NoModifier) const
    {
        QTest::mousePress(view, Qt::LeftButton, keys, place);
    }
    void move(const QPoint &place, Qt::KeyboardModifiers keys = Qt::NoModifier) const
    {
        QMouseEvent event(QEvent::MouseMove, place, view->mapToGlobal(place), Qt::NoButton, Qt::LeftButton,
                          keys);
        QCoreApplication::sendEvent(view, &event);
    }
    void release(const QPoint &place, Qt::KeyboardModifiers keys = Qt::NoModifier) const
    {
        QTest::mouseRelease(view, Qt::LeftButton, keys, place);
        settle();
    }
    void drag(const QPoint &from, const QPoint &to, Qt::KeyboardModifiers keys = Qt::NoModifier) const
    {
        press(from, keys);
        move((from + to) / 2, keys);
        move(to, keys);
        release(to, keys);
    }
    void click(const QPoint &place, Qt::KeyboardModifiers keys = Qt::NoModifier) const
    {
        press(place, keys);
        release(place, keys);
    }
    void key(int code, Qt::KeyboardModifiers keys = Qt::NoModifier) const
    {
        QTest::keyClick(view, Qt::Key(code), keys);
        settle();
    }

    CROIBase *add(const QRectF &box, const QString &name = QString(), EROISHAPE shape = EROI_RECTANGLE) const
    {
        CROIBase roi(shape, EROI_MEASUREMENT, box);
        roi.setName(name);
        CROIBase *added = manager->addROI(roi);
        settle();
        return added;
    }
    CROIBase *only() const { return manager->rois().size() == 1 ? manager->rois().first() : nullptr; }

    TestStudy study;
    CVXSDataset *dataset = nullptr;
    CROIManager *manager = nullptr;
    std::unique_ptr<CVXSImageWindow> window;
    CVXSMultiImageView *view = nullptr;
};
