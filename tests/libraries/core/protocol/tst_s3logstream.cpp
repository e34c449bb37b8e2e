#include "protocol/s3logstream.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <type_traits>

using namespace Qt::Literals::StringLiterals;

class tst_s3LogStream : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void emptyFileNameMeansLogAndName();
    void encodings_data();
    void encodings();
    void markIsThereBeforeAnyText();
    void secondOpenChangesNothing();
    void fileIsEmptiedWhenOpened();
    void secondProcessWipesTheFileOfTheFirst();
    void fileThatCannotBeOpened();
    void unknownNameTakesTextAndKeepsNothing();
    void scratchStreamIsEmptiedEachTime();
    void closeWritesWhatIsLeft();
    void closeOfUnknownNameDoesNothing();
    void listNamesChannelsAndFiles();
    void backslashesInTheFileName();
    void nothingIsAddedToWhatIsWritten();

private:
    [[nodiscard]] static QByteArray contents(const QString &fileName);

    std::unique_ptr<QTemporaryDir> m_directory;
    QString m_directoryBefore;
};

static_assert(std::is_base_of_v<QTextStream, s3LogFileStream>);
static_assert(std::has_virtual_destructor_v<s3LogFileStream>);

QByteArray tst_s3LogStream::contents(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : "no such file"_ba;
}

void tst_s3LogStream::init()
{
    m_directoryBefore = QDir::currentPath();
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir::setCurrent(m_directory->path()));
}

void tst_s3LogStream::cleanup()
{
    for (const QString &name : {u"x"_s, u"y"_s})
        s3LogStream::closeChannel(name);
    QVERIFY(QDir::setCurrent(m_directoryBefore));
}

void tst_s3LogStream::emptyFileNameMeansLogAndName()
{
    QVERIFY(s3LogStream::openChannel(u"x"_s, QString(), QStringConverter::Utf8));
    QVERIFY(QFile::exists(m_directory->filePath(u"log_x.txt"_s)));
    QVERIFY(s3LogStream::hasChannel(u"x"_s));
}

void tst_s3LogStream::encodings_data()
{
    QTest::addColumn<QStringConverter::Encoding>("encoding");
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("UTF-8, no mark") << QStringConverter::Utf8 << "a\xC3\xA4\n"_ba;
    QTest::newRow("UTF-16 little-endian") << QStringConverter::Utf16LE
                                          << QByteArray("\xFF\xFE"
                                                        "a\0\xE4\0\n\0",
                                                        8);
    QTest::newRow("UTF-16 big-endian") << QStringConverter::Utf16BE << QByteArray("\xFE\xFF\0a\0\xE4\0\n", 8);
    QTest::newRow("Latin-1") << QStringConverter::Latin1 << "a\xE4\n"_ba;
}

void tst_s3LogStream::encodings()
{
    QFETCH(const QStringConverter::Encoding, encoding);
    QVERIFY(s3LogStream::openChannel(u"x"_s, u"x.txt"_s, encoding));
    s3LogStream::channelStream(u"x"_s) << u"aä"_s << Qt::endl;
    QTEST(contents(u"x.txt"_s), "bytes");
}

void tst_s3LogStream::markIsThereBeforeAnyText()
{
    QVERIFY(s3LogStream::openChannel(u"x"_s, u"x.txt"_s, QStringConverter::Utf16LE));
    QCOMPARE(contents(u"x.txt"_s), "\xFF\xFE"_ba);
}

void tst_s3LogStream::secondOpenChangesNothing()
{
    QVERIFY(s3LogStream::openChannel(u"x"_s, u"first.txt"_s, QStringConverter::Utf8));
    s3LogStream::channelStream(u"x"_s) << u"1"_s << Qt::flush;
    QVERIFY(s3LogStream::openChannel(u"x"_s, u"second.txt"_s, QStringConverter::Utf16LE));
    QVERIFY(s3LogStream::openChannel(u"x"_s, u"no/such/folder.txt"_s, QStringConverter::Utf8));
    s3LogStream::channelStream(u"x"_s) << u"2"_s << Qt::flush;
    QCOMPARE(contents(u"first.txt"_s), "12"_ba);
    QVERIFY(!QFile::exists(u"second.txt"_s));
}

void tst_s3LogStream::fileIsEmptiedWhenOpened()
{
    QVERIFY(s3LogStream::openChannel(u"x"_s, u"x.txt"_s, QStringConverter::Utf8));
    s3LogStream::channelStream(u"x"_s) << u"old"_s;
    s3LogStream::closeChannel(u"x"_s);
    QCOMPARE(contents(u"x.txt"_s), "old"_ba);
    QVERIFY(s3LogStream::openChannel(u"x"_s, u"x.txt"_s, QStringConverter::Utf8));
    QCOMPARE(contents(u"x.txt"_s), ""_ba);
}

void tst_s3LogStream::secondProcessWipesTheFileOfTheFirst()
{
    QVERIFY(s3LogStream::openChannel(u"x"_s, QString(), QStringConverter::Utf8));
    s3LogStream::channelStream(u"x"_s) << u"of the first"_s << Qt::flush;
    QCOMPARE(QProcess::execute(QCoreApplication::applicationFilePath(), {u"--open"_s, u"x"_s}), 0);
    QCOMPARE(contents(u"log_x.txt"_s), "of the second\n"_ba);
}

void tst_s3LogStream::fileThatCannotBeOpened()
{
    QVERIFY(!s3LogStream::openChannel(u"x"_s, u"no/such/folder.txt"_s, QStringConverter::Utf8));
    QVERIFY(!s3LogStream::hasChannel(u"x"_s));
    QVERIFY(s3LogStream::openChannel(u"x"_s, u"x.txt"_s, QStringConverter::Utf8));
}

void tst_s3LogStream::unknownNameTakesTextAndKeepsNothing()
{
    QTextStream &stream = s3LogStream::channelStream(u"unknown"_s);
    stream << u"text"_s << 1 << Qt::endl;
    QCOMPARE(stream.status(), QTextStream::Ok);
    QVERIFY(!s3LogStream::hasChannel(u"unknown"_s));
    QVERIFY(QDir().entryList(QDir::Files).isEmpty());
}

void tst_s3LogStream::scratchStreamIsEmptiedEachTime()
{
    s3LogStream::channelStream(u"unknown"_s) << u"text"_s << Qt::flush;
    QTextStream &again = s3LogStream::channelStream(u"another"_s);
    QVERIFY(again.string() != nullptr);
    QCOMPARE(*again.string(), QString());
}

void tst_s3LogStream::closeWritesWhatIsLeft()
{
    QVERIFY(s3LogStream::openChannel(u"x"_s, u"x.txt"_s, QStringConverter::Utf8));
    s3LogStream::channelStream(u"x"_s) << u"no flush"_s;
    s3LogStream::closeChannel(u"x"_s);
    QVERIFY(!s3LogStream::hasChannel(u"x"_s));
    QCOMPARE(contents(u"x.txt"_s), "no flush"_ba);
    // Windows removes no file that is open.
    QVERIFY(QFile::remove(u"x.txt"_s));
}

void tst_s3LogStream::closeOfUnknownNameDoesNothing()
{
    s3LogStream::closeChannel(u"unknown"_s);
    QVERIFY(!s3LogStream::hasChannel(u"unknown"_s));
}

void tst_s3LogStream::listNamesChannelsAndFiles()
{
    QCOMPARE(s3LogStream::channelList(), QString());
    QVERIFY(s3LogStream::openChannel(u"y"_s, u"why.txt"_s, QStringConverter::Utf8));
    QVERIFY(s3LogStream::openChannel(u"x"_s, QString(), QStringConverter::Utf8));
    QCOMPARE(s3LogStream::channelList(), u"x: log_x.txt\ny: why.txt\n"_s);
}

void tst_s3LogStream::backslashesInTheFileName()
{
    QVERIFY(QDir().mkdir(u"folder"_s));
    QVERIFY(s3LogStream::openChannel(u"x"_s, u"folder\\x.txt"_s, QStringConverter::Utf8));
    QVERIFY(QFile::exists(u"folder/x.txt"_s));
}

void tst_s3LogStream::nothingIsAddedToWhatIsWritten()
{
    QVERIFY(s3LogStream::openChannel(u"x"_s, u"x.txt"_s, QStringConverter::Utf8));
    s3LogStream::channelStream(u"x"_s) << u"a\nb"_s << Qt::flush;
    QCOMPARE(contents(u"x.txt"_s), "a\nb"_ba);
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == u"--open"_s) {
        // Written by the end of the process, which closes the channels.
        const bool open = s3LogStream::openChannel(arguments.value(2), QString(), QStringConverter::Utf8);
        s3LogStream::channelStream(arguments.value(2)) << u"of the second\n"_s;
        return open ? 0 : 1;
    }
    tst_s3LogStream test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_s3logstream.moc"
