// SPDX-License-Identifier: MIT
#include "host/vxapi/plugin/CVXToolPluginBase.h"
#include "tests/support/Rows.h"

#include <cstring>
#include <elf.h>
#include <link.h>
#include <memory>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QLibrary>
#include <QMetaMethod>
#include <QPluginLoader>
#include <QPointer>
#include <QSet>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

namespace {

const QString LIBRARY = QStringLiteral(VEXA_IMAGEMATH_PLUGIN);
constexpr char INTERFACE_ID[] = "com.Tarrow.Vexa.CVXToolPluginBase/1.0";
constexpr int METHODS = 12;

// Names of the dynamic symbols that the library itself defines, read from the file.
QSet<QString> exportedSymbols(QString *error)
{
    QSet<QString> names;
    QFile file(LIBRARY);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = file.errorString();
        return names;
    }
    const QByteArray bytes = file.readAll();
    const char *base = bytes.constData();
    if (bytes.size() < int(sizeof(ElfW(Ehdr))) || std::memcmp(base, ELFMAG, SELFMAG) != 0) {
        *error = QStringLiteral("not an ELF file");
        return names;
    }
    const auto *header = reinterpret_cast<const ElfW(Ehdr) *>(base);
    const auto *sections = reinterpret_cast<const ElfW(Shdr) *>(base + header->e_shoff);
    bool found = false;
    for (int i = 0; i < header->e_shnum; ++i) {
        if (sections[i].sh_type != SHT_DYNSYM)
            continue;
        found = true;
        const char *texts = base + sections[sections[i].sh_link].sh_offset;
        const auto *symbols = reinterpret_cast<const ElfW(Sym) *>(base + sections[i].sh_offset);
        const std::size_t count = sections[i].sh_size / sizeof(ElfW(Sym));
        for (std::size_t s = 1; s < count; ++s) {
            if (symbols[s].st_shndx != SHN_UNDEF)
                names.insert(QString::fromLatin1(texts + symbols[s].st_name));
        }
    }
    if (!found)
        *error = QStringLiteral("no dynamic symbols");
    return names;
}

} // namespace

class tst_PluginLibrary : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();

    void metadata_data();
    void metadata();
    void metadataHasNoKeysOfItsOwn();
    void metadataIsReadWithoutCreatingTheObject();
    void metadataBlockBeginsWithTheMarker();
    void exports();

    void twoCallsGiveTheSameObject();
    void aDeletedObjectIsReplacedByANewOne();
    void theLoaderAndTheEntryPointGiveTheSameObject();
    void theObjectHasNoParent();

    void metacast_data();
    void metacast();
    void registeringAnArgument_data();
    void registeringAnArgument();
    void invokingAMethod_data();
    void invokingAMethod();
    void anIdOfTheBaseClassComesBackNegative_data();
    void anIdOfTheBaseClassComesBackNegative();
    void metaObjectOfTheClass();

private:
    QObject *instance() const { return m_instance(); }

    using Entry = QObject *(*)();
    Entry m_instance = nullptr;
};

void tst_PluginLibrary::initTestCase()
{
    QLibrary library(LIBRARY);
    QVERIFY2(library.load(), qPrintable(library.errorString()));
    m_instance = reinterpret_cast<Entry>(library.resolve("qt_plugin_instance"));
    QVERIFY(m_instance);
}

void tst_PluginLibrary::cleanup()
{
    delete instance();
}

void tst_PluginLibrary::metadata_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QJsonValue>("value");
    QTest::newRow("the IID names the tool") << "IID" << QJsonValue(QStringLiteral("qdx.vexa.vximagemath"));
    row("the class name is the plug-in's", "className", QJsonValue(QStringLiteral("CVXImageMathPlugin")));
    QTest::newRow("debug is false") << "debug" << QJsonValue(false);
}

void tst_PluginLibrary::metadata()
{
    QFETCH(QString, key);
    QFETCH(QJsonValue, value);
    QCOMPARE(QPluginLoader(LIBRARY).metaData().value(key), value);
}

void tst_PluginLibrary::metadataHasNoKeysOfItsOwn()
{
    const QJsonObject data = QPluginLoader(LIBRARY).metaData();
    QVERIFY(data.value(QStringLiteral("MetaData")).toObject().isEmpty());
    // The loader tells major and minor release of the Qt that the library was built against.
    QCOMPARE(data.value(QStringLiteral("version")).toInt() >> 8, QT_VERSION >> 8);
    const QStringList known{"IID", "MetaData", "className", "debug", "version", "archreq"};
    for (const QString &key : data.keys())
        QVERIFY2(known.contains(key), qPrintable(key));
}

// An object knows the thread that made it: what another thread read cannot have made this one.
void tst_PluginLibrary::metadataIsReadWithoutCreatingTheObject()
{
    QTemporaryDir folder;
    const QString copy = folder.filePath(QStringLiteral("libcopy.so")); // nobody has loaded this one yet
    QVERIFY(QFile::copy(LIBRARY, copy));
    QString iid;
    QByteArray marker;
    const std::unique_ptr<QThread> reader(QThread::create([&] {
        QPluginLoader loader(copy);
        iid = loader.metaData().value(QStringLiteral("IID")).toString();
        QLibrary library(copy);
        using Query = const char *(*)();
        if (const auto query = reinterpret_cast<Query>(library.resolve("qt_plugin_query_metadata")))
            marker = QByteArray(query(), 11);
    }));
    reader->start();
    QVERIFY(reader->wait());
    QCOMPARE(iid, QStringLiteral("qdx.vexa.vximagemath"));
    QCOMPARE(marker, QByteArray("QTMETADATA "));
    const auto made = reinterpret_cast<Entry>(QLibrary(copy).resolve("qt_plugin_instance"));
    QVERIFY(made);
    const std::unique_ptr<QObject> first(made());
    QVERIFY(first);
    QCOMPARE(first->thread(), QThread::currentThread());
}

void tst_PluginLibrary::metadataBlockBeginsWithTheMarker()
{
    QLibrary library(LIBRARY);
    using Query = const char *(*)();
    const auto query = reinterpret_cast<Query>(library.resolve("qt_plugin_query_metadata"));
    QVERIFY(query);
    // Qt before 6.3 answers with a pointer to the block itself.
    QCOMPARE(QByteArray(query(), 11), QByteArray("QTMETADATA "));
    QCOMPARE(static_cast<const void *>(query()), static_cast<const void *>(query()));
}

void tst_PluginLibrary::exports()
{
    QString error;
    const QSet<QString> names = exportedSymbols(&error);
    QVERIFY2(error.isEmpty(), qPrintable(error));
    QStringList sorted = names.values();
    sorted.sort();
    QCOMPARE(sorted, (QStringList{"qt_plugin_instance", "qt_plugin_query_metadata"}));
}

void tst_PluginLibrary::twoCallsGiveTheSameObject()
{
    QObject *first = instance();
    QVERIFY(first);
    QCOMPARE(instance(), first);
}

void tst_PluginLibrary::aDeletedObjectIsReplacedByANewOne()
{
    QPointer<QObject> first = instance();
    QVERIFY(first);
    // The allocator may hand out the same address again, so the old object carries a mark.
    first->setObjectName(QStringLiteral("the first one"));
    delete first.data();
    QVERIFY(!first);
    QObject *second = instance();
    QVERIFY(second);
    QCOMPARE(second->objectName(), QString());
    QCOMPARE(second->metaObject()->className(), "CVXImageMathPlugin");
    QCOMPARE(instance(), second);
}

void tst_PluginLibrary::theLoaderAndTheEntryPointGiveTheSameObject()
{
    QPluginLoader loader(LIBRARY);
    QCOMPARE(loader.instance(), instance());
    delete loader.instance();
    QObject *next = loader.instance();
    QVERIFY2(next, qPrintable(loader.errorString()));
    QCOMPARE(instance(), next);
}

void tst_PluginLibrary::theObjectHasNoParent()
{
    QVERIFY(!instance()->parent());
}

void tst_PluginLibrary::metacast_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("isObject");
    QTest::newRow("its own class name gives the object") << QByteArray("CVXImageMathPlugin") << true;
    QTest::newRow("the interface id gives the object") << QByteArray(INTERFACE_ID) << true;
    QTest::newRow("the base class name gives the object") << QByteArray("CVXToolPluginBase") << true;
    QTest::newRow("QObject gives the object") << QByteArray("QObject") << true;
    QTest::newRow("an unknown name gives null") << QByteArray("CVXOtherPlugin") << false;
    QTest::newRow("an empty name gives null") << QByteArray("") << false;
    QTest::newRow("the interface id of another version gives null")
        << QByteArray("com.Tarrow.Vexa.CVXToolPluginBase/1.1") << false;
    QTest::newRow("the name in other case gives null") << QByteArray("cvximagemathplugin") << false;
    QTest::newRow("QWidget gives null") << QByteArray("QWidget") << false;
    QTest::newRow("a null name gives null") << QByteArray() << false;
}

void tst_PluginLibrary::metacast()
{
    QFETCH(QByteArray, name);
    QFETCH(bool, isObject);
    QObject *object = instance();
    void *cast = object->qt_metacast(name.isNull() ? nullptr : name.constData());
    QCOMPARE(cast, isObject ? static_cast<void *>(object) : nullptr);
    if (name == INTERFACE_ID)
        QCOMPARE(static_cast<QObject *>(qobject_cast<CVXToolPluginBase *>(object)), object);
}

void tst_PluginLibrary::registeringAnArgument_data()
{
    QTest::addColumn<int>("method");
    for (int i = 0; i < METHODS; ++i) {
        const QByteArray row = "method " + QByteArray::number(i) + " has no type to register";
        QTest::newRow(row.constData()) << i;
    }
    QTest::newRow("an id past the last method is left alone") << METHODS;
    QTest::newRow("an id far past the last method is left alone") << METHODS + 5;
}

void tst_PluginLibrary::registeringAnArgument()
{
    QFETCH(int, method);
    QObject *object = instance();
    const int offset = object->metaObject()->methodOffset();
    for (int argument = 0; argument < 4; ++argument) {
        int answer = 4711;
        int index = argument;
        void *args[] = {&answer, &index};
        const int left =
            object->qt_metacall(QMetaObject::RegisterMethodArgumentMetaType, offset + method, args);
        QCOMPARE(left, method - METHODS);
        QCOMPARE(answer, method < METHODS ? -1 : 4711);
    }
}

void tst_PluginLibrary::invokingAMethod_data()
{
    QTest::addColumn<QByteArray>("signature");
    QTest::addColumn<int>("method");
    QTest::newRow("a dataset removed") << QByteArray("onSignalDatasetRemoved(CVXSDataset*)") << 2;
    QTest::newRow("a region of interest deleted") << QByteArray("onSignalROIDeleted()") << 6;
    QTest::newRow("the list of regions changed") << QByteArray("onSignalupdateROIList()") << 7;
    QTest::newRow("no such method") << QByteArray() << METHODS;
}

void tst_PluginLibrary::invokingAMethod()
{
    QFETCH(QByteArray, signature);
    QFETCH(int, method);
    QObject *object = instance();
    const QMetaObject *meta = object->metaObject();
    if (!signature.isEmpty())
        QCOMPARE(meta->indexOfMethod(signature), meta->methodOffset() + method);
    void *none = nullptr;
    void *args[] = {nullptr, &none};
    QCOMPARE(object->qt_metacall(QMetaObject::InvokeMetaMethod, meta->methodOffset() + method, args),
             method - METHODS);
}

void tst_PluginLibrary::anIdOfTheBaseClassComesBackNegative_data()
{
    QTest::addColumn<int>("call");
    QTest::newRow("when a method is invoked") << int(QMetaObject::InvokeMetaMethod);
    QTest::newRow("when an argument is registered") << int(QMetaObject::RegisterMethodArgumentMetaType);
}

void tst_PluginLibrary::anIdOfTheBaseClassComesBackNegative()
{
    QFETCH(int, call);
    QObject *object = instance();
    const int id = QObject::staticMetaObject.indexOfMethod("objectNameChanged(QString)");
    QVERIFY(id >= 0);
    int answer = 4711;
    int index = 0;
    QString name;
    void *registering[] = {&answer, &index};
    void *invoking[] = {nullptr, &name};
    void **args = call == int(QMetaObject::InvokeMetaMethod) ? invoking : registering;
    const int baseMethods = QObject::staticMetaObject.methodCount();
    QCOMPARE(object->qt_metacall(QMetaObject::Call(call), id, args), id - baseMethods);
}

void tst_PluginLibrary::metaObjectOfTheClass()
{
    const QMetaObject *meta = instance()->metaObject();
    QCOMPARE(meta->className(), "CVXImageMathPlugin");
    QCOMPARE(meta->superClass(), &CVXToolPluginBase::staticMetaObject);
    QCOMPARE(meta->methodCount() - meta->methodOffset(), METHODS);
    QCOMPARE(meta->propertyCount() - meta->propertyOffset(), 0);
    QCOMPARE(meta->enumeratorCount() - meta->enumeratorOffset(), 0);
    QCOMPARE(meta->constructorCount(), 0);
}

QTEST_MAIN(tst_PluginLibrary)
#include "tst_PluginLibrary.moc"
