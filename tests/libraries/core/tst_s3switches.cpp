#include "s3features.h"
#include "s3testflags.h"

#include <QTest>

#include <type_traits>

using namespace Qt::Literals::StringLiterals;

class tst_s3Switches : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void noFlagIsSetAtFirst();
    void lookUpsLeaveTheSetNull();
    void insertedFlag();
    void flagThatNobodyAsksFor();
    void featureNamesAreExact();
    void onlyThePresenceOfAFeatureCounts();
    void featureMapsAreTwo();
    void instancesStay();
};

static_assert(std::has_virtual_destructor_v<s3TestFlagsGUI>);
static_assert(std::has_virtual_destructor_v<s3DisabledFeatures>);
static_assert(std::is_base_of_v<QSet<qint32>, s3TestFlags>);
static_assert(std::is_base_of_v<QMultiMap<QString, bool>, s3Features>);

namespace {

// As the sites of static initialisers do it.
const bool flagBeforeMain = s3HasTestFlag(55);
const bool featureBeforeMain = s3ExperimentalFeatures::instance()->contains(u"forceFallbackDictionary"_s);

} // namespace

void tst_s3Switches::cleanup()
{
    s3TestFlagsGUI::instance()->clear();
    s3DisabledFeatures::instance()->clear();
    s3ExperimentalFeatures::instance()->clear();
}

void tst_s3Switches::noFlagIsSetAtFirst()
{
    QVERIFY(!flagBeforeMain);
    QVERIFY(!featureBeforeMain);
    QVERIFY(s3TestFlagsGUI::instance()->isEmpty());
    for (const int flag : {0, -1, 55, 226, 460})
        QVERIFY(!s3HasTestFlag(flag));
}

void tst_s3Switches::lookUpsLeaveTheSetNull()
{
    QVERIFY(!s3TestFlagsGUI::instance()->contains(55));
    QCOMPARE(s3TestFlagsGUI::instance()->capacity(), 0);
}

void tst_s3Switches::insertedFlag()
{
    s3TestFlagsGUI::instance()->insert(226);
    QVERIFY(s3HasTestFlag(226));
    QVERIFY(!s3HasTestFlag(227));
    QVERIFY(!s3TestFlagsGUI::instance()->isEmpty());
}

void tst_s3Switches::flagThatNobodyAsksFor()
{
    s3TestFlagsGUI::instance()->insert(99999);
    QVERIFY(s3HasTestFlag(99999));
    QVERIFY(!s3HasTestFlag(55));
}

void tst_s3Switches::featureNamesAreExact()
{
    s3DisabledFeatures::instance()->insert(u"useFallbackDictionary"_s, true);
    QVERIFY(s3DisabledFeatures::instance()->contains(u"useFallbackDictionary"_s));
    QVERIFY(!s3DisabledFeatures::instance()->contains(u"usefallbackdictionary"_s));
    QVERIFY(!s3DisabledFeatures::instance()->contains(u"useFallbackDictionary "_s));
}

void tst_s3Switches::onlyThePresenceOfAFeatureCounts()
{
    s3DisabledFeatures::instance()->insert(u"feature"_s, false);
    QVERIFY(s3DisabledFeatures::instance()->contains(u"feature"_s));
}

void tst_s3Switches::featureMapsAreTwo()
{
    s3DisabledFeatures::instance()->insert(u"feature"_s, true);
    QVERIFY(!s3ExperimentalFeatures::instance()->contains(u"feature"_s));
}

void tst_s3Switches::instancesStay()
{
    QCOMPARE(s3TestFlagsGUI::instance(), s3TestFlagsGUI::instance());
    QCOMPARE(s3DisabledFeatures::instance(), s3DisabledFeatures::instance());
    QCOMPARE(s3ExperimentalFeatures::instance(), s3ExperimentalFeatures::instance());
}

QTEST_APPLESS_MAIN(tst_s3Switches)
#include "tst_s3switches.moc"
