#include "s3stringtokenizer.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

class tst_s3StringTokenizer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tokens_data();
    void tokens();
    void trimIsTheDefaultOfTheObject();
    void trimsBlanksOnly();
    void otherDelimitersForOneToken();
    void emptyDelimitersAreThoseOfTheObject();
    void restBeginsWithTheFirstNonDelimiter();
    void restLeavesThePosition();
    void restPastTheEndIsEmpty();
    void tokenIsTheCurrentOne();
    void warningsAboutPatternsStayAway();
    void loneSurrogatesAreOrdinaryCharacters();
    void manyTokensTakeNoLonger();
};

namespace {

QStringList allTokens(s3StringTokenizer &tokenizer)
{
    QStringList tokens;
    while (!tokenizer.nextToken().isEmpty())
        tokens += tokenizer.token();
    return tokens;
}

} // namespace

void tst_s3StringTokenizer::tokens_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("delimiters");
    QTest::addColumn<QStringList>("tokens");

    QTest::newRow("one delimiter") << u"a,bc,d"_s << u","_s << QStringList{u"a"_s, u"bc"_s, u"d"_s};
    QTest::newRow("several delimiters") << u"a,b;c"_s << u",;"_s << QStringList{u"a"_s, u"b"_s, u"c"_s};
    QTest::newRow("delimiters in a row are one") << u",,a,;,b,,"_s << u",;"_s << QStringList{u"a"_s, u"b"_s};
    QTest::newRow("no delimiter in the text") << u"abc"_s << u","_s << QStringList{u"abc"_s};
    QTest::newRow("only delimiters") << u",,,"_s << u","_s << QStringList{};
    QTest::newRow("empty text") << u""_s << u","_s << QStringList{};
    QTest::newRow("line ends in a token") << u"a\nb,c"_s << u","_s << QStringList{u"a\nb"_s, u"c"_s};
    QTest::newRow("beyond the first plane") << u"a😀b😁c"_s << u"😀"_s << QStringList{u"a"_s, u"b😁c"_s};
    QTest::newRow("range") << u"a1b22c-d"_s << u"0-9"_s << QStringList{u"a"_s, u"b"_s, u"c-d"_s};
    QTest::newRow("escape of a pattern") << u"a1b 2c"_s << u"\\d\\s"_s << QStringList{u"a"_s, u"b"_s, u"c"_s};
    QTest::newRow("escaped bracket") << u"a]b[c"_s << u"\\]["_s << QStringList{u"a"_s, u"b"_s, u"c"_s};
    QTest::newRow("bracket in front is itself") << u"a]b"_s << u"]"_s << QStringList{u"a"_s, u"b"_s};
    // [^x]] is "no x, then a bracket", and [x]] is "an x, then a bracket".
    QTest::newRow("bracket ends the class") << u"xab]cx]de]"_s << u"x]"_s << QStringList{u"b]c"_s, u"e]"_s};
    QTest::newRow("circumflex in front turns the class around") << u"a,b"_s << u"^,"_s << QStringList{};
    QTest::newRow("no delimiters are no pattern") << u"a,b"_s << u""_s << QStringList{};
    QTest::newRow("backslash at the end is no pattern") << u"a\\b"_s << u"\\"_s << QStringList{};
}

void tst_s3StringTokenizer::tokens()
{
    QFETCH(const QString, text);
    QFETCH(const QString, delimiters);
    s3StringTokenizer tokenizer(text, delimiters, false);
    QTEST(allTokens(tokenizer), "tokens");
    QVERIFY(tokenizer.nextToken().isEmpty());
}

void tst_s3StringTokenizer::trimIsTheDefaultOfTheObject()
{
    s3StringTokenizer trimming(u" a , b , c "_s, u","_s, true);
    QCOMPARE(trimming.nextToken(), u"a"_s);
    QCOMPARE(trimming.nextToken(u","_s, false), u" b "_s);
    QCOMPARE(trimming.nextToken(), u"c"_s);

    s3StringTokenizer keeping(u" a , b "_s, u","_s, false);
    QCOMPARE(keeping.nextToken(), u" a "_s);
    QCOMPARE(keeping.nextToken(u","_s, true), u"b"_s);
}

void tst_s3StringTokenizer::trimsBlanksOnly()
{
    s3StringTokenizer tokenizer(u" \ta\n ,  "_s, u","_s, true);
    QCOMPARE(tokenizer.nextToken(), u"\ta\n"_s);
    QCOMPARE(tokenizer.nextToken(), u""_s);
}

void tst_s3StringTokenizer::otherDelimitersForOneToken()
{
    s3StringTokenizer tokenizer(u"key=a,b=c,d"_s, u","_s, false);
    QCOMPARE(tokenizer.nextToken(u"="_s, false), u"key"_s);
    QCOMPARE(tokenizer.nextToken(), u"=a"_s);
    QCOMPARE(tokenizer.nextToken(u"=,"_s, false), u"b"_s);
    QCOMPARE(tokenizer.nextToken(), u"=c"_s);
}

void tst_s3StringTokenizer::emptyDelimitersAreThoseOfTheObject()
{
    s3StringTokenizer tokenizer(u" a ,b"_s, u","_s, false);
    QCOMPARE(tokenizer.nextToken(QString(), true), u"a"_s);
}

void tst_s3StringTokenizer::restBeginsWithTheFirstNonDelimiter()
{
    s3StringTokenizer tokenizer(u"a,, b , c "_s, u","_s, false);
    QCOMPARE(tokenizer.nextToken(), u"a"_s);
    QCOMPARE(tokenizer.rest(false), u" b , c "_s);
    QCOMPARE(tokenizer.rest(true), u"b , c"_s);
    QCOMPARE(tokenizer.token(), u"b , c"_s);
}

void tst_s3StringTokenizer::restLeavesThePosition()
{
    s3StringTokenizer tokenizer(u"a,b"_s, u","_s, false);
    QCOMPARE(tokenizer.rest(false), u"a,b"_s);
    QCOMPARE(tokenizer.nextToken(), u"a"_s);
}

void tst_s3StringTokenizer::restPastTheEndIsEmpty()
{
    s3StringTokenizer tokenizer(u"a,"_s, u","_s, false);
    QCOMPARE(tokenizer.nextToken(), u"a"_s);
    QCOMPARE(tokenizer.rest(false), u""_s);
    QCOMPARE(tokenizer.nextToken(), u""_s);
    QCOMPARE(tokenizer.rest(false), u""_s);
}

void tst_s3StringTokenizer::tokenIsTheCurrentOne()
{
    s3StringTokenizer tokenizer(u"a,b"_s, u","_s, false);
    QCOMPARE(tokenizer.token(), u""_s);
    const QString &token = tokenizer.token();
    QCOMPARE(tokenizer.nextToken(), u"a"_s);
    QCOMPARE(token, u"a"_s);
    QCOMPARE(tokenizer.nextToken(), u"b"_s);
    QCOMPARE(tokenizer.nextToken(), u""_s);
    QCOMPARE(token, u""_s);
}

void tst_s3StringTokenizer::warningsAboutPatternsStayAway()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    for (const QString &delimiters : {u""_s, u"\\"_s, u"z-a"_s, u"[:none:]"_s, QString(QChar(0xd800))}) {
        s3StringTokenizer tokenizer(u"a b"_s, delimiters, true);
        QVERIFY(tokenizer.nextToken().isEmpty());
        QVERIFY(tokenizer.rest(true).isEmpty());
    }
}

void tst_s3StringTokenizer::loneSurrogatesAreOrdinaryCharacters()
{
    const QString odd = QString(QChar(0xd83d)) + u"a"_s + QChar(0xde00) + u"😀"_s + QChar(0xd83d);
    s3StringTokenizer tokenizer(odd + u","_s + odd + u",b"_s, u","_s, false);
    QCOMPARE(tokenizer.nextToken(), odd);
    QCOMPARE(tokenizer.nextToken(), odd);
    QCOMPARE(tokenizer.nextToken(), u"b"_s);
}

void tst_s3StringTokenizer::manyTokensTakeNoLonger()
{
    // With a look at the whole rest of the text for each token this would take hours.
    const qsizetype count = 500'000;
    s3StringTokenizer tokenizer(u"twenty characters..,"_s.repeated(count), u","_s, false);
    QCOMPARE(allTokens(tokenizer).size(), count);
}

QTEST_APPLESS_MAIN(tst_s3StringTokenizer)
#include "tst_s3stringtokenizer.moc"
