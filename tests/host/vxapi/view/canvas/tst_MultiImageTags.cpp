// SPDX-License-Identifier: MIT
#include "tests/support/ViewFixture.h"

#include <QtTest>

namespace {

/// Position and size of the two placed tags, object units.
QVector<QRectF> tagRects(const ThreeImageView &v)
{
    QVector<QRectF> rects;
    for (const CVXSTextTag *tag : {&v.tagA, &v.tagB}) {
        double w = 0.0;
        double h = 0.0;
        v.view->convertWindowToObjectSize(tag->getSize().width(), tag->getSize().height(), w, h);
        rects.append(QRectF(tag->position(), QSizeF(w, h)));
    }
    return rects;
}

} // namespace

/// Bars and tags of a view, and the object units in which they are placed.
class tst_MultiImageTags : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void geometryIsTheSameBeforeAndAfterShowAndResize()
    {
        ThreeImageView v;
        const auto geometry = [&] {
            const VXSRECT a = v.view->getImageLayoutRect();
            const VXSRECT b = v.view->getColorBarRect();
            return QVector<float>({a.left, a.top, a.right, a.bottom, b.left, b.top, b.right, b.bottom,
                                   v.view->getThumbnailImageWidth(), v.view->getThumbnailImageHeight()});
        };
        const QVector<float> before = geometry();
        show(*v.view, QSize(300, 600));
        QCOMPARE(geometry(), before);
        v.view->resize(700, 500);
        QCoreApplication::processEvents();
        QCOMPARE(geometry(), before);
        v.view->setImageBorder(0);
        QCOMPARE(geometry(), before);
    }

    void barsAndTagsPlacedBeforeShowStayTrue_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("small") << QSize(220, 380);
        QTest::newRow("as hinted") << QSize(260, 480);
        QTest::newRow("large") << QSize(600, 1100);
        QTest::newRow("wide") << QSize(1000, 420);
    }

    void barsAndTagsPlacedBeforeShowStayTrue()
    {
        QFETCH(QSize, size);
        ThreeImageView v;
        v.place();
        const QVector<QRectF> before = tagRects(v);
        show(*v.view, size);
        const QVector<QRectF> after = tagRects(v);
        v.place();
        const QVector<QRectF> fresh = tagRects(v);
        for (int i = 0; i < 2; ++i) {
            QVERIFY(QLineF(before[i].center(), after[i].center()).length() < 1e-6);
            QVERIFY(std::abs(after[i].center().x() - fresh[i].center().x()) < 1e-6);
            // The border between two thumbnails is where the tag belongs; a fresh placement moves it by less
            // than that.
            QVERIFY(std::abs(after[i].center().y() - fresh[i].center().y()) <
                    2.0 * v.view->getImageBorder() / 3.0);
            QCOMPARE(after[i].size(), fresh[i].size());
        }
    }

    void aResizeKeepsATagsCentre()
    {
        ThreeImageView v;
        show(*v.view, QSize(260, 480));
        v.place();
        const QPointF centre = tagRects(v)[0].center();
        v.view->resize(520, 960);
        QCoreApplication::processEvents();
        QVERIFY(QLineF(tagRects(v)[0].center(), centre).length() < 1e-6);
        v.tagA.setStringList({QStringLiteral("x")});
        QVERIFY(QLineF(tagRects(v)[0].center(), centre).length() < 1e-6);
    }

    void windowPixelsBecomeObjectUnitsBeforeShow()
    {
        CVXSMultiImageView view;
        view.setLayout(ELAYOUT_THREE_ROWS);
        double w = 0.0;
        double h = 0.0;
        view.convertWindowToObjectSize(10, 20, w, h);
        QVERIFY(w > 0.0 && std::abs(h - 2.0 * w) < 1e-9);
        // As if it had the size that it wishes for, not the one that no layout has set yet.
        QCOMPARE(h * view.sizeHint().height() / 20.0 >= double(view.getImageLayoutRect().bottom) - 1e-6,
                 true);
        QVERIFY(h < 60.0);
    }

    void aBarRunsAsTheImageBesideItIsPainted()
    {
        // The image runs forwards, its bar's own palette backwards: the bar shows what the image is.
        ThreeImageView v;
        v.place();
        const QImage forwards = v.view->rasterImage();
        v.barResult.palette.setReversed(1);
        v.barResult.palette.SetImageMinMax(0.0, 1.0);
        v.barResult.palette.setLogScale(1);
        QCOMPARE(v.view->rasterImage(), forwards);
        colour(v.result, VXS_CT_YELLOWHOT, 1.0e6, 4.5e7, true);
        const QImage backwards = v.view->rasterImage();
        QVERIFY(backwards != forwards);
    }

    void tagsCanBeHiddenOneByOneAndTogether()
    {
        ThreeImageView v;
        v.place();
        const QImage both = v.view->rasterImage();
        v.view->setShowTextTag(false);
        const QImage none = v.view->rasterImage();
        QVERIFY(both != none);
        v.view->setShowTextTag(true);
        QCOMPARE(v.view->rasterImage(), both);
        v.tagA.show(false);
        const QImage one = v.view->rasterImage();
        QVERIFY(one != both && one != none);
        v.tagB.show(false);
        QCOMPARE(v.view->rasterImage(), none);
    }

    void aTagsSizeFollowsItsLines()
    {
        CVXSTextTag tag;
        QCOMPARE(tag.getSize(), QSize(0, 0));
        tag.setStringList({QStringLiteral("Counts")});
        const QSize one = tag.getSize();
        tag.setStringList({QStringLiteral("Counts"), QStringLiteral("Counts")});
        QCOMPARE(tag.getSize().width(), one.width());
        QVERIFY(tag.getSize().height() > one.height() * 3 / 2);
        tag.setStringList({QStringLiteral("Counts, and more")});
        QVERIFY(tag.getSize().width() > one.width());
    }

    void aTagKeepsACornerThatWasSetBeforeItJoined()
    {
        CVXSMultiImageView view;
        CVXSTextTag tag;
        tag.setStringList({QStringLiteral("Counts")});
        tag.setPosition(100.0, 50.0);
        view.addTextTag(&tag);
        view.addTextTag(&tag);
        view.addTextTag(nullptr);
        QVERIFY(QLineF(tag.position(), QPointF(100.0, 50.0)).length() < 1e-9);
    }
};

int main(int argc, char *argv[])
{
    return runScaled<tst_MultiImageTags>(argc, argv);
}
#include "tst_MultiImageTags.moc"
