#include "s3string.h"

#include <QColor>
#include <QModelIndex>
#include <QRect>
#include <QStringListModel>
#include <QTest>

#include <cmath>
#include <limits>

using namespace Qt::Literals::StringLiterals;

class tst_s3String : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void expandEnvironmentStrings_data();
    void expandEnvironmentStrings();
    void namesMatchAsInTheEnvironment();
    void formatNumber_data();
    void formatNumber();
    void formatNumberWithoutNumber();
    void toBool_data();
    void toBool();
    void fromBool();
    void toDouble_data();
    void toDouble();
    void number();
    void toHex_data();
    void toHex();
    void pointsSizesAndRectangles();
    void fromModelIndex();
    void fromColor_data();
    void fromColor();
    void fromStringList();
    void quotedAndUnquoted();
    void removePrefix();
    void removePrefixCharacter();
    void removePrefixOfAList();
    void trimming();
};

void tst_s3String::expandEnvironmentStrings_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expanded");

    QTest::newRow("empty") << u""_s << u""_s;
    QTest::newRow("percent form") << u"%LL_A%\\x"_s << u"alpha\\x"_s;
    QTest::newRow("dollar form") << u"${LL_A}/x"_s << u"alpha/x"_s;
    QTest::newRow("two in a row") << u"%LL_A%%LL_B%"_s << u"alphabeta"_s;
    QTest::newRow("the same twice") << u"%LL_A%-%LL_A%"_s << u"alpha-alpha"_s;
    QTest::newRow("no closing percent") << u"%LL_A"_s << u"%LL_A"_s;
    QTest::newRow("nothing between percents") << u"%%"_s << u"%%"_s;
    QTest::newRow("unknown name stays") << u"%LL_NO_SUCH%\\x"_s << u"%LL_NO_SUCH%\\x"_s;
    QTest::newRow("unknown dollar name stays") << u"${LL_NO_SUCH}"_s << u"${LL_NO_SUCH}"_s;
    QTest::newRow("empty variable") << u"[%LL_EMPTY%]"_s << u"[]"_s;
    QTest::newRow("a value isn't expanded by its own pass") << u"%LL_PERCENT%"_s << u"%LL_A%"_s;
    QTest::newRow("a value that holds itself") << u"%LL_SELF%%LL_SELF%"_s << u"%LL_SELF%%LL_SELF%"_s;
    QTest::newRow("a value that holds itself and more")
        << u"%LL_GROW% %LL_GROW% %LL_GROW%"_s << u"x%LL_GROW%%LL_GROW% x%LL_GROW%%LL_GROW% x%LL_GROW%%LL_GROW%"_s;
    QTest::newRow("unpaired surrogates around")
        << QString(QChar(0xd800)) + u"%LL_A%"_s + QChar(0xdc00) << QString(QChar(0xd800)) + u"alpha"_s + QChar(0xdc00);
    QTest::newRow("unpaired surrogate in the name")
        << u"%LL_"_s + QChar(0xd800) + u"%%LL_A%"_s << u"%LL_"_s + QChar(0xd800) + u"%alpha"_s;
    QTest::newRow("dollar without closing brace") << u"${LL_A ${LL_A}${"_s << u"${LL_A ${LL_A}${"_s;
    QTest::newRow("nothing between braces") << u"${}${LL_A}"_s << u"${}alpha"_s;
    QTest::newRow("a value that brings a later reference") << u"%LL_PERCENT%%LL_A%"_s << u"alphaalpha"_s;
    QTest::newRow("a value is expanded by the second pass") << u"%LL_DOLLAR%"_s << u"beta"_s;
}

void tst_s3String::expandEnvironmentStrings()
{
    qputenv("LL_A", "alpha");
    qputenv("LL_B", "beta");
    qputenv("LL_EMPTY", "");
    qputenv("LL_PERCENT", "%LL_A%");
    qputenv("LL_DOLLAR", "${LL_B}");
    qputenv("LL_SELF", "%LL_SELF%");
    qputenv("LL_GROW", "x%LL_GROW%%LL_GROW%");

    QFETCH(QString, text);
    if (text.contains(u"LL_EMPTY"_s) && !qEnvironmentVariableIsSet("LL_EMPTY"))
        QSKIP("Setting a variable to nothing removes it on this system");
    s3String::expandEnvironmentStrings(text);
    QTEST(text, "expanded");
}

void tst_s3String::namesMatchAsInTheEnvironment()
{
    qputenv("LL_Case", "found");
    QString text = u"${LL_CASE}"_s;
    s3String::expandEnvironmentStrings(text);
#ifdef Q_OS_WIN
    QCOMPARE(text, u"found"_s);
#else
    QCOMPARE(text, u"${LL_CASE}"_s);
#endif
}

void tst_s3String::formatNumber_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("decimalSeparator");
    QTest::addColumn<QString>("groupSeparator");
    QTest::addColumn<QString>("text");

    QTest::newRow("trailing zero goes") << 1.5 << 2 << u"."_s << u""_s << u"1.5"_s;
    QTest::newRow("all decimals go") << 2.0 << 2 << u"."_s << u""_s << u"2"_s;
    QTest::newRow("zeros of a whole number stay") << 200.0 << 0 << u"."_s << u""_s << u"200"_s;
    QTest::newRow("guard against a miss") << 1.005 << 2 << u"."_s << u""_s << u"1.01"_s;
    QTest::newRow("guard for negatives") << -1.005 << 2 << u"."_s << u""_s << u"-1.01"_s;
    QTest::newRow("groups and decimals") << 1234.5 << 2 << u","_s << u"."_s << u"1.234,5"_s;
    QTest::newRow("negative with groups") << -123456.0 << 0 << u","_s << u"."_s << u"-123.456"_s;
    QTest::newRow("no separator behind the sign") << -123.0 << 0 << u","_s << u"."_s << u"-123"_s;
    QTest::newRow("two groups") << 1234567.0 << 0 << u","_s << u"."_s << u"1.234.567"_s;
    QTest::newRow("below 1000") << 999.0 << 0 << u","_s << u"."_s << u"999"_s;
    QTest::newRow("long separator") << 1234567.25 << 2 << u" dot "_s << u"''"_s << u"1''234''567 dot 25"_s;
    QTest::newRow("zero") << 0.0 << 2 << u"."_s << u""_s << u"0"_s;
}

void tst_s3String::formatNumber()
{
    QFETCH(const double, value);
    QFETCH(const int, decimals);
    QFETCH(const QString, decimalSeparator);
    QFETCH(const QString, groupSeparator);
    QTEST(s3String::formatNumber(value, decimals, decimalSeparator, groupSeparator), "text");
}

void tst_s3String::formatNumberWithoutNumber()
{
    const double infinity = std::numeric_limits<double>::infinity();
    QCOMPARE(s3String::formatNumber(infinity, 2, u","_s, u"."_s), u"inf"_s);
    QCOMPARE(s3String::formatNumber(-infinity, 2, u","_s, u"."_s), u"-inf"_s);
    QCOMPARE(s3String::formatNumber(std::nan(""), 2, u","_s, u"."_s), u"nan"_s);
}

void tst_s3String::toBool_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("value");

    QTest::newRow("true") << u"true"_s << true;
    QTest::newRow("blanks and case") << u" TRUE "_s << true;
    QTest::newRow("other white space") << u"\t\nTrue\r\n"_s << true;
    QTest::newRow("1") << u"1"_s << true;
    QTest::newRow("-1") << u"-1"_s << true;
    QTest::newRow("2") << u"2"_s << true;
    QTest::newRow("number with blanks") << u" 7 "_s << true;
    QTest::newRow("false") << u"false"_s << false;
    QTest::newRow("yes") << u"yes"_s << false;
    QTest::newRow("0") << u"0"_s << false;
    QTest::newRow("empty") << u""_s << false;
    QTest::newRow("true and more") << u"true false"_s << false;
    QTest::newRow("part of a word") << u"truex"_s << false;
    QTest::newRow("hexadecimal") << u"0x1"_s << false;
    QTest::newRow("fraction") << u"1.5"_s << false;
    QTest::newRow("too large") << u"99999999999"_s << false;
}

void tst_s3String::toBool()
{
    QFETCH(const QString, text);
    QTEST(s3String::toBool(text), "value");
}

void tst_s3String::fromBool()
{
    QCOMPARE(s3String::fromBool(true), u"true"_s);
    QCOMPARE(s3String::fromBool(false), u"false"_s);
}

void tst_s3String::toDouble_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("decimalSeparator");
    QTest::addColumn<QString>("groupSeparator");
    QTest::addColumn<double>("value");

    QTest::newRow("both separators") << u"1.234.567,5"_s << u","_s << u"."_s << 1234567.5;
    QTest::newRow("no separators") << u"-1.5e3"_s << u""_s << u""_s << -1500.0;
    QTest::newRow("groups anywhere") << u"1'2'"_s << u"."_s << u"'"_s << 12.0;
    QTest::newRow("groups go first") << u"1,5"_s << u","_s << u","_s << 15.0;
    QTest::newRow("long separators") << u"1xx234yy5"_s << u"yy"_s << u"xx"_s << 1234.5;
    QTest::newRow("separator's case counts") << u"1X5"_s << u"x"_s << u""_s << 0.0;
    QTest::newRow("no number") << u"one"_s << u"."_s << u""_s << 0.0;
    QTest::newRow("empty") << u""_s << u"."_s << u","_s << 0.0;
}

void tst_s3String::toDouble()
{
    QFETCH(const QString, text);
    QFETCH(const QString, decimalSeparator);
    QFETCH(const QString, groupSeparator);
    QTEST(s3String::toDouble(text, decimalSeparator, groupSeparator), "value");
}

void tst_s3String::number()
{
    QCOMPARE(s3String::number(-42), u"-42"_s);
    QCOMPARE(s3String::number(255, 16), u"ff"_s);
    QCOMPARE(s3String::number(std::numeric_limits<quint64>::max(), 10), u"18446744073709551615"_s);
    QCOMPARE(s3String::number(std::numeric_limits<qint64>::min(), 10), u"-9223372036854775808"_s);
}

void tst_s3String::toHex_data()
{
    QTest::addColumn<quint64>("value");
    QTest::addColumn<int>("width");
    QTest::addColumn<bool>("prefix");
    QTest::addColumn<QString>("text");

    QTest::newRow("filled up") << quint64(0xab) << 4 << false << u"00ab"_s;
    QTest::newRow("prefix") << quint64(0x80) << 2 << true << u"0x80"_s;
    QTest::newRow("prefix doesn't count") << quint64(0x8) << 4 << true << u"0x0008"_s;
    QTest::newRow("width 0 is 16") << quint64(0x1000) << 0 << true << u"0x0000000000001000"_s;
    QTest::newRow("never cut") << quint64(0x12345) << 2 << false << u"12345"_s;
    QTest::newRow("all bits") << ~quint64(0) << 1 << true << u"0xffffffffffffffff"_s;
    QTest::newRow("zero") << quint64(0) << 1 << false << u"0"_s;
}

void tst_s3String::toHex()
{
    QFETCH(const quint64, value);
    QFETCH(const int, width);
    QFETCH(const bool, prefix);
    QTEST(s3String::toHex(value, width, prefix), "text");
}

void tst_s3String::pointsSizesAndRectangles()
{
    QCOMPARE(s3String::fromPoint(QPoint(-3, 4)), u"(-3, 4)"_s);
    QCOMPARE(s3String::fromSize(QSize(640, 480)), u"(640 x 480)"_s);
    QCOMPARE(s3String::fromRect(QRect(0, 0, 10, 20)), u"((0, 0), (9, 19), (10 x 20))"_s);
    QCOMPARE(s3String::fromRect(QRect()), u"((0, 0), (-1, -1), (0 x 0))"_s);
}

void tst_s3String::fromModelIndex()
{
    const QStringListModel model({u"a"_s, u"b"_s});
    QCOMPARE(s3String::fromModelIndex(model.index(1, 0)), u"(1, 0)"_s);
    QCOMPARE(s3String::fromModelIndex(QModelIndex()), u"(-1, -1)"_s);
}

void tst_s3String::fromColor_data()
{
    QTest::addColumn<QColor>("color");
    QTest::addColumn<QString>("text");

    QTest::newRow("opaque has no alpha") << QColor(255, 0, 0) << u"#ff0000"_s;
    QTest::newRow("alpha") << QColor(255, 0, 0, 128) << u"#ff0000, 0x80"_s;
    QTest::newRow("small alpha") << QColor(0, 0, 1, 1) << u"#000001, 0x01"_s;
    QTest::newRow("invalid") << QColor() << u"invalid"_s;
    QTest::newRow("transparent black") << QColor(0, 0, 0, 0) << u""_s;
    QTest::newRow("another transparent one") << QColor(1, 0, 0, 0) << u"#010000, 0x00"_s;
    QTest::newRow("black") << QColor(0, 0, 0) << u"#000000"_s;
}

void tst_s3String::fromColor()
{
    QFETCH(const QColor, color);
    QTEST(s3String::fromColor(color), "text");
}

void tst_s3String::fromStringList()
{
    QCOMPARE(s3String::fromStringList({}), u"{ }"_s);
    QCOMPARE(s3String::fromStringList({u"a"_s}), u"{ \"a\" }"_s);
    QCOMPARE(s3String::fromStringList({u"a"_s, u"b"_s}), u"{ \"a\", \"b\" }"_s);
    QCOMPARE(s3String::fromStringList({u""_s, u"\""_s}), u"{ \"\", \"\"\" }"_s);
}

void tst_s3String::quotedAndUnquoted()
{
    QCOMPARE(s3String::inParentheses(u"a"_s), u"(a)"_s);
    QCOMPARE(s3String::quoted(u"a\"b"_s), u"\"a\"b\""_s);
    QCOMPARE(s3String::quoted(QString()), u"\"\""_s);
    QCOMPARE(s3String::unquoted(u"\"a\"b\""_s), u"a\"b"_s);
    QCOMPARE(s3String::unquoted(u"\"\""_s), u""_s);
    QCOMPARE(s3String::unquoted(u"\""_s), u"\""_s);
    QCOMPARE(s3String::unquoted(u"\"a"_s), u"\"a"_s);
    QCOMPARE(s3String::unquoted(u"a\""_s), u"a\""_s);
    QCOMPARE(s3String::unquoted(u""_s), u""_s);
}

void tst_s3String::removePrefix()
{
    QString text = u"ababc"_s;
    QVERIFY(!s3String::removePrefix(text, u""_s));
    QVERIFY(!s3String::removePrefix(text, u"b"_s));
    QVERIFY(!s3String::removePrefix(text, u"AB"_s, Qt::CaseSensitive));
    QCOMPARE(text, u"ababc"_s);
    QVERIFY(s3String::removePrefix(text, u"AB"_s, Qt::CaseInsensitive));
    QCOMPARE(text, u"abc"_s);
    QVERIFY(s3String::removePrefix(text, u"abc"_s));
    QCOMPARE(text, u""_s);
    QVERIFY(!s3String::removePrefix(text, u"abc"_s));
}

void tst_s3String::removePrefixCharacter()
{
    QString text = u"aabc"_s;
    QVERIFY(s3String::removePrefix(text, u'a'));
    QVERIFY(!s3String::removePrefix(text, u'A'));
    QVERIFY(!s3String::removePrefix(text, u'A', Qt::CaseSensitive));
    QVERIFY(s3String::removePrefix(text, u'A', Qt::CaseInsensitive));
    QCOMPARE(text, u"bc"_s);
}

void tst_s3String::removePrefixOfAList()
{
    QString text = u"abcabc"_s;
    QVERIFY(!s3String::removePrefix(text, QStringList()));
    QVERIFY(!s3String::removePrefix(text, QStringList{u""_s, u"x"_s, u"AB"_s}));
    QVERIFY(s3String::removePrefix(text, QStringList{u""_s, u"x"_s, u"ab"_s, u"c"_s}));
    QCOMPARE(text, u"cabc"_s);
    QVERIFY(s3String::removePrefix(text, QStringList{u"CA"_s}, Qt::CaseInsensitive));
    QCOMPARE(text, u"bc"_s);
}

void tst_s3String::trimming()
{
    const auto trimmed = [](void (*function)(QString &, QChar), QString text) {
        function(text, u'x');
        return text;
    };
    QCOMPARE(trimmed(s3String::trimLeft, u"xxaxbxx"_s), u"axbxx"_s);
    QCOMPARE(trimmed(s3String::trimRight, u"xxaxbxx"_s), u"xxaxb"_s);
    QCOMPARE(trimmed(s3String::trim, u"xxaxbxx"_s), u"axb"_s);
    QCOMPARE(trimmed(s3String::trim, u"xxx"_s), u""_s);
    QCOMPARE(trimmed(s3String::trim, u" x"_s), u" "_s);
    QString text = u"  \ta b\n  "_s;
    s3String::trimBlanks(text);
    QCOMPARE(text, u"\ta b\n"_s);
}

QTEST_GUILESS_MAIN(tst_s3String)
#include "tst_s3string.moc"
