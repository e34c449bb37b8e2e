// s3Dir on a real disk. The trace lines end here: this program has a writer of its own in place of the library's.

#include "lockedfile.h"
#include "s3dir.h"
#include "s3testflags.h"
#include "s3trace.h"
#include "testfile.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

QStringList lines;

QString withBackslashes(QString path)
{
    return path.replace(u'/', u'\\');
}

} // namespace

void s3WriteTrace(const QString &line)
{
    lines += line;
}

class tst_s3Dir : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void pathsHaveSlashes();
    void copyOfQDirLosesFilters();
    void comparisonIgnoresSpelling();
    void operationsTakeBackslashes();
    void workingDirectoryIsCurrent();
    void emptyPathIsNotMadeCurrent();
    void removingMissingDirectoryIsSuccess();
    void removingEmptyDirectory();
    void unforcedRemovalKeepsFullDirectory();
    void forcedRemovalTakesReadOnlyAndHiddenFiles();
    void forcedRemovalKeepsWorkingDirectory();
    void forcedRemovalKeepsWhatLinksLeadTo();
    void forcedRemovalDoesNotFollowBackslashesInNames();
    void forcedRemovalTakesWhatItCan();
    void staticFilePath();
    void pathsOfNamesTakeBackslashes();
    void workingDirectoryIsTraced();
    void changeOfWorkingDirectoryIsTraced();

private:
    QString path(const QString &name) const { return m_directory->filePath(name); }

    std::unique_ptr<QTemporaryDir> m_directory;
    QString m_workingDirectory;
};

void tst_s3Dir::init()
{
    m_workingDirectory = QDir::currentPath();
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(m_directory->path()).mkpath(u"d/e"_s));
}

void tst_s3Dir::cleanup()
{
    QVERIFY(QDir::setCurrent(m_workingDirectory));
    s3TestFlagsGUI::instance()->clear();
    lines.clear();
}

void tst_s3Dir::pathsHaveSlashes()
{
    QCOMPARE(s3Dir(u"x\\y"_s).path(), u"x/y"_s);
    QCOMPARE(s3Dir(QDir(u"x\\y"_s)).path(), u"x/y"_s);
    QCOMPARE(s3Dir(QFileInfo(u"x\\y"_s)).path(), u"x/y"_s);
    s3Dir directory(u"."_s);
    directory.setPath(u"x\\y"_s);
    QCOMPARE(directory.path(), u"x/y"_s);
}

void tst_s3Dir::copyOfQDirLosesFilters()
{
    const QDir filtered(m_directory->path(), u"*.txt"_s);
    QCOMPARE(s3Dir(filtered).nameFilters(), QDir().nameFilters());
    QVERIFY(s3Dir(m_directory->path()) == filtered);
}

void tst_s3Dir::comparisonIgnoresSpelling()
{
    const s3Dir directory(m_directory->path());
    QVERIFY(directory == QDir(path(u"d/.."_s)));
    QVERIFY(directory == s3Dir(withBackslashes(path(u"d/e/../.."_s))));
    QVERIFY(directory != QDir(path(u"d"_s)));
    QVERIFY(directory != s3Dir(path(u"d"_s)));
    QVERIFY(s3Dir(u"missing//a/../b"_s) == s3Dir(u"missing/b"_s));
}

void tst_s3Dir::operationsTakeBackslashes()
{
    const s3Dir directory(m_directory->path());
    QVERIFY(directory.exists());
    QVERIFY(directory.exists(u"d\\e"_s));
    QVERIFY(directory.mkdir(u"d\\f"_s));
    QVERIFY(QFile::exists(path(u"d/f"_s)));
    QVERIFY(directory.rmdir(u"d\\f"_s));
    QVERIFY(!QFile::exists(path(u"d/f"_s)));
    QVERIFY(directory.mkpath(u"g\\h\\i"_s));
    QVERIFY(QFile::exists(path(u"g/h/i"_s)));
}

void tst_s3Dir::workingDirectoryIsCurrent()
{
    QVERIFY(s3Dir::setCurrent(withBackslashes(path(u"d/e"_s))));
    QCOMPARE(QDir::currentPath(), QDir(path(u"d/e"_s)).canonicalPath());
    QCOMPARE(s3Dir::currentPath(), QDir::currentPath());
    QCOMPARE(s3Dir::current().path(), QDir::currentPath());
    QVERIFY(s3Dir(u"."_s).isCurrent());
    QVERIFY(!s3Dir(path(u"d"_s)).isCurrent());
}

void tst_s3Dir::emptyPathIsNotMadeCurrent()
{
    QVERIFY(!s3Dir::setCurrent(u""_s));
    QCOMPARE(QDir::currentPath(), m_workingDirectory);
}

void tst_s3Dir::removingMissingDirectoryIsSuccess()
{
    QVERIFY(s3Dir(path(u"missing"_s)).removeRecursively(false));
    QVERIFY(s3Dir(path(u"missing"_s)).removeRecursively(true));
}

void tst_s3Dir::removingEmptyDirectory()
{
    QVERIFY(s3Dir(path(u"d/e"_s)).removeRecursively(false));
    QVERIFY(!QFile::exists(path(u"d/e"_s)));
}

void tst_s3Dir::unforcedRemovalKeepsFullDirectory()
{
    QVERIFY(!s3Dir(path(u"d"_s)).removeRecursively(false));
    QVERIFY(QFile::exists(path(u"d/e"_s)));
}

void tst_s3Dir::forcedRemovalTakesReadOnlyAndHiddenFiles()
{
    QVERIFY(QFile::setPermissions(writeTestFile(path(u"d/e/a"_s), "x"), QFileDevice::ReadOwner));
    writeTestFile(path(u"d/.hidden"_s), "x");
    QVERIFY(s3Dir(path(u"d"_s)).removeRecursively(true));
    QVERIFY(!QFile::exists(path(u"d"_s)));
}

void tst_s3Dir::forcedRemovalKeepsWorkingDirectory()
{
    QVERIFY(QDir::setCurrent(path(u"d"_s)));
    QVERIFY(s3Dir::current().removeRecursively(true));
    QVERIFY(QFile::exists(path(u"d/e"_s)));
}

void tst_s3Dir::forcedRemovalKeepsWhatLinksLeadTo()
{
    const QString outside = writeTestFile(path(u"outside"_s), "x");
    QVERIFY(QDir(m_directory->path()).mkdir(u"other"_s));
    const QString inside = writeTestFile(path(u"other/a"_s), "x");
    if (!QFile::link(outside, path(u"d/1.lnk"_s)) || !QFile::link(path(u"other"_s), path(u"d/2.lnk"_s)) ||
        !QFile::link(path(u"missing"_s), path(u"d/3.lnk"_s)))
        QSKIP("Links can't be made here");
    QVERIFY(s3Dir(path(u"d"_s)).removeRecursively(true));
    QVERIFY(QFile::exists(outside));
    QVERIFY(QFile::exists(inside));
    QVERIFY(!QFile::exists(path(u"d"_s)));
}

void tst_s3Dir::forcedRemovalDoesNotFollowBackslashesInNames()
{
    const QString outside = writeTestFile(path(u"outside"_s), "x");
    QVERIFY(QFile(path(u"d/..\\outside"_s)).open(QIODevice::WriteOnly));
    if (!QDir(path(u"d"_s)).entryList(QDir::Files | QDir::Hidden).contains(u"..\\outside"_s))
        QSKIP("Names have no backslashes on this system");
    QVERIFY(QDir(path(u"d"_s)).mkpath(u"..\\other/below"_s));
    QVERIFY(QFile::link(path(u"outside"_s), path(u"d/a\\link"_s)));
    QVERIFY(s3Dir(path(u"d"_s)).removeRecursively(true));
    QVERIFY(!QFile::exists(path(u"d"_s)));
    QVERIFY(QFile::exists(outside));
}

void tst_s3Dir::forcedRemovalTakesWhatItCan()
{
    writeTestFile(path(u"d/a"_s), "x");
    const QString locked = writeTestFile(path(u"d/b"_s), "x");
    writeTestFile(path(u"d/e/c"_s), "x");
    const LockedFile lock(locked);
    if (!lock.isActive())
        QSKIP("No file can be locked against its removal here");
    QVERIFY(!s3Dir(path(u"d"_s)).removeRecursively(true));
    QCOMPARE(QDir(path(u"d"_s)).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList{u"b"_s});
}

void tst_s3Dir::staticFilePath()
{
    QCOMPARE(s3Dir::filePath(u""_s, u"a\\b.log"_s), u"a/b.log"_s);
    QCOMPARE(s3Dir::filePath(u"x\\y"_s, u"b.log"_s), u"x/y/b.log"_s);
    QCOMPARE(s3Dir::filePath(u"."_s, u"b.log"_s), u"./b.log"_s);
}

void tst_s3Dir::pathsOfNamesTakeBackslashes()
{
    const s3Dir directory(u"/x\\y"_s);
    QCOMPARE(directory.filePath(u"z\\a"_s), u"/x/y/z/a"_s);
    QCOMPARE(directory.absoluteFilePath(u"z\\a"_s), QDir(u"/x/y"_s).absoluteFilePath(u"z/a"_s));
}

void tst_s3Dir::workingDirectoryIsTraced()
{
    s3TestFlagsGUI::instance()->insert(226);
    const QString current = s3Dir::currentPath();
    QCOMPARE(lines, QStringList{u"s3Dir::currentPath() result=\"%1\""_s.arg(current)});
}

void tst_s3Dir::changeOfWorkingDirectoryIsTraced()
{
    s3TestFlagsGUI::instance()->insert(226);
    QVERIFY(s3Dir::setCurrent(path(u"d"_s)));
    QVERIFY(!s3Dir::setCurrent(path(u"missing"_s)));
    QVERIFY(!s3Dir::setCurrent(QString()));
    QCOMPARE(lines, (QStringList{u"s3Dir::setCurrent() path=\"%1\" result=true"_s.arg(path(u"d"_s)),
                                 u"s3Dir::setCurrent() path=\"%1\" result=false"_s.arg(path(u"missing"_s)),
                                 u"s3Dir::setCurrent() path=\"\" result=false"_s}));
}

QTEST_GUILESS_MAIN(tst_s3Dir)
#include "tst_s3dir.moc"
