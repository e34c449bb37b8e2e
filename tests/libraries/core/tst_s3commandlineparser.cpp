#include "boxwatcher.h"
#include "s3commandlineparser.h"

#include <QCommandLineOption>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

class tst_s3CommandLineParser : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void parse_data();
    void parse();
    void argumentsAreExpanded();
    void parseCanBeCalledAgain();
    void helpTextHasNoHelpAllLine();
    void helpHtml();
    void headingIsNotEscaped();
    void helpTextIsEscaped();
    void showUsage_data();
    void showUsage();
};

void tst_s3CommandLineParser::parse_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<ParseResult>("result");
    QTest::addColumn<QString>("errorMessage");

    QTest::newRow("program name alone") << QStringList{u"p"_s} << ParseOk << u""_s;
    QTest::newRow("positional argument") << QStringList{u"p"_s, u"x"_s} << ParseOk << u""_s;
    QTest::newRow("-h") << QStringList{u"p"_s, u"-h"_s} << ParseHelpRequested << u""_s;
    QTest::newRow("--help") << QStringList{u"p"_s, u"--help"_s} << ParseHelpRequested << u""_s;
    QTest::newRow("--version is unknown")
        << QStringList{u"p"_s, u"--version"_s} << ParseError << u"Unknown option 'version'."_s;
    QTest::newRow("several unknown") << QStringList{u"p"_s, u"--ab"_s, u"--cd"_s} << ParseError
                                     << u"Unknown options: ab, cd."_s;
}

void tst_s3CommandLineParser::parse()
{
    QFETCH(const QStringList, arguments);
    s3CommandLineParser parser;
    QString errorMessage = u"from before"_s;
    QTEST(parser.parse(arguments, errorMessage), "result");
    QTEST(errorMessage, "errorMessage");
}

void tst_s3CommandLineParser::argumentsAreExpanded()
{
    qputenv("LL_TEMP", "/tmp");
    s3CommandLineParser parser;
    QString errorMessage;
    QCOMPARE(parser.parse({u"p"_s, u"%LL_TEMP%\\x"_s, u"%NO_SUCH_VARIABLE%\\x"_s, u"${LL_TEMP}"_s}, errorMessage),
             ParseOk);
    QCOMPARE(parser.positionalArguments(), QStringList({u"/tmp\\x"_s, u"%NO_SUCH_VARIABLE%\\x"_s, u"/tmp"_s}));
}

void tst_s3CommandLineParser::parseCanBeCalledAgain()
{
    s3CommandLineParser parser;
    QString errorMessage;
    QCOMPARE(parser.parse({u"p"_s, u"--nonsense"_s}, errorMessage), ParseError);
    QCOMPARE(parser.parse({u"p"_s, u"x"_s}, errorMessage), ParseOk);
    QCOMPARE(errorMessage, u""_s);
    QCOMPARE(parser.positionalArguments(), QStringList{u"x"_s});
}

void tst_s3CommandLineParser::helpTextHasNoHelpAllLine()
{
    s3CommandLineParser parser;
    parser.addPositionalArgument(u"file"_s, u"A file"_s);
    QVERIFY(parser.QCommandLineParser::helpText().contains(u"--help-all"_s));

    const QString text = parser.helpText();
    QVERIFY2(!text.contains(u"--help-all"_s), qPrintable(text));
    QVERIFY2(!text.contains(u"including Qt"_s), qPrintable(text));
    QVERIFY(text.contains(u"--help "_s));
    QVERIFY(text.contains(u"A file"_s));
    const qsizetype linesOfBase = parser.QCommandLineParser::helpText().count(u'\n');
    QCOMPARE(text.count(u'\n'), linesOfBase - 1);
}

void tst_s3CommandLineParser::helpHtml()
{
    const s3CommandLineParser parser;
    const QString help = parser.helpText().toHtmlEscaped();
    QCOMPARE(parser.helpHtml(u""_s), u"<html><head><body><pre>"_s + help + u"</pre></body></html>"_s);
    QCOMPARE(parser.helpHtml(u"Wrong"_s),
             u"<html><head><body><h2>Wrong</h2><pre>"_s + help + u"</pre></body></html>"_s);
}

void tst_s3CommandLineParser::headingIsNotEscaped()
{
    QVERIFY(s3CommandLineParser().helpHtml(u"a<b&c"_s).contains(u"<h2>a<b&c</h2>"_s));
}

void tst_s3CommandLineParser::helpTextIsEscaped()
{
    s3CommandLineParser parser;
    parser.addOption(QCommandLineOption(u"x"_s, u"a<b&c"_s));
    QVERIFY(parser.helpHtml(u""_s).contains(u"a&lt;b&amp;c"_s));
}

void tst_s3CommandLineParser::showUsage_data()
{
    QTest::addColumn<ParseResult>("result");
    QTest::addColumn<QString>("errorMessage");
    QTest::addColumn<QMessageBox::Icon>("icon");
    QTest::addColumn<int>("exitStatus");

    QTest::newRow("error") << ParseError << u"Wrong"_s << QMessageBox::Warning << 1;
    QTest::newRow("error without message") << ParseError << u""_s << QMessageBox::Warning << 1;
    QTest::newRow("help") << ParseHelpRequested << u""_s << QMessageBox::Information << 0;
    QTest::newRow("ok is shown as help") << ParseOk << u""_s << QMessageBox::Information << 0;
}

void tst_s3CommandLineParser::showUsage()
{
    QFETCH(const ParseResult, result);
    QFETCH(const QString, errorMessage);
    s3CommandLineParser parser;
    const BoxWatcher watcher;
    QTEST(parser.showUsage(result, errorMessage), "exitStatus");
    QCOMPARE(watcher.boxes().size(), 1);
    QTEST(watcher.boxes().first().icon, "icon");
    QCOMPARE(watcher.boxes().first().text, parser.helpHtml(errorMessage));
    QCOMPARE(watcher.boxes().first().buttons, QMessageBox::Ok);
}

QTEST_MAIN(tst_s3CommandLineParser)
#include "tst_s3commandlineparser.moc"
