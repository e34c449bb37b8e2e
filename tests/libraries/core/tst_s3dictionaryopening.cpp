// Opening, and what ends it.

#include "coreutil.h"
#include "dictionarybuilder.h"
#include "resourcefile.h"
#include "s3dictionary.h"
#include "systemerror.h"
#include "testfile.h"
#include "unprivileged.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint32 source = -1;
constexpr qint32 german = 0;
constexpr qint32 english = 1;
constexpr qint32 french = 2;
constexpr qint32 american = 13;

// Of each mapping the path of its file. Windows has no such file, and Wine shows the one of the system below, whose
// paths are others.
const QString mappings = u"/proc/self/maps"_s;

bool mappingsAreTold()
{
    return QSysInfo::kernelType() == u"linux"_s && QFile::exists(mappings);
}

/// False where the system doesn't tell.
bool isMapped(const QString &path)
{
    QFile file(mappings);
    return file.open(QIODevice::ReadOnly) &&
           file.readAll().contains(QFile::encodeName(QFileInfo(path).canonicalFilePath()));
}

/// Seven texts, of which those in the middle aren't in use.
DictionaryBuilder sevenTexts()
{
    DictionaryBuilder builder;
    builder.setText(1, source, u"Größe"_s).setText(1, english, u"Size"_s).setSymbol(1, "SIZE");
    builder.setText(7, source, u"Sieben"_s).setText(7, english, u"Seven"_s).setSymbol(7, "GRÖSSE");
    return builder;
}

} // namespace

class tst_s3DictionaryOpening : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void refusedFile_data();
    void refusedFile();
    void missingFileHasTheSystemsReason();
    void reasonWithoutCodeIsLeftOut();
    void directoryIsNoFile();
    void unreadableFileHasTheSystemsReason();
    void openQuietlyDropsTheReason();
    void errorHasAbsolutePath();
    void pathTakesBackslashes();
    void openingAnOpenDictionaryChangesNothing();
    void failedOpeningCanBeRepeated();
    void closeEndsTheMapping();
    void destructionEndsTheMapping();
    void failedOpeningEndsTheMapping();
    void textsAreReadFromTheFileItself();
    void fileInTheResourceSystem();

private:
    QString path(const QString &name) const { return m_directory->filePath(name); }

    std::unique_ptr<QTemporaryDir> m_directory;
};

void tst_s3DictionaryOpening::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
}

void tst_s3DictionaryOpening::refusedFile_data()
{
    QTest::addColumn<QByteArray>("version");
    QTest::addColumn<QByteArray>("charset");
    QTest::addColumn<QByteArray>("languageCount");
    QTest::addColumn<QString>("reason");

    const auto wrongVersion = [](const QString &found) {
        return u"Wrong dictionary version!\n\n'004' is expected instead of '%1'."_s.arg(found);
    };
    const auto wrongCount = [](const QString &found) {
        return u"Wrong language count in dictionary!\n\n'32' is expected instead of '%1'."_s.arg(found);
    };
    const QString wrongCharset = u"Wrong CHSET format in dictionary"_s;
    QTest::newRow("older version") << "003"_ba
                                   << ""_ba
                                   << ""_ba << wrongVersion(u"003"_s);
    QTest::newRow("version in UTF-8") << "ä4"_ba
                                      << ""_ba
                                      << ""_ba << wrongVersion(u"ä4"_s);
    QTest::newRow("version with a place marker") << "%2x"_ba
                                                 << ""_ba
                                                 << ""_ba << wrongVersion(u"%2x"_s);
    QTest::newRow("other character set") << ""_ba
                                         << "A"_ba
                                         << ""_ba << wrongCharset;
    QTest::newRow("character set in lower case") << ""_ba
                                                 << "u"_ba
                                                 << ""_ba << wrongCharset;
    QTest::newRow("too few languages") << ""_ba
                                       << ""_ba
                                       << "31"_ba << wrongCount(u"31"_s);
    QTest::newRow("language count that is no number") << ""_ba
                                                      << ""_ba
                                                      << "3x"_ba << wrongCount(u"0"_s);
    QTest::newRow("version comes first") << "005"_ba
                                         << "A"_ba
                                         << "31"_ba << wrongVersion(u"005"_s);
    QTest::newRow("character set comes second") << ""_ba
                                                << "A"_ba
                                                << "31"_ba << wrongCharset;
}

void tst_s3DictionaryOpening::refusedFile()
{
    DictionaryBuilder builder = sevenTexts();
    QFETCH(const QByteArray, version);
    QFETCH(const QByteArray, charset);
    QFETCH(const QByteArray, languageCount);
    QFETCH(const QString, reason);
    builder.version = version;
    builder.charset = charset;
    builder.languageCount = languageCount;
    const QString file = writeTestFile(path(u"a"_s), builder.build());

    s3Dictionary dictionary(file);
    QString error;
    QVERIFY(!dictionary.open(error));
    QCOMPARE(error, file + u":\n\n"_s + reason);
    QCOMPARE(dictionary.textCount(), 0);
    QCOMPARE(dictionary.text(1, german), u"*** 1 ***"_s);
}

void tst_s3DictionaryOpening::missingFileHasTheSystemsReason()
{
    s3Dictionary dictionary(path(u"missing"_s));
    QString error = u"from before"_s;
    QVERIFY(!dictionary.open(error));
    QCOMPARE(error, path(u"missing"_s) + u":\n\nCannot open file\n\n"_s + s3ErrorText(2) + u" (2)"_s);
    QVERIFY(dictionary.symbol(1).isNull());
}

void tst_s3DictionaryOpening::reasonWithoutCodeIsLeftOut()
{
    // The system isn't asked for a resource, so what it has refused before isn't the reason.
    s3Dictionary dictionary(u":/missing"_s);
    QString error;
    setSystemError(2);
    QVERIFY(!dictionary.open(error));
    QCOMPARE(error, u":/missing:\n\nCannot open file"_s);
}

void tst_s3DictionaryOpening::directoryIsNoFile()
{
    s3Dictionary dictionary(m_directory->path());
    QString error;
    setSystemError(2);
    QVERIFY(!dictionary.open(error));
    // Linux opens it and Qt refuses it; Windows refuses it.
    const QString withoutCode = m_directory->path() + u":\n\nCannot open file"_s;
    QVERIFY2(error == withoutCode || error == withoutCode + u"\n\n"_s + s3ErrorText(5) + u" (5)"_s, qPrintable(error));
    QCOMPARE(dictionary.textCount(), 0);
}

void tst_s3DictionaryOpening::unreadableFileHasTheSystemsReason()
{
    if (!Unprivileged::isPossible())
        QSKIP("Rights can't be taken from this process");
    const Unprivileged rights;
    const QTemporaryDir own;
    QVERIFY(own.isValid());
    const QString file = writeTestFile(own.filePath(u"a"_s), sevenTexts().build());
    QVERIFY(QFile::setPermissions(file, QFileDevice::Permissions()));
    s3Dictionary dictionary(file);
    QString error;
    setSystemError(2);
    QVERIFY(!dictionary.open(error));
    QCOMPARE(error, file + u":\n\nCannot open file\n\n"_s + s3ErrorText(13) + u" (13)"_s);
}

void tst_s3DictionaryOpening::openQuietlyDropsTheReason()
{
    QVERIFY(!s3Dictionary(path(u"missing"_s)).openQuietly());
    QVERIFY(s3Dictionary(writeTestFile(path(u"a"_s), sevenTexts().build())).openQuietly());
}

void tst_s3DictionaryOpening::errorHasAbsolutePath()
{
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_directory->path()));
    const QString empty = QDir::currentPath() + u"/empty"_s;
    writeTestFile(empty, QByteArray());
    s3Dictionary dictionary(u"empty"_s);
    QString error;
    const bool isOpen = dictionary.open(error);
    QVERIFY(QDir::setCurrent(before));
    QVERIFY(!isOpen);
    QCOMPARE(error, empty + u":\n\nCannot map dictionary into memory!"_s);
}

void tst_s3DictionaryOpening::pathTakesBackslashes()
{
    s3Dictionary dictionary(QDir(writeTestFile(path(u"a"_s), sevenTexts().build())).path().replace(u'/', u'\\'));
    QVERIFY(dictionary.openQuietly());
    QCOMPARE(dictionary.text(7, english), u"Seven"_s);
}

void tst_s3DictionaryOpening::openingAnOpenDictionaryChangesNothing()
{
    const QString before = QDir::currentPath();
    writeTestFile(path(u"a"_s), sevenTexts().build());
    QVERIFY(QDir::setCurrent(m_directory->path()));
    s3Dictionary dictionary(u"a"_s);
    const bool isOpen = dictionary.openQuietly();
    QVERIFY(QDir::setCurrent(before));
    QVERIFY(isOpen);

    // There is no file with this name here.
    QString error = u"from before"_s;
    QVERIFY(dictionary.open(error));
    QCOMPARE(error, u""_s);
    QCOMPARE(dictionary.textCount(), 7);
    QCOMPARE(dictionary.text(7, english), u"Seven"_s);
}

void tst_s3DictionaryOpening::failedOpeningCanBeRepeated()
{
    s3Dictionary dictionary(writeTestFile(path(u"a"_s), QByteArray()));
    QVERIFY(!dictionary.openQuietly());
    writeTestFile(path(u"a"_s), sevenTexts().build());
    QVERIFY(dictionary.openQuietly());
    QCOMPARE(dictionary.text(7, english), u"Seven"_s);
}

void tst_s3DictionaryOpening::closeEndsTheMapping()
{
    const QString file = writeTestFile(path(u"a"_s), sevenTexts().build());
    s3Dictionary dictionary(file);
    QVERIFY(dictionary.openQuietly());
    QVERIFY(isMapped(file) || !mappingsAreTold());
    dictionary.close();
    QVERIFY(!isMapped(file));
    QCOMPARE(dictionary.textCount(), 0);
    QCOMPARE(dictionary.text(7, english), u"*** 7 ***"_s);
    QVERIFY(dictionary.symbol(7).isNull());
    dictionary.close();

    // A file that is mapped can be made neither shorter nor longer on Windows.
    DictionaryBuilder other;
    other.setText(1, source, u"other"_s).setText(1, american, u"another"_s).share(1, french, american);
    writeTestFile(path(u"a"_s), other.build());
    QVERIFY(dictionary.openQuietly());
    QCOMPARE(dictionary.text(1, english), u"other"_s);
    QVERIFY(dictionary.hasText(1, american));
    QVERIFY(!dictionary.hasText(1, french));
}

void tst_s3DictionaryOpening::destructionEndsTheMapping()
{
    const QString file = writeTestFile(path(u"a"_s), sevenTexts().build());
    {
        s3Dictionary dictionary(file);
        QVERIFY(dictionary.openQuietly());
        QVERIFY(isMapped(file) || !mappingsAreTold());
    }
    QVERIFY(!isMapped(file));
    // A file that is mapped can't be removed on Windows.
    QVERIFY(QFile::remove(file));
}

void tst_s3DictionaryOpening::failedOpeningEndsTheMapping()
{
    DictionaryBuilder builder = sevenTexts();
    builder.charset = "A"_ba;
    const QString file = writeTestFile(path(u"a"_s), builder.build());
    s3Dictionary dictionary(file);
    QVERIFY(!dictionary.openQuietly());
    QVERIFY(!isMapped(file));
    QVERIFY(QFile::remove(file));
}

void tst_s3DictionaryOpening::textsAreReadFromTheFileItself()
{
    const QByteArray bytes = sevenTexts().build();
    s3Dictionary dictionary(writeTestFile(path(u"a"_s), bytes));
    QVERIFY(dictionary.openQuietly());

    const qsizetype place = bytes.indexOf(QByteArray("S\0i\0e\0b\0e\0n\0", 12));
    QVERIFY(place > 0);
    QFile file(path(u"a"_s));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.seek(place));
    QCOMPARE(file.write("L"), 1);
    file.close();
    QCOMPARE(dictionary.text(7, german), u"Lieben"_s);
}

void tst_s3DictionaryOpening::fileInTheResourceSystem()
{
    const ResourceFile resource(u"folder"_s, u"a.dat.0"_s, sevenTexts().build());
    QVERIFY(resource.isRegistered());
    s3Dictionary dictionary(u":/folder/a.dat.0"_s);
    QString error;
    QVERIFY(dictionary.open(error));
    QCOMPARE(error, u""_s);
    QCOMPARE(dictionary.text(7, english), u"Seven"_s);
    QCOMPARE(dictionary.symbol(1), u"SIZE"_s);
}

QTEST_APPLESS_MAIN(tst_s3DictionaryOpening)
#include "tst_s3dictionaryopening.moc"
