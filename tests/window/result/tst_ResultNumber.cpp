// SPDX-License-Identifier: MIT
#include "tests/support/Rows.h"
#include "tests/support/WindowProbe.h"

#include <memory>
#include <QtTest>
#include <vector>

/// The window's members on click numbers: they hand over to the free functions, and what is taken is what the
/// host knows.
class tst_ResultNumber : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { m_open.clear(); }
    void partsOfAName_data();
    void partsOfAName();
    void suffixOfAValue();
    void openDatasetsTakeTheirNumbers_data();
    void openDatasetsTakeTheirNumbers();
    void aTakenNumberIsFreeAgainWhenItsDatasetIsClosed();
    void withoutAFreeNumberThereIsNone();

private:
    void open(const QStringList &clickNumbers);

    WindowProbe m_window;
    std::vector<std::unique_ptr<CVXSDataset>> m_open;
};

void tst_ResultNumber::open(const QStringList &clickNumbers)
{
    for (const QString &number : clickNumbers) {
        m_open.push_back(std::make_unique<CVXSDataset>(number));
        QVERIFY2(m_open.back()->registerDataset(), qPrintable(number));
        QCOMPARE(CVXSDataset::getDataset(number), m_open.back().get());
    }
}

void tst_ResultNumber::partsOfAName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("stem");
    QTest::addColumn<QString>("initials");
    QTest::addColumn<int>("value");
    row("of an acquisition", "ZB20031215152405", "ZB20031215152405", "ZB", 0);
    row("of a result", "ZB_M20031215152405", "ZB_M20031215152405", "ZB", 0);
    row("of a sequence", "ZB20031215152405_SEQ_2", "ZB20031215152405_SEQ", "ZB", 17);
    row("of letters behind a stamp", "ZB2003abc", "ZB2003", "ZB", 6);
}

void tst_ResultNumber::partsOfAName()
{
    QFETCH(QString, name);
    QTEST(m_window.clickNumberStem(name), "stem");
    QTEST(m_window.userInitials(name), "initials");
    QTEST(m_window.letterSuffixValue(name), "value");
}

void tst_ResultNumber::suffixOfAValue()
{
    QCOMPARE(m_window.letterSuffixFromValue(0), QString());
    QCOMPARE(m_window.letterSuffixFromValue(13), QStringLiteral("M"));
    QCOMPARE(m_window.letterSuffixFromValue(27), QStringLiteral("ZA"));
}

void tst_ResultNumber::openDatasetsTakeTheirNumbers_data()
{
    QTest::addColumn<QString>("clickNumber");
    QTest::addColumn<QStringList>("taken");
    QTest::addColumn<QString>("result");
    row("none is open", "ZB20200101120000", QStringList(), "ZB_M20200101120000");
    row("the operand itself is open", "ZB20200101120000", QStringList{"ZB20200101120000"},
        "ZB_M20200101120000");
    row("the first result is open", "ZB20200101120000", QStringList{"ZB_M20200101120000"},
        "ZB_N20200101120000");
    row("of a result the next letter", "ZB_M20200101120000", QStringList{"ZB_M20200101120000"},
        "ZB_N20200101120000");
}

void tst_ResultNumber::openDatasetsTakeTheirNumbers()
{
    QFETCH(QString, clickNumber);
    QFETCH(QStringList, taken);
    QFETCH(QString, result);
    open(taken);
    QCOMPARE(m_window.makeResultClickNumber(clickNumber), result);
    QVERIFY(!CVXSDataset::getDataset(result));
    // Asking reserves nothing.
    QCOMPARE(m_window.makeResultClickNumber(clickNumber), result);
}

void tst_ResultNumber::aTakenNumberIsFreeAgainWhenItsDatasetIsClosed()
{
    open({"ZB_M20200101120000"});
    QCOMPARE(m_window.makeResultClickNumber("ZB20200101120000"), QString("ZB_N20200101120000"));
    m_open.clear();
    QCOMPARE(m_window.makeResultClickNumber("ZB20200101120000"), QString("ZB_M20200101120000"));
}

void tst_ResultNumber::withoutAFreeNumberThereIsNone()
{
    for (int value = 13; value <= 103; ++value)
        open({"ZB_" + m_window.letterSuffixFromValue(value) + "20200101120000"});
    QVERIFY(m_window.makeResultClickNumber("ZB20200101120000").isNull());
}

QTEST_MAIN(tst_ResultNumber)
#include "tst_ResultNumber.moc"
