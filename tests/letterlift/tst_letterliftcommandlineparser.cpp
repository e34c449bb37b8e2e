#include "letterliftcommandlineparser.h"
#include "unprivileged.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

class tst_LetterliftCommandLineParser : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void parse_data();
    void parse();
    void unreadableFile();
    void argumentIsExpanded();
    void helpNamesTheArgument();

private:
    QTemporaryDir m_directory;
    QString m_file;
};

void tst_LetterliftCommandLineParser::initTestCase()
{
    m_file = m_directory.filePath(u"mail.vxm"_s);
    QVERIFY(QFile(m_file).open(QIODevice::WriteOnly));
}

void tst_LetterliftCommandLineParser::parse_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<ParseResult>("result");
    QTest::addColumn<QString>("vxmFile");
    QTest::addColumn<QString>("errorMessage");

    const QString missing = m_directory.filePath(u"missing.vxm"_s);
    QTest::newRow("no argument") << QStringList{} << ParseError << u""_s << u""_s;
    QTest::newRow("empty argument") << QStringList{u""_s} << ParseError << u""_s << u""_s;
    QTest::newRow("a file") << QStringList{m_file} << ParseOk << m_file << u""_s;
    QTest::newRow("the second argument is ignored") << QStringList{m_file, missing} << ParseOk << m_file << u""_s;
    QTest::newRow("missing file") << QStringList{missing} << ParseError << u""_s
                                  << missing + u": File does not exist"_s;
    QTest::newRow("directory") << QStringList{m_directory.path()} << ParseError << u""_s
                               << m_directory.path() + u": File does not exist"_s;
    QTest::newRow("help") << QStringList{u"--help"_s, m_file} << ParseHelpRequested << u""_s << u""_s;
    QTest::newRow("unknown option") << QStringList{u"--send"_s, m_file} << ParseError << u""_s
                                    << u"Unknown option 'send'."_s;
}

void tst_LetterliftCommandLineParser::parse()
{
    QFETCH(QStringList, arguments);
    LetterliftCommandLineParser parser;
    QString vxmFile;
    QString errorMessage;
    QTEST(parser.parse(QStringList{u"letterlift"_s} + arguments, vxmFile, errorMessage), "result");
    QTEST(vxmFile, "vxmFile");
    QTEST(errorMessage, "errorMessage");
}

void tst_LetterliftCommandLineParser::unreadableFile()
{
    if (!Unprivileged::isPossible())
        QSKIP("File permissions can't be taken from this process here");
    const QTemporaryDir directory;
    const QString path = directory.filePath(u"mail.vxm"_s);
    QVERIFY(QFile(path).open(QIODevice::WriteOnly));
    QVERIFY(QFile::setPermissions(path, {}));
    QVERIFY(QFile::setPermissions(directory.path(),
                                  QFile::ExeOther | QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    const Unprivileged user;
    LetterliftCommandLineParser parser;
    QString vxmFile;
    QString errorMessage;
    QCOMPARE(parser.parse({u"letterlift"_s, path}, vxmFile, errorMessage), ParseError);
    QCOMPARE(errorMessage, path + u": Can't read file"_s);
    QCOMPARE(vxmFile, u""_s);
}

void tst_LetterliftCommandLineParser::argumentIsExpanded()
{
    qputenv("LL_DIRECTORY", m_directory.path().toLocal8Bit());
    LetterliftCommandLineParser parser;
    QString vxmFile;
    QString errorMessage;
    QCOMPARE(parser.parse({u"letterlift"_s, u"%LL_DIRECTORY%/mail.vxm"_s}, vxmFile, errorMessage), ParseOk);
    QCOMPARE(vxmFile, m_file);
}

void tst_LetterliftCommandLineParser::helpNamesTheArgument()
{
    const QString help = LetterliftCommandLineParser().helpText();
    QVERIFY2(help.contains(u"vxmFile"_s), qPrintable(help));
    QVERIFY2(help.contains(u"Path to the vxm file"_s), qPrintable(help));
    QVERIFY2(!help.contains(u"--help-all"_s), qPrintable(help));
}

QTEST_GUILESS_MAIN(tst_LetterliftCommandLineParser)
#include "tst_letterliftcommandlineparser.moc"
