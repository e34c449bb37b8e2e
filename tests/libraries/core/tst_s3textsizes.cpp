// Every function gets every odd text: none crashes, and ten megabytes end in good time whatever
// they consist of.

#include "s3string.h"
#include "s3stringtokenizer.h"
#include "s3tracearg.h"

#include <QTest>

#include <functional>

using namespace Qt::Literals::StringLiterals;

namespace {

using Function = std::function<void(QString)>;

constexpr qsizetype manyUnits = 5'000'000; // ten megabytes

struct NamedFunction
{
    const char *name;
    Function function;
};

QString longText(const QString &part)
{
    return part.repeated(manyUnits / part.size());
}

const QList<NamedFunction> &changingFunctions()
{
    static const QList<NamedFunction> functions = {{"expandEnvironmentStrings",
                                                    [](QString text) {
                                                        s3String::expandEnvironmentStrings(text);
                                                    }},
                                                   {"expandMessageReferences",
                                                    [](QString text) {
                                                        s3String::expandMessageReferences(text, true);
                                                    }},
                                                   {"expandMessageReferences to symbols",
                                                    [](QString text) {
                                                        s3String::expandMessageReferences(text, false);
                                                    }},
                                                   {"replaceLineEnds",
                                                    [](QString text) {
                                                        s3String::replaceLineEnds(text, u"<br>"_s);
                                                    }},
                                                   {"removeTrailingLineEnd",
                                                    [](QString text) {
                                                        s3String::removeTrailingLineEnd(text);
                                                    }},
                                                   {"removePrefix",
                                                    [](QString text) {
                                                        s3String::removePrefix(text, u"a"_s, Qt::CaseInsensitive);
                                                    }},
                                                   {"removePrefix, itself",
                                                    [](QString text) {
                                                        s3String::removePrefix(text, QString(text));
                                                    }},
                                                   {"removePrefix, a character",
                                                    [](QString text) {
                                                        s3String::removePrefix(text, u'a');
                                                    }},
                                                   {"removePrefix, a list",
                                                    [](QString text) {
                                                        s3String::removePrefix(text, QStringList{u""_s, u"a"_s});
                                                    }},
                                                   {"trim",
                                                    [](QString text) {
                                                        s3String::trim(text, u'a');
                                                    }},
                                                   {"trimBlanks",
                                                    [](QString text) {
                                                        s3String::trimBlanks(text);
                                                    }},
                                                   {"toBackslashes in place",
                                                    [](QString text) {
                                                        s3String::toBackslashes(text);
                                                    }},
                                                   {"removeMnemonics",
                                                    [](QString text) {
                                                        s3String::removeMnemonics(text);
                                                    }},
                                                   {"replaceProductName", [](QString text) {
                                                        s3String::replaceProductName(text);
                                                    }}};
    return functions;
}

const QList<NamedFunction> &convertingFunctions()
{
    static const QList<NamedFunction> functions = {{"toBool",
                                                    [](const QString &text) {
                                                        (void)s3String::toBool(text);
                                                    }},
                                                   {"toDouble",
                                                    [](const QString &text) {
                                                        (void)s3String::toDouble(text, u"a"_s, u"\n"_s);
                                                    }},
                                                   {"fromStringList",
                                                    [](const QString &text) {
                                                        (void)s3String::fromStringList({text, text});
                                                    }},
                                                   {"inParentheses",
                                                    [](const QString &text) {
                                                        (void)s3String::inParentheses(text);
                                                    }},
                                                   {"unquoted",
                                                    [](const QString &text) {
                                                        (void)s3String::unquoted(s3String::quoted(text));
                                                    }},
                                                   {"withCrLf",
                                                    [](const QString &text) {
                                                        (void)s3String::withCrLf(text);
                                                    }},
                                                   {"withLf",
                                                    [](const QString &text) {
                                                        (void)s3String::withLf(text);
                                                    }},
                                                   {"withSemicolons",
                                                    [](const QString &text) {
                                                        (void)s3String::withSemicolons(text);
                                                    }},
                                                   {"lines",
                                                    [](const QString &text) {
                                                        (void)s3String::lines(text, 2, 1'000'000, true);
                                                    }},
                                                   {"toBackslashes",
                                                    [](const QString &text) {
                                                        (void)s3String::toBackslashes(text);
                                                    }},
                                                   {"toSlashes",
                                                    [](const QString &text) {
                                                        (void)s3String::toSlashes(text);
                                                    }},
                                                   {"doubleBackslashes",
                                                    [](const QString &text) {
                                                        (void)s3String::doubleBackslashes(text);
                                                    }},
                                                   {"percentEncodeKeepingPercent",
                                                    [](const QString &text) {
                                                        (void)s3String::percentEncodeKeepingPercent(text);
                                                    }},
                                                   {"percentEncode",
                                                    [](const QString &text) {
                                                        (void)s3String::percentEncode(text);
                                                    }},
                                                   {"percentDecode",
                                                    [](const QString &text) {
                                                        (void)s3String::percentDecode(text);
                                                    }},
                                                   {"escapeNonPrintable",
                                                    [](const QString &text) {
                                                        (void)s3String::escapeNonPrintable(text);
                                                    }},
                                                   {"elide",
                                                    [](const QString &text) {
                                                        (void)s3String::elide(text, 1000);
                                                    }},
                                                   {"byte text",
                                                    [](const QString &text) {
                                                        (void)s3String::fromByteText(s3String::toByteText(text));
                                                    }},
                                                   {"bytes as they are",
                                                    [](const QString &text) {
                                                        (void)s3String::fromByteText(text.toUtf8().constData());
                                                    }},
                                                   {"s3TraceArg", [](const QString &text) {
                                                        (void)s3TraceArg(text, text);
                                                    }}};
    return functions;
}

void takeTokens(const QString &text)
{
    s3StringTokenizer tokenizer(text, u"a, \r\n"_s, true);
    for (int i = 0; i < 100'000 && !tokenizer.nextToken().isEmpty(); ++i)
        (void)tokenizer.token();
    (void)tokenizer.rest(true);
}

const QList<NamedFunction> &searchingFunctions()
{
    static const QList<NamedFunction> functions = {{"lineCount",
                                                    [](const QString &text) {
                                                        (void)s3String::lineCount(text);
                                                    }},
                                                   {"longestLine",
                                                    [](const QString &text) {
                                                        (void)s3String::longestLine(text);
                                                    }},
                                                   {"mnemonic",
                                                    [](const QString &text) {
                                                        (void)s3String::mnemonic(text);
                                                    }},
                                                   {"nthIndexOf",
                                                    [](const QString &text) {
                                                        (void)s3String::nthIndexOf(text, u'a', 1'000'000'000);
                                                    }},
                                                   {"section",
                                                    [](const QString &text) {
                                                        (void)s3String::section(text, u'a', 1'000'000);
                                                    }},
                                                   {"findWord",
                                                    [](const QString &text) {
                                                        (void)s3String::findWord(text, u"a"_s, 0, true, true);
                                                    }},
                                                   {"findWord, any case",
                                                    [](const QString &text) {
                                                        (void)s3String::findWord(text, u"ab"_s, 0, false, true);
                                                    }},
                                                   {"splitAtBlanks",
                                                    [](const QString &text) {
                                                        (void)s3String::splitAtBlanks(text);
                                                    }},
                                                   {"isBlank",
                                                    [](const QString &text) {
                                                        (void)s3String::isBlank(text);
                                                    }},
                                                   {"isAscii",
                                                    [](const QString &text) {
                                                        (void)s3String::isAscii(text.toUtf8().constData());
                                                    }},
                                                   {"hash",
                                                    [](const QString &text) {
                                                        (void)s3String::hash(text);
                                                    }},
                                                   {"s3StringTokenizer", takeTokens}};
    return functions;
}

void addFunctions()
{
    QTest::addColumn<Function>("function");
    for (const auto &functions : {changingFunctions(), convertingFunctions(), searchingFunctions()}) {
        for (const NamedFunction &function : functions)
            QTest::newRow(function.name) << function.function;
    }
}

} // namespace

class tst_s3TextSizes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void smallTexts_data() { addFunctions(); }
    void smallTexts();
    void loneSurrogates_data() { addFunctions(); }
    void loneSurrogates();
    void largeTexts_data() { addFunctions(); }
    void largeTexts();
    void cutEscapes();
};

void tst_s3TextSizes::smallTexts()
{
    QFETCH(const Function, function);
    function(QString());
    function(u""_s);
    for (char16_t c = 0; c < 0x200; ++c)
        function(QString(QChar(c)));
    for (const char16_t c : {u'\u2028', u'\ufeff', u'\ufffe', u'\uffff'})
        function(QString(QChar(c)));
}

void tst_s3TextSizes::loneSurrogates()
{
    QFETCH(const Function, function);
    const QString high(QChar(0xd83d));
    const QString low(QChar(0xde00));
    const QString text = u"a &%41${A}Xmsg(1)\\\r\n"_s;
    for (const QString &odd : {high, low, low + high, high + high, high + text, text + low, text + high + text})
        function(odd);
    function(longText(text + high));
}

void tst_s3TextSizes::largeTexts()
{
    QFETCH(const Function, function);
    qputenv("LL_A", "alpha");
    // One unit again and again is what makes a pattern try its worst.
    for (const QString &part : {u"a"_s, u" "_s, u"\r"_s, u"\n"_s, u"%"_s, u"\\"_s, u"&"_s, u"\x01"_s, u"Ж"_s, u"😀"_s})
        function(longText(part));
    for (const QString &part : {u"\r\n \t"_s, u"${"_s, u"%LL_A%"_s, u"${LL_A}"_s, u"%41"_s, u"Xmsg(1)"_s,
                                u"Xmsg(1,\"a)"_s, u"vexa ERP"_s, u"A line as they are.\r\n"_s})
        function(longText(part));
}

void tst_s3TextSizes::cutEscapes()
{
    for (int lead = 0; lead < 256; ++lead) {
        QByteArray bytes = QByteArray("a\xff") + char(lead);
        for (int length = 0; length < 5; ++length, bytes += '\x80')
            QVERIFY(s3String::fromByteText(bytes.constData()).startsWith(u'a'));
    }
}

QTEST_APPLESS_MAIN(tst_s3TextSizes)
#include "tst_s3textsizes.moc"
