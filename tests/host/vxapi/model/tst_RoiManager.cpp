// SPDX-License-Identifier: MIT
#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/TestStudy.h"

#include <functional>
#include <limits>
#include <memory>
#include <QtTest>

using Change = std::function<void(CROIManager *, CROIBase *)>;
Q_DECLARE_METATYPE(Change)

namespace {

const QString CLICK = QStringLiteral("AB20260102030405");

CROIBase rectangle(double x, double y, EROIKIND kind = EROI_MEASUREMENT)
{
    return CROIBase(EROI_RECTANGLE, kind, QRectF(x, y, 1.0, 1.0));
}

CROIBase named(const QString &name, EROIKIND kind = EROI_MEASUREMENT)
{
    CROIBase roi = rectangle(1.0, 1.0, kind);
    roi.setName(name);
    return roi;
}

CROIBase grid(const QString &name, EROIKIND kind = EROI_MEASUREMENT)
{
    CROIBase roi(kind, QRectF(1.0, 1.0, 4.0, 2.0), 2, 4);
    roi.setName(name);
    return roi;
}

QStringList namesOf(const CROIManager &manager)
{
    QStringList names;
    for (const CROIBase *roi : manager.rois())
        names += roi->name();
    return names;
}

} // namespace

class tst_RoiManager : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void givenNames_data();
    void givenNames();
    void theNextFreeNumberIsFound();
    void whatCannotBeKeptIsRefused();
    void lookUp();
    void namesByKind();
    void selecting();
    void selectedProps();
    void theLastCreated();
    void whatIsNotTheLastCreated();
    void renaming_data();
    void renaming();
    void removing();
    void changesSetTheModifiedFlag_data();
    void changesSetTheModifiedFlag();
    void whatChangesNothing_data();
    void whatChangesNothing();
    void pasteIntoTheSameDataset();
    void pasteIntoAnotherDataset();
    void pasteShifted();
    void copyWithoutSelectionEmptiesTheClipboard();
    void theClipboardOutlivesItsDataset();
    void pasteAndRemovalLeaveNoTrace();

private:
    std::unique_ptr<CVXSDataset> m_dataset;
    CROIManager *m_manager = nullptr;
};

void tst_RoiManager::init()
{
    m_dataset = std::make_unique<CVXSDataset>(CLICK);
    m_manager = m_dataset->roiManager();
    QVERIFY(m_manager && m_manager == m_dataset->roiManager());
    m_manager->copyROIObject(); // nothing is selected: the clipboard is empty
    QVERIFY(!CROIManager::hasCopy());
}

void tst_RoiManager::cleanup()
{
    m_dataset.reset();
}

void tst_RoiManager::givenNames_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("a name of its own stays") << QStringList{"Tumor"} << QStringList{"Tumor"};
    QTest::newRow("a name that is taken gets a number")
        << QStringList{"Tumor", "Tumor", "Tumor"} << QStringList{"Tumor", "Tumor 2", "Tumor 3"};
    QTest::newRow("a number is counted on")
        << QStringList{"Mouse 7", "Mouse 7"} << QStringList{"Mouse 7", "Mouse 8"};
    QTest::newRow("the case of letters makes no other name")
        << QStringList{"Tumor", "TUMOR"} << QStringList{"Tumor", "TUMOR 2"};
    QTest::newRow("letters beyond Latin too")
        << QStringList{QStringLiteral(u"\u0416\u0423\u041a"), QStringLiteral(u"\u0436\u0443\u043a")}
        << QStringList{QStringLiteral(u"\u0416\u0423\u041a"), QStringLiteral(u"\u0436\u0443\u043a 2")};
    QTest::newRow("blanks are no name") << QStringList{"  "} << QStringList{"ROI 1"};
    QTest::newRow("a number too long to count stays")
        << QStringList{"A 9999999999", "A 9999999999"} << QStringList{"A 9999999999", "A 9999999999 2"};
}

void tst_RoiManager::givenNames()
{
    QFETCH(QStringList, names);
    QFETCH(QStringList, expected);
    for (const QString &name : names)
        QVERIFY(m_manager->addROI(named(name)));
    QCOMPARE(namesOf(*m_manager), expected);
}

void tst_RoiManager::theNextFreeNumberIsFound()
{
    QCOMPARE(m_manager->addROI(rectangle(1, 1))->name(), QString("ROI 1"));
    QCOMPARE(m_manager->addROI(rectangle(1, 1))->name(), QString("ROI 2"));
    QCOMPARE(m_manager->addROI(rectangle(1, 1, EROI_BACKGROUND))->name(), QString("Bkg 1"));
    QCOMPARE(m_manager->addROI(grid(QString()))->name(), QString("Grid 1"));
    QCOMPARE(m_manager->addROI(grid(QString(), EROI_BACKGROUND))->name(), QString("Grid 2"));
    m_manager->selectROI(m_manager->rois().first(), false);
    QVERIFY(m_manager->removeROIObject());
    QCOMPARE(m_manager->addROI(rectangle(1, 1))->name(), QString("ROI 1"));
    // A cell's name stands in the records beside those of ROIs.
    QCOMPARE(m_manager->addROI(named("grid 1 [2, 4]"))->name(), QString("grid 1 [2, 4] 2"));
    QCOMPARE(m_manager->addROI(named("Plate [1, 1]"))->name(), QString("Plate [1, 1]"));
    QCOMPARE(m_manager->addROI(grid("Plate"))->name(), QString("Plate 2"));
    QCOMPARE(m_manager->addROI(named("Grid 1 [3, 1]"))->name(), QString("Grid 1 [3, 1]"));
}

void tst_RoiManager::whatCannotBeKeptIsRefused()
{
    LogCatcher log;
    QVERIFY(!m_manager->addROI(CROIBase(EROI_ELLIPSE, EROI_MEASUREMENT, QRectF(1, 1, 0, 2))));
    QVERIFY(!m_manager->addROI(rectangle(std::numeric_limits<double>::infinity(), 1)));
    QVERIFY(m_manager->rois().isEmpty());
    QVERIFY(!m_dataset->isModified());
    QCOMPARE(log.ofLevel(2),
             QStringList({CLICK + ": the ROI is not added: it has no area",
                          CLICK + ": the ROI is not added: a coordinate is not a finite number"}));
    CROIBase *roi = m_manager->addROI(rectangle(1, 1));
    m_manager->moveROI(roi, {1e300, 0.0}); // its width is nothing there
    QCOMPARE(roi->boundingBox(), QRectF(1, 1, 1, 1));
    QCOMPARE(log.ofLevel(2).last(), CLICK + ": ROI \"ROI 1\" stays as it is: it has no area");
}

void tst_RoiManager::lookUp()
{
    CROIBase *tumor = m_manager->addROI(named("Tumor"));
    CROIBase *found = nullptr;
    QVERIFY(m_manager->getROI("Tumor", found));
    QCOMPARE(found, tumor);
    QVERIFY(!m_manager->getROI("tumor", found));
    QCOMPARE(found, nullptr);
}

void tst_RoiManager::namesByKind()
{
    m_manager->addROI(named("B1", EROI_BACKGROUND));
    m_manager->addROI(named("M1"));
    m_manager->addROI(grid("Grid of measurements"));
    m_manager->addROI(grid("Grid of background", EROI_BACKGROUND));
    m_manager->addROI(named("M2"));
    m_manager->addROI(named("B2", EROI_BACKGROUND));
    QStringList names = {"left over"};
    m_manager->getAllBkgROINames(&names);
    QCOMPARE(names, QStringList({"B1", "Grid of background", "B2"}));
    m_manager->getAllMeasurementROINamesExceptGridROI(&names);
    QCOMPARE(names, QStringList({"M1", "M2"}));
}

void tst_RoiManager::selecting()
{
    CROIBase *a = m_manager->addROI(named("A"));
    CROIBase *b = m_manager->addROI(named("B"));
    CVXSDataset other("AB20260102030406");
    CROIBase *foreign = other.roiManager()->addROI(named("A"));
    QSignalSpy changes(m_manager, &CROIManager::selectionChanged);
    m_manager->selectROI(a, false);
    m_manager->selectROI(b, true);
    QCOMPARE(m_manager->selectedROIs(), QList<CROIBase *>({a, b}));
    QCOMPARE(m_manager->selectedROI(), b);
    m_manager->selectROI(a, true); // again: it is the selected one now
    QCOMPARE(m_manager->selectedROIs(), QList<CROIBase *>({b, a}));
    m_manager->selectROI(foreign, true);
    m_manager->selectROI(nullptr, true);
    QCOMPARE(m_manager->selectedROIs(), QList<CROIBase *>({b, a}));
    QCOMPARE(changes.count(), 3);
    m_manager->selectROI(foreign, false);
    QCOMPARE(m_manager->selectedROI(), nullptr);
    m_manager->selectROI(a, false);
    m_manager->selectROI(nullptr, false);
    QVERIFY(m_manager->selectedROIs().isEmpty());
    QVERIFY(m_dataset->isModified()); // since the ROIs were added
    m_dataset->setModified(false);
    m_manager->selectROI(a, false);
    QVERIFY(!m_dataset->isModified());
}

void tst_RoiManager::selectedProps()
{
    tagROIInfo info;
    info.name = "untouched";
    QVERIFY(!m_manager->getSelectedROIProps(&info));
    QCOMPARE(info.name, QString("untouched"));
    m_manager->selectROI(m_manager->addROI(grid("Wells", EROI_BACKGROUND)), false);
    QVERIFY(m_manager->getSelectedROIProps(&info));
    QCOMPARE(info.name, QString("Wells"));
    QCOMPARE(info.shape, EROI_GRID);
    QCOMPARE(info.kind, EROI_BACKGROUND);
    QCOMPARE(info.boundingBox, QRectF(1.0, 1.0, 4.0, 2.0));
}

void tst_RoiManager::theLastCreated()
{
    m_manager->selectLastCreatedROI();
    QCOMPARE(m_manager->selectedROI(), nullptr);
    CROIBase *a = m_manager->addROI(named("A"));
    CROIBase *b = m_manager->addROI(named("B"));
    m_manager->selectROI(a, false);
    m_manager->selectLastCreatedROI();
    QCOMPARE(m_manager->selectedROIs(), QList<CROIBase *>({b}));
    m_manager->selectROI(a, false);
    QVERIFY(m_manager->copyROIObject());
    QVERIFY(m_manager->pasteROIObject(false));
    m_manager->selectLastCreatedROI();
    QCOMPARE(m_manager->selectedROI()->name(), QString("A 2"));
}

void tst_RoiManager::whatIsNotTheLastCreated()
{
    m_manager->addROI(named("A"));
    m_manager->addROI(named("B"));
    // Removing what was pasted must not remove what was there before, though the paste failed.
    QVERIFY(!m_manager->pasteROIObject(false));
    m_manager->selectLastCreatedROI();
    QVERIFY(!m_manager->removeROIObject());
    // Nor when the user removes twice.
    m_manager->addROI(named("C"));
    m_manager->selectLastCreatedROI();
    QVERIFY(m_manager->removeROIObject());
    m_manager->selectLastCreatedROI();
    QVERIFY(!m_manager->removeROIObject());
    QCOMPARE(namesOf(*m_manager), QStringList({"A", "B"}));
}

void tst_RoiManager::renaming_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isPossible");
    QTest::newRow("a free name") << QStringLiteral("Liver") << true;
    QTest::newRow("its own name") << QStringLiteral("Tumor") << true;
    QTest::newRow("its own name in other letters") << QStringLiteral("TUMOR") << true;
    QTest::newRow("a free number of a grid") << QStringLiteral("Wells [9, 9]") << true;
    QTest::newRow("no name") << QString() << false;
    QTest::newRow("blanks") << QStringLiteral(" \t") << false;
    QTest::newRow("a name that is taken") << QStringLiteral("Paw") << false;
    QTest::newRow("a name that is taken in other letters") << QStringLiteral("paw") << false;
    QTest::newRow("the name of a cell") << QStringLiteral("Wells [2, 3]") << false;
}

void tst_RoiManager::renaming()
{
    QFETCH(QString, name);
    QFETCH(bool, isPossible);
    CROIBase *tumor = m_manager->addROI(named("Tumor"));
    m_manager->addROI(named("Paw"));
    m_manager->addROI(grid("Wells"));
    QCOMPARE(m_manager->renameROI(tumor, name), isPossible);
    QCOMPARE(tumor->name(), isPossible ? name : QString("Tumor"));
    // The old name is free only when the ROI gave it up.
    const bool isGivenUp = tumor->name().toLower() != "tumor";
    QCOMPARE(m_manager->addROI(named("Tumor"))->name(), isGivenUp ? QString("Tumor") : QString("Tumor 2"));
    CVXSDataset other("AB20260102030406");
    QVERIFY(!other.roiManager()->renameROI(tumor, "Free"));
    QVERIFY(!m_manager->renameROI(nullptr, "Free"));
}

void tst_RoiManager::removing()
{
    QVERIFY(!m_manager->removeROIObject());
    CROIBase *a = m_manager->addROI(named("A"));
    m_manager->addROI(named("B"));
    CROIBase *c = m_manager->addROI(named("C"));
    m_manager->selectROI(a, false);
    m_manager->selectROI(c, true);
    QSignalSpy changes(m_manager, &CROIManager::roisChanged);
    QSignalSpy selections(m_manager, &CROIManager::selectionChanged);
    QVERIFY(m_manager->removeROIObject());
    QCOMPARE(namesOf(*m_manager), QStringList("B"));
    QVERIFY(m_manager->selectedROIs().isEmpty());
    QCOMPARE(changes.count(), 1);
    QCOMPARE(selections.count(), 1);
}

void tst_RoiManager::changesSetTheModifiedFlag_data()
{
    QTest::addColumn<Change>("change");
    const auto row = [](const char *name, const Change &change) { QTest::newRow(name) << change; };
    row("adding", [](CROIManager *m, CROIBase *) { m->addROI(rectangle(3, 3)); });
    row("renaming", [](CROIManager *m, CROIBase *roi) { m->renameROI(roi, "Other"); });
    row("another kind", [](CROIManager *m, CROIBase *roi) { m->setROIKind(roi, EROI_BACKGROUND); });
    row("moving", [](CROIManager *m, CROIBase *roi) { m->moveROI(roi, {0.5, 0.0}); });
    row("moving by less than is seen", [](CROIManager *m, CROIBase *roi) { m->moveROI(roi, {1e-15, 0.0}); });
    row("another box", [](CROIManager *m, CROIBase *roi) { m->setROIBox(roi, {1, 1, 3, 3}); });
    row("removing", [](CROIManager *m, CROIBase *roi) {
        m->selectROI(roi, false);
        m->removeROIObject();
    });
    row("pasting", [](CROIManager *m, CROIBase *roi) {
        m->selectROI(roi, false);
        m->copyROIObject();
        m->pasteROIObject(true);
    });
}

void tst_RoiManager::changesSetTheModifiedFlag()
{
    QFETCH(Change, change);
    CROIBase *roi = m_manager->addROI(named("Tumor"));
    m_dataset->setModified(false);
    m_manager->markSaved();
    QVERIFY(!m_manager->isModified());
    QSignalSpy changes(m_manager, &CROIManager::roisChanged);
    change(m_manager, roi);
    QVERIFY(m_dataset->isModified());
    QVERIFY(m_manager->isModified());
    QCOMPARE(changes.count(), 1);
}

void tst_RoiManager::whatChangesNothing_data()
{
    QTest::addColumn<Change>("change");
    const auto row = [](const char *name, const Change &change) { QTest::newRow(name) << change; };
    row("selecting", [](CROIManager *m, CROIBase *roi) { m->selectROI(roi, false); });
    row("copying", [](CROIManager *m, CROIBase *roi) {
        m->selectROI(roi, false);
        m->copyROIObject();
    });
    row("the name that it has", [](CROIManager *m, CROIBase *roi) { m->renameROI(roi, "Tumor"); });
    row("the kind that it has", [](CROIManager *m, CROIBase *roi) { m->setROIKind(roi, EROI_MEASUREMENT); });
    row("moving nowhere", [](CROIManager *m, CROIBase *roi) { m->moveROI(roi, {0.0, 0.0}); });
    row("the box that it has", [](CROIManager *m, CROIBase *roi) { m->setROIBox(roi, roi->boundingBox()); });
    row("an empty box", [](CROIManager *m, CROIBase *roi) { m->setROIBox(roi, {1, 1, 0, 3}); });
    row("removing nothing", [](CROIManager *m, CROIBase *) { m->removeROIObject(); });
    row("pasting nothing", [](CROIManager *m, CROIBase *) { m->pasteROIObject(false); });
    row("an ROI of nobody", [](CROIManager *m, CROIBase *) {
        CROIBase foreign = rectangle(1, 1);
        m->moveROI(&foreign, {1, 1});
        m->setROIBox(&foreign, {1, 1, 3, 3});
        m->setROIKind(&foreign, EROI_BACKGROUND);
        m->setMeasurementInvalid(&foreign);
        m->moveROI(nullptr, {1, 1});
        m->setMeasurementInvalid(nullptr);
    });
}

void tst_RoiManager::whatChangesNothing()
{
    QFETCH(Change, change);
    CROIBase *roi = m_manager->addROI(named("Tumor"));
    m_dataset->setModified(false);
    m_manager->markSaved();
    QSignalSpy changes(m_manager, &CROIManager::roisChanged);
    change(m_manager, roi);
    QVERIFY(!m_dataset->isModified());
    QVERIFY(!m_manager->isModified());
    QCOMPARE(changes.count(), 0);
}

void tst_RoiManager::pasteIntoTheSameDataset()
{
    CROIBase *tumor = m_manager->addROI(named("Tumor", EROI_BACKGROUND));
    m_manager->selectROI(tumor, false);
    QVERIFY(m_manager->copyROIObject());
    m_manager->moveROI(tumor, {3.0, 0.0}); // the copy is of then
    QVERIFY(m_manager->pasteROIObject(false));
    const CROIBase *pasted = m_manager->rois().last();
    QCOMPARE(pasted->name(), QString("Tumor 2"));
    QCOMPARE(pasted->kind(), EROI_BACKGROUND);
    QCOMPARE(pasted->boundingBox(), QRectF(1, 1, 1, 1));
    QCOMPARE(m_manager->selectedROI(), tumor);
}

void tst_RoiManager::pasteIntoAnotherDataset()
{
    CVXSDataset other("AB20260102030406");
    m_manager->selectROI(m_manager->addROI(grid("Wells")), false);
    QVERIFY(m_manager->copyROIObject());
    QVERIFY(other.roiManager()->pasteROIObject(false));
    const CROIBase *pasted = other.roiManager()->rois().first();
    QCOMPARE(pasted->name(), QString("Wells"));
    QCOMPARE(pasted->cellNames(), m_manager->rois().first()->cellNames());
    QCOMPARE(pasted->boundingBox(), QRectF(1.0, 1.0, 4.0, 2.0));
    QVERIFY(other.isModified());
}

void tst_RoiManager::pasteShifted()
{
    m_manager->selectROI(m_manager->addROI(rectangle(1, 1)), false);
    m_manager->copyROIObject();
    for (int i = 1; i < 4; ++i) {
        QVERIFY(m_manager->pasteROIObject(true));
        const QRectF before = m_manager->rois().at(i - 1)->boundingBox();
        const QRectF pasted = m_manager->rois().at(i)->boundingBox();
        QVERIFY(pasted.left() > before.left() && pasted.left() < before.left() + 0.5);
        QVERIFY(pasted.top() > before.top() && pasted.top() < before.top() + 0.5);
        QCOMPARE(pasted.size(), before.size());
    }
}

void tst_RoiManager::copyWithoutSelectionEmptiesTheClipboard()
{
    m_manager->selectROI(m_manager->addROI(rectangle(1, 1)), false);
    QVERIFY(m_manager->copyROIObject());
    QVERIFY(CROIManager::hasCopy());
    m_manager->selectROI(nullptr, false);
    QVERIFY(!m_manager->copyROIObject());
    QVERIFY(!CROIManager::hasCopy());
    QVERIFY(!m_manager->pasteROIObject(false));
    QCOMPARE(m_manager->rois().size(), 1);
}

void tst_RoiManager::theClipboardOutlivesItsDataset()
{
    {
        CVXSDataset other("AB20260102030406");
        other.roiManager()->selectROI(other.roiManager()->addROI(named("Tumor")), false);
        QVERIFY(other.roiManager()->copyROIObject());
    }
    QVERIFY(m_manager->pasteROIObject(false));
    QCOMPARE(namesOf(*m_manager), QStringList("Tumor"));
}

void tst_RoiManager::pasteAndRemovalLeaveNoTrace()
{
    CROIBase *tumor = m_manager->addROI(named("Tumor"));
    m_manager->markSaved();
    m_dataset->setModified(false);
    m_manager->selectROI(tumor, false);
    m_manager->copyROIObject();
    QVERIFY(m_manager->pasteROIObject(false));
    QVERIFY(m_dataset->isModified() && m_manager->isModified());
    m_manager->selectLastCreatedROI();
    QVERIFY(m_manager->removeROIObject());
    m_dataset->setModified(false);
    QVERIFY(!m_dataset->isModified());
    QVERIFY(!m_manager->isModified());
    QCOMPARE(namesOf(*m_manager), QStringList("Tumor"));
}

QTEST_GUILESS_MAIN(tst_RoiManager)
#include "tst_RoiManager.moc"
