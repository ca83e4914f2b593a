// SPDX-License-Identifier: MIT
#include "app/HowMadePanel.h"
#include "app/SequenceManager.h"
#include "tests/app/ResultCheckFixture.h"

#include <QAction>
#include <QLabel>
#include <QScrollArea>

class tst_HowMadePanel : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void look();
};

void tst_HowMadePanel::look()
{
    ResultCheckFixture fixture;
    ClickSpec a = ResultCheckFixture::clickOf(ResultCheckFixture::CLICK_A);
    ClickSpec b = ResultCheckFixture::clickOf(ResultCheckFixture::CLICK_B);
    b.photograph = [](int x, int y) { return x * x + y * y < 900 ? 200.0f : 10.0f; };
    a.flatField = [](int x, int) { return 1.0f + 0.01f * float(x); };
    QVERIFY(fixture.open({a, b}));
    CVXSDataset *result = fixture.makeResult(4, "300", EUNIT_RADIANCE, true);
    QVERIFY(result);
    auto *panel = fixture.workspace.window->findChild<HowMadePanel *>();
    QVERIFY(panel->isVisible());
    QTest::qWait(200);
    fixture.workspace.window->grab().save("/tmp/prov-1.png");
    QTest::mouseClick(panel->findChild<QPushButton *>("howMadeCheck"), Qt::LeftButton);
    QTest::qWait(200);
    fixture.workspace.window->grab().save("/tmp/prov-2.png");
    qDebug().noquote() << panel->text();
}

QTEST_MAIN(tst_HowMadePanel)
#include "tst_HowMadePanel.moc"
