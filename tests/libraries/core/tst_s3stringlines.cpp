#include "s3string.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

class tst_s3StringLines : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void replaceLineEnds_data();
    void replaceLineEnds();
    void replacementMayHoldWhatIsReplaced();
    void copiesWithLineEnds();
    void removeTrailingLineEnd_data();
    void removeTrailingLineEnd();
    void removeTrailingLineEndIsThePattern();
    void lineCount_data();
    void lineCount();
    void longestLine_data();
    void longestLine();
    void lines_data();
    void lines();
};

void tst_s3StringLines::replaceLineEnds_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("replacement");
    QTest::addColumn<QString>("result");

    QTest::newRow("carriage return and line feed are one") << u"a\r\nb"_s << u" "_s << u"a b"_s;
    QTest::newRow("lone carriage return disappears") << u"a\rb"_s << u" "_s << u"ab"_s;
    QTest::newRow("lone carriage return disappears without line feeds") << u"\r"_s << u"\n"_s << u""_s;
    QTest::newRow("carriage returns anywhere") << u"\ra\r\r\n\rb\r"_s << u"|"_s << u"a|b"_s;
    QTest::newRow("empty replacement removes") << u"a\r\nb\nc"_s << u""_s << u"abc"_s;
    QTest::newRow("line feed stays") << u"a\r\nb\n"_s << u"\n"_s << u"a\nb\n"_s;
    QTest::newRow("one character") << u"a\n\nb\n"_s << u";"_s << u"a;;b;"_s;
    QTest::newRow("longer") << u"\na\n"_s << u"<br>"_s << u"<br>a<br>"_s;
    QTest::newRow("no line end") << u"ab"_s << u"<br>"_s << u"ab"_s;
    QTest::newRow("empty text") << u""_s << u"<br>"_s << u""_s;
}

void tst_s3StringLines::replaceLineEnds()
{
    QFETCH(QString, text);
    QFETCH(const QString, replacement);
    s3String::replaceLineEnds(text, replacement);
    QTEST(text, "result");
}

void tst_s3StringLines::replacementMayHoldWhatIsReplaced()
{
    QString text = u"a\nb"_s;
    s3String::replaceLineEnds(text, u"\r\n\r\n"_s);
    QCOMPARE(text, u"a\r\n\r\nb"_s);
}

void tst_s3StringLines::copiesWithLineEnds()
{
    const QString text = u"a\r\nb\nc\rd"_s;
    QCOMPARE(s3String::withCrLf(text), u"a\r\nb\r\ncd"_s);
    QCOMPARE(s3String::withLf(text), u"a\nb\ncd"_s);
    QCOMPARE(s3String::withSemicolons(text), u"a;b;cd"_s);
    QCOMPARE(text, u"a\r\nb\nc\rd"_s);
}

void tst_s3StringLines::removeTrailingLineEnd_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("result");

    QTest::newRow("line feed") << u"a\n"_s << u"a"_s;
    QTest::newRow("with carriage returns") << u"a\r\r\n"_s << u"a"_s;
    QTest::newRow("with blanks behind") << u"a\n \t\v\f\r"_s << u"a"_s;
    QTest::newRow("only one") << u"a\n\n"_s << u"a\n"_s;
    QTest::newRow("blanks in front stay") << u"a \n "_s << u"a "_s;
    QTest::newRow("text behind") << u"a\n b"_s << u"a\n b"_s;
    QTest::newRow("blanks without line end") << u"a \r"_s << u"a \r"_s;
    QTest::newRow("no-break space is no blank") << u"a\n\u00a0"_s << u"a\n\u00a0"_s;
    QTest::newRow("nothing else") << u"\r\n"_s << u""_s;
    QTest::newRow("only blanks") << u"  "_s << u"  "_s;
    QTest::newRow("empty") << u""_s << u""_s;
}

void tst_s3StringLines::removeTrailingLineEnd()
{
    QFETCH(QString, text);
    s3String::removeTrailingLineEnd(text);
    QTEST(text, "result");
}

void tst_s3StringLines::removeTrailingLineEndIsThePattern()
{
    const QRegularExpression pattern(uR"((\r*\n[^\S\n]*)\z)"_s);
    const QString alphabet = u"a\r\n \v\u00a0"_s;
    constexpr int longest = 6;
    int combinations = 1;
    for (int length = 0; length <= longest; ++length, combinations *= int(alphabet.size())) {
        for (int number = 0; number < combinations; ++number) {
            QString text;
            for (int i = 0, rest = number; i < length; ++i, rest /= int(alphabet.size()))
                text += alphabet.at(rest % int(alphabet.size()));
            QString expected = text;
            expected.remove(pattern);
            s3String::removeTrailingLineEnd(text);
            QCOMPARE(text, expected);
        }
    }
}

void tst_s3StringLines::lineCount_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<qsizetype>("count");

    QTest::newRow("empty") << u""_s << qsizetype(0);
    QTest::newRow("one") << u"a"_s << qsizetype(1);
    QTest::newRow("line end at the end") << u"a\n"_s << qsizetype(2);
    QTest::newRow("two") << u"a\r\nb"_s << qsizetype(2);
    QTest::newRow("carriage return is none") << u"a\rb"_s << qsizetype(1);
    QTest::newRow("line feed alone") << u"\n"_s << qsizetype(2);
}

void tst_s3StringLines::lineCount()
{
    QFETCH(const QString, text);
    QTEST(s3String::lineCount(text), "count");
}

void tst_s3StringLines::longestLine_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<qsizetype>("length");

    QTest::newRow("empty") << u""_s << qsizetype(0);
    QTest::newRow("only line ends") << u"\r\n\n\r"_s << qsizetype(0);
    QTest::newRow("first") << u"abc\na"_s << qsizetype(3);
    QTest::newRow("last") << u"a\r\nabcd"_s << qsizetype(4);
    QTest::newRow("carriage return ends one") << u"ab\rabc\rab"_s << qsizetype(3);
    QTest::newRow("blanks count") << u"  a  \n"_s << qsizetype(5);
}

void tst_s3StringLines::longestLine()
{
    QFETCH(const QString, text);
    QTEST(s3String::longestLine(text), "length");
}

void tst_s3StringLines::lines_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<qsizetype>("first");
    QTest::addColumn<qsizetype>("last");
    QTest::addColumn<bool>("keepLineEnd");
    QTest::addColumn<QString>("result");

    const auto row = [](const char *name, const QString &text, int first, int last, bool keepLineEnd,
                        const QString &result) {
        QTest::newRow(name) << text << qsizetype(first) << qsizetype(last) << keepLineEnd << result;
    };
    const QString text = u"one\ntwo\nthree"_s;
    row("first", text, 1, 1, false, u"one"_s);
    row("middle", text, 2, 2, false, u"two"_s);
    row("last", text, 3, 3, false, u"three"_s);
    row("several", text, 1, 2, false, u"one\ntwo"_s);
    row("all", text, 1, 3, false, text);
    row("past the end", text, 2, 9, false, u"two\nthree"_s);
    row("first past the last line gives the whole text", text, 4, 5, false, text);
    row("last before first", text, 3, 2, false, u""_s);
    row("line end is kept", text, 1, 1, true, u"one\n"_s);
    row("line end is appended to the last", text, 3, 3, true, u"three\n"_s);
    row("line end that is there isn't appended", u"one\n"_s, 1, 2, true, u"one\n"_s);
    row("empty line", u"a\n\nb"_s, 2, 2, false, u""_s);
    row("empty line has no end to keep", u"a\n\nb"_s, 2, 2, true, u""_s);
    row("empty line at the end of several", u"a\n\nb"_s, 1, 2, true, u"a\n"_s);
    row("carriage returns go", u"a\r\nb\r\n"_s, 1, 1, false, u"a"_s);
    row("carriage returns go from kept ends", u"a\r\nb\r\n"_s, 1, 2, true, u"a\nb\n"_s);
    row("empty text", u""_s, 1, 1, true, u""_s);
}

void tst_s3StringLines::lines()
{
    QFETCH(const QString, text);
    QFETCH(const qsizetype, first);
    QFETCH(const qsizetype, last);
    QFETCH(const bool, keepLineEnd);
    QTEST(s3String::lines(text, first, last, keepLineEnd), "result");
}

QTEST_APPLESS_MAIN(tst_s3StringLines)
#include "tst_s3stringlines.moc"
