#include "s3dir.h"
#include "s3file.h"
#include "s3fileinfo.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

class tst_s3Files : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fileNameHasSlashes();
    void fileOpensByBackslashes();
    void staticFilePath();
    void directoryTakesBackslashes();
    void infoTakesBackslashes();
    void existsIsTrueForDirectory();
    void iconOfFile();
    void iconOfMissingFileIsNull();
    void iconOfDirectoryIsNull();
};

void tst_s3Files::fileNameHasSlashes()
{
    QCOMPARE(s3File(u"C:\\tmp\\a.txt"_s).fileName(), u"C:/tmp/a.txt"_s);
}

void tst_s3Files::fileOpensByBackslashes()
{
    const QTemporaryDir directory;
    QString path = directory.filePath(u"a.txt"_s);
    QVERIFY(s3File(path.replace(u'/', u'\\')).open(QIODevice::WriteOnly));
    QVERIFY(QFile::exists(directory.filePath(u"a.txt"_s)));
}

void tst_s3Files::staticFilePath()
{
    QCOMPARE(s3Dir::filePath(u""_s, u"a\\b.log"_s), u"a/b.log"_s);
    QCOMPARE(s3Dir::filePath(u"x\\y"_s, u"b.log"_s), u"x/y/b.log"_s);
    QCOMPARE(s3Dir::filePath(u"."_s, u"b.log"_s), u"./b.log"_s);
}

void tst_s3Files::directoryTakesBackslashes()
{
    const s3Dir directory(u"/x\\y"_s);
    QCOMPARE(directory.path(), u"/x/y"_s);
    QCOMPARE(directory.filePath(u"z\\a"_s), u"/x/y/z/a"_s);
    QCOMPARE(directory.absoluteFilePath(u"z\\a"_s), QDir(u"/x/y"_s).absoluteFilePath(u"z/a"_s));
}

void tst_s3Files::infoTakesBackslashes()
{
    const s3FileInfo info(u"x\\y\\figures.v1.html"_s);
    QCOMPARE(info.fileName(), u"figures.v1.html"_s);
    QCOMPARE(info.path(), u"x/y"_s);
}

void tst_s3Files::existsIsTrueForDirectory()
{
    const QTemporaryDir directory;
    QVERIFY(s3FileInfo::exists(directory.path().replace(u'/', u'\\')));
    QVERIFY(!s3FileInfo::exists(directory.filePath(u"missing"_s)));
}

void tst_s3Files::iconOfFile()
{
    // Whether there is a picture for it depends on the desktop's icon theme; that the style has one for files doesn't.
    QVERIFY(!s3FileInfo(QCoreApplication::applicationFilePath()).icon().isNull());
}

void tst_s3Files::iconOfMissingFileIsNull()
{
    QVERIFY(s3FileInfo(u"no such file"_s).icon().isNull());
}

void tst_s3Files::iconOfDirectoryIsNull()
{
    const QTemporaryDir directory;
    QVERIFY(s3FileInfo(directory.path()).icon().isNull());
}

QTEST_MAIN(tst_s3Files)
#include "tst_s3files.moc"
