// SPDX-License-Identifier: MIT
#include "host/vxparser/CPLClickInfo.h"
#include "tests/host/vxapi/model/CalibrationFixture.h"

#include <QtTest>
#include <set>

using namespace calibration;

/// Calibrated images are made once and remembered for as long as nothing changes that they depend on.
class tst_RememberedImages : public CalibrationFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }
    void askingAgainSharesThePixels();
    void fourImagesAreRemembered();
    void whatItDependsOnMakesItAnew_data();
    void whatItDependsOnMakesItAnew();
    void writingIntoTheCopyLeavesTheRememberedImage();
    void pixelsThatSomeoneMayWriteAreNotRemembered();
};

void tst_RememberedImages::askingAgainSharesThePixels()
{
    CVXSDataset *dataset = addWithCorrections();
    dataset->doFlatFieldCorrection(true);
    const CILImage first = calibrated(dataset, EUNIT_RADIANCE);
    QVERIFY(first.contentId() != 0);
    const CILImage second = calibrated(dataset, EUNIT_RADIANCE);
    QCOMPARE(second.contentId(), first.contentId());
    QCOMPARE(second.get_data(), first.get_data());
    // Colours are no part of the pixels.
    dataset->setColorTable(VXS_CT_GRAYS);
    const CILImage third = calibrated(dataset, EUNIT_RADIANCE);
    QCOMPARE(third.contentId(), first.contentId());
    QCOMPARE(third.getPalette().getColorTableType(), VXS_CT_GRAYS);
}

void tst_RememberedImages::fourImagesAreRemembered()
{
    CVXSDataset *dataset = addWithCorrections();
    QVector<quint64> seen[2];
    for (QVector<quint64> &round : seen) {
        for (bool isFlatFieldOn : {false, true}) {
            dataset->doFlatFieldCorrection(isFlatFieldOn);
            round += calibrated(dataset, EUNIT_RADIANCE).contentId();
            round += calibrated(dataset, EUNIT_COUNTS).contentId();
        }
    }
    QCOMPARE(seen[0], seen[1]);
    QCOMPARE(std::set<quint64>(seen[0].begin(), seen[0].end()).size(), std::size_t(4));
}

void tst_RememberedImages::whatItDependsOnMakesItAnew_data()
{
    QTest::addColumn<QString>("change");
    for (const char *change : {"a key of the camera", "a key of the acquisition", "the flat field's switch",
                               "the background's switch", "new luminescent pixels", "a new flat field",
                               "a new background", "pixels written in place"})
        QTest::newRow(change) << change;
}

void tst_RememberedImages::whatItDependsOnMakesItAnew()
{
    QFETCH(QString, change);
    CVXSDataset *dataset = addWithCorrections();
    dataset->doFlatFieldCorrection(true);
    const CILImage before = calibrated(dataset, EUNIT_RADIANCE);
    const double pixelBefore = before.pixelAt(1, 1);
    if (change == "a key of the camera")
        setKey(dataset, clickinfo::SECTION_CAMERA, clickinfo::KEY_GAIN, "4");
    else if (change == "a key of the acquisition")
        setKey(dataset, clickinfo::SECTION_LUMINESCENT, clickinfo::KEY_EXPOSURE, "30");
    else if (change == "the flat field's switch")
        dataset->doFlatFieldCorrection(false);
    else if (change == "the background's switch")
        dataset->doBackgroundSubtraction(false);
    else if (change == "new luminescent pixels") {
        CILImage pixels = TestStudy::image(32, 32, [](int, int) { return 999.0f; });
        pixels.setBinningFactor(4.0f);
        dataset->setCoreImage(EIMAGE_LUMINESCENT, pixels);
    } else if (change == "a new flat field")
        dataset->setCoreImage(EIMAGE_FLATFIELD, TestStudy::image(32, 32, [](int, int) { return 0.25f; }));
    else if (change == "a new background")
        dataset->setCoreImage(EIMAGE_BACKGROUND, TestStudy::image(32, 32, [](int, int) { return 7.0f; }));
    else
        *dataset->getCoreImage(EIMAGE_LUMINESCENT) *= 2.0;
    const CILImage after = calibrated(dataset, EUNIT_RADIANCE);
    QVERIFY(after.contentId() != before.contentId());
    QVERIFY(after.pixelAt(1, 1) != pixelBefore);
    QCOMPARE(before.pixelAt(1, 1), pixelBefore);
}

void tst_RememberedImages::writingIntoTheCopyLeavesTheRememberedImage()
{
    CVXSDataset *dataset = add();
    CILImage copy = calibrated(dataset, EUNIT_COUNTS);
    static_cast<float *>(copy.get_data())[0] = -1.0f;
    CILImage scaled = calibrated(dataset, EUNIT_COUNTS);
    scaled *= 3.0;
    QCOMPARE(calibrated(dataset, EUNIT_COUNTS).pixelAt(0, 0), 100.0);
    QCOMPARE(dataset->getCoreImage(EIMAGE_LUMINESCENT)->pixelAt(0, 0), 100.0);
}

void tst_RememberedImages::pixelsThatSomeoneMayWriteAreNotRemembered()
{
    CVXSDataset *dataset = add();
    auto *pixels = static_cast<float *>(dataset->getCoreImage(EIMAGE_LUMINESCENT)->get_data());
    for (float value : {11.0f, 22.0f}) {
        pixels[0] = value;
        QCOMPARE(float(calibrated(dataset, EUNIT_COUNTS).pixelAt(0, 0)), value);
    }
}

QTEST_GUILESS_MAIN(tst_RememberedImages)
#include "tst_RememberedImages.moc"
