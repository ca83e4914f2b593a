// SPDX-License-Identifier: MIT
#include "host/vxapi/view/canvas/NoteStrip.h"
#include "tests/support/Rows.h"

#include <QFontMetricsF>
#include <QtTest>

namespace {

const QString EXPOSURE = QStringLiteral("A was exposed 1 s, B 10 s; the unit is counts");
const QString SATURATED = QStringLiteral("512 of 1024 pixels of A are saturated (65000 counts or more)");

QFont font()
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(12);
    return font;
}

/// The notes' words in the order in which they stand.
QString wordsOf(const NoteStrip &strip)
{
    return strip.lines.join(QLatin1Char(' ')).remove(QChar(0x2022)).simplified();
}

} // namespace

/// Where notes stand in a view, and in which lines.
class tst_NoteStrip : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingWithoutNotes()
    {
        const NoteStrip strip = NoteStrip::of({}, font(), {{300, 600}, {50, 400, 180, 180}, 570});
        QVERIFY(strip.rect.isEmpty() && strip.lines.isEmpty());
    }

    void place_data()
    {
        QTest::addColumn<QSizeF>("view");
        QTest::addColumn<QRectF>("image");
        QTest::addColumn<QStringList>("notes");
        QTest::addColumn<QString>("stands");
        const QStringList one{EXPOSURE};
        const QStringList two{EXPOSURE, SATURATED};
        row("below the image where there is room", QSizeF(700, 600), QRectF(200, 400, 170, 170), one,
            "below");
        row("beside it where there is none below", QSizeF(700, 600), QRectF(200, 420, 170, 170), one,
            "beside");
        row("two notes beside it", QSizeF(700, 600), QRectF(200, 420, 170, 170), two, "beside");
        row("in a narrow column", QSizeF(508, 650), QRectF(100, 452, 180, 180), two, "beside");
    }
    void place()
    {
        QFETCH(QSizeF, view);
        QFETCH(QRectF, image);
        QFETCH(QStringList, notes);
        QFETCH(QString, stands);
        const NoteStrip strip = NoteStrip::of(notes, font(), {view, image, image.bottom() - 5.0});
        QVERIFY(QRectF(QPointF(), view).contains(strip.rect));
        QVERIFY(!strip.rect.intersects(image));
        QCOMPARE(strip.rect.top() >= image.bottom(), stands == "below");
        QCOMPARE(strip.rect.right() <= image.left(), stands == "beside");
        QCOMPARE(wordsOf(strip), notes.join(QLatin1Char(' ')));
    }

    void withoutAPlaceOfTheirOwnTheyAreShortened_data()
    {
        QTest::addColumn<QStringList>("notes");
        QTest::addColumn<double>("floor");
        QTest::addColumn<int>("lines");
        QTest::addColumn<QString>("begins");
        row("one note, one line", QStringList(SATURATED), 462.0, 1, "512 of 1024 pixels");
        row("two notes, one line", QStringList({EXPOSURE, SATURATED}), 462.0, 1,
            "2 notes: A was exposed 1 s");
        row("no room at all", QStringList(SATURATED), 480.0, 1, "512 of 1024 pixels");
        row("three notes, two lines", QStringList({EXPOSURE, SATURATED, SATURATED}), 446.0, 2,
            "3 notes: A was exposed 1 s, B");
    }
    void withoutAPlaceOfTheirOwnTheyAreShortened()
    {
        QFETCH(QStringList, notes);
        QFETCH(double, floor);
        QFETCH(int, lines);
        QFETCH(QString, begins);
        const NoteStrip strip = NoteStrip::of(notes, font(), {{240, 480}, {20, 333, 130, 133}, floor});
        QCOMPARE(strip.lines.size(), lines);
        QVERIFY2(wordsOf(strip).startsWith(begins), qPrintable(wordsOf(strip)));
        QVERIFY(strip.lines.last().endsWith(QChar(0x2026)));
        QCOMPARE(strip.rect.bottom(), 480.0);
        QCOMPARE(strip.rect.width(), 240.0);
        if (floor < 463.0)
            QVERIFY(strip.rect.top() >= floor);
    }

    void whatFitsBelowTheBarsIsWhole_data()
    {
        QTest::addColumn<double>("width");
        QTest::addColumn<double>("floor");
        QTest::addColumn<int>("lines");
        QTest::addColumn<bool>("isSmaller");
        row("two lines", 240.0, 440.0, 2, false);
        row("one line in smaller letters", 260.0, 462.0, 1, true);
        row("one line", 400.0, 462.0, 1, false);
    }
    void whatFitsBelowTheBarsIsWhole()
    {
        QFETCH(double, width);
        QFETCH(double, floor);
        QFETCH(int, lines);
        QFETCH(bool, isSmaller);
        // It covers the image's foot, and has every word.
        const NoteStrip strip = NoteStrip::of({EXPOSURE}, font(), {{width, 480}, {20, 333, 130, 140}, floor});
        QCOMPARE(wordsOf(strip), EXPOSURE);
        QCOMPARE(strip.lines.size(), lines);
        QCOMPARE(strip.font.pixelSize() < 12, isSmaller);
        QVERIFY(strip.rect.top() >= floor);
        QVERIFY(QFontMetricsF(strip.font).width(strip.lines.first()) <= width - 2.0 * NoteStrip::SIDE);
    }

    void everyLineFits_data()
    {
        QTest::addColumn<double>("width");
        for (const double width : {60.0, 120.0, 240.0, 500.0, 1200.0})
            QTest::addRow("%g pixels wide", width) << width;
    }
    void everyLineFits()
    {
        QFETCH(double, width);
        const NoteStrip strip = NoteStrip::of({EXPOSURE, QString(80, QLatin1Char('W'))}, font(),
                                              {{width, 4000.0}, {0, 0, width, 1000}, 1000.0});
        const QFontMetricsF metrics(strip.font);
        for (const QString &line : strip.lines)
            QVERIFY2(metrics.width(line) <= width - 2.0 * NoteStrip::SIDE + 0.5, qPrintable(line));
        QVERIFY(metrics.lineSpacing() * strip.lines.size() <= strip.rect.height());
        // A word that is wider than a line is broken, and nothing of it is lost.
        QCOMPARE(strip.lines.join(QString()).count(QLatin1Char('W')), 80);
    }
};

QTEST_MAIN(tst_NoteStrip)
#include "tst_NoteStrip.moc"
