// s3File on a real disk. The trace lines end here: this program has a writer of its own in place of the library's.

#include "lockedfile.h"
#include "nofreefiles.h"
#include "s3file.h"
#include "s3fileinfo.h"
#include "s3testflags.h"
#include "s3trace.h"
#include "smalldisk.h"
#include "testfile.h"
#include "unprivileged.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

QStringList lines;

constexpr QFileDevice::Permissions readable = QFileDevice::ReadOwner | QFileDevice::ReadGroup | QFileDevice::ReadOther;

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

QString withBackslashes(QString path)
{
    return path.replace(u'/', u'\\');
}

} // namespace

void s3WriteTrace(const QString &line)
{
    lines += line;
}

class tst_s3File : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void nameHasSlashes();
    void nameFromInfoHasSlashes();
    void existsIsFalseForDirectory();
    void createMakesEmptyFile();
    void createLeavesWhatIsThere();
    void createFailsInMissingDirectory();
    void renameTakesBackslashes();
    void copyTakesBackslashes();
    void removingMissingFileIsSuccess();
    void removingDirectoryTouchesNothing();
    void forcedRemovalOfReadOnlyFile();
    void failedForcedRemovalRestoresPermissions();
    void makeWritableAddsAllRights();
    void makeWritableOfMissingFileFails();
    void errorText_data();
    void errorText();
    void errorTextOfUnknownCodeIsErrorString();
    void errorTextKeepsPercentSignsOfName();
    void ownErrorWinsOverFallback();
    void fullDiskIsTranslated();
    void deniedAccessIsTranslated();
    void missingDescriptorsAreTranslated();
    void copyFileToFullDiskLeavesNothing();
    void lockedFileStays();
    void copyFileOnLockedTarget();
    void otherErrorStringsStay();
    void copyFileReplacesTarget();
    void copyFileReplacesReadOnlyTarget();
    void copyFileWithoutOverwriteKeepsTarget();
    void copyFileOfMissingSource();
    void copyFileOnItself_data();
    void copyFileOnItself();
    void copyFileThroughLinkKeepsFile();
    void copyFileOnLinkToItselfReplacesLink();
    void copyFileReportsTargetThatStays();
    void copyIsTraced();
    void failedCopyIsTraced();
    void copyWithoutItsFlagIsNotTraced();

private:
    QString path(const QString &name) const { return m_directory->filePath(name); }

    std::unique_ptr<QTemporaryDir> m_directory;
};

void tst_s3File::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
}

void tst_s3File::cleanup()
{
    s3TestFlagsGUI::instance()->clear();
    lines.clear();
}

void tst_s3File::nameHasSlashes()
{
    QCOMPARE(s3File(u"C:\\tmp\\a.txt"_s).fileName(), u"C:/tmp/a.txt"_s);
}

void tst_s3File::nameFromInfoHasSlashes()
{
    QCOMPARE(s3File(QFileInfo(u"C:\\tmp\\a.txt"_s)).fileName(), u"C:/tmp/a.txt"_s);
}

void tst_s3File::existsIsFalseForDirectory()
{
    QVERIFY(!s3File(m_directory->path()).exists());
    QVERIFY(s3FileInfo::exists(m_directory->path()));
    QVERIFY(s3File(withBackslashes(writeTestFile(path(u"a"_s), "x"))).exists());
}

void tst_s3File::createMakesEmptyFile()
{
    s3File file(path(u"a"_s));
    QVERIFY(file.create());
    QVERIFY(!file.isOpen());
    QCOMPARE(contents(path(u"a"_s)), QByteArray());
    QVERIFY(file.exists());
}

void tst_s3File::createLeavesWhatIsThere()
{
    QVERIFY(s3File(writeTestFile(path(u"a"_s), "x")).create());
    QCOMPARE(contents(path(u"a"_s)), "x");
}

void tst_s3File::createFailsInMissingDirectory()
{
    s3File file(path(u"missing/a"_s));
    QVERIFY(!file.create());
    QCOMPARE(file.error(), QFileDevice::OpenError);
}

void tst_s3File::renameTakesBackslashes()
{
    s3File file(writeTestFile(path(u"a"_s), "x"));
    QVERIFY(file.rename(withBackslashes(path(u"b"_s))));
    QCOMPARE(contents(path(u"b"_s)), "x");
    QVERIFY(!QFile::exists(path(u"a"_s)));
}

void tst_s3File::copyTakesBackslashes()
{
    QVERIFY(s3File(writeTestFile(path(u"a"_s), "x")).copy(withBackslashes(path(u"b"_s))));
    QCOMPARE(contents(path(u"b"_s)), "x");
}

void tst_s3File::removingMissingFileIsSuccess()
{
    QVERIFY(s3File(path(u"missing"_s)).remove(false));
    QVERIFY(s3File(path(u"missing"_s)).remove(true));
}

void tst_s3File::removingDirectoryTouchesNothing()
{
    QVERIFY(s3File(m_directory->path()).remove(true));
    QVERIFY(QFile::exists(m_directory->path()));
}

void tst_s3File::forcedRemovalOfReadOnlyFile()
{
    s3File file(writeTestFile(path(u"a"_s), "x"));
    QVERIFY(file.setPermissions(readable));
    QVERIFY(file.remove(true));
    QVERIFY(!QFile::exists(path(u"a"_s)));
}

void tst_s3File::failedForcedRemovalRestoresPermissions()
{
    if (!Unprivileged::isPossible())
        QSKIP("Rights can't be taken from this process");
    const Unprivileged rights;
    QTemporaryDir own;
    QVERIFY(own.isValid());
    s3File file(writeTestFile(own.filePath(u"a"_s), "x"));
    QVERIFY(file.setPermissions(readable));
    QVERIFY(QFile::setPermissions(own.path(), QFileDevice::ReadOwner | QFileDevice::ExeOwner));
    QVERIFY(!file.remove(true));
    QVERIFY(file.exists());
    constexpr QFileDevice::Permissions writes =
        QFileDevice::WriteOwner | QFileDevice::WriteGroup | QFileDevice::WriteOther;
    QCOMPARE(QFile::permissions(file.fileName()) & writes, QFileDevice::Permissions());
    QCOMPARE(file.error(), QFileDevice::RemoveError);
    QCOMPARE(file.errorText(QFileDevice::NoError),
             u"Datei %1 kann nicht gelöscht werden.\nZugriff verweigert"_s.arg(file.fileName()));
    QVERIFY(
        QFile::setPermissions(own.path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner));
}

void tst_s3File::makeWritableAddsAllRights()
{
    s3File file(writeTestFile(path(u"a"_s), "x"));
    QVERIFY(file.setPermissions(readable));
    QVERIFY(file.makeWritable());
    constexpr QFileDevice::Permissions writes =
        QFileDevice::WriteUser | QFileDevice::WriteGroup | QFileDevice::WriteOther;
    QCOMPARE(file.permissions() & writes, writes);
    QVERIFY(file.makeWritable());
}

void tst_s3File::makeWritableOfMissingFileFails()
{
    QVERIFY(!s3File(path(u"missing"_s)).makeWritable());
}

void tst_s3File::errorText_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("firstLine");
    QTest::newRow("no error") << 0 << u"%1"_s;
    QTest::newRow("read") << 1 << u"Ein-/Ausgabefehler beim Lesen der Datei %1."_s;
    QTest::newRow("write") << 2 << u"Ein-/Ausgabefehler beim Schreiben der Datei %1."_s;
    QTest::newRow("fatal") << 3 << u"Fataler Fehler beim Zugriff auf die Datei %1."_s;
    QTest::newRow("resource") << 4 << u"Fehlende Systemressourcen beim Zugriff auf die Datei %1."_s;
    QTest::newRow("open") << 5 << u"Datei %1 kann nicht geöffnet werden."_s;
    QTest::newRow("abort") << 6 << u"Zugriff auf die Datei %1 abgebrochen."_s;
    QTest::newRow("time-out") << 7 << u"Zeitablauf beim Zugriff auf die Datei %1."_s;
    QTest::newRow("unspecified") << 8 << u"Unbekannter Fehler beim Zugriff auf die Datei %1."_s;
    QTest::newRow("remove") << 9 << u"Datei %1 kann nicht gelöscht werden."_s;
    QTest::newRow("rename") << 10 << u"Datei %1 kann nicht umbenannt werden."_s;
    QTest::newRow("position") << 11 << u"Positionieren innerhalb der Datei %1 gescheitert."_s;
    QTest::newRow("resize") << 12 << u"Die Größe der Datei %1 kann nicht geändert werden."_s;
    QTest::newRow("permissions") << 13 << u"Zugriffsrechte fehlen für die Datei %1."_s;
    QTest::newRow("copy") << 14 << u"Datei %1 kann nicht kopiert werden."_s;
}

void tst_s3File::errorText()
{
    QFETCH(const int, code);
    QFETCH(const QString, firstLine);
    const s3File file(u"C:\\x\\a.txt"_s);
    QCOMPARE(file.errorText(static_cast<QFileDevice::FileError>(code)),
             firstLine.arg(u"C:/x/a.txt"_s) + u'\n' + file.errorString());
}

void tst_s3File::errorTextOfUnknownCodeIsErrorString()
{
    const s3File file(u"a"_s);
    QCOMPARE(file.errorText(static_cast<QFileDevice::FileError>(15)), file.errorString());
}

void tst_s3File::errorTextKeepsPercentSignsOfName()
{
    const s3File file(u"%1%2.txt"_s);
    QCOMPARE(file.errorText(QFileDevice::OpenError).section(u'\n', 0, 0),
             u"Datei %1%2.txt kann nicht geöffnet werden."_s);
}

void tst_s3File::ownErrorWinsOverFallback()
{
    s3File file(path(u"missing"_s));
    QVERIFY(!file.open(QIODevice::ReadOnly));
    QVERIFY(file.errorText(QFileDevice::ReadError)
                .startsWith(u"Datei %1 kann nicht geöffnet werden.\n"_s.arg(file.fileName())));
#ifndef Q_OS_WIN // there the texts are the system's
    QCOMPARE(file.translatedErrorString(), u"Datei/Verzeichnis existiert nicht."_s);
#endif
}

void tst_s3File::fullDiskIsTranslated()
{
    if (!QFile::exists(u"/dev/full"_s))
        QSKIP("There is no /dev/full");
    s3File file(u"/dev/full"_s);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    QCOMPARE(file.write("x"), -1);
    QCOMPARE(file.translatedErrorString(), u"zu wenig Speicherplatz"_s);
    QVERIFY(file.errorText(QFileDevice::WriteError).endsWith(u"Datei /dev/full.\nzu wenig Speicherplatz"_s));
}

void tst_s3File::deniedAccessIsTranslated()
{
    if (!Unprivileged::isPossible())
        QSKIP("Rights can't be taken from this process");
    s3File file(writeTestFile(path(u"a"_s), "x"));
    QVERIFY(file.setPermissions(QFileDevice::Permissions()));
    const Unprivileged rights;
    QVERIFY(!file.open(QIODevice::ReadOnly));
    QCOMPARE(file.translatedErrorString(), u"Zugriff verweigert"_s);
}

void tst_s3File::missingDescriptorsAreTranslated()
{
    s3File file(writeTestFile(path(u"a"_s), "x"));
    {
        const NoFreeFiles limit;
        if (!limit.isActive())
            QSKIP("This system has no limit of open files to set");
        QVERIFY(!file.open(QIODevice::ReadOnly));
    }
    QCOMPARE(file.error(), QFileDevice::ResourceError);
    QCOMPARE(file.errorText(QFileDevice::OpenError),
             u"Fehlende Systemressourcen beim Zugriff auf die Datei %1.\n"
             u"Es sind in diesem Prozess zuviele Dateien geöffnet."_s.arg(file.fileName()));
}

void tst_s3File::copyFileToFullDiskLeavesNothing()
{
    const QString disk = path(u"disk"_s);
    QVERIFY(QDir().mkpath(disk));
    const SmallDisk full(disk);
    if (!full.isActive())
        QSKIP("This process may not mount a disk");
    const QByteArray large(100'000, 'x');
    const QString from = writeTestFile(path(u"a"_s), large);
    const QString to = disk + u"/b"_s;
    QFileDevice::FileError code = QFileDevice::NoError;
    QString text;
    QVERIFY(!s3File::copyFile(from, to, true, &code, &text));
    QCOMPARE(code, QFileDevice::CopyError);
    QVERIFY(text.startsWith(u"Datei %1 konnte nicht nach %2 kopiert werden.\n"_s.arg(from, to)));
    QCOMPARE(contents(from), large);
    QCOMPARE(QDir(disk).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList());

    s3File file(to);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    while (file.write(large) > 0) {
    }
    QCOMPARE(file.errorText(QFileDevice::NoError),
             u"Fehlende Systemressourcen beim Zugriff auf die Datei %1.\nzu wenig Speicherplatz"_s.arg(to));
}

void tst_s3File::lockedFileStays()
{
    s3File file(writeTestFile(path(u"a"_s), "x"));
    const LockedFile lock(file.fileName());
    if (!lock.isActive())
        QSKIP("No file can be locked against its removal here");
    const auto before = QFile::permissions(file.fileName());
    QVERIFY(!file.remove(false));
    QVERIFY(!file.remove(true));
    QVERIFY(file.exists());
    QCOMPARE(QFile::permissions(file.fileName()), before);
    QCOMPARE(file.error(), LockedFile::errorOfRemoval());
}

void tst_s3File::copyFileOnLockedTarget()
{
    const QString from = writeTestFile(path(u"a"_s), "new");
    const QString to = writeTestFile(path(u"b"_s), "old");
    {
        const LockedFile lock(to);
        if (!lock.isActive())
            QSKIP("No file can be locked against its removal here");
        QFileDevice::FileError code = QFileDevice::NoError;
        QString text;
        QVERIFY(!s3File::copyFile(from, to, true, &code, &text));
        QCOMPARE(code, LockedFile::errorOfRemoval());
        QCOMPARE(text.count(u'\n'), 1);
        QVERIFY(text.section(u'\n', 0, 0).contains(to));
    }
    QCOMPARE(contents(to), "old");
}

void tst_s3File::otherErrorStringsStay()
{
    const s3File file(u"a"_s);
    QCOMPARE(file.translatedErrorString(), file.errorString());
}

void tst_s3File::copyFileReplacesTarget()
{
    writeTestFile(path(u"a"_s), "new");
    writeTestFile(path(u"b"_s), "old");
    QFileDevice::FileError code = QFileDevice::FatalError;
    QString text = u"former"_s;
    QVERIFY(s3File::copyFile(path(u"a"_s), path(u"b"_s), true, &code, &text));
    QCOMPARE(code, QFileDevice::NoError);
    QCOMPARE(text, QString());
    QCOMPARE(contents(path(u"b"_s)), "new");
}

void tst_s3File::copyFileReplacesReadOnlyTarget()
{
    writeTestFile(path(u"a"_s), "new");
    QVERIFY(QFile::setPermissions(writeTestFile(path(u"b"_s), "old"), readable));
    QVERIFY(s3File::copyFile(path(u"a"_s), path(u"b"_s), true));
    QCOMPARE(contents(path(u"b"_s)), "new");
}

void tst_s3File::copyFileWithoutOverwriteKeepsTarget()
{
    const QString from = writeTestFile(path(u"a"_s), "new");
    const QString to = writeTestFile(path(u"b"_s), "old");
    QFileDevice::FileError code = QFileDevice::NoError;
    QString text;
    QVERIFY(!s3File::copyFile(from, to, false, &code, &text));
    QCOMPARE(code, QFileDevice::CopyError);
    QCOMPARE(text, u"Datei %1 konnte nicht nach %2 kopiert werden.\nDestination file exists"_s.arg(from, to));
    QCOMPARE(contents(to), "old");
}

void tst_s3File::copyFileOfMissingSource()
{
    const QString to = writeTestFile(path(u"b"_s), "old");
    QString text;
    QVERIFY(!s3File::copyFile(path(u"missing"_s), to, true, text));
    QVERIFY(text.startsWith(u"Datei %1 konnte nicht nach %2 kopiert werden.\n"_s.arg(path(u"missing"_s), to)));
    QCOMPARE(contents(to), "old");
}

void tst_s3File::copyFileOnItself_data()
{
    QTest::addColumn<QString>("spelling");
    QTest::newRow("same") << u"a.txt"_s;
    QTest::newRow("parent directory") << u"d/../a.txt"_s;
    QTest::newRow("double slash") << u"/a.txt"_s;
    QTest::newRow("current directory") << u"./a.txt"_s;
    QTest::newRow("backslashes") << u"d\\..\\a.txt"_s;
#ifdef Q_OS_WIN
    QTest::newRow("case") << u"A.TXT"_s;
#endif
}

void tst_s3File::copyFileOnItself()
{
    QFETCH(const QString, spelling);
    QVERIFY(QDir(m_directory->path()).mkdir(u"d"_s));
    const QString from = writeTestFile(path(u"a.txt"_s), "x");
    const QString to = m_directory->path() + u'/' + spelling;
    QFileDevice::FileError code = QFileDevice::NoError;
    QString text;
    QVERIFY(!s3File::copyFile(from, to, true, &code, &text));
    QCOMPARE(code, QFileDevice::CopyError);
    QCOMPARE(text, u"Datei %1 konnte nicht nach %2 kopiert werden.\nDestination file exists"_s.arg(from, to));
    QCOMPARE(contents(from), "x");
}

void tst_s3File::copyFileThroughLinkKeepsFile()
{
    const QString to = writeTestFile(path(u"a"_s), "x");
    if (!QFile::link(to, path(u"link.lnk"_s)) || !QFile::link(m_directory->path(), path(u"directory.lnk"_s)))
        QSKIP("Links can't be made here");
    QVERIFY(!s3File::copyFile(path(u"link.lnk"_s), to, true));
    QCOMPARE(contents(to), "x");
    QVERIFY(!s3File::copyFile(path(u"directory.lnk/a"_s), to, true));
    QCOMPARE(contents(to), "x");
}

void tst_s3File::copyFileOnLinkToItselfReplacesLink()
{
    const QString from = writeTestFile(path(u"a"_s), "x");
    if (!QFile::link(from, path(u"link.lnk"_s)))
        QSKIP("Links can't be made here");
    QVERIFY(s3File::copyFile(from, path(u"link.lnk"_s), true));
    QVERIFY(!QFileInfo(path(u"link.lnk"_s)).isSymbolicLink());
    QCOMPARE(contents(from), "x");
    QCOMPARE(contents(path(u"link.lnk"_s)), "x");
}

void tst_s3File::copyFileReportsTargetThatStays()
{
    if (!Unprivileged::isPossible())
        QSKIP("Rights can't be taken from this process");
    const Unprivileged rights;
    QTemporaryDir own;
    const QString from = writeTestFile(own.filePath(u"a"_s), "new");
    const QString to = writeTestFile(own.filePath(u"b"_s), "old");
    QVERIFY(QFile::setPermissions(own.path(), QFileDevice::ReadOwner | QFileDevice::ExeOwner));
    QFileDevice::FileError code = QFileDevice::NoError;
    QString text;
    QVERIFY(!s3File::copyFile(from, to, true, &code, &text));
    QCOMPARE(code, QFileDevice::RemoveError);
    QCOMPARE(text, u"Datei %1 kann nicht gelöscht werden.\nZugriff verweigert"_s.arg(to));
    QCOMPARE(contents(to), "old");
    QVERIFY(
        QFile::setPermissions(own.path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner));
}

void tst_s3File::copyIsTraced()
{
    s3TestFlagsGUI::instance()->insert(226);
    const QString from = writeTestFile(path(u"a"_s), "1234");
    const QString to = withBackslashes(path(u"b"_s));
    QVERIFY(s3File(from).copy(to));
    QCOMPARE(lines,
             QStringList{u"s3File::copy() fileName=%1 fileSize=4 newName=%2 --> ret=true newSize=4"_s.arg(from, to)});
}

void tst_s3File::failedCopyIsTraced()
{
    s3TestFlagsGUI::instance()->insert(226);
    QVERIFY(!s3File(u"missing"_s).copy(u"%1"_s));
    QCOMPARE(lines, QStringList{u"s3File::copy() fileName=missing fileSize=0 newName=%1 --> ret=false newSize=0"_s});
}

void tst_s3File::copyWithoutItsFlagIsNotTraced()
{
    s3TestFlagsGUI::instance()->insert(276);
    QVERIFY(!s3File(u"missing"_s).copy(u"b"_s));
    QVERIFY(lines.isEmpty());
}

QTEST_GUILESS_MAIN(tst_s3File)
#include "tst_s3file.moc"
