#include "s3string.h"

#include <QTest>

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
    void toSlashes();
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
    QTest::newRow("a value is expanded by the second pass") << u"%LL_DOLLAR%"_s << u"beta"_s;
}

void tst_s3String::expandEnvironmentStrings()
{
    qputenv("LL_A", "alpha");
    qputenv("LL_B", "beta");
    qputenv("LL_EMPTY", "");
    qputenv("LL_PERCENT", "%LL_A%");
    qputenv("LL_DOLLAR", "${LL_B}");

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

void tst_s3String::toSlashes()
{
    QCOMPARE(s3String::toSlashes(u"C:\\tmp\\a/b"_s), u"C:/tmp/a/b"_s);
    QCOMPARE(s3String::toSlashes(QString()), QString());
}

QTEST_GUILESS_MAIN(tst_s3String)
#include "tst_s3string.moc"
