// SPDX-License-Identifier: MIT
// What is said beside the result of a bound window, in its view, the log and the record.
#include "tests/support/BoundWindow.h"
#include "tests/support/GuiDriver.h"
#include "tests/support/LogCatcher.h"

#include <QtTest>

namespace {

const QString A = "AB20260102030405", B = "AB20260102030406", C = "AB20260102030407",
              OTHER_FIELD = "AB20260102030408";
const QString EXPOSURE = "A was exposed 1 s, B 10 s; the unit is counts";
const QString BRIGHT = "32 of 1024 pixels of B are saturated (65000 counts or more)";

/// A click of that exposure [s] with that many saturated rows.
ClickSpec clickOf(const QString &number, const QString &exposure, int saturatedRows = 0)
{
    ClickSpec spec = ClickSpec::of(number);
    spec.luminescentKeys.insert(clickinfo::KEY_EXPOSURE, exposure);
    spec.counts = [saturatedRows](int x, int y) { return y < saturatedRows ? 65535.0f : float(100 + x); };
    return spec;
}

} // namespace

class tst_ResultNotes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_bound = std::make_unique<BoundWindow>();
        m_bound->study().add(clickOf(A, "1"));
        m_bound->study().add(clickOf(B, "10", 1));
        m_bound->study().add(clickOf(C, "1"));
        ClickSpec other = clickOf(OTHER_FIELD, "10");
        other.fieldOfView = 13.0;
        m_bound->study().add(other);
        QVERIFY(m_bound->saveAndBind());
        m_log = std::make_unique<LogCatcher>();
        m_bound->show();
    }
    void cleanup()
    {
        m_log.reset();
        m_bound.reset();
    }

    void theFirstLookShowsThem()
    {
        QCOMPARE(notes(), QStringList({EXPOSURE, BRIGHT}));
        QVERIFY(!window()->m_pView->notesPlace().isEmpty());
    }

    void theyFollowSelectionAndUnit()
    {
        select(window()->m_pListBoxB, C);
        QCOMPARE(notes(), QStringList());
        QVERIFY(window()->m_pView->notesPlace().isEmpty());
        select(window()->m_pListBoxB, B);
        QCOMPARE(notes(), QStringList({EXPOSURE, BRIGHT}));
        m_bound->sequence()->setActiveUnit(EUNIT_RADIANCE);
        QCOMPARE(notes(), QStringList({BRIGHT}));
    }

    void withoutAResultThereAreNone()
    {
        select(window()->m_pListBoxB, OTHER_FIELD);
        QVERIFY(window()->m_bCannotCombine);
        QCOMPARE(notes(), QStringList());
        select(window()->m_pListBoxB, B);
        QCOMPARE(notes().size(), 2);
        WindowProbe::selectQuietly(window()->m_pListBoxB, "AB20260102039999"); // not in the sequence
        window()->onSelectClickNumberFromList();
        QCOMPARE(notes(), QStringList());
    }

    void theLogTellsThemOnceAtLevelTwo()
    {
        const QString exposure = QString("A %1, B %2: %3").arg(A, B, EXPOSURE);
        const QString bright = QString("A %1, B %2: %3").arg(A, B, BRIGHT);
        // Binding and showing computed before; it was told then.
        const LogCatcher log;
        for (const char *k : {"2", "3", "4"})
            QVERIFY(GuiDriver(window()).type("m_pKLineEdit", k, Qt::Key_Return));
        QCOMPARE(log.toolMessages(), QStringList());
        select(window()->m_pListBoxB, C);
        QCOMPARE(log.toolMessages(), QStringList());
        select(window()->m_pListBoxB, B);
        QCOMPARE(log.toolMessages(), QStringList({exposure, bright}));
        QCOMPARE(log.ofLevel(ELOG_WARNING), QStringList({exposure, bright}));
    }

    void theFormStaysAsItIs()
    {
        window()->calculateResultImage(); // places the tags in the size that the view has now
        QCOMPARE(notes().size(), 2);
        const QRect view = window()->m_pView->geometry();
        const QSize hint = window()->minimumSizeHint();
        QVector<QPointF> tags;
        for (const CVXSTextTag *tag : {window()->m_pTagA.get(), window()->m_pTagB.get()})
            tags.append(tag->position());
        QVector<QRectF> images;
        for (int i = 0; i < 3; ++i)
            images.append(window()->m_pView->imagePlace(i));
        select(window()->m_pListBoxB, C);
        QVERIFY(notes().isEmpty());
        QCOMPARE(window()->m_pView->geometry(), view);
        QCOMPARE(window()->minimumSizeHint(), hint);
        QCOMPARE(window()->m_pTagA->position(), tags[0]);
        QCOMPARE(window()->m_pTagB->position(), tags[1]);
        for (int i = 0; i < 3; ++i)
            QCOMPARE(window()->m_pView->imagePlace(i), images[i]);
    }

private:
    WindowProbe *window() const { return m_bound->window(); }
    QStringList notes() const { return window()->m_pView->notes(); }
    static void select(QListWidget *list, const QString &click)
    {
        const QList<QListWidgetItem *> found = list->findItems(click, Qt::MatchExactly);
        QCOMPARE(found.size(), 1);
        list->setCurrentItem(found.first());
    }

    std::unique_ptr<BoundWindow> m_bound;
    std::unique_ptr<LogCatcher> m_log;
};

QTEST_MAIN(tst_ResultNotes)
#include "tst_ResultNotes.moc"
