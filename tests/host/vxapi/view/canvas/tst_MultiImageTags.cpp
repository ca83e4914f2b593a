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

/// Where two pictures of one size differ, device pixels.
QRect changed(const QImage &a, const QImage &b)
{
    QRect rect;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            if (a.pixel(x, y) != b.pixel(x, y))
                rect |= QRect(x, y, 1, 1);
        }
    }
    return rect;
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

    void aBarWithoutImageRunsAsTheOthers_data()
    {
        QTest::addColumn<bool>("reversed");
        QTest::addColumn<bool>("withOthers");
        QTest::newRow("beside images that run forwards") << false << true;
        QTest::newRow("beside images that run backwards") << true << true;
        QTest::newRow("without any image, the first bar forwards") << false << false;
        QTest::newRow("without any image, the first bar backwards") << true << false;
    }
    void aBarWithoutImageRunsAsTheOthers()
    {
        QFETCH(bool, reversed);
        QFETCH(bool, withOthers);
        ThreeImageView v;
        colour(v.a, VXS_CT_RAINBOW, 0.0, 1100.0, reversed);
        colour(v.b, VXS_CT_RAINBOW, 0.0, 1100.0, reversed);
        v.barAB.palette.setReversed(reversed);
        v.place();
        for (int slot = withOthers ? 2 : 0; slot < 3; ++slot)
            v.view->setImageAt(nullptr, false, slot, QString(), 0);
        v.barResult.palette.setReversed(reversed);
        const QImage same = v.view->rasterImage();
        v.barResult.palette.setReversed(!reversed);
        QCOMPARE(v.view->rasterImage(), same);
        v.barResult.palette.setColorTableType(VXS_CT_GRAYS, 0.0f, 1.0f); // the table is its own
        QVERIFY(v.view->rasterImage() != same);
    }

    void anEmptyPlaceSaysWhyAndAFilledOneDoesNot()
    {
        ThreeImageView v;
        v.place();
        const QImage filled = v.view->rasterImage();
        QVERIFY(v.view->setEmptyText(2, QStringLiteral("The exposure is missing.")));
        QCOMPARE(v.view->rasterImage(), filled);
        v.view->setImageAt(nullptr, false, 2, QString(), 0);
        const QRect place = changed(filled, v.view->rasterImage());
        const QImage said = v.view->rasterImage();
        v.view->setEmptyText(2, QString());
        const QRect text = changed(said, v.view->rasterImage());
        QVERIFY(!text.isEmpty() && place.contains(text));
        QVERIFY(!v.view->setEmptyText(3, QStringLiteral("no such place")));
        QCOMPARE(v.view->emptyText(3), QString());
        // An image without pixels is none.
        CILImage nothing;
        v.view->setImageAt(&nothing, false, 2, QString(), 0);
        v.view->setEmptyText(2, QStringLiteral("The exposure is missing."));
        QCOMPARE(v.view->rasterImage(), said);
    }

    void theTextOfAnEmptyPlaceStaysInsideAndBelowATag_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("a word") << QStringLiteral("nothing");
        QTest::newRow("sentences") << QStringLiteral("One binning is no multiple of the other: A has 48 x 48 "
                                                     "pixels, binned by 4, and B has 32 x 32, binned by 6.");
        QTest::newRow("a path without blanks") << QStringLiteral(
            "/a/folder/of/many/parts/that/has/no/blank/anywhere/in/it/at/all/ClickInfo.txt");
        QTest::newRow("what looks like markup") << QStringLiteral("<h1>large</h1>");
    }
    void theTextOfAnEmptyPlaceStaysInsideAndBelowATag()
    {
        QFETCH(QString, text);
        ThreeImageView v;
        v.messages =
            QStringList({QStringLiteral("Can't combine images"), QStringLiteral("of different sizes.")});
        show(*v.view, QSize(300, 620));
        v.place();
        // The third place; glyphs of the other tags may be set anew by a pixel's share.
        const auto third = [&v] {
            const QImage all = v.view->rasterImage();
            return all.copy(0, all.height() * 2 / 3, all.width(), all.height() / 3);
        };
        const QImage before = third();
        v.view->setEmptyText(2, text);
        const QImage after = third();
        const QRect written = changed(before, after);
        v.view->setEmptyText(2, QString());
        v.tagResult.show(false);
        const QRect tag = changed(third(), before);
        QVERIFY(!written.isEmpty() && !tag.isEmpty());
        QVERIFY2(written.top() > tag.bottom() - 4, qPrintable(QString::number(written.top())));
        QVERIFY(written.bottom() < before.height() - 1);
        QVERIFY(written.left() > 0 && written.right() < before.width() - 1);
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
