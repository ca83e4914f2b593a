// SPDX-License-Identifier: MIT
#include "tests/host/vxapi/model/StoredDataset.h"
#include "tests/support/Files.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace storeddataset;

namespace {

/// A 16 x 16 image of 8 bits with a sound header, whose compressed pixels end after the first two rows.
QByteArray tiffWithoutItsLastPixels()
{
    QByteArray bytes("II*\0\x08\0\0\0", 8);
    const auto put = [&bytes](quint32 value, int count) {
        for (int i = 0; i < count; ++i)
            bytes.append(char(value >> (8 * i)));
    };
    constexpr quint32 PACKBITS = 32773;
    const QVector<QPair<quint32, quint32>> tags = {{256, 16}, {257, 16}, {258, 8},  {259, PACKBITS}, {262, 1},
                                                   {273, 0},  {277, 1},  {278, 16}, {279, 4}};
    put(quint32(tags.size()), 2);
    const quint32 pixels = quint32(8 + 2 + 12 * tags.size() + 4);
    for (const auto &tag : tags) {
        put(tag.first, 2);
        put(4, 2); // LONG
        put(1, 4);
        put(tag.first == 273 ? pixels : tag.second, 4);
    }
    put(0, 4);
    return bytes + QByteArray("\xf1\x07\xf1\x09", 4); // 16 times 7, 16 times 9
}

} // namespace

/// Whether a dataset has all that it should, to the last pixel.
class tst_DatasetCompleteness : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_root = std::make_unique<QTemporaryDir>(); }
    void cleanup()
    {
        CVXSDataset::registerStoredDatasets(QString());
        m_root.reset();
    }
    void completenessNamesFileAndReason();
    void pixelsAreReadWhenLoadingAndNotBefore();
    void completenessOfADatasetInMemory();

private:
    QString root() const { return m_root->path(); }
    void registerRoot() const { CVXSDataset::registerStoredDatasets(root()); }

    std::unique_ptr<QTemporaryDir> m_root;
};

void tst_DatasetCompleteness::completenessNamesFileAndReason()
{
    const QString folder = writeDataset(root(), CLICK);
    std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(folder, nullptr, nullptr));
    QString error;
    QCOMPARE(dataset->checkComplete(&error), ESTATUS_SUCCESS);
    QVERIFY(error.isEmpty());
    QVERIFY(QFile::remove(folder + "AnalyzedClickInfo.txt"));
    QCOMPARE(dataset->checkComplete(&error), ESTATUS_NOT_COMPLETE);
    QVERIFY2(error.startsWith(folder + "AnalyzedClickInfo.txt: "), qPrintable(error));
    QCOMPARE(dataset->lastError(), error);
    QCOMPARE(dataset->checkComplete(nullptr), ESTATUS_NOT_COMPLETE);
}

void tst_DatasetCompleteness::pixelsAreReadWhenLoadingAndNotBefore()
{
    const QString folder = writeDataset(root(), CLICK);
    QVERIFY(writeFile(folder + "photograph.tif", tiffWithoutItsLastPixels()));
    registerRoot();
    QVERIFY(CVXSDataset::getDataset(CLICK)); // so far as anybody can tell without reading pixels
    std::unique_ptr<CVXSDataset> dataset(CVXSDataset::open(folder, nullptr, nullptr));
    QString error;
    QCOMPARE(dataset->checkComplete(&error), ESTATUS_NOT_COMPLETE);
    QVERIFY2(error.startsWith(folder + "photograph.tif: "), qPrintable(error));
}

void tst_DatasetCompleteness::completenessOfADatasetInMemory()
{
    CVXSDataset dataset(CLICK);
    dataset.setCoreImage(EIMAGE_LUMINESCENT, ramp());
    QString error;
    QCOMPARE(dataset.checkComplete(&error), ESTATUS_NOT_COMPLETE);
    QVERIFY2(error.startsWith(CLICK + ": "), qPrintable(error));
}

QTEST_GUILESS_MAIN(tst_DatasetCompleteness)
#include "tst_DatasetCompleteness.moc"
