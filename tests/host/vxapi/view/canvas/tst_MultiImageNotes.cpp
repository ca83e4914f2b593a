// SPDX-License-Identifier: MIT
#include "host/vxapi/view/canvas/LayoutGeometry.h"
#include "tests/support/Rows.h"
#include "tests/support/ViewFixture.h"

#include <QHelpEvent>
#include <QToolTip>
#include <QtTest>

namespace {

const QString EXPOSURE = QStringLiteral("A was exposed 1 s, B 10 s; the unit is counts");

QImage pictureOf(const CVXSMultiImageView &view)
{
    QImage image;
    view.getImage(image);
    return image.convertToFormat(QImage::Format_ARGB32);
}

/// The place in device pixels, a pixel larger on every side.
QRect around(const QRectF &place, double ratio)
{
    return QRectF(place.topLeft() * ratio, place.size() * ratio).toAlignedRect().adjusted(-1, -1, 1, 1);
}

/// Whether two colours differ by more than the last bit of a blend, which OpenGL may round either way.
bool areDifferent(QRgb a, QRgb b)
{
    return std::abs(qRed(a) - qRed(b)) > 1 || std::abs(qGreen(a) - qGreen(b)) > 1 ||
           std::abs(qBlue(a) - qBlue(b)) > 1;
}

int pixelsThatDiffer(const QImage &a, const QImage &b, const QRect &inside, bool isInside)
{
    int different = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x)
            different +=
                inside.contains(x, y) == isInside && areDifferent(a.pixel(x, y), b.pixel(x, y)) ? 1 : 0;
    }
    return different;
}

} // namespace

/// Notes beside the last image of a view, drawn by each engine.
class tst_MultiImageNotes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(drawsWithExpectedEngine()); }

    void nothingElseChanges_data()
    {
        QTest::addColumn<QSize>("size");
        row("narrow", QSize(240, 480));
        row("wide", QSize(700, 480));
    }
    void nothingElseChanges()
    {
        QFETCH(QSize, size);
        ThreeImageView v;
        show(*v.view, size);
        v.place();
        QCoreApplication::processEvents();
        const QImage before = pictureOf(*v.view);
        QVector<QRectF> placesBefore;
        for (int i = 0; i < 3; ++i)
            placesBefore.append(v.view->imagePlace(i));
        QVERIFY(v.view->notesPlace().isEmpty());

        v.view->setNotes({EXPOSURE});
        const QImage after = pictureOf(*v.view);
        QCOMPARE(after.size(), before.size());
        const QRect strip = around(v.view->notesPlace(), v.view->devicePixelRatioF());
        QCOMPARE(pixelsThatDiffer(before, after, strip, false), 0);
        QVERIFY(pixelsThatDiffer(before, after, strip, true) > 200);
        for (int i = 0; i < 3; ++i)
            QCOMPARE(v.view->imagePlace(i), placesBefore[i]);
        QCOMPARE(v.view->rasterImage().size(), before.size());

        v.view->setNotes({});
        QVERIFY(v.view->notesPlace().isEmpty());
        QCOMPARE(pixelsThatDiffer(before, pictureOf(*v.view), strip, true), 0);
    }

    void theNumbersOfTheBarsAreNotCovered_data()
    {
        QTest::addColumn<QSize>("size");
        for (const QSize size : {QSize(230, 420), QSize(260, 480), QSize(300, 640), QSize(512, 650)})
            QTest::addRow("%d x %d", size.width(), size.height()) << size;
    }
    void theNumbersOfTheBarsAreNotCovered()
    {
        QFETCH(QSize, size);
        ThreeImageView v;
        show(*v.view, size);
        v.place();
        v.view->setNotes({EXPOSURE, EXPOSURE, EXPOSURE, EXPOSURE, EXPOSURE});
        const QRectF strip = v.view->notesPlace();
        QVERIFY(!strip.isEmpty());
        LayoutGeometry geometry;
        geometry.layout = ELAYOUT_THREE_ROWS;
        const VXSRECT &rect = v.barResult.rect;
        const QRectF bar = geometry.toDevice(QRectF(QPointF(double(rect.left), double(rect.top)),
                                                    QPointF(double(rect.right), double(rect.bottom))),
                                             size);
        // Half of the lowest number stands below the bar.
        const double end = bar.bottom() + 4.0;
        QVERIFY2(strip.top() >= end || strip.right() <= bar.left(),
                 qPrintable(QString("strip from %1 on, bar to %2").arg(strip.top()).arg(end)));
    }

    void bothEnginesShowThem()
    {
        ThreeImageView v;
        show(*v.view, QSize(260, 480));
        v.place();
        const QImage before = v.view->rasterImage().convertToFormat(QImage::Format_ARGB32);
        v.view->setNotes({EXPOSURE});
        const QImage raster = v.view->rasterImage().convertToFormat(QImage::Format_ARGB32);
        const QRect strip = around(v.view->notesPlace(), v.view->devicePixelRatioF());
        QVERIFY(pixelsThatDiffer(before, raster, strip, true) > 200);
        QVERIFY(pixelsThatDiffer(pictureOf(*v.view), raster, strip, true) <
                strip.width() * strip.height() / 100);
    }

    void theWholeTextIsInTheToolTipAndIsNoMarkup()
    {
        ThreeImageView v;
        show(*v.view, QSize(240, 480));
        v.view->setNotes({EXPOSURE, QStringLiteral("A has emission filter <b>600</b>, B Open")});
        const auto help = [&](const QPoint &place) {
            QToolTip::hideText();
            QHelpEvent event(QEvent::ToolTip, place, v.view->mapToGlobal(place));
            QCoreApplication::sendEvent(v.view.get(), &event);
            return event.isAccepted() ? QToolTip::text() : QString();
        };
        const QString text = help(v.view->notesPlace().center().toPoint());
        QVERIFY2(text.contains(EXPOSURE), qPrintable(text));
        QVERIFY(text.contains(QStringLiteral("&lt;b&gt;600&lt;/b&gt;")));
        QVERIFY(help(QPoint(3, 3)).isEmpty());
        QToolTip::hideText();
        QCOMPARE(v.view->notes().size(), 2);
        QVERIFY(v.view->accessibleDescription().contains(EXPOSURE));
    }
};

int main(int argc, char *argv[])
{
    return runScaled<tst_MultiImageNotes>(argc, argv);
}
#include "tst_MultiImageNotes.moc"
