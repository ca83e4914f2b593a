// SPDX-License-Identifier: MIT
#include "host/vxapi/model/import/ImageImport.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "tests/support/Rows.h"
#include "tests/window/constant/RoiStudy.h"

#include <QFile>
#include <QTemporaryDir>

namespace {

constexpr double OFFSET = 500.0; ///< of the camera [counts]
constexpr double RATIO = 1.6;    ///< of the light in A to that in B, everywhere

double light(int x, int y)
{
    return 1245.0 + double((x + 3 * y) % 41);
}

} // namespace

/// k from a background ROI of two camera files that come without a record.
class tst_KOfImportedImages : public RoiStudy
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_bound.reset(); }
    void itIsTheRatioOfTheLight_data();
    void itIsTheRatioOfTheLight();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    void write(const QString &name, const Counts &counts) const
    {
        const CILImage image = TestStudy::image(32, 32, [&](int x, int y) { return float(counts(x, y)); });
        QCOMPARE(image.saveTIFF(QFile::encodeName(path(name)).constData()), EIL_SUCCESS);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_KOfImportedImages::init()
{
    CVXUtilityFns::setkValue(QStringLiteral("1.00"));
    m_folder = std::make_unique<QTemporaryDir>();
    write("a.tif", [](int x, int y) { return OFFSET + RATIO * light(x, y); });
    write("b.tif", [](int x, int y) { return OFFSET + light(x, y); });
    write("dark.tif", [](int, int) { return OFFSET; });
}

void tst_KOfImportedImages::itIsTheRatioOfTheLight_data()
{
    QTest::addColumn<QString>("dark");
    QTest::addColumn<double>("offset");
    QTest::addColumn<double>("k");
    QTest::addColumn<bool>("isBackgroundGone");
    row("nothing is known of the offset", QString(), NOT_KNOWN, 1.43, false);
    row("an offset in counts", QString(), OFFSET, RATIO, true);
    row("a dark image", QString("dark.tif"), NOT_KNOWN, RATIO, true);
}

void tst_KOfImportedImages::itIsTheRatioOfTheLight()
{
    QFETCH(QString, dark);
    QFETCH(double, offset);
    QFETCH(double, k);
    QFETCH(bool, isBackgroundGone);
    ImportSettings settings;
    settings.fieldOfView = 16.0;
    settings.offset = offset;
    const QString darkFile = dark.isEmpty() ? QString() : path(dark);
    m_bound = std::make_unique<BoundWindow>();
    for (const QString &click : {QString("A1"), QString("A2")}) {
        const QString file = path(click == "A1" ? "a.tif" : "b.tif");
        QString error;
        auto imported = importImages(click, {file, QString(), darkFile}, settings, nullptr, &error);
        QVERIFY2(imported, qPrintable(error));
        QVERIFY(m_bound->sequence()->addDataset(imported.release()));
    }
    QVERIFY(m_bound->saveAndBind());
    QVERIFY(addBox("A1", "Bkg 1", QRectF(2.0, 2.0, 6.0, 5.0), EROI_BACKGROUND));
    choose("A1", "Bkg 1");
    const float found = window()->m_kValue;
    QVERIFY2(std::abs(double(found) - k) < 0.005, qPrintable(QString::number(double(found))));
    // With the right k nothing is left of a background.
    const CILImage *result = window()->viewImage(2);
    QVERIFY(result && !result->isEmpty());
    QCOMPARE(std::abs(double(result->getMax())) < 1.0 && std::abs(double(result->getMin())) < 1.0,
             isBackgroundGone);
}

QTEST_MAIN(tst_KOfImportedImages)
#include "tst_KOfImportedImages.moc"
