#include "s3string.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

class tst_s3StringSearch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nthIndexOf_data();
    void nthIndexOf();
    void section_data();
    void section();
    void findWord_data();
    void findWord();
    void splitAtBlanks_data();
    void splitAtBlanks();
    void isBlank();
    void isWordChar();
    void isControlChar();
    void isAscii();
    void hash_data();
    void hash();
};

void tst_s3StringSearch::nthIndexOf_data()
{
    QTest::addColumn<int>("n");
    QTest::addColumn<qsizetype>("from");
    QTest::addColumn<bool>("caseSensitive");
    QTest::addColumn<qsizetype>("place");

    const auto row = [](const char *name, int n, int from, bool caseSensitive, int place) {
        QTest::newRow(name) << n << qsizetype(from) << caseSensitive << qsizetype(place);
    };
    row("first", 1, 0, true, 0);
    row("third", 3, 0, true, 4);
    row("too few", 4, 0, true, -1);
    row("none", 0, 0, true, -1);
    row("less than none", -1, 0, true, -1);
    row("from the place itself", 1, 2, true, 2);
    row("from behind it", 1, 3, true, 4);
    row("other case", 4, 0, false, 6);
    row("from the end", 1, 7, false, -1);
}

void tst_s3StringSearch::nthIndexOf()
{
    QFETCH(const int, n);
    QFETCH(const qsizetype, from);
    QFETCH(const bool, caseSensitive);
    QTEST(s3String::nthIndexOf(u"a-a-a-A"_s, u'a', n, from, caseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive),
          "place");
}

void tst_s3StringSearch::section_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("part");

    QTest::newRow("first") << u"a,b,c"_s << 0 << u"a"_s;
    QTest::newRow("middle") << u"a,b,c"_s << 1 << u"b"_s;
    QTest::newRow("last") << u"a,b,c"_s << 2 << u"c"_s;
    QTest::newRow("past the last") << u"a,b,c"_s << 3 << u""_s;
    QTest::newRow("negative") << u"a,b,c"_s << -1 << u""_s;
    QTest::newRow("no separator") << u"abc"_s << 0 << u"abc"_s;
    QTest::newRow("no separator, second") << u"abc"_s << 1 << u""_s;
    QTest::newRow("empty parts") << u",,"_s << 1 << u""_s;
    QTest::newRow("separator at the end") << u"a,"_s << 1 << u""_s;
    QTest::newRow("empty text") << u""_s << 0 << u""_s;
}

void tst_s3StringSearch::section()
{
    QFETCH(const QString, text);
    QFETCH(const int, index);
    QTEST(s3String::section(text, u',', index), "part");
    QCOMPARE(s3String::section(u"aXbxc"_s, u'x', 1), u"c"_s);
    QCOMPARE(s3String::section(u"aXbxc"_s, u'x', 1, Qt::CaseInsensitive), u"b"_s);
}

void tst_s3StringSearch::findWord_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("word");
    QTest::addColumn<qsizetype>("from");
    QTest::addColumn<bool>("caseSensitive");
    QTest::addColumn<bool>("wholeWord");
    QTest::addColumn<qsizetype>("place");

    const auto row = [](const char *name, const QString &text, const QString &word, int from, bool caseSensitive,
                        bool wholeWord, int place) {
        QTest::newRow(name) << text << word << qsizetype(from) << caseSensitive << wholeWord << qsizetype(place);
    };
    row("empty text", u""_s, u"a"_s, 0, true, false, -1);
    row("empty word", u"a"_s, u""_s, 0, true, false, -1);
    row("not there", u"abc"_s, u"x"_s, 0, true, true, -1);
    row("part of a word", u"xab"_s, u"ab"_s, 0, true, false, 1);
    row("whole text", u"ab"_s, u"ab"_s, 0, true, true, 0);
    row("whole word behind a part", u"abc ab"_s, u"ab"_s, 0, true, true, 4);
    row("whole word behind another character", u"xab ab-c"_s, u"ab"_s, 0, true, true, 4);
    row("at the end there is nothing to test", u"x ab"_s, u"ab"_s, 0, true, true, 2);
    row("underscore is a word character", u"ab_ (ab)"_s, u"ab"_s, 0, true, true, 5);
    row("mark is a word character", u"ab\u0301 ab"_s, u"ab"_s, 0, true, true, 4);
    row("case differs", u"AB ab"_s, u"ab"_s, 0, true, true, 3);
    row("case is ignored", u"AB ab"_s, u"ab"_s, 0, false, true, 0);
    row("from behind the first", u"ab ab"_s, u"ab"_s, 1, true, true, 3);
    row("from past the end", u"ab"_s, u"ab"_s, 9, true, true, -1);
    row("overlapping hits", u"aaa aa"_s, u"aa"_s, 0, true, true, 4);
    row("only a refused hit gives its place", u"xab y"_s, u"ab"_s, 0, true, true, 1);
    row("the last of the refused hits", u"xab yab z"_s, u"ab"_s, 0, true, true, 5);
    row("refused hit at the very end", u"xa"_s, u"a"_s, 0, true, true, 1);
}

void tst_s3StringSearch::findWord()
{
    QFETCH(const QString, text);
    QFETCH(const QString, word);
    QFETCH(const qsizetype, from);
    QFETCH(const bool, caseSensitive);
    QFETCH(const bool, wholeWord);
    QTEST(s3String::findWord(text, word, from, caseSensitive, wholeWord), "place");
}

void tst_s3StringSearch::splitAtBlanks_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("parts");

    QTest::newRow("empty") << u""_s << QStringList();
    QTest::newRow("only blanks") << u" \t\n"_s << QStringList();
    QTest::newRow("one") << u"a"_s << QStringList{u"a"_s};
    QTest::newRow("blanks around") << u" a \r\n b\t"_s << QStringList{u"a"_s, u"b"_s};
    QTest::newRow("no-break space is none") << u"a\u00a0b"_s << QStringList{u"a\u00a0b"_s};
}

void tst_s3StringSearch::splitAtBlanks()
{
    QFETCH(const QString, text);
    QTEST(s3String::splitAtBlanks(text), "parts");
}

void tst_s3StringSearch::isBlank()
{
    QVERIFY(s3String::isBlank(QString()));
    QVERIFY(s3String::isBlank(u""_s));
    QVERIFY(s3String::isBlank(u" \t\r\n\u00a0\u2003"_s));
    QVERIFY(!s3String::isBlank(u" a "_s));
    QVERIFY(!s3String::isBlank(QString(QChar(0))));
}

void tst_s3StringSearch::isWordChar()
{
    for (const QChar c : u"aZ09_\u00e4\u0416\u0301\u00b2\u2167"_s)
        QVERIFY2(s3String::isWordChar(c), qPrintable(QString(c)));
    for (const QChar c : u" -.,\n\u00a7\u20ac"_s)
        QVERIFY2(!s3String::isWordChar(c), qPrintable(QString(c)));
    QVERIFY(!s3String::isWordChar(QChar()));
    QVERIFY(!s3String::isWordChar(QChar(0xd800)));
}

void tst_s3StringSearch::isControlChar()
{
    const QList<int> passed = {0, 9, 10, 11, 13, 16, 19, 24, 31};
    for (int code = 0; code < 32; ++code)
        QCOMPARE(s3String::isControlChar(QChar(code)), !passed.contains(code));
    for (int code = 32; code <= 0xffff; ++code)
        QVERIFY(!s3String::isControlChar(QChar(code)));
}

void tst_s3StringSearch::isAscii()
{
    QVERIFY(!s3String::isAscii(nullptr));
    QVERIFY(s3String::isAscii(""));
    QVERIFY(s3String::isAscii("\x01 az\x7f"));
    QVERIFY(!s3String::isAscii("a\x80"));
    QVERIFY(!s3String::isAscii("\xff"));
    QVERIFY(s3String::isAscii("a\0\x80"));
}

void tst_s3StringSearch::hash_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<quint32>("value");

    // Worked out by hand: h starts as the length; h = w ^ rotl(h, 5).
    QTest::newRow("empty") << u""_s << 0U;
    QTest::newRow("a pair") << u"ab"_s << (0x00620061U ^ (2U << 5));
    QTest::newRow("one unit, then the null") << u"a"_s << ((0x61U ^ (1U << 5)) << 5);
    QTest::newRow("a pair, a unit, the null") << u"abc"_s << 0x88000861U;
    QTest::newRow("rotated across the end") << u"\0\uf800\0\0"_s << 0x0000101fU;
}

void tst_s3StringSearch::hash()
{
    QFETCH(const QString, text);
    QTEST(s3String::hash(text), "value");
}

QTEST_APPLESS_MAIN(tst_s3StringSearch)
#include "tst_s3stringsearch.moc"
