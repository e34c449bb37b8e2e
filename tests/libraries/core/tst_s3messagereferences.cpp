#include "s3dictionaries.h"
#include "s3string.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

class tst_s3MessageReferences : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void expandMessageReferences_data();
    void expandMessageReferences();
    void symbolsStandInParentheses();
    void openingInFrontOfAReferenceStays();
    void unbalancedReferenceEndsTheScan();
};

// No dictionary is open, so that each text is the placeholder of its number.

void tst_s3MessageReferences::expandMessageReferences_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("expanded");

    QTest::newRow("number") << u"a Xmsg(7) b"_s << 1 << u"a *** 7 *** b"_s;
    QTest::newRow("number and text") << u"Xmsg(7,\"text\")"_s << 1 << u"*** 7 ***"_s;
    QTest::newRow("several") << u"Xmsg(1)Xmsg(2,\"b\")-Xmsg(3)"_s << 3 << u"*** 1 ****** 2 ***-*** 3 ***"_s;
    QTest::newRow("negative number") << u"Xmsg(-7)"_s << 1 << u"*** -7 ***"_s;
    QTest::newRow("blanks around the number") << u"Xmsg( 7 , \"text\")"_s << 1 << u"*** 7 ***"_s;
    QTest::newRow("parenthesis in the quoted text") << u"Xmsg(7,\"a (b) c\") d"_s << 1 << u"*** 7 *** d"_s;
    QTest::newRow("quotation mark behind the parenthesis") << u"Xmsg(7,a) \"b\")"_s << 1 << u"*** 7 *** \"b\")"_s;
    QTest::newRow("comma behind the parenthesis") << u"Xmsg(7), \"b\")"_s << 1 << u"*** 7 ***, \"b\")"_s;
    QTest::newRow("no pair of mark and parenthesis") << u"Xmsg(7,\"a) b"_s << 1 << u"*** 7 *** b"_s;
    QTest::newRow("blank between mark and parenthesis") << u"Xmsg(7,\"a\" ) Xmsg(8,\"b\") c"_s << 1 << u"*** 7 *** c"_s;
    QTest::newRow("zero stays") << u"Xmsg(0) Xmsg(1)"_s << 1 << u"Xmsg(0) *** 1 ***"_s;
    QTest::newRow("no number stays") << u"Xmsg(x,\"a)\") Xmsg() Xmsg(1)"_s << 1 << u"Xmsg(x,\"a)\") Xmsg() *** 1 ***"_s;
    QTest::newRow("search goes on behind what stays") << u"Xmsg(0,\"Xmsg(1)\")"_s << 0 << u"Xmsg(0,\"Xmsg(1)\")"_s;
    QTest::newRow("too large a number stays") << u"Xmsg(99999999999)"_s << 0 << u"Xmsg(99999999999)"_s;
    QTest::newRow("case differs") << u"xmsg(7) XMSG(7)"_s << 0 << u"xmsg(7) XMSG(7)"_s;
    QTest::newRow("none") << u"a (b)"_s << 0 << u"a (b)"_s;
    QTest::newRow("empty") << u""_s << 0 << u""_s;
}

void tst_s3MessageReferences::expandMessageReferences()
{
    QFETCH(QString, text);
    QTEST(s3String::expandMessageReferences(text, true), "count");
    QTEST(text, "expanded");
}

void tst_s3MessageReferences::symbolsStandInParentheses()
{
    QString text = u"a Xmsg(7) Xmsg(8,\"b\")"_s;
    QCOMPARE(s3String::expandMessageReferences(text, false), 2);
    QCOMPARE(text, u"a (%1) (%2)"_s.arg(messageSymbol(7), messageSymbol(8)));
}

void tst_s3MessageReferences::openingInFrontOfAReferenceStays()
{
    QString text = u"Xmsg(Xmsg(7)"_s;
    QCOMPARE(s3String::expandMessageReferences(text, true), 0);
    QCOMPARE(text, u"Xmsg(Xmsg(7)"_s);
}

void tst_s3MessageReferences::unbalancedReferenceEndsTheScan()
{
    QString text = u"Xmsg(1) Xmsg(2"_s;
    QCOMPARE(s3String::expandMessageReferences(text, true), 1);
    QCOMPARE(text, u"*** 1 *** Xmsg(2"_s);
}

QTEST_APPLESS_MAIN(tst_s3MessageReferences)
#include "tst_s3messagereferences.moc"
