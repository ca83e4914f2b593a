// SPDX-License-Identifier: MIT
#include "host/vxparser/CPLClickInfo.h"

#include <QTemporaryDir>
#include <QTest>

#include <iterator>
#include <random>

namespace {

/// Texts of any UTF-16 units, with those more often that mean something to the syntax.
class CTextSource
{
public:
    explicit CTextSource(unsigned seed) : m_engine(seed) {}

    int number(int limit) { return int(m_engine() % unsigned(limit)); }

    QString text()
    {
        const int kind = number(10);
        if (kind == 0)
            return QString();
        QString out("");
        const int size = number(kind == 1 ? 200 : 12);
        while (out.size() < size)
            appendCharacter(&out);
        return out;
    }

private:
    void appendCharacter(QString *out)
    {
        static const char16_t SPECIAL[] = u"\\\\[]=#: \t\n\rNnu\u0000\u0085\u00a0\u2028\ufeff\ufffe";
        switch (number(5)) {
        case 0:
            *out += QChar(SPECIAL[number(int(std::size(SPECIAL)) - 1)]);
            break;
        case 1:
            *out += QChar(ushort(0x20 + number(0x5f)));
            break;
        case 2: { // a pair of surrogates
            const uint code = 0x10000 + m_engine() % 0x100000;
            *out += QChar(QChar::highSurrogate(code));
            *out += QChar(QChar::lowSurrogate(code));
            break;
        }
        case 3: // alone, unless chance puts two together
            *out += QChar(ushort(0xd800 + number(0x800)));
            break;
        default:
            *out += QChar(ushort(number(0x10000)));
            break;
        }
    }

    std::mt19937 m_engine;
};

bool isSame(const QString &one, const QString &other)
{
    return one == other && one.isNull() == other.isNull();
}

bool isSame(const QStringList &one, const QStringList &other)
{
    if (one.size() != other.size())
        return false;
    for (int i = 0; i < one.size(); ++i) {
        if (!isSame(one.at(i), other.at(i)))
            return false;
    }
    return true;
}

bool isSame(const CPLClickInfo &one, const CPLClickInfo &other)
{
    int count = 0;
    int otherCount = 0;
    one.getSectionCount(&count);
    other.getSectionCount(&otherCount);
    if (count != otherCount)
        return false;
    for (int i = 0; i < count; ++i) {
        QString names[2];
        QStringList keys[2];
        QStringList values[2];
        const CPLSection *sections[2] = {one.sectionAt(i), other.sectionAt(i)};
        for (int k = 0; k < 2; ++k) {
            sections[k]->getSectionName(&names[k], false);
            sections[k]->getKeyList(&keys[k]);
            sections[k]->getValueList(&values[k]);
        }
        if (!isSame(sections[0]->getSectionKey(), sections[1]->getSectionKey()) ||
            !isSame(names[0], names[1]) || !isSame(keys[0], keys[1]) || !isSame(values[0], values[1]))
            return false;
    }
    return true;
}

void fillRandomly(CPLClickInfo *record, CTextSource *source)
{
    for (int sections = source->number(5); sections > 0; --sections) {
        auto *section = new CPLSection;
        section->setSectionKey(source->text());
        section->setSectionName(source->text());
        for (int pairs = source->number(6); pairs > 0; --pairs)
            section->addKeyValue(source->text(), source->text());
        record->addSection(section);
    }
}

} // namespace

class tst_ClickInfoRoundTrip : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void arbitraryRecordsComeBackFromText();
    void arbitraryRecordsComeBackFromFiles();
    void damagedTextNeverBreaksTheReader();
};

void tst_ClickInfoRoundTrip::arbitraryRecordsComeBackFromText()
{
    CTextSource source(20240131);
    for (int i = 0; i < 10000; ++i) {
        CPLClickInfo record;
        fillRandomly(&record, &source);
        const QByteArray text = record.toText();
        CPLClickInfo back;
        QString error;
        QVERIFY2(back.fromText(text, &error) == ESTATUS_SUCCESS,
                 qPrintable(QString("record %1: %2").arg(i).arg(error)));
        QVERIFY2(isSame(record, back), qPrintable(QString("record %1").arg(i)));
        // The same record is always the same text, also after an editor changed the line ends.
        QCOMPARE(back.toText(), text);
        CPLClickInfo backFromCrLf;
        QCOMPARE(backFromCrLf.fromText(QByteArray(text).replace('\n', "\r\n"), nullptr), ESTATUS_SUCCESS);
        QVERIFY2(isSame(record, backFromCrLf), qPrintable(QString("record %1").arg(i)));
    }
}

void tst_ClickInfoRoundTrip::arbitraryRecordsComeBackFromFiles()
{
    QTemporaryDir dir;
    const QString path = dir.filePath("ClickInfo.txt");
    CTextSource source(7);
    // Every saving waits for the disk, so many records share a file.
    constexpr int FILES = 100;
    constexpr int RECORDS = 100;
    for (int i = 0; i < FILES; ++i) {
        CPLClickInfo record;
        for (int k = 0; k < RECORDS; ++k)
            fillRandomly(&record, &source);
        QCOMPARE(record.saveClickInfo(path), ESTATUS_SUCCESS);
        CPLClickInfo back;
        QVERIFY2(back.loadClickInfo(path, false) == ESTATUS_SUCCESS, qPrintable(back.lastError()));
        QVERIFY2(isSame(record, back), qPrintable(QString("file %1").arg(i)));
    }
}

void tst_ClickInfoRoundTrip::damagedTextNeverBreaksTheReader()
{
    CTextSource source(99);
    int refused = 0;
    for (int i = 0; i < 5000; ++i) {
        CPLClickInfo record;
        fillRandomly(&record, &source);
        QByteArray text = record.toText();
        for (int k = 0; k < 3 && !text.isEmpty(); ++k)
            text[source.number(text.size())] = char(source.number(256));
        text.truncate(source.number(text.size() + 1));
        CPLClickInfo back;
        if (back.fromText(text, nullptr) != ESTATUS_SUCCESS) {
            ++refused;
            int count = -1;
            back.getSectionCount(&count);
            QCOMPARE(count, 0);
            continue;
        }
        // What it took, it can write and read again.
        CPLClickInfo again;
        QCOMPARE(again.fromText(back.toText(), nullptr), ESTATUS_SUCCESS);
        QVERIFY(isSame(back, again));
    }
    QVERIFY2(refused > 1000, qPrintable(QString::number(refused)));
}

QTEST_GUILESS_MAIN(tst_ClickInfoRoundTrip)
#include "tst_ClickInfoRoundTrip.moc"
