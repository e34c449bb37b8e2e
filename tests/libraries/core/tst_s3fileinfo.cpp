#include "s3fileinfo.h"
#include "testfile.h"

#include <QFileIconProvider>
#include <QPainter>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

class tst_s3FileInfo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void namesTakeBackslashes();
    void comparisonIgnoresSpelling();
    void comparisonTellsLinksFromFiles();
    void suffixIsReplaced_data();
    void suffixIsReplaced();
    void existsIsTrueForDirectory();
    void iconOfFile();
    void iconOfMissingFileIsNull();
    void iconOfDirectoryIsNull();
    void applicationIconIsThatOfThisProgram();
};

void tst_s3FileInfo::namesTakeBackslashes()
{
    const s3FileInfo info(u"x\\y\\figures.v1.html"_s);
    QCOMPARE(info.fileName(), u"figures.v1.html"_s);
    QCOMPARE(info.path(), u"x/y"_s);
    const s3FileInfo inside(QDir(u"x"_s), u"y\\a.txt"_s);
    QCOMPARE(inside.filePath(), u"x/y/a.txt"_s);
    QCOMPARE(s3FileInfo(QFileInfo(u"x\\a.txt"_s)).filePath(), u"x/a.txt"_s);
    s3FileInfo changed(u"a"_s);
    changed.setFile(u"x\\b"_s);
    QCOMPARE(changed.filePath(), u"x/b"_s);
    changed.setFile(QDir(u"x"_s), u"y\\c"_s);
    QCOMPARE(changed.filePath(), u"x/y/c"_s);
}

void tst_s3FileInfo::comparisonIgnoresSpelling()
{
    const QTemporaryDir directory;
    const QString path = writeTestFile(directory.filePath(u"a.txt"_s), "x");
    QVERIFY(QDir(directory.path()).mkdir(u"d"_s));
    const s3FileInfo info(path);
    QVERIFY(info == QFileInfo(directory.filePath(u"d/../a.txt"_s)));
    QVERIFY(info == s3FileInfo(directory.path() + u"\\d\\..\\a.txt"_s));
    QVERIFY(info == s3FileInfo(directory.path() + u"//a.txt"_s));
    QVERIFY(info != QFileInfo(directory.filePath(u"b.txt"_s)));
    QVERIFY(info != s3FileInfo(directory.path()));
    QVERIFY(s3FileInfo(u"missing/a/../b"_s) == s3FileInfo(u"missing/b"_s));
}

void tst_s3FileInfo::comparisonTellsLinksFromFiles()
{
    const QTemporaryDir directory;
    const QString path = writeTestFile(directory.filePath(u"a.txt"_s), "x");
    const QString link = directory.filePath(u"link.lnk"_s);
    if (!QFile::link(path, link))
        QSKIP("Links can't be made here");
    QVERIFY(s3FileInfo(path) != s3FileInfo(link));
}

void tst_s3FileInfo::suffixIsReplaced_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("expected");
    QTest::newRow("last of two") << u"a/b.tar.gz"_s << u"zip"_s << u"a/b.tar.zip"_s;
    QTest::newRow("empty suffix") << u"a/b.tar.gz"_s << QString() << u"a/b.tar"_s;
    QTest::newRow("none before") << u"a/b"_s << u"zip"_s << u"a/b.zip"_s;
    QTest::newRow("relative") << u"b.txt"_s << u"zip"_s << u"./b.zip"_s;
    QTest::newRow("backslashes") << u"C:\\a\\b.txt"_s << u"ini"_s << u"C:/a/b.ini"_s;
    QTest::newRow("no base name") << u"a/.b"_s << u"zip"_s << u"a.zip"_s;
    QTest::newRow("dot in directory") << u"a.d/b"_s << u"zip"_s << u"a.d/b.zip"_s;
}

void tst_s3FileInfo::suffixIsReplaced()
{
    QFETCH(const QString, path);
    QFETCH(const QString, suffix);
    QTEST(s3FileInfo(path).withSuffix(suffix), "expected");
}

void tst_s3FileInfo::existsIsTrueForDirectory()
{
    const QTemporaryDir directory;
    QVERIFY(s3FileInfo::exists(directory.path().replace(u'/', u'\\')));
    QVERIFY(!s3FileInfo::exists(directory.filePath(u"missing"_s)));
}

void tst_s3FileInfo::iconOfFile()
{
    const QString path = QCoreApplication::applicationFilePath();
    const QIcon icon = s3FileInfo(path).icon();
    QVERIFY(!icon.isNull());
    const QIcon expected = QFileIconProvider().icon(QFileInfo(path));
    QVERIFY(!expected.isNull());
    QCOMPARE(icon.availableSizes(), expected.availableSizes());
    QCOMPARE(icon.actualSize({32, 32}), expected.actualSize({32, 32}));
    QCOMPARE(icon.pixmap(32).toImage(), expected.pixmap(32).toImage());
    QCOMPARE(icon.pixmap({16, 16}, 2.0).toImage(), expected.pixmap({16, 16}, 2.0).toImage());

    const auto painted = [](const QIcon &source) {
        QImage image(32, 32, QImage::Format_ARGB32);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        source.paint(&painter, image.rect());
        return image;
    };
    QCOMPARE(painted(icon), painted(expected));
    QIcon copy = icon;
    copy.detach();
    QCOMPARE(copy.pixmap(32).toImage(), expected.pixmap(32).toImage());
}

void tst_s3FileInfo::iconOfMissingFileIsNull()
{
    QVERIFY(s3FileInfo(u"no such file"_s).icon().isNull());
}

void tst_s3FileInfo::iconOfDirectoryIsNull()
{
    const QTemporaryDir directory;
    QVERIFY(s3FileInfo(directory.path()).icon().isNull());
}

void tst_s3FileInfo::applicationIconIsThatOfThisProgram()
{
    const QIcon expected = QFileIconProvider().icon(QFileInfo(QCoreApplication::applicationFilePath()));
    QCOMPARE(s3FileInfo::applicationIcon().pixmap(32).toImage(), expected.pixmap(32).toImage());
}

QTEST_MAIN(tst_s3FileInfo)
#include "tst_s3fileinfo.moc"
