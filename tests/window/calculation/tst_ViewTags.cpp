// SPDX-License-Identifier: MIT
// The tags under and over the images of a bound window, and its picture on the clipboard.
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "tests/support/GuiDriver.h"
#include "tests/support/PaintCounter.h"
#include "tests/support/Rows.h"
#include "tests/support/WindowProbe.h"

#include <cmath>
#include <QApplication>
#include <QClipboard>
#include <QtTest>

namespace {

const QString A = "AB20260102030405", B = "AB20260102030406", TRANS_A = "AB20260102030407",
              TRANS_B = "AB20260102030408", PHOTO_ONLY = "AB20260102030409", OTHER_FIELD = "AB20260102030410";
const QString NO_IMAGE = "(No luminescent image)";

void fill(TestStudy &study)
{
    ClickSpec spec;
    for (const QString &number : {A, B}) {
        spec.clickNumber = number;
        study.add(spec);
    }
    spec.kind = clickinfo::KIND_TRANSFLUORESCENT;
    for (const QString &number : {TRANS_A, TRANS_B}) {
        spec.clickNumber = number;
        study.add(spec);
    }
    spec.kind = clickinfo::KIND_LUMINESCENT;
    spec.clickNumber = OTHER_FIELD;
    spec.fieldOfView = 13.0;
    study.add(spec);
    spec.clickNumber = PHOTO_ONLY;
    spec.counts = nullptr;
    spec.photograph = [](int x, int) { return float(x); };
    study.add(spec);
}

struct Geometry
{
    explicit Geometry(const CVXSMultiImageView &view)
        : left(view.getImageLayoutRect().left),
          top(view.getImageLayoutRect().top),
          width(view.getThumbnailImageWidth()),
          height(view.getThumbnailImageHeight()),
          border(view.getImageBorder())
    {
    }
    float left, top, width, height;
    int border;
};

QSizeF objectSize(const CVXSMultiImageView &view, const CVXSTextTag &tag)
{
    double width = 0.0, height = 0.0;
    view.convertWindowToObjectSize(tag.getSize().width(), tag.getSize().height(), width, height);
    return {width, height};
}

bool near(const QPointF &a, const QPointF &b)
{
    const bool close = std::abs(a.x() - b.x()) < 1.0e-3 && std::abs(a.y() - b.y()) < 1.0e-3;
    if (!close)
        qWarning("(%g, %g), expected (%g, %g)", a.x(), a.y(), b.x(), b.y());
    return close;
}

} // namespace

class tst_ViewTags : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        fill(m_study);
        QVERIFY(m_study.save());
    }
    void cleanup() { m_study.sequence()->setActiveUnit(EUNIT_COUNTS); }
    void labels_data();
    void labels();
    void labelsOfEmptySlots_data();
    void labelsOfEmptySlots();
    void places_data();
    void places();
    void theBorderIsATenthOfTheThumbnail();
    void bordersOfTheTags_data();
    void bordersOfTheTags();
    void theResultTag_data();
    void theResultTag();
    void aTagThatIsNotCalledForIsLeftAsItIs();
    void slotsAreHandedToTheView();
    void withoutAViewNothingHappens();
    void tagsStayRightThroughShowAndResize();
    void repaintOfAVisibleWindow();
    void repaintWithoutAParent();
    void copyWithoutAView();
    void copyOfTheView();

private:
    TestStudy m_study;
};

void tst_ViewTags::labels_data()
{
    QTest::addColumn<QString>("clickA");
    QTest::addColumn<int>("unitA");
    QTest::addColumn<QString>("clickB");
    QTest::addColumn<int>("unitB");
    QTest::addColumn<QString>("labelA");
    QTest::addColumn<QString>("labelB");
    const QStringList names{"Counts", "Radiance (Photons)", "Radiant Efficiency", "Efficiency"};
    for (int unitA = 0; unitA < 4; ++unitA) {
        for (int unitB = 0; unitB < 4; ++unitB) {
            QTest::newRow(
                qPrintable(QString("A in unit %1, B in unit %2: B is named by A's").arg(unitA).arg(unitB)))
                << A << unitA << B << unitB << names[unitA] << names[unitA];
        }
    }
    row("A transfluorescent in efficiency", TRANS_A, 3, B, 3, "NTF Efficiency", "Efficiency");
    row("B transfluorescent in efficiency", A, 3, TRANS_B, 3, "Efficiency", "NTF Efficiency");
    row("both transfluorescent in efficiency", TRANS_A, 3, TRANS_B, 3, "NTF Efficiency", "NTF Efficiency");
    row("A in counts, B transfluorescent in efficiency", A, 0, TRANS_B, 3, "Counts", "NTF Efficiency");
    row("A transfluorescent in efficiency, B in counts: B is named by A's plain unit", TRANS_A, 3, B, 0,
        "NTF Efficiency", "Efficiency");
    row("B transfluorescent in another unit", A, 1, TRANS_B, 2, "Radiance (Photons)", "Radiance (Photons)");
    row("A transfluorescent in another unit", TRANS_A, 2, B, 2, "Radiant Efficiency", "Radiant Efficiency");
}

void tst_ViewTags::labels()
{
    QFETCH(QString, clickA);
    QFETCH(int, unitA);
    QFETCH(QString, clickB);
    QFETCH(int, unitB);
    QFETCH(QString, labelA);
    QFETCH(QString, labelB);
    WindowProbe window;
    QVERIFY(window.bind(m_study));
    window.select(m_study.sequence(), clickA, clickB);
    m_study.sequence()->getDataset(clickA)->setUnit(tag_edisplayunit(unitA));
    m_study.sequence()->getDataset(clickB)->setUnit(tag_edisplayunit(unitB));
    window.setViewImage(0, &window.m_imageA);
    window.setViewImage(1, &window.m_imageB);
    window.doSettings();
    QCOMPARE(window.m_pTagA->getStringList(), QStringList(labelA));
    QCOMPARE(window.m_pTagB->getStringList(), QStringList(labelB));
    QVERIFY(window.m_pTagA->isShown());
    QVERIFY(window.m_pTagB->isShown());
}

void tst_ViewTags::labelsOfEmptySlots_data()
{
    QTest::addColumn<QString>("clickA");
    QTest::addColumn<QString>("clickB");
    QTest::addColumn<QString>("labelA");
    QTest::addColumn<QString>("labelB");
    QTest::newRow("only A has an image") << A << PHOTO_ONLY << "Counts" << NO_IMAGE;
    QTest::newRow("only B has an image") << PHOTO_ONLY << B << NO_IMAGE << "Counts";
    QTest::newRow("neither has an image") << PHOTO_ONLY << PHOTO_ONLY << NO_IMAGE << NO_IMAGE;
    QTest::newRow("an invalid click") << A << "AB20260102039999" << NO_IMAGE << NO_IMAGE;
}

void tst_ViewTags::labelsOfEmptySlots()
{
    QFETCH(QString, clickA);
    QFETCH(QString, clickB);
    QFETCH(QString, labelA);
    QFETCH(QString, labelB);
    WindowProbe window;
    QVERIFY(window.bind(m_study));
    window.select(m_study.sequence(), clickA, clickB);
    window.calculateResultImage();
    QCOMPARE(window.m_pTagA->getStringList(), QStringList(labelA));
    QCOMPARE(window.m_pTagB->getStringList(), QStringList(labelB));
    QVERIFY(window.m_pTagA->isShown());
    QVERIFY(window.m_pTagB->isShown());
    QVERIFY(window.m_pResultTag->isShown());
    QCOMPARE(window.m_pResultTag->getStringList(), QStringList("Need two images."));
    QVERIFY(!window.m_pView->imageAt(2));
}

void tst_ViewTags::places_data()
{
    QTest::addColumn<QString>("clickB");
    QTest::addColumn<QSize>("size"); // of the window, empty: never shown
    for (const QSize &size : {QSize(), QSize(700, 500), QSize(1200, 900)}) {
        const QString where = size.isEmpty()
                                  ? QString("before the window is shown")
                                  : QString("in a window of %1 x %2").arg(size.width()).arg(size.height());
        QTest::newRow(qPrintable("with a result, " + where)) << B << size;
        QTest::newRow(qPrintable("with one line in the result's place, " + where)) << PHOTO_ONLY << size;
        QTest::newRow(qPrintable("with two lines in the result's place, " + where)) << OTHER_FIELD << size;
    }
}

void tst_ViewTags::places()
{
    QFETCH(QString, clickB);
    QFETCH(QSize, size);
    WindowProbe window;
    QVERIFY(window.bind(m_study));
    if (!size.isEmpty()) {
        window.resize(size);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
    }
    window.select(m_study.sequence(), A, clickB);
    window.calculateResultImage();
    const CVXSMultiImageView &view = *window.m_pView;
    const Geometry g(view);
    QCOMPARE(g.border, int(g.height * 0.1));
    const auto tagLeft = [&g](double width) {
        return double(g.left) + ((double(g.width) + 2.0 * g.border) - width) / 2.0;
    };
    const QSizeF a = objectSize(view, *window.m_pTagA), b = objectSize(view, *window.m_pTagB),
                 r = objectSize(view, *window.m_pResultTag);
    QVERIFY(a.width() > 0.0 && a.height() > 0.0);
    QVERIFY(near(window.m_pTagA->position(),
                 {tagLeft(a.width()), double(g.top + g.height + float(g.border) + 1.0f)}));
    QVERIFY(near(window.m_pTagB->position(),
                 {tagLeft(b.width()), double(g.top + 2.0f * g.height + 3.0f * float(g.border) + 1.0f)}));
    QCOMPARE(window.m_pResultTag->isShown(), clickB != B);
    if (clickB != B) {
        const double third = double(g.top + 2.0f * g.height + 5.0f * float(g.border));
        QVERIFY(near(window.m_pResultTag->position(),
                     {tagLeft(r.width()), third + (double(g.height) - r.height()) / 2.0}));
    }
}

void tst_ViewTags::theBorderIsATenthOfTheThumbnail()
{
    WindowProbe window;
    QVERIFY(window.bind(m_study));
    window.select(m_study.sequence(), A, B);
    window.m_pView->setImageBorder(1);
    const float height = window.m_pView->getThumbnailImageHeight();
    window.doSettings();
    QCOMPARE(window.m_pView->getImageBorder(), int(height * 0.1));
    QCOMPARE(window.m_pView->getThumbnailImageHeight(), height);
}

void tst_ViewTags::bordersOfTheTags_data()
{
    QTest::addColumn<bool>("before");
    QTest::newRow("drawn before") << true;
    QTest::newRow("not drawn before") << false;
}

void tst_ViewTags::bordersOfTheTags()
{
    QFETCH(bool, before);
    WindowProbe window;
    QVERIFY(window.bind(m_study));
    window.select(m_study.sequence(), A, OTHER_FIELD);
    for (CVXSTextTag *tag : {window.m_pResultTag.get(), window.m_pTagA.get(), window.m_pTagB.get()})
        tag->showBorder(before);
    window.calculateResultImage();
    QVERIFY(window.m_pResultTag->isShown());
    QCOMPARE(window.m_pResultTag->hasBorder(), before);
    QVERIFY(!window.m_pTagA->hasBorder());
    QVERIFY(!window.m_pTagB->hasBorder());
}

void tst_ViewTags::theResultTag_data()
{
    QTest::addColumn<bool>("flag");
    QTest::addColumn<QStringList>("messages");
    QTest::addColumn<bool>("shown");
    QTest::newRow("operands can be combined") << false << QStringList() << false;
    QTest::newRow("operands cannot be combined")
        << true << QStringList{"Can't combine images", "of different sizes."} << true;
    QTest::newRow("a message is there though the flag is clear")
        << false << QStringList("Need two images.") << true;
    QTest::newRow("the flag is set without a message") << true << QStringList() << true;
}

void tst_ViewTags::theResultTag()
{
    QFETCH(bool, flag);
    QFETCH(QStringList, messages);
    QFETCH(bool, shown);
    WindowProbe window;
    QVERIFY(window.bind(m_study));
    window.m_pResultTag->show(false);
    window.m_pResultTag->setStringList({"before"});
    window.m_bCannotCombine = flag;
    window.m_messages = messages;
    window.doSettings();
    QCOMPARE(window.m_pResultTag->isShown(), shown);
    QCOMPARE(window.m_pResultTag->getStringList(), shown ? messages : QStringList("before"));
}

void tst_ViewTags::aTagThatIsNotCalledForIsLeftAsItIs()
{
    WindowProbe window;
    QVERIFY(window.bind(m_study));
    window.m_bCannotCombine = false;
    window.m_messages.clear();
    window.m_pResultTag->show(true);
    window.m_pResultTag->setStringList({"before"});
    window.m_pResultTag->setPosition(3.0, 4.0);
    const QPointF before = window.m_pResultTag->position();
    window.doSettings();
    QVERIFY(window.m_pResultTag->isShown());
    QCOMPARE(window.m_pResultTag->getStringList(), QStringList("before"));
    QCOMPARE(window.m_pResultTag->position(), before);
}

void tst_ViewTags::slotsAreHandedToTheView()
{
    WindowProbe window;
    QVERIFY(window.bind(m_study));
    window.select(m_study.sequence(), A, B);
    CILImage *const images[] = {&window.m_imageA, &window.m_imageB, &window.m_resultImage};
    for (int filled = 0; filled < 8; ++filled) {
        for (int slot = 0; slot < 3; ++slot)
            window.setViewImage(slot, filled & (1 << slot) ? images[slot] : nullptr);
        window.doSettings();
        for (int slot = 0; slot < 3; ++slot)
            QCOMPARE(window.m_pView->imageAt(slot), filled & (1 << slot) ? images[slot] : nullptr);
    }
    QCOMPARE(window.m_pView->slotCount(), 3);
}

void tst_ViewTags::withoutAViewNothingHappens()
{
    WindowProbe window;
    window.select(m_study.sequence(), A, B);
    window.m_bCannotCombine = true;
    window.m_messages = QStringList("a line");
    for (CVXSTextTag *tag : {window.m_pResultTag.get(), window.m_pTagA.get(), window.m_pTagB.get()}) {
        tag->show(false);
        tag->showBorder(true);
        tag->setStringList({"before"});
    }
    window.doSettings();
    window.refreshImages();
    for (CVXSTextTag *tag : {window.m_pResultTag.get(), window.m_pTagA.get(), window.m_pTagB.get()}) {
        QVERIFY(!tag->isShown());
        QVERIFY(tag->hasBorder());
        QCOMPARE(tag->getStringList(), QStringList("before"));
    }
}

void tst_ViewTags::tagsStayRightThroughShowAndResize()
{
    CVXSWorkspace workspace;
    workspace.resize(1400, 1000);
    auto *window = new WindowProbe;
    QVERIFY(window->bind(m_study));
    CVXSMdiSubWindow *frame = workspace.addToolWidget(window);
    window->select(m_study.sequence(), A, OTHER_FIELD);
    window->calculateResultImage();
    const CVXSMultiImageView &view = *window->m_pView;
    const auto centre = [&view](const CVXSTextTag &tag) {
        const QSizeF size = objectSize(view, tag);
        return tag.position() + QPointF(size.width() / 2.0, size.height() / 2.0);
    };
    const QPointF a = centre(*window->m_pTagA), b = centre(*window->m_pTagB);
    workspace.show();
    QVERIFY(QTest::qWaitForWindowExposed(&workspace));
    frame->showWindow();
    for (const QSize &size : {QSize(), QSize(900, 700), QSize(600, 640), QSize(1300, 950)}) {
        if (!size.isEmpty())
            frame->resize(size);
        GuiDriver::settle();
        // A tag keeps its centre: all three stay in the middle of the column, the result's tag of its place.
        const QPointF placedA = window->m_pTagA->position(), placedB = window->m_pTagB->position();
        const QPointF placedResult = window->m_pResultTag->position();
        QVERIFY(near(centre(*window->m_pTagA), a));
        QVERIFY(near(centre(*window->m_pTagB), b));
        window->doSettings();
        QVERIFY(near(placedResult, window->m_pResultTag->position()));
        QVERIFY(std::abs(window->m_pTagA->position().x() - placedA.x()) < 1.0e-3);
        QVERIFY(std::abs(window->m_pTagB->position().x() - placedB.x()) < 1.0e-3);
        window->m_pTagA->setPosition(placedA.x(), placedA.y());
        window->m_pTagB->setPosition(placedB.x(), placedB.y());
    }
}

void tst_ViewTags::repaintOfAVisibleWindow()
{
    CVXSWorkspace workspace;
    workspace.resize(1000, 800);
    auto *window = new WindowProbe;
    QVERIFY(window->bind(m_study));
    CVXSMdiSubWindow *frame = workspace.addToolWidget(window);
    PaintCounter paints(window->m_pView);
    workspace.show();
    QVERIFY(QTest::qWaitForWindowExposed(&workspace));
    frame->showWindow();
    QTRY_VERIFY(paints.count > 0);
    QVERIFY(paints.comesToRest());
    window->refreshImages();
    QTRY_VERIFY(paints.count > 0);
    frame->hideWindow();
    QVERIFY(paints.comesToRest());
    window->refreshImages();
    QVERIFY(paints.anotherWidgetPaints());
    QCOMPARE(paints.count, 0);
}

void tst_ViewTags::repaintWithoutAParent()
{
    WindowProbe window;
    QVERIFY(window.bind(m_study));
    QVERIFY(!window.parentWidget());
    PaintCounter paints(window.m_pView);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTRY_VERIFY(paints.count > 0);
    QVERIFY(paints.comesToRest());
    window.refreshImages();
    QVERIFY(paints.anotherWidgetPaints());
    QCOMPARE(paints.count, 0);
}

void tst_ViewTags::copyWithoutAView()
{
    QImage something(5, 5, QImage::Format_RGB32);
    something.fill(Qt::red);
    QApplication::clipboard()->setImage(something, QClipboard::Clipboard);
    QVERIFY(!QApplication::clipboard()->image(QClipboard::Clipboard).isNull());
    WindowProbe window;
    window.copyToClipboard();
    QVERIFY(QApplication::clipboard()->image(QClipboard::Clipboard).isNull());
}

void tst_ViewTags::copyOfTheView()
{
    WindowProbe window;
    QVERIFY(window.bind(m_study));
    window.resize(900, 700);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    window.select(m_study.sequence(), A, B);
    window.calculateResultImage();
    QApplication::clipboard()->clear();
    window.copyToClipboard();
    const QImage copied = QApplication::clipboard()->image(QClipboard::Clipboard);
    QImage picture;
    window.m_pView->getImage(picture);
    QVERIFY(!picture.isNull());
    QCOMPARE(copied.size(), picture.size());
    QCOMPARE(copied.convertToFormat(QImage::Format_RGB32), picture.convertToFormat(QImage::Format_RGB32));
}

QTEST_MAIN(tst_ViewTags)
#include "tst_ViewTags.moc"
