#include "dictionarybuilder.h"
#include "s3dictionaries.h"
#include "s3string.h"
#include "workingdirectory.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

const WorkingDirectory directory;

} // namespace

class tst_s3MessageReferences : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void expandMessageReferences_data();
    void expandMessageReferences();
    void symbolsStandInParentheses();
    void textIsNotScannedAgain();
    void openingInFrontOfAReferenceStays();
    void unbalancedReferenceEndsTheScan();
};

// Most texts aren't in the dictionary, so that they are the placeholders of their numbers.
void tst_s3MessageReferences::initTestCase()
{
    DictionaryBuilder messages;
    messages.setText(18, -1, u"acht"_s).setSymbol(18, "EIGHT");
    messages.setText(19, -1, u"erst Xmsg(18), dann Xmsg(18,\"x\")"_s).setSymbol(19, "Xmsg(18)");
    messages.setText(20, -1, u"Xmsg("_s);
    directory.write(u"data/msg.dat.0"_s, messages.build());
    QString error;
    QVERIFY2(openDictionaries(error), qPrintable(error));
}

void tst_s3MessageReferences::expandMessageReferences_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("expanded");

    QTest::newRow("number") << u"a Xmsg(7) b"_s << 1 << u"a *** 7 *** b"_s;
    QTest::newRow("number and text") << u"Xmsg(7,\"text\")"_s << 1 << u"*** 7 ***"_s;
    QTest::newRow("several") << u"Xmsg(1)Xmsg(2,\"b\")-Xmsg(3)"_s << 3 << u"*** 1 ****** 2 ***-*** 3 ***"_s;
    QTest::newRow("negative number") << u"Xmsg(-77)"_s << 1 << u"*** -77 ***"_s;
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
    QString text = u"a Xmsg(18) Xmsg(-18,\"b\") Xmsg(99)"_s;
    QCOMPARE(s3String::expandMessageReferences(text, false), 3);
    QCOMPARE(text, u"a (EIGHT) (EIGHT) ()"_s);
}

void tst_s3MessageReferences::textIsNotScannedAgain()
{
    QString text = u"Xmsg(18) Xmsg(19) Xmsg(20)18)"_s;
    QCOMPARE(s3String::expandMessageReferences(text, true), 3);
    QCOMPARE(text, u"acht erst Xmsg(18), dann Xmsg(18,\"x\") Xmsg(18)"_s);

    text = u"Xmsg(19)"_s;
    QCOMPARE(s3String::expandMessageReferences(text, false), 1);
    QCOMPARE(text, u"(Xmsg(18))"_s);
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
