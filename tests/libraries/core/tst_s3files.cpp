#include "s3dir.h"
#include "s3file.h"
#include "s3fileinfo.h"

#include <QFileIconProvider>
#include <QPainter>
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
