// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/canvas/CVXSMultiImageView.h"
#include "host/vxapi/view/canvas/CVXSTextTag.h"
#include "host/vxutils/CVXUtilityFns.h"
#include "tests/support/BoundWindow.h"

#include <cmath>
#include <QtTest>
#include <QVBoxLayout>

namespace {

bool near(float a, float b, float scale)
{
    return std::fabs(a - b) <= 1e-4f * scale;
}

} // namespace

/// The view of a bound window: its images, colour bars and tags.
class tst_BoundView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void theView();
    void theViewsLayout();
    void colorbarPlaces_data();
    void colorbarPlaces();
    void colorbarPalette_data();
    void colorbarPalette();
    void theColorbarIsDrawnWithTheLimitsOfTheFirstComputation();
    void colorbarsAreInTheView_data();
    void colorbarsAreInTheView();
    void tagsAreInTheView_data();
    void tagsAreInTheView();
    void theSettingsSwitchTheTagsOn();
    void imagesKeepTheirProportions();
    void imagesReachTheViewWithTheLaunch();
};

void tst_BoundView::init()
{
    CVXUtilityFns::setkValue(QStringLiteral("1.00"));
}

void tst_BoundView::theView()
{
    BoundWindow bound;
    QVERIFY(bound.bindClicks({100.0f, 100.0f}));
    CVXSMultiImageView *view = bound.window()->m_pView;
    QVERIFY(view);
    QCOMPARE(view->objectName(), QStringLiteral("Image Math View"));
    QCOMPARE(view->parentWidget(), static_cast<QWidget *>(bound.window()->m_pGLFrame));
    QCOMPARE(view->getImageBorder(), 10);
    QCOMPARE(int(view->imageLayout()), 4);
    QCOMPARE(view->slotCount(), 3);
    for (int slot = 0; slot < 3; ++slot)
        QVERIFY2(!view->imageAt(slot), "the slots are empty until the tags are laid out");
}

void tst_BoundView::theViewsLayout()
{
    BoundWindow bound;
    QVERIFY(bound.bindClicks({100.0f, 100.0f}));
    auto *layout = qobject_cast<QVBoxLayout *>(bound.window()->m_pGLFrame->layout());
    QVERIFY(layout);
    QCOMPARE(layout->objectName(), QStringLiteral("ImageLayout"));
    QCOMPARE(layout->contentsMargins(), QMargins(2, 2, 2, 2));
    QCOMPARE(layout->spacing(), 2);
    QCOMPARE(layout->count(), 1);
    QCOMPARE(layout->itemAt(0)->widget(), static_cast<QWidget *>(bound.window()->m_pView));
    QCOMPARE(layout->stretch(0), 1);
}

void tst_BoundView::colorbarPlaces_data()
{
    QTest::addColumn<bool>("result");
    QTest::addColumn<float>("top");
    QTest::addColumn<float>("height");
    QTest::newRow("of A and B") << false << 0.05f << 0.567f;
    QTest::newRow("of the result") << true << 0.717f << 0.233f;
}

void tst_BoundView::colorbarPlaces()
{
    QFETCH(bool, result);
    QFETCH(float, top);
    QFETCH(float, height);
    BoundWindow bound;
    QVERIFY(bound.bindClicks({100.0f, 100.0f}));
    const VXSRECT strip = bound.window()->m_pView->getColorBarRect();
    QVERIFY(strip.height() > 0.0f);
    const SColorbar &bar = result ? *bound.window()->m_pColorbarResult : *bound.window()->m_pColorbarAB;
    const VXSRECT before = bar.rect;
    QVERIFY(near(before.left, strip.left, strip.height()));
    QVERIFY(near(before.top, strip.top + top * strip.height(), strip.height()));
    QVERIFY(near(before.height(), height * strip.height(), strip.height()));
    QVERIFY(before.right > before.left && before.right <= strip.right * 1.0001f);
    // Placed once, before the view was ever shown: showing and resizing change nothing.
    bound.show();
    const VXSRECT shown = bound.window()->m_pView->getColorBarRect();
    QVERIFY(near(shown.top, strip.top, strip.height()) &&
            near(shown.height(), strip.height(), strip.height()));
    QVERIFY(near(bar.rect.top, shown.top + top * shown.height(), shown.height()));
}

void tst_BoundView::colorbarPalette_data()
{
    QTest::addColumn<int>("table");
    QTest::addColumn<bool>("reverse");
    QTest::addColumn<bool>("logScale");
    QTest::newRow("rainbow") << int(VXS_CT_RAINBOW) << false << false;
    QTest::newRow("grays, reversed") << int(VXS_CT_GRAYS) << true << false;
    QTest::newRow("yellow hot on a log scale") << int(VXS_CT_YELLOWHOT) << false << true;
    QTest::newRow("blue hot, reversed on a log scale") << int(VXS_CT_BLUEHOT) << true << true;
}

void tst_BoundView::colorbarPalette()
{
    QFETCH(int, table);
    QFETCH(bool, reverse);
    QFETCH(bool, logScale);
    tag_simageadjust adjust;
    adjust.colorTable = VXS_COLORTABLE_TYPES(table);
    adjust.reverse = reverse;
    adjust.logScale = logScale;
    // A single click computes nothing, so that the bars are as the binding makes them.
    BoundWindow bound;
    bound.addClick(QStringLiteral("A1"));
    bound.sequence()->setImageAdjust(adjust);
    QVERIFY(bound.saveAndBind());
    const CILPalette both = bound.window()->m_pColorbarAB->palette;
    QCOMPARE(int(both.getColorTableType()), table);
    QCOMPARE(both.getImageMin(), 0.0);
    QCOMPARE(both.getImageMax(), 1.0);
    QCOMPARE(both.isReversed(), reverse);
    QCOMPARE(both.isLogScale(), logScale);
    // Of the sequence's settings only the direction reaches the result's bar.
    const CILPalette result = bound.window()->m_pColorbarResult->palette;
    QCOMPARE(result.isReversed(), reverse);
    QCOMPARE(result.isLogScale(), CILPalette().isLogScale());
    QCOMPARE(int(result.getColorTableType()), int(CILPalette().getColorTableType()));
}

void tst_BoundView::theColorbarIsDrawnWithTheLimitsOfTheFirstComputation()
{
    tag_simageadjust adjust;
    adjust.colorTable = VXS_CT_BLUEREDGREEN;
    adjust.reverse = true;
    adjust.logScale = true;
    BoundWindow bound;
    bound.addClick(QStringLiteral("A1"), false, 100.0f);
    bound.addClick(QStringLiteral("A2"), false, 40.0f);
    bound.sequence()->setImageAdjust(adjust);
    QVERIFY(bound.saveAndBind());
    bound.show();
    CILPalette &own = bound.window()->m_pColorbarAB->palette;
    QCOMPARE(own.getImageMin(), 0.0);
    QCOMPARE(own.getImageMax(), 1.0);
    QCOMPARE(int(own.getColorTableType()), int(VXS_CT_BLUEREDGREEN));
    QVERIFY(own.isReversed());
    QVERIFY(own.isLogScale());
    QVERIFY(bound.window()->m_pColorbarResult->palette.isReversed());
    // What the user sees is the scale of the images beside the bar.
    const CILPalette ofImage = bound.window()->viewImage(CVXSImageMathWnd::SLOT_A)->getPalette();
    QCOMPARE(ofImage.getImageMin(), 40.0);
    QCOMPARE(ofImage.getImageMax(), 193.0);
    const QImage drawn = bound.window()->m_pView->rasterImage();
    own = ofImage;
    QCOMPARE(bound.window()->m_pView->rasterImage(), drawn);
}

void tst_BoundView::colorbarsAreInTheView_data()
{
    QTest::addColumn<bool>("result");
    QTest::newRow("of A and B") << false;
    QTest::newRow("of the result") << true;
}

void tst_BoundView::colorbarsAreInTheView()
{
    QFETCH(bool, result);
    BoundWindow bound;
    QVERIFY(bound.showClicks({100.0f, 50.0f}));
    const QImage with = bound.window()->m_pView->rasterImage();
    SColorbar *bar = result ? bound.window()->m_pColorbarResult.get() : bound.window()->m_pColorbarAB.get();
    bound.window()->m_pView->removeColorbar(bar);
    QVERIFY(with != bound.window()->m_pView->rasterImage());
}

void tst_BoundView::tagsAreInTheView_data()
{
    QTest::addColumn<int>("tag");
    QTest::newRow("of the result") << 0;
    QTest::newRow("of A") << 1;
    QTest::newRow("of B") << 2;
}

void tst_BoundView::tagsAreInTheView()
{
    QFETCH(int, tag);
    BoundWindow bound;
    QVERIFY(bound.showClicks({100.0f, 100.0f}));
    CVXSTextTag *found = tag == 0   ? bound.window()->m_pResultTag.get()
                         : tag == 1 ? bound.window()->m_pTagA.get()
                                    : bound.window()->m_pTagB.get();
    QCOMPARE(found->isShown(), tag != 0);
    found->show(false);
    const QImage without = bound.window()->m_pView->rasterImage();
    const VXSRECT column = bound.window()->m_pView->getImageLayoutRect();
    found->setStringList({QStringLiteral("TAG TAG TAG")});
    found->setPosition(double(column.left), double(column.top));
    found->show(true);
    QVERIFY(without != bound.window()->m_pView->rasterImage());
}

void tst_BoundView::theSettingsSwitchTheTagsOn()
{
    BoundWindow bound;
    QVERIFY(bound.showClicks({100.0f, 100.0f}));
    CVXSMultiImageView *view = bound.window()->m_pView;
    bound.window()->doSettings(); // places the tags for the size in which the view is shown
    const QImage with = view->rasterImage();
    view->setShowTextTag(false);
    QVERIFY(view->rasterImage() != with);
    bound.window()->doSettings();
    QCOMPARE(view->rasterImage(), with);
}

void tst_BoundView::imagesKeepTheirProportions()
{
    BoundWindow bound;
    bound.addClick(QStringLiteral("A1"));
    ClickSpec half = ClickSpec::of(QStringLiteral("A2")); // 16 pixels of the size of A's 32
    half.width = half.height = 16;
    QVERIFY(bound.study().add(half));
    QVERIFY(bound.saveAndBind());
    bound.show();
    const QRectF a = bound.window()->m_pView->imagePlace(0);
    const QRectF b = bound.window()->m_pView->imagePlace(1);
    QVERIFY(a.width() > 40.0);
    QVERIFY2(std::fabs(2.0 * b.width() - a.width()) < 3.0, // whole pixels
             qPrintable(QString("%1 and %2 wide").arg(a.width()).arg(b.width())));
}

void tst_BoundView::imagesReachTheViewWithTheLaunch()
{
    BoundWindow bound;
    QVERIFY(bound.showClicks({100.0f, 40.0f}));
    CVXSMultiImageView *view = bound.window()->m_pView;
    QVERIFY(view->imageAt(0) && view->imageAt(1) && view->imageAt(2));
    QCOMPARE(view->imageAt(0)->getMin(), 100.0f);
    QCOMPARE(view->imageAt(1)->getMin(), 40.0f);
    QCOMPARE(view->imageAt(2)->getMin(), 60.0f);
    QCOMPARE(bound.window()->m_pTagA->getStringList(), QStringList{"Counts"});
    QCOMPARE(bound.window()->m_pTagB->getStringList(), QStringList{"Counts"});
    QVERIFY(!bound.window()->m_pResultTag->isShown());
}

QTEST_MAIN(tst_BoundView)
#include "tst_BoundView.moc"
