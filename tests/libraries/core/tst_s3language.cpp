#include "s3language.h"
#include "s3testflags.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QLocale>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString order = u"DEFSIPRUCT123AOBNMXYLWGQHZKVJ987"_s;

// As the dictionaries do it.
const qint32 americanBeforeMain = indexOfLetter(u"A"_s);
const QString localeBeforeMain = currentLocaleName();
const QString individualBeforeMain = individualName(u"1"_s);

} // namespace

class tst_s3Language : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void worksBeforeMain();
    void orderOfLetters();
    void indexOfLetter_data();
    void indexOfLetter();
    void letterOutsideTheTableIsEmpty();
    void table_data();
    void table();
    void isoCodeOfNoLanguage();
    void setLanguageTakesLowerCase();
    void setLanguageRefuses_data();
    void setLanguageRefuses();
    void individualLanguageWithoutCode();
    void individualLanguageWithCode();
    void individualCodeStaysWhenNoneIsGiven();
    void codeForLanguageThatIsNotIndividualIsIgnored();
    void rightToLeftLanguages();
    void individualLanguageIsNeverRightToLeft();
    void flagMakesAnyLanguageRightToLeft();
    void individualNamesAndCodes();
    void individualSettersRefuse_data();
    void individualSettersRefuse();
    void dictionarySubdirectory_data();
    void dictionarySubdirectory();
    void currentDictionarySubdirectoryIsThatOfTheCurrentLetter();
    void acceptLanguage_data();
    void acceptLanguage();
};

void tst_s3Language::init()
{
    s3TestFlagsGUI::instance()->clear();
    setForceSubdirectory(false);
    QVERIFY(setLanguage(u"D"_s, u""_s));
}

void tst_s3Language::worksBeforeMain()
{
    QCOMPARE(americanBeforeMain, 13);
    QCOMPARE(localeBeforeMain, u"de_DE"_s);
    QCOMPARE(individualBeforeMain, u"Individ.1"_s);
}

void tst_s3Language::orderOfLetters()
{
    QCOMPARE(languageCount(), 32);
    QCOMPARE(languageLetters().size(), 32);
    QCOMPARE(languageLetters().join(QString()), order);
}

void tst_s3Language::indexOfLetter_data()
{
    QTest::addColumn<QString>("letter");
    QTest::addColumn<qint32>("index");
    QTest::newRow("place in the order, not in the alphabet") << u"A"_s << 13;
    QTest::newRow("first") << u"D"_s << 0;
    QTest::newRow("last") << u"7"_s << 31;
    QTest::newRow("lower case") << u"j"_s << 28;
    QTest::newRow("unknown") << u"?"_s << -1;
    QTest::newRow("two letters") << u"DE"_s << -1;
    QTest::newRow("empty") << u""_s << -1;
}

void tst_s3Language::indexOfLetter()
{
    QFETCH(const QString, letter);
    QTEST(::indexOfLetter(letter), "index");
}

void tst_s3Language::letterOutsideTheTableIsEmpty()
{
    QCOMPARE(letterAt(31), u"7"_s);
    QCOMPARE(letterAt(32), u""_s);
    QCOMPARE(letterAt(-1), u""_s);
    QCOMPARE(isoCode(32), u""_s);
    QVERIFY(!isIndividual(32));
}

void tst_s3Language::table_data()
{
    QTest::addColumn<QString>("isoCode");
    QTest::addColumn<QString>("localeName");
    QTest::addColumn<qint32>("writingSystem");
    QTest::addColumn<QString>("writingSystemName");
    QTest::addColumn<QString>("charset");
    QTest::addColumn<qint32>("charsetNumber");

    const auto row = [](const char *letter, const QString &isoCode, const QString &localeName) -> QTestData & {
        return QTest::newRow(letter) << isoCode << localeName;
    };
    const auto latin = [](QTestData &data) {
        data << 1 << u"Latin"_s << u"ANSI_CHARSET"_s << 0;
    };
    const auto eastern = [](QTestData &data) {
        data << 1 << u"Latin"_s << u"EASTEUROPE_CHARSET"_s << 238;
    };
    const auto cyrillic = [](QTestData &data) {
        data << 3 << u"Cyrillic"_s << u"RUSSIAN_CHARSET"_s << 204;
    };
    const auto arabic = [](QTestData &data) {
        data << 6 << u"Arabic"_s << u"ARABIC_CHARSET"_s << 178;
    };
    const auto none = [](QTestData &data) {
        data << 0 << u""_s << u""_s << 1;
    };

    latin(row("D", u"de"_s, u"de_DE"_s));
    latin(row("E", u"en"_s, u"en_GB"_s));
    latin(row("F", u"fr"_s, u"fr_FR"_s));
    latin(row("S", u"es"_s, u"es_ES"_s));
    latin(row("I", u"it"_s, u"it_IT"_s));
    eastern(row("P", u"pl"_s, u"pl_PL"_s));
    cyrillic(row("R", u"ru"_s, u"ru_RU"_s));
    eastern(row("U", u"hu"_s, u"hu_HU"_s));
    eastern(row("C", u"cs"_s, u"cs_CZ"_s));
    row("T", u"tr"_s, u"tr_TR"_s) << 1 << u"Latin"_s << u"TURKISH_CHARSET"_s << 162;
    none(row("1", u"1"_s, u"1"_s));
    none(row("2", u"2"_s, u"2"_s));
    none(row("3", u"3"_s, u"3"_s));
    latin(row("A", u"en-US"_s, u"en_US"_s));
    eastern(row("O", u"ro"_s, u"ro_RO"_s));
    latin(row("B", u"id"_s, u"id_ID"_s));
    latin(row("N", u"nl"_s, u"nl_NL"_s));
    cyrillic(row("M", u"mk"_s, u"mk_MK"_s));
    cyrillic(row("X", u"bg"_s, u"bg_BG"_s));
    cyrillic(row("Y", u"sr"_s, u"sr_RS"_s));
    eastern(row("L", u"sl"_s, u"sl_SI"_s));
    eastern(row("W", u"sk"_s, u"sk_SK"_s));
    latin(row("G", u"pt"_s, u"pt_PT"_s));
    row("Q", u"zh-CN"_s, u"zh_CN"_s) << 25 << u"SimplifiedChinese"_s << u"GB2312_CHARSET"_s << 134;
    row("H", u"zh-TW"_s, u"zh_TW"_s) << 26 << u"TraditionalChinese"_s << u"CHINESEBIG5_CHARSET"_s << 136;
    row("Z", u"el"_s, u"el_GR"_s) << 2 << u"Greek"_s << u"GREEK_CHARSET"_s << 161;
    row("K", u"th"_s, u"th_TH"_s) << 19 << u"Thai"_s << u"THAI_CHARSET"_s << 222;
    arabic(row("V", u"ar"_s, u"ar_EG"_s));
    arabic(row("J", u"fa"_s, u"fa_IR"_s));
    row("9", u"vi"_s, u"vi_VN"_s) << 29 << u"Vietnamese"_s << u"VIETNAMESE_CHARSET"_s << 163;
    arabic(row("8", u"ur"_s, u"ur_PK"_s));
    row("7", u"ja"_s, u"ja_JP"_s) << 27 << u"Japanese"_s << u"SHIFTJIS_CHARSET"_s << 128;
}

void tst_s3Language::table()
{
    const QString letter = QString::fromLatin1(QTest::currentDataTag());
    QFETCH(const QString, localeName);
    QVERIFY(setLanguage(letter, u""_s));
    QCOMPARE(currentLetter(), letter);
    QCOMPARE(currentLanguageIndex(), qint32(order.indexOf(letter)));
    QTEST(currentIsoCode(), "isoCode");
    QTEST(isoCode(letter), "isoCode");
    QTEST(isoCode(letter.toLower()), "isoCode");
    QTEST(isoCode(qint32(order.indexOf(letter))), "isoCode");
    QCOMPARE(currentLocaleName(), localeName);
    QCOMPARE(QLocale().name(), localeName.size() == 1 ? u"de_DE"_s : localeName);
    QTEST(writingSystem(), "writingSystem");
    QTEST(writingSystemName(), "writingSystemName");
    QTEST(charsetName(), "charset");
    QTEST(charsetNumber(), "charsetNumber");
    QCOMPARE(isIndividual(letter), letter == u"1"_s || letter == u"2"_s || letter == u"3"_s);
    QCOMPARE(isCurrentIndividual(), isIndividual(letter));
    QCOMPARE(isIndividual(currentLanguageIndex()), isIndividual(letter));
}

void tst_s3Language::isoCodeOfNoLanguage()
{
    QCOMPARE(isoCode(u"?"_s), u""_s);
    QCOMPARE(isoCode(u""_s), u""_s);
    QCOMPARE(isoCode(-1), u""_s);
}

void tst_s3Language::setLanguageTakesLowerCase()
{
    QVERIFY(setLanguage(u"e"_s, u""_s));
    QCOMPARE(currentLetter(), u"E"_s);
    QCOMPARE(QLocale().name(), u"en_GB"_s);
}

void tst_s3Language::setLanguageRefuses_data()
{
    QTest::addColumn<QString>("letter");
    QTest::newRow("unknown letter") << u"?"_s;
    QTest::newRow("nothing") << u""_s;
    QTest::newRow("ISO code") << u"en"_s;
}

void tst_s3Language::setLanguageRefuses()
{
    QFETCH(const QString, letter);
    QVERIFY(setLanguage(u"V"_s, u""_s));
    QVERIFY(!setLanguage(letter, u"pt"_s));
    QCOMPARE(currentLetter(), u"V"_s);
    QCOMPARE(QLocale().name(), u"ar_EG"_s);
    QCOMPARE(QGuiApplication::layoutDirection(), Qt::RightToLeft);
}

void tst_s3Language::individualLanguageWithoutCode()
{
    QVERIFY(setLanguage(u"V"_s, u""_s));
    QVERIFY(setLanguage(u"1"_s, u""_s));
    QCOMPARE(currentIsoCode(), u"1"_s);
    QCOMPARE(currentLocaleName(), u"1"_s);
    QCOMPARE(::acceptLanguage(), u"1,en-US;q=0.9,en;q=0.8"_s);
    QCOMPARE(QLocale().name(), u"ar_EG"_s);
    QCOMPARE(QGuiApplication::layoutDirection(), Qt::LeftToRight);
}

void tst_s3Language::individualLanguageWithCode()
{
    QVERIFY(setLanguage(u"1"_s, u"pt"_s));
    QCOMPARE(currentIsoCode(), u"pt"_s);
    QCOMPARE(currentLocaleName(), u"pt_PT"_s);
    QCOMPARE(QLocale().name(), u"pt_PT"_s);
    // The exceptions are by code, whichever language it belongs to.
    QVERIFY(setLanguage(u"1"_s, u"cs"_s));
    QCOMPARE(QLocale().name(), u"cs_CZ"_s);
    QVERIFY(setLanguage(u"1"_s, u"pt-BR"_s));
    QCOMPARE(currentLocaleName(), u"pt_BR"_s);
}

void tst_s3Language::individualCodeStaysWhenNoneIsGiven()
{
    QVERIFY(setLanguage(u"2"_s, u"fi"_s));
    QVERIFY(setLanguage(u"D"_s, u""_s));
    QVERIFY(setLanguage(u"2"_s, u""_s));
    QCOMPARE(currentIsoCode(), u"fi"_s);
    QCOMPARE(QLocale().name(), u"fi_FI"_s);
}

void tst_s3Language::codeForLanguageThatIsNotIndividualIsIgnored()
{
    QVERIFY(setLanguage(u"E"_s, u"pt"_s));
    QCOMPARE(currentIsoCode(), u"en"_s);
    QCOMPARE(individualIsoCode(u"E"_s), u""_s);
}

void tst_s3Language::rightToLeftLanguages()
{
    QString rightToLeft;
    for (const QString &letter : languageLetters()) {
        QVERIFY(setLanguage(letter, u""_s));
        if (isRightToLeft())
            rightToLeft += letter;
        QCOMPARE(QGuiApplication::layoutDirection(), isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    }
    QCOMPARE(rightToLeft, u"VJ8"_s);
}

void tst_s3Language::individualLanguageIsNeverRightToLeft()
{
    QVERIFY(setLanguage(u"1"_s, u"ar"_s));
    QCOMPARE(QLocale().name(), u"ar_EG"_s);
    QCOMPARE(writingSystem(), qint32(QFontDatabase::Any));
    QCOMPARE(charsetNumber(), 1);
    QVERIFY(!isRightToLeft());
    QCOMPARE(QGuiApplication::layoutDirection(), Qt::LeftToRight);
}

void tst_s3Language::flagMakesAnyLanguageRightToLeft()
{
    s3TestFlagsGUI::instance()->insert(229);
    QVERIFY(isRightToLeft());
    QCOMPARE(QGuiApplication::layoutDirection(), Qt::LeftToRight);
    QVERIFY(setLanguage(u"1"_s, u""_s));
    QCOMPARE(QGuiApplication::layoutDirection(), Qt::RightToLeft);
    QVERIFY(setLanguage(u"A"_s, u""_s));
    QCOMPARE(QGuiApplication::layoutDirection(), Qt::RightToLeft);
    QCOMPARE(writingSystem(), qint32(QFontDatabase::Latin));
}

void tst_s3Language::individualNamesAndCodes()
{
    QCOMPARE(individualName(u"2"_s), u"Individ.2"_s);
    QCOMPARE(individualName(u"3"_s), u"Individ.3"_s);
    QCOMPARE(individualIsoCode(u"3"_s), u"3"_s);
    QVERIFY(setIndividualName(u"3"_s, u"Suomi"_s));
    QVERIFY(setIndividualIsoCode(u"3"_s, u"fi"_s));
    QCOMPARE(individualName(u"3"_s), u"Suomi"_s);
    QCOMPARE(individualIsoCode(u"3"_s), u"fi"_s);
    QCOMPARE(isoCode(u"3"_s), u"fi"_s);
    QCOMPARE(individualName(u"D"_s), u""_s);
    QCOMPARE(individualIsoCode(u"D"_s), u""_s);
    QCOMPARE(individualIsoCode(u"?"_s), u""_s);
}

void tst_s3Language::individualSettersRefuse_data()
{
    QTest::addColumn<QString>("letter");
    QTest::addColumn<QString>("value");
    QTest::newRow("empty value") << u"2"_s << u""_s;
    QTest::newRow("language that isn't individual") << u"D"_s << u"x"_s;
    QTest::newRow("unknown letter") << u"4"_s << u"x"_s;
    QTest::newRow("no letter") << u""_s << u"x"_s;
}

void tst_s3Language::individualSettersRefuse()
{
    QFETCH(const QString, letter);
    QFETCH(const QString, value);
    const QString name = individualName(letter);
    const QString code = individualIsoCode(letter);
    QVERIFY(!setIndividualName(letter, value));
    QVERIFY(!setIndividualIsoCode(letter, value));
    QCOMPARE(individualName(letter), name);
    QCOMPARE(individualIsoCode(letter), code);
    QVERIFY(!isIndividual(u"4"_s));
}

void tst_s3Language::dictionarySubdirectory_data()
{
    QTest::addColumn<QString>("letter");
    QTest::addColumn<bool>("force");
    QTest::addColumn<QString>("expected");
    QTest::newRow("German") << u"D"_s << false << u""_s;
    QTest::newRow("German in lower case isn't exact") << u"d"_s << false << u"d/"_s;
    QTest::newRow("forced German") << u"D"_s << true << u"D/"_s;
    QTest::newRow("other") << u"E"_s << false << u"E/"_s;
    QTest::newRow("forced other") << u"E"_s << true << u"E/"_s;
}

void tst_s3Language::dictionarySubdirectory()
{
    QFETCH(const QString, letter);
    QFETCH(const bool, force);
    QVERIFY(!forceSubdirectory());
    setForceSubdirectory(force);
    QCOMPARE(forceSubdirectory(), force);
    QTEST(::dictionarySubdirectory(letter), "expected");
}

void tst_s3Language::currentDictionarySubdirectoryIsThatOfTheCurrentLetter()
{
    QCOMPARE(currentDictionarySubdirectory(), u""_s);
    setForceSubdirectory(true);
    QCOMPARE(currentDictionarySubdirectory(), u"D/"_s);
    QVERIFY(setLanguage(u"e"_s, u""_s));
    QCOMPARE(currentDictionarySubdirectory(), u"E/"_s);
}

void tst_s3Language::acceptLanguage_data()
{
    QTest::addColumn<QString>("letter");
    QTest::addColumn<QString>("expected");
    QTest::newRow("German") << u"D"_s << u"de,en-US;q=0.9,en;q=0.8"_s;
    QTest::newRow("American") << u"A"_s << u"en-US,en;q=0.9"_s;
    QTest::newRow("English") << u"E"_s << u"en,en-US;q=0.9"_s;
    QTest::newRow("Chinese") << u"H"_s << u"zh-TW,en-US;q=0.9,en;q=0.8"_s;
}

void tst_s3Language::acceptLanguage()
{
    QFETCH(const QString, letter);
    QVERIFY(setLanguage(letter, u""_s));
    QTEST(::acceptLanguage(), "expected");
}

QTEST_MAIN(tst_s3Language)
#include "tst_s3language.moc"
