#include "s3version.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

class tst_s3Version : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void defaultIsInvalid();
    void fourNumbers();
    void negativeThirdForcesFourthToMinusOne();
    void dottedText_data();
    void dottedText();
    void isValid_data();
    void isValid();
    void toStringOfInvalidIsEmpty();
    void compare_data();
    void compare();
    void fromVexaVersion_data();
    void fromVexaVersion();
    void toVexaVersion_data();
    void toVexaVersion();
    void twentyCharactersAreCutAtTwelve();
    void isAtLeast_data();
    void isAtLeast();
    void clientVersion();
    void clientVersionBanner();
    void emptyBannerStartsFromClientVersion();
    void bannerOfLongTextIsNotPadded();
};

void tst_s3Version::defaultIsInvalid()
{
    const s3Version version;
    QCOMPARE(version.major, 0);
    QCOMPARE(version.minor, 0);
    QCOMPARE(version.third, -1);
    QCOMPARE(version.fourth, -1);
    QVERIFY(!version.isValid());
}

void tst_s3Version::fourNumbers()
{
    const s3Version version(1, 2, 3, 4);
    QCOMPARE(version.major, 1);
    QCOMPARE(version.minor, 2);
    QCOMPARE(version.third, 3);
    QCOMPARE(version.fourth, 4);
}

void tst_s3Version::negativeThirdForcesFourthToMinusOne()
{
    QCOMPARE(s3Version(1, 2, -1, 3).fourth, -1);
}

void tst_s3Version::dottedText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<int>>("numbers");

    QTest::newRow("empty") << u""_s << QList<int>{0, 0, -1, -1};
    QTest::newRow("one") << u"7"_s << QList<int>{7, 0, -1, -1};
    QTest::newRow("three") << u"10.0.22631"_s << QList<int>{10, 0, 22631, -1};
    QTest::newRow("empty part keeps its place") << u"5..3"_s << QList<int>{5, 0, 3, -1};
    QTest::newRow("part that is no number") << u"5.x.3"_s << QList<int>{5, 0, 3, -1};
    QTest::newRow("empty third part is 0") << u"5.1."_s << QList<int>{5, 1, 0, -1};
    QTest::newRow("further parts are ignored") << u"16.0.13231.20126.9"_s << QList<int>{16, 0, 13231, 20126};
    QTest::newRow("hexadecimal is no number") << u"0x10.1"_s << QList<int>{0, 1, -1, -1};
    QTest::newRow("over 32 bits is no number") << u"1.2.99999999999"_s << QList<int>{1, 2, 0, -1};
}

void tst_s3Version::dottedText()
{
    QFETCH(const QString, text);
    const s3Version version(text);
    QTEST((QList<int>{version.major, version.minor, version.third, version.fourth}), "numbers");
}

void tst_s3Version::isValid_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("valid");

    QTest::newRow("empty") << u""_s << false;
    QTest::newRow("0.0") << u"0.0"_s << false;
    QTest::newRow("0.0.0") << u"0.0.0"_s << true;
    QTest::newRow("0.1") << u"0.1"_s << true;
    QTest::newRow("0.0.0.0") << u"0.0.0.0"_s << true;
    QTest::newRow("negative") << u"-1.0.0"_s << false;
    QTest::newRow("no version at all") << u"Outlook"_s << false;
}

void tst_s3Version::isValid()
{
    QFETCH(const QString, text);
    QTEST(s3Version(text).isValid(), "valid");
}

void tst_s3Version::toStringOfInvalidIsEmpty()
{
    QCOMPARE(s3Version(u""_s).toString(), u""_s);
    QCOMPARE(s3Version(u""_s).toVexaVersion(), u""_s);
    QVERIFY(s3Version(u""_s).toVexaVersion().isNull());
    QCOMPARE(s3Version(u"16.0.13231.20126"_s).toString(), u"16.0.13231.20126"_s);
    QCOMPARE(s3Version(u"5..3"_s).toString(), u"5.0.3"_s);
}

void tst_s3Version::compare_data()
{
    QTest::addColumn<s3Version>("left");
    QTest::addColumn<s3Version>("right");
    QTest::addColumn<bool>("atLeast");
    QTest::addColumn<bool>("equal");

    const s3Version limit(16, 0, 0, 13231);
    QTest::newRow("same") << s3Version(u"16.0.0.13231"_s) << limit << true << true;
    QTest::newRow("one lower") << s3Version(u"16.0.0.13230"_s) << limit << false << false;
    QTest::newRow("first difference decides") << s3Version(u"15.9.9.99999"_s) << limit << false << false;
    QTest::newRow("higher third") << s3Version(u"16.0.1.0"_s) << limit << true << false;
    QTest::newRow("a prefix is smaller") << s3Version(2101, 8, -1, -1) << s3Version(2101, 8, 1, -1) << false << false;
    QTest::newRow("longer is greater") << s3Version(2101, 8, 0, -1) << s3Version(2101, 8, -1, -1) << true << false;
}

void tst_s3Version::compare()
{
    QFETCH(const s3Version, left);
    QFETCH(const s3Version, right);
    QTEST(left >= right, "atLeast");
    QTEST(left == right, "equal");
}

void tst_s3Version::fromVexaVersion_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<int>>("numbers");

    QTest::newRow("whole") << u"2016r4n07p03"_s << QList<int>{2016, 4, 7, 3};
    QTest::newRow("short") << u"2016r4"_s << QList<int>{2016, 4, -1, -1};
    QTest::newRow("padded") << u"2016r4------"_s << QList<int>{2016, 4, -1, -1};
    QTest::newRow("year alone") << u"2016"_s << QList<int>{2016, 0, -1, -1};
    QTest::newRow("differently laid out keeps its letter") << u"16r4n07"_s << QList<int>{0, 0, -1, -1};
    QTest::newRow("client version, padded") << u"5.14.0------"_s << QList<int>{5, 14, 0, -1};
    QTest::newRow("whole banner") << u"5.14.0------=----------------2"_s << QList<int>{5, 14, 0, -1};
}

void tst_s3Version::fromVexaVersion()
{
    QFETCH(const QString, text);
    const s3Version version = s3Version::fromVexaVersion(text);
    QTEST((QList<int>{version.major, version.minor, version.third, version.fourth}), "numbers");
}

void tst_s3Version::toVexaVersion_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("printed");

    QTest::newRow("major and minor") << u"2016r4"_s << u"2016r4"_s;
    QTest::newRow("a third of 0 is printed") << u"2016r4n00"_s << u"2016r4n00"_s;
    QTest::newRow("a fourth of 0 is dropped") << u"2016r4n07p00"_s << u"2016r4n07"_s;
    QTest::newRow("whole") << u"2016r4n07p03"_s << u"2016r4n07p03"_s;
}

void tst_s3Version::toVexaVersion()
{
    QFETCH(const QString, text);
    QTEST(s3Version::fromVexaVersion(text).toVexaVersion(), "printed");
}

void tst_s3Version::twentyCharactersAreCutAtTwelve()
{
    QCOMPARE(s3Version::fromVexaVersion(u"2016r4n07p0399999999"_s), s3Version(2016, 4, 7, 3));
    // The padding goes after the cut: what stands behind it can't keep it there.
    QCOMPARE(s3Version::fromVexaVersion(u"2016r4------99999999"_s), s3Version(2016, 4, -1, -1));
}

void tst_s3Version::isAtLeast_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("v2100");
    QTest::addColumn<bool>("v2101r8n01");
    QTest::addColumn<bool>("v2200");

    QTest::newRow("2016r4") << u"2016r4"_s << false << false << false;
    QTest::newRow("2100r0") << u"2100r0"_s << true << false << false;
    QTest::newRow("2101r8 is shorter than its limit") << u"2101r8"_s << true << false << false;
    QTest::newRow("2101r8n01") << u"2101r8n01"_s << true << true << false;
    QTest::newRow("2200r0") << u"2200r0"_s << true << true << true;
}

void tst_s3Version::isAtLeast()
{
    QFETCH(const QString, text);
    QTEST(s3Version::isAtLeast2100(text), "v2100");
    QTEST(s3Version::isAtLeast2101r8n01(text), "v2101r8n01");
    QTEST(s3Version::isAtLeast2200(text), "v2200");
}

void tst_s3Version::clientVersion()
{
    QCOMPARE(s3ClientVersion(), u"5.14.0"_s);
}

void tst_s3Version::clientVersionBanner()
{
    QCOMPARE(s3ClientVersionBanner(), u"5.14.0------=----------------2"_s);
    QCOMPARE(s3ClientVersionBanner().size(), 30);
}

void tst_s3Version::emptyBannerStartsFromClientVersion()
{
    s3SetClientVersionBanner(u"6.0"_s);
    QCOMPARE(s3ClientVersionBanner(), u"6.0---------=----------------2"_s);
    s3SetClientVersionBanner(u""_s);
    QCOMPARE(s3ClientVersionBanner(), u"5.14.0------=----------------2"_s);
}

void tst_s3Version::bannerOfLongTextIsNotPadded()
{
    s3SetClientVersionBanner(u"2016r4n07p0301"_s);
    QCOMPARE(s3ClientVersionBanner(), u"2016r4n07p0301=----------------2"_s);
    s3SetClientVersionBanner(u""_s);
}

QTEST_GUILESS_MAIN(tst_s3Version)
#include "tst_s3version.moc"
