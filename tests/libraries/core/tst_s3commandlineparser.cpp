#include "boxwatcher.h"
#include "s3commandlineparser.h"
#include "s3trace.h"

#include <QCommandLineOption>
#include <QOperatingSystemVersion>
#include <QTest>
#include <QTranslator>

#include <type_traits>

using namespace Qt::Literals::StringLiterals;

namespace {

QStringList tracedLines;

class NothingButVirtual : public QCommandLineParser
{
public:
    virtual ~NothingButVirtual() = default;
};

/// Gives the option --help-all another description.
class HelpAllWording : public QTranslator
{
public:
    explicit HelpAllWording(const QString &wording)
        : m_wording(wording)
    {
        QCoreApplication::installTranslator(this);
    }
    ~HelpAllWording() override { QCoreApplication::removeTranslator(this); }

    [[nodiscard]] bool isEmpty() const override { return false; }
    [[nodiscard]] QString translate(const char *context, const char *text, const char * /*comment*/,
                                    int /*number*/) const override
    {
        const bool isHelpAll = context == "QCommandLineParser"_ba && QByteArray(text).startsWith("Displays help") &&
                               QByteArray(text).contains("Qt");
        return isHelpAll ? m_wording : QString();
    }

private:
    Q_DISABLE_COPY_MOVE(HelpAllWording)

    const QString m_wording;
};

class OwnHelp : public s3CommandLineParser
{
public:
    [[nodiscard]] QString helpText() const override { return u"own <help>"_s; }
};

} // namespace

// The lines end here, in place of the library's writer.
void s3WriteTrace(const QString &line)
{
    tracedLines += line;
}

static_assert(std::has_virtual_destructor_v<s3CommandLineParser>);
static_assert(sizeof(s3CommandLineParser) == sizeof(NothingButVirtual));
static_assert(std::is_same_v<std::underlying_type_t<ParseResult>, int>);

class tst_s3CommandLineParser : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void parse_data();
    void parse();
    void questionMarkAsksForHelpOnWindows();
    void argumentsAreExpanded();
    void variableCanSupplyAnOption();
    void programNameIsExpandedToo();
    void callersListIsNotChanged();
    void optionWithoutItsValue();
    void parseCanBeCalledAgain();
    void helpTextHasNoHelpAllLine();
    void helpAllLineOfOtherVersions_data();
    void helpAllLineOfOtherVersions();
    void helpTextWithoutHelpAllLineStays();
    void helpHtml();
    void helpHtmlAsksTheDerivedClass();
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
    QTest::newRow("--help-all is another option") << QStringList{u"p"_s, u"--help-all"_s} << ParseOk << u""_s;
    QTest::newRow("help among others") << QStringList{u"p"_s, u"x"_s, u"--help"_s, u"y"_s} << ParseHelpRequested
                                       << u""_s;
    QTest::newRow("help behind the end of options") << QStringList{u"p"_s, u"--"_s, u"--help"_s} << ParseOk << u""_s;
    QTest::newRow("help beside an unknown one")
        << QStringList{u"p"_s, u"--help"_s, u"--ab"_s} << ParseError << u"Unknown option 'ab'."_s;
    QTest::newRow("unknown with markup") << QStringList{u"p"_s, u"--<b>"_s} << ParseError << u"Unknown option '<b>'."_s;
    QTest::newRow("value for help") << QStringList{u"p"_s, u"--help=x"_s} << ParseError
                                    << u"Unexpected value after '--help'."_s;
    QTest::newRow("no argument at all") << QStringList{} << ParseError << u""_s;
    QTest::newRow("empty argument") << QStringList{u"p"_s, u""_s} << ParseOk << u""_s;
    QTest::newRow("half of a surrogate pair") << QStringList{u"p"_s, QString(QChar(0xD800))} << ParseOk << u""_s;
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

void tst_s3CommandLineParser::questionMarkAsksForHelpOnWindows()
{
    const bool isWindows = QOperatingSystemVersion::currentType() == QOperatingSystemVersion::Windows;
    s3CommandLineParser parser;
    QString errorMessage;
    QCOMPARE(parser.parse({u"p"_s, u"-?"_s}, errorMessage), isWindows ? ParseHelpRequested : ParseError);
    QCOMPARE(errorMessage, isWindows ? u""_s : u"Unknown option '?'."_s);
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

void tst_s3CommandLineParser::variableCanSupplyAnOption()
{
    qputenv("LL_OPTION", "--help");
    qputenv("LL_VALUE", "7");
    s3CommandLineParser parser;
    parser.addOption(QCommandLineOption(u"number"_s, u"A number"_s, u"n"_s));
    QString errorMessage;
    QCOMPARE(parser.parse({u"p"_s, u"${LL_OPTION}"_s}, errorMessage), ParseHelpRequested);
    QCOMPARE(parser.parse({u"p"_s, u"--number=%LL_VALUE%"_s}, errorMessage), ParseOk);
    QCOMPARE(parser.value(u"number"_s), u"7"_s);
}

void tst_s3CommandLineParser::programNameIsExpandedToo()
{
    // Qt keeps nothing of the program's name, so the expansion itself is watched.
    tracedLines.clear();
    s3TestFlagsGUI::instance()->insert(276);
    s3CommandLineParser parser;
    QString errorMessage;
    QCOMPARE(parser.parse({u"/bin/p"_s, u"x"_s}, errorMessage), ParseOk);
    s3TestFlagsGUI::instance()->remove(276);
    QCOMPARE(tracedLines.filter(u"(1) str='/bin/p'"_s).size(), 1);
    QCOMPARE(tracedLines.filter(u"(1) str='x'"_s).size(), 1);
    QVERIFY(tracedLines.first().contains(u"/bin/p"_s));
}

void tst_s3CommandLineParser::callersListIsNotChanged()
{
    qputenv("LL_TEMP", "/tmp");
    const QStringList arguments{u"p"_s, u"%LL_TEMP%"_s};
    const QStringList before{u"p"_s, u"%LL_TEMP%"_s};
    s3CommandLineParser parser;
    QString errorMessage;
    QCOMPARE(parser.parse(arguments, errorMessage), ParseOk);
    QCOMPARE(arguments, before);
}

void tst_s3CommandLineParser::optionWithoutItsValue()
{
    s3CommandLineParser parser;
    parser.addOption(QCommandLineOption(u"number"_s, u"A number"_s, u"n"_s));
    QString errorMessage;
    QCOMPARE(parser.parse({u"p"_s, u"--number"_s}, errorMessage), ParseError);
    QCOMPARE(errorMessage, u"Missing value after '--number'."_s);
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

void tst_s3CommandLineParser::helpAllLineOfOtherVersions_data()
{
    QTest::addColumn<QString>("wording");
    QTest::addColumn<bool>("isRemoved");
    QTest::newRow("6.4") << u"Displays help including Qt specific options."_s << true;
    QTest::newRow("later") << u"Displays help, including generic Qt options."_s << true;
    QTest::newRow("another") << u"Displays help, including Qt options."_s << false;
}

void tst_s3CommandLineParser::helpAllLineOfOtherVersions()
{
    QFETCH(const QString, wording);
    QFETCH(const bool, isRemoved);
    const HelpAllWording translator(wording);
    const s3CommandLineParser parser;
    const QString ofQt = parser.QCommandLineParser::helpText();
    QVERIFY2(ofQt.contains(wording), qPrintable(ofQt));
    QCOMPARE(parser.helpText().contains(u"--help-all"_s), !isRemoved);
    QCOMPARE(parser.helpText().count(u'\n'), ofQt.count(u'\n') - (isRemoved ? 1 : 0));
}

void tst_s3CommandLineParser::helpTextWithoutHelpAllLineStays()
{
    s3CommandLineParser parser;
    // So wide that Qt breaks the line, which then isn't the one that is looked for.
    parser.addOption(QCommandLineOption(u"x"_s.repeated(60), u"Wide"_s));
    const QString ofQt = parser.QCommandLineParser::helpText();
    QVERIFY2(!ofQt.contains(u"Displays help including Qt specific options.\n"_s), qPrintable(ofQt));
    QCOMPARE(parser.helpText(), ofQt);
}

void tst_s3CommandLineParser::helpHtml()
{
    const s3CommandLineParser parser;
    const QString help = parser.helpText().toHtmlEscaped();
    QCOMPARE(parser.helpHtml(u""_s), u"<html><head><body><pre>"_s + help + u"</pre></body></html>"_s);
    QCOMPARE(parser.helpHtml(u"Wrong"_s),
             u"<html><head><body><h2>Wrong</h2><pre>"_s + help + u"</pre></body></html>"_s);
}

void tst_s3CommandLineParser::helpHtmlAsksTheDerivedClass()
{
    const OwnHelp parser;
    const s3CommandLineParser &base = parser;
    QCOMPARE(base.helpHtml(u""_s), u"<html><head><body><pre>own &lt;help&gt;</pre></body></html>"_s);
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
    QTest::newRow("help with a message") << ParseHelpRequested << u"Heading"_s << QMessageBox::Information << 0;
    QTest::newRow("a result of the program's own") << ParseResult(7) << u""_s << QMessageBox::Information << 0;
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
    QCOMPARE(watcher.boxes().first().title, u"Vexa"_s);
}

QTEST_MAIN(tst_s3CommandLineParser)
#include "tst_s3commandlineparser.moc"
