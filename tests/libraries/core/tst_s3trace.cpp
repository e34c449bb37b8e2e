// What a trace site costs when its flag isn't set, and what expandEnvironmentStrings() traces. The lines end here: this
// program has a writer of its own in place of the library's.

#include "allocationcount.h"
#include "s3string.h"
#include "s3trace.h"
#include "s3tracearg.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

QStringList lines;
int rendered = 0;

QString renderedItem()
{
    ++rendered;
    return s3TraceArg(u"x"_s, u"y"_s);
}

} // namespace

void s3WriteTrace(const QString &line)
{
    lines += line;
}

class tst_s3Trace : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void siteWithoutFlagsRendersNothing();
    void siteWithOtherFlagsRendersNothing();
    void siteWithItsFlagWritesOneLine();
    void siteWithoutFlagsAllocatesNothing();
    void siteWithOtherFlagsAllocatesNothing();
    void expansionIsTracedBeforeAndAfter();
    void expansionIsTracedAsItIs();
    void expansionWithoutItsFlagIsNotTraced();
    void expansionCanBeSwitchedOff();
};

void tst_s3Trace::cleanup()
{
    s3TestFlagsGUI::instance()->clear();
    lines.clear();
    rendered = 0;
}

void tst_s3Trace::siteWithoutFlagsRendersNothing()
{
    S3_TRACE(226, u"label()"_s + renderedItem());
    QCOMPARE(rendered, 0);
    QVERIFY(lines.isEmpty());
}

void tst_s3Trace::siteWithOtherFlagsRendersNothing()
{
    s3TestFlagsGUI::instance()->insert(55);
    S3_TRACE(226, u"label()"_s + renderedItem());
    QCOMPARE(rendered, 0);
    QVERIFY(lines.isEmpty());
}

void tst_s3Trace::siteWithItsFlagWritesOneLine()
{
    s3TestFlagsGUI::instance()->insert(226);
    S3_TRACE(226, u"label()"_s + renderedItem() + s3TraceArg(u"result"_s, true));
    QCOMPARE(lines, QStringList{u"label() x=\"y\" result=true"_s});
}

void tst_s3Trace::siteWithoutFlagsAllocatesNothing()
{
    if (!AllocationCount::isPossible())
        QSKIP("Allocations can't be counted on this system");
    const AllocationCount ofAString;
    const QString string(100, u'x');
    QVERIFY(ofAString.count() > 0);

    const AllocationCount ofSites;
    for (int i = 0; i < 1000; ++i)
        S3_TRACE(226, u"label()"_s + s3TraceArg(u"text"_s, string));
    QCOMPARE(ofSites.count(), 0);
}

void tst_s3Trace::siteWithOtherFlagsAllocatesNothing()
{
    if (!AllocationCount::isPossible())
        QSKIP("Allocations can't be counted on this system");
    s3TestFlagsGUI::instance()->insert(55);
    const QString string(100, u'x');
    const AllocationCount ofSites;
    for (int i = 0; i < 1000; ++i)
        S3_TRACE(226, u"label()"_s + s3TraceArg(u"text"_s, string));
    QCOMPARE(ofSites.count(), 0);
}

void tst_s3Trace::expansionIsTracedBeforeAndAfter()
{
    qputenv("LL_A", "alpha");
    s3TestFlagsGUI::instance()->insert(276);
    QString text = u"%LL_A%/x"_s;
    s3String::expandEnvironmentStrings(text);
    QCOMPARE(text, u"alpha/x"_s);
    QCOMPARE(lines, (QStringList{u"s3String::expandEnvironmentStrings(1) str='%LL_A%/x'"_s,
                                 u"s3String::expandEnvironmentStrings(2) str='alpha/x'"_s}));
}

void tst_s3Trace::expansionIsTracedAsItIs()
{
    s3TestFlagsGUI::instance()->insert(276);
    QString text = u"%1 '\n'"_s;
    s3String::expandEnvironmentStrings(text);
    QCOMPARE(lines.value(0), u"s3String::expandEnvironmentStrings(1) str='%1 '\n''"_s);
}

void tst_s3Trace::expansionWithoutItsFlagIsNotTraced()
{
    s3TestFlagsGUI::instance()->insert(226);
    QString text = u"x"_s;
    s3String::expandEnvironmentStrings(text);
    QVERIFY(lines.isEmpty());
}

void tst_s3Trace::expansionCanBeSwitchedOff()
{
    qputenv("LL_A", "alpha");
    s3TestFlagsGUI::instance()->insert(277);
    s3TestFlagsGUI::instance()->insert(276);
    QString text = u"%LL_A%${LL_A}"_s;
    s3String::expandEnvironmentStrings(text);
    QCOMPARE(text, u"%LL_A%${LL_A}"_s);
    QVERIFY(lines.isEmpty());
}

QTEST_APPLESS_MAIN(tst_s3Trace)
#include "tst_s3trace.moc"
