// SPDX-License-Identifier: MIT
#include "host/vxutils/deleteFolderTree.h"
#include "tests/host/vxutils/UnprivilegedUser.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

namespace {

bool writeFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write("x") == 1;
}

} // namespace

class tst_DeleteFolderTree : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void removesEverything();
    void nothingThereIsSuccess();
    void removesLinksNotTargets();
    void removesALinkToAFolderAsTheLink();
    void refusesTheCurrentFolder();
    void refusesTheRoot_data();
    void refusesTheRoot();
    void tellsWhenSomethingIsLeft();
};

void tst_DeleteFolderTree::removesEverything()
{
    QTemporaryDir base;
    const QDir tree(base.filePath("tree"));
    QVERIFY(QDir().mkpath(tree.filePath("a/b/c")));
    QVERIFY(QDir().mkpath(tree.filePath(".hidden")));
    QVERIFY(writeFile(tree.filePath("a/file")));
    QVERIFY(writeFile(tree.filePath("a/b/.hidden file")));
    QVERIFY(writeFile(tree.filePath(QString::fromUtf8("a/b/c/Mäuse 🐭"))));
    QVERIFY(QFile::setPermissions(tree.filePath("a/file"), QFile::ReadOwner));
    QVERIFY(deleteFolderTree(tree));
    QVERIFY(!QFileInfo::exists(tree.path()));
}

void tst_DeleteFolderTree::nothingThereIsSuccess()
{
    QTemporaryDir base;
    QVERIFY(deleteFolderTree(QDir(base.filePath("none"))));
}

void tst_DeleteFolderTree::removesLinksNotTargets()
{
    QTemporaryDir base;
    QVERIFY(QDir().mkpath(base.filePath("outside")));
    QVERIFY(writeFile(base.filePath("outside/file")));
    QVERIFY(QDir().mkpath(base.filePath("tree")));
    QVERIFY(QFile::link(base.filePath("outside"), base.filePath("tree/link to folder")));
    QVERIFY(QFile::link(base.filePath("outside/file"), base.filePath("tree/link to file")));
    QVERIFY(QFile::link(base.filePath("nowhere"), base.filePath("tree/dangling link")));
    QVERIFY(QFile::link(base.filePath("tree"), base.filePath("tree/link to itself")));
    QVERIFY(deleteFolderTree(QDir(base.filePath("tree"))));
    QVERIFY(!QFileInfo::exists(base.filePath("tree")));
    QVERIFY(QFileInfo::exists(base.filePath("outside/file")));
}

void tst_DeleteFolderTree::removesALinkToAFolderAsTheLink()
{
    QTemporaryDir base;
    QVERIFY(QDir().mkpath(base.filePath("outside")));
    QVERIFY(writeFile(base.filePath("outside/file")));
    QVERIFY(QFile::link(base.filePath("outside"), base.filePath("link")));
    QVERIFY(deleteFolderTree(QDir(base.filePath("link/"))));
    QVERIFY(!QFileInfo(base.filePath("link")).isSymLink());
    QVERIFY(QFileInfo::exists(base.filePath("outside/file")));
}

void tst_DeleteFolderTree::refusesTheCurrentFolder()
{
    QTemporaryDir base;
    QVERIFY(QDir().mkpath(base.filePath("a/b")));
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(base.filePath("a/b")));
    const bool removedByEmptyPath = deleteFolderTree(QDir(QString()));
    const bool removedFromAbove = deleteFolderTree(QDir(base.filePath("a")));
    QVERIFY(QDir::setCurrent(before));
    QVERIFY(!removedByEmptyPath);
    QVERIFY(!removedFromAbove);
    QVERIFY(QFileInfo::exists(base.filePath("a/b")));
}

void tst_DeleteFolderTree::refusesTheRoot_data()
{
    QTest::addColumn<QString>("spelling");
    QTest::newRow("the root") << "/";
    QTest::newRow("the root, spelled as a way up") << "/outer/..";
    QTest::newRow("the root, spelled as a way up from nothing") << "/missing/..";
}

void tst_DeleteFolderTree::refusesTheRoot()
{
    // Only ever with a root of its own: were the guard broken, nothing else may be at stake.
    if (geteuid() != 0)
        QSKIP("needs the right to change the root folder");
    QFETCH(QString, spelling);
    QTemporaryDir root;
    QVERIFY(QDir().mkpath(root.filePath("outer")));
    const QByteArray path = QFile::encodeName(root.path());
    const pid_t child = fork();
    QVERIFY(child >= 0);
    if (child == 0) {
        if (chroot(path.constData()) != 0 || chdir("/") != 0)
            _exit(2);
        _exit(deleteFolderTree(QDir(spelling)) ? 1 : 0);
    }
    int status = 0;
    QCOMPARE(waitpid(child, &status, 0), child);
    QVERIFY(WIFEXITED(status));
    QCOMPARE(WEXITSTATUS(status), 0);
    QVERIFY(QFileInfo::exists(root.filePath("outer")));
}

void tst_DeleteFolderTree::tellsWhenSomethingIsLeft()
{
    QTemporaryDir base;
    QVERIFY(QDir().mkpath(base.filePath("tree/locked")));
    QVERIFY(writeFile(base.filePath("tree/locked/file")));
    QCOMPARE(chmod(QFile::encodeName(base.path()).constData(), 0755), 0);
    QCOMPARE(chmod(QFile::encodeName(base.filePath("tree/locked")).constData(), 0555), 0);
    const QString path = base.filePath("tree");
    QVERIFY(holdsForUnprivilegedUser([path] { return !deleteFolderTree(QDir(path)); }));
    QVERIFY(QFileInfo::exists(base.filePath("tree/locked/file")));
    QCOMPARE(chmod(QFile::encodeName(base.filePath("tree/locked")).constData(), 0755), 0);
}

QTEST_GUILESS_MAIN(tst_DeleteFolderTree)
#include "tst_DeleteFolderTree.moc"
