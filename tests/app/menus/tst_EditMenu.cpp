// SPDX-License-Identifier: MIT
#include "app/MainWindow.h"
#include "app/PluginManager.h"
#include "host/vxapi/model/CROIManager.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/roi/RoiMimeData.h"
#include "host/vxapi/view/canvas/CVXSMultiImageView.h"
#include "host/vxapi/view/windows/CVXSImageWindow.h"
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"
#include "host/vxapi/view/windows/CVXSSequenceWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "tests/support/GuiDriver.h"
#include "tests/support/Rows.h"
#include "tests/support/WorkspaceFixture.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QTableView>
#include <QToolButton>

namespace {

/// A workspace with the windows of two clicks of one sequence; the first is in front.
class EditFixture : public WorkspaceFixture
{
public:
    EditFixture()
    {
        QApplication::clipboard()->clear();
        sequence = window->openSequence(writeSequence(m_folder.path(), "AB20260102030405_SEQ", "AB"));
        QVERIFY(sequence);
        second = show(1);
        first = show(0);
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        GuiDriver::settle();
    }

    CVXSImageWindow *show(int index) const
    {
        return window->parts().workspace->showDataset(sequence->getDatasets()[index]);
    }
    QAction *action(const char *name) const { return window->findChild<QAction *>(QLatin1String(name)); }
    static CROIManager *rois(const CVXSImageWindow *of) { return of->getDataset()->roiManager(); }
    static CROIBase *add(const CVXSImageWindow *to, double left, const QString &name = QString())
    {
        CROIBase roi(EROI_RECTANGLE, EROI_MEASUREMENT, QRectF(left, 1.0, 1.5, 2.0));
        roi.setName(name);
        CROIBase *added = rois(to)->addROI(roi);
        GuiDriver::settle();
        return added;
    }
    static QStringList names(const CVXSImageWindow *of)
    {
        QStringList list;
        for (const CROIBase *roi : rois(of)->rois())
            list.append(roi->name());
        return list;
    }
    static QTableView *table(const CVXSImageWindow *of)
    {
        return of->findChild<QTableView *>(QStringLiteral("MeasurementTable"));
    }
    static CVXSMultiImageView *view(const CVXSImageWindow *of)
    {
        return of->findChild<CVXSMultiImageView *>(QStringLiteral("ImageView"));
    }
    static QImage pictureOf(const CVXSImageWindow *of)
    {
        QImage image;
        view(of)->getImage(image);
        return image.convertToFormat(QImage::Format_RGB32);
    }
    static QImage copied()
    {
        return QApplication::clipboard()->image().convertToFormat(QImage::Format_RGB32);
    }
    static bool areRoisCopied() { return roimime::isPresent(QApplication::clipboard()->mimeData()); }

    CVXSSequenceDataset *sequence = nullptr;
    CVXSImageWindow *first = nullptr;
    CVXSImageWindow *second = nullptr;

private:
    QTemporaryDir m_folder;
};

} // namespace

class tst_EditMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutAWindowThereIsNothingToEdit()
    {
        QApplication::clipboard()->clear();
        const WorkspaceFixture f;
        for (const char *name : {"actionCopy", "actionCopyPicture", "actionPaste"})
            QVERIFY2(!f.window->findChild<QAction *>(QLatin1String(name))->isEnabled(), name);
    }

    void whatIsOfferedIsWhatCanBeDone()
    {
        const EditFixture f;
        QVERIFY(f.action("actionCopy")->isEnabled() && f.action("actionCopyPicture")->isEnabled());
        QVERIFY(!f.action("actionPaste")->isEnabled());
        f.rois(f.first)->selectROI(f.add(f.first, 1.0), false);
        f.action("actionCopy")->trigger();
        QVERIFY(f.action("actionPaste")->isEnabled());
        // A sequence's window takes no ROIs; its picture is there to be copied.
        f.window->parts().workspace->showSequence(f.sequence);
        QTRY_VERIFY(!f.action("actionPaste")->isEnabled());
        QVERIFY(f.action("actionCopy")->isEnabled());
        f.show(1);
        QTRY_VERIFY(f.action("actionPaste")->isEnabled());
        QApplication::clipboard()->setText(QStringLiteral("from elsewhere"));
        QTRY_VERIFY(!f.action("actionPaste")->isEnabled());
    }

    void whatHasNoPictureAndNoFieldOffersNothing()
    {
        const EditFixture f;
        f.rois(f.first)->selectROI(f.add(f.first, 1.0), false);
        f.action("actionCopy")->trigger();
        CVXSDataset empty(QStringLiteral("AB20260102039999"));
        CVXSImageWindow *window = f.window->parts().workspace->showDataset(&empty);
        QCOMPARE(CVXSChildWindow::getActiveChildWnd(), window);
        for (const char *name : {"actionCopy", "actionCopyPicture", "actionPaste"})
            QTRY_VERIFY2(!f.action(name)->isEnabled(), name);
        delete window->subWindow();
        QTRY_VERIFY(f.action("actionCopy")->isEnabled());
    }

    void selectedRoisAreCopiedAndElseThePicture()
    {
        const EditFixture f;
        CROIBase *roi = f.add(f.first, 1.0, QStringLiteral("Tumor"));
        f.rois(f.first)->selectROI(nullptr, false);
        f.action("actionCopy")->trigger();
        QVERIFY(!f.areRoisCopied());
        QVERIFY(!f.copied().isNull());
        QCOMPARE(f.copied(), f.pictureOf(f.first)); // the picture, not the buttons around it
        f.rois(f.first)->selectROI(roi, false);
        f.action("actionCopy")->trigger();
        QVERIFY(f.areRoisCopied());
        QVERIFY(QApplication::clipboard()->text().contains(QStringLiteral("Tumor = measurement rectangle")));
        f.action("actionCopyPicture")->trigger();
        QVERIFY(!f.areRoisCopied());
        QCOMPARE(f.copied(), f.pictureOf(f.first));
    }

    void theKeyInThePictureCopiesThePictureWhenNothingIsSelected()
    {
        const EditFixture f;
        f.add(f.first, 1.0);
        f.rois(f.first)->selectROI(nullptr, false);
        f.view(f.first)->setFocus();
        f.window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(f.window.get()));
        QTest::keyClick(f.view(f.first), Qt::Key_C, Qt::ControlModifier);
        QVERIFY(!f.copied().isNull());
        QCOMPARE(f.copied().size(), f.pictureOf(f.first).size());
    }

    void threeRoisGoFromClickToClick()
    {
        const EditFixture f;
        f.add(f.first, 1.0, QStringLiteral("Tumor"));
        CROIBase *left = f.add(f.first, 3.0);
        f.add(f.first, 5.0, QStringLiteral("not this"));
        CROIBase *right = f.add(f.first, 7.0, QStringLiteral("Paw"));
        f.rois(f.first)->selectROI(right, false);
        f.rois(f.first)->selectROI(left, true);
        f.rois(f.first)->selectROI(f.rois(f.first)->rois().first(), true);
        f.action("actionCopy")->trigger();
        f.show(1);
        f.action("actionPaste")->trigger();
        QCOMPARE(f.names(f.second), QStringList({"Tumor", "ROI 1", "Paw"}));
        QCOMPARE(f.rois(f.second)->rois()[1]->boundingBox(), QRectF(3.0, 1.0, 1.5, 2.0));
        QCOMPARE(f.rois(f.second)->selectedROIs().size(), 3);
    }

    void theRowsOfTheTableAreCopiedAndTheirRoisPasted()
    {
        const EditFixture f;
        f.add(f.second, 1.0, QStringLiteral("older"));
        f.rois(f.second)->selectROI(f.rois(f.second)->rois().first(), false);
        f.show(1);
        f.action("actionCopy")->trigger();
        f.show(0);
        f.add(f.first, 1.0, QStringLiteral("Tumor"));
        f.add(f.first, 4.0, QStringLiteral("Paw"));
        f.add(f.first, 7.0, QStringLiteral("not this"));
        QTRY_COMPARE(f.table(f.first)->model()->rowCount(), 3);
        f.table(f.first)->setFocus();
        f.table(f.first)->selectRow(0);
        f.table(f.first)->selectionModel()->select(f.table(f.first)->model()->index(1, 0),
                                                   QItemSelectionModel::Select | QItemSelectionModel::Rows);
        f.action("actionCopy")->trigger();
        // Numbers for a spreadsheet, ...
        const QStringList lines = QApplication::clipboard()->text().split(QLatin1Char('\n'));
        QCOMPARE(lines.size(), 4);
        QVERIFY(lines[0].startsWith(QStringLiteral("Dataset\tROI\t")));
        QVERIFY(lines[1].contains(QStringLiteral("\tTumor\t")) &&
                lines[2].contains(QStringLiteral("\tPaw\t")));
        // ... and ROIs for a picture: what was copied last, not what was copied before.
        f.show(1);
        f.action("actionPaste")->trigger();
        QCOMPARE(f.names(f.second), QStringList({"older", "Tumor", "Paw"}));
    }

    void whatAToolCopiesInBetweenIsNotThePasted()
    {
        const EditFixture f;
        CROIBase *roi = f.add(f.first, 1.0, QStringLiteral("mine"));
        f.rois(f.first)->selectROI(roi, false);
        f.action("actionCopy")->trigger();
        CROIBase *other = f.add(f.first, 5.0, QStringLiteral("the tool's"));
        f.rois(f.first)->selectROI(other, false);
        QVERIFY(f.rois(f.first)->copyROIObject());
        f.show(1);
        f.action("actionPaste")->trigger();
        QCOMPARE(f.names(f.second), QStringList({"mine"}));
    }

    void pastingWhatIsNoRoiTellsWhy()
    {
        const EditFixture f;
        QApplication::clipboard()->setText(QStringLiteral("from elsewhere"));
        f.first->paste();
        QCOMPARE(f.first->findChild<QLabel *>(QStringLiteral("RoiStatus"))->text(),
                 QStringLiteral("There is no ROI to be pasted: select ROIs and copy them first."));
        QVERIFY(f.names(f.first).isEmpty());
        auto *button = f.first->findChild<QAction *>(QStringLiteral("RoiPaste"));
        QVERIFY(!button->isEnabled());
        f.rois(f.second)->selectROI(f.add(f.second, 1.0), false);
        f.second->copy();
        QTRY_VERIFY(button->isEnabled());
    }
};

QTEST_MAIN(tst_EditMenu)
#include "tst_EditMenu.moc"
