// SPDX-License-Identifier: MIT
#include "display/ImagingAngles.h"
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxparser/CPLSection.h"
#include "tests/support/Rows.h"

#include <memory>

using imagingangles::Comparison;

namespace {

// What a record says instead of an angle.
constexpr char NO_SECTION[] = "(no section)";
constexpr char NOT_RECORDED[] = "(not recorded)";

std::unique_ptr<CPLSection> sectionOf(const QString &angle)
{
    if (angle == NO_SECTION)
        return nullptr;
    auto section = std::make_unique<CPLSection>();
    section->addKeyValue("Exposure Time", "60");
    if (angle != NOT_RECORDED)
        section->addKeyValue(clickinfo::KEY_IMAGING_ANGLE, angle);
    return section;
}

} // namespace

class tst_ImagingAngleComparison : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void twoRecords_data();
    void twoRecords();
};

void tst_ImagingAngleComparison::twoRecords_data()
{
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::addColumn<int>("expected");
    const int same = int(Comparison::Same);
    const int different = int(Comparison::Different);
    const int unknown = int(Comparison::Unknown);
    row("equal angles are the same", "90", "90", same);
    row("equal names in other letters are the same", "Left", "lEFT", same);
    row("unlike angles differ", "0", "90", different);
    row("angles are texts: one number written in two ways differs", "90", "90.0", different);
    row("spaces count", "Left", "Left ", different);
    row("an angle that only the first records differs from none", "90", NOT_RECORDED, different);
    row("an angle that only the second records differs from none", NOT_RECORDED, "90", different);
    row("an angle recorded as empty text is the same as none", "", NOT_RECORDED, same);
    row("no angle is the same as one recorded as empty text", NOT_RECORDED, "", same);
    row("an angle recorded as empty text differs from one", "", "90", different);
    row("recorded in neither they are the same", NOT_RECORDED, NOT_RECORDED, same);
    row("without the first section nothing is known", NO_SECTION, "90", unknown);
    row("without the second section nothing is known", "90", NO_SECTION, unknown);
    row("without a section nothing is known of an unrecorded angle", NOT_RECORDED, NO_SECTION, unknown);
    row("without both sections nothing is known", NO_SECTION, NO_SECTION, unknown);
}

void tst_ImagingAngleComparison::twoRecords()
{
    QFETCH(QString, a);
    QFETCH(QString, b);
    const std::unique_ptr<CPLSection> sectionA = sectionOf(a);
    const std::unique_ptr<CPLSection> sectionB = sectionOf(b);
    QTEST(int(imagingangles::compare(sectionA.get(), sectionB.get())), "expected");
}

QTEST_APPLESS_MAIN(tst_ImagingAngleComparison)
#include "tst_ImagingAngleComparison.moc"
