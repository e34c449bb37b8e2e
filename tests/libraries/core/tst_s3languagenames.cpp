// The words for languages, with a message dictionary that has some.

#include "dictionarybuilder.h"
#include "s3dictionaries.h"
#include "s3language.h"
#include "workingdirectory.h"

#include <QLocale>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

const WorkingDirectory directory;

// What the table makes of dictionaries that aren't open.
const QString nameBeforeMain = displayName(u"E"_s);
const QString letterBeforeMain = letterForText(u"Deutsch"_s);
const QString letterOfCodeBeforeMain = letterForText(u"ZH-tw"_s);

/// The names of some languages in some languages, and the words for yes and no.
QByteArray messages()
{
    DictionaryBuilder builder;
    const auto name = [&builder](const QString &letter, const QString &german) -> DictionaryBuilder & {
        return builder.setText(950 + indexOfLetter(letter), -1, german);
    };
    const auto in = [](const QString &letter) {
        return indexOfLetter(letter);
    };
    name(u"D"_s, u"Deutsch"_s)
        .setText(950, in(u"E"_s), u"German"_s)
        .setText(950, in(u"F"_s), u"allemand"_s)
        .setText(950, in(u"7"_s), u"ドイツ語"_s);
    name(u"E"_s, u"Englisch"_s).setText(951, in(u"E"_s), u"English"_s);
    // A name that German has too, in another language.
    name(u"F"_s, u"Französisch"_s).setText(952, in(u"T"_s), u"allemand"_s);
    name(u"I"_s, u"Italienisch"_s).setText(954, in(u"I"_s), u"vexa ERP"_s);
    name(u"7"_s, u"Japanisch"_s);
    builder.setText(531, -1, u"Ja"_s).setText(531, in(u"E"_s), u"Yes"_s);
    builder.setText(532, -1, u"Nein"_s).setText(532, in(u"E"_s), u"No"_s);
    return builder.build();
}

} // namespace

class tst_s3LanguageNames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void workBeforeMain();
    void letterForText_data();
    void letterForText();
    void individualCodeIsFoundByText();
    void displayNameInTheFormOfALocaleIsFound();
    void lettersForTexts();
    void letterForLocale_data();
    void letterForLocale();
    void letterForDisplayName_data();
    void letterForDisplayName();
    void displayName_data();
    void displayName();
    void currentDisplayNameFollowsTheLetterOnly();
    void yesTextStaysInTheLanguageOfItsFirstUse();
    void chooseLanguage_data();
    void chooseLanguage();
};

void tst_s3LanguageNames::initTestCase()
{
    directory.write(u"data/msg.dat.0"_s, messages());
    QString error;
    QVERIFY2(openDictionaries(error), qPrintable(error));
}

void tst_s3LanguageNames::init()
{
    QVERIFY(setLanguage(u"D"_s, u""_s));
}

void tst_s3LanguageNames::workBeforeMain()
{
    QCOMPARE(nameBeforeMain, u"*** 951 ***"_s);
    QCOMPARE(letterBeforeMain, u""_s);
    QCOMPARE(letterOfCodeBeforeMain, u"H"_s);
}

void tst_s3LanguageNames::letterForText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("letter");
    QTest::newRow("letter") << u"E"_s << u"E"_s;
    QTest::newRow("letter in lower case") << u"e"_s << u"E"_s;
    QTest::newRow("ISO code") << u"de"_s << u"D"_s;
    QTest::newRow("ISO code in upper case") << u"EN-us"_s << u"A"_s;
    QTest::newRow("code with a territory that isn't in the table") << u"de-DE"_s << u""_s;
    QTest::newRow("locale name") << u"en_US"_s << u""_s;
    QTest::newRow("display name") << u"Deutsch"_s << u"D"_s;
    QTest::newRow("individual digit") << u"2"_s << u"2"_s;
    QTest::newRow("unknown") << u"Klingonisch"_s << u""_s;
    QTest::newRow("blank around it") << u" de"_s << u""_s;
    QTest::newRow("empty") << u""_s << u""_s;
}

void tst_s3LanguageNames::letterForText()
{
    QFETCH(const QString, text);
    QTEST(::letterForText(text), "letter");
}

void tst_s3LanguageNames::individualCodeIsFoundByText()
{
    QVERIFY(setIndividualIsoCode(u"3"_s, u"fi"_s));
    QCOMPARE(::letterForText(u"FI"_s), u"3"_s);
    // The first in the order wins, even over a later one's letter.
    QVERIFY(setIndividualIsoCode(u"3"_s, u"A"_s));
    QCOMPARE(::letterForText(u"a"_s), u"3"_s);
    QVERIFY(setIndividualIsoCode(u"3"_s, u"pt"_s));
    QCOMPARE(::letterForText(u"pt"_s), u"3"_s);
    QVERIFY(setIndividualIsoCode(u"3"_s, u"de"_s));
    QCOMPARE(::letterForText(u"de"_s), u"D"_s);
}

void tst_s3LanguageNames::displayNameInTheFormOfALocaleIsFound()
{
    const QString before = individualName(u"2"_s);
    QVERIFY(setIndividualName(u"2"_s, u"de-DE"_s));
    const QString byText = ::letterForText(u"de-de"_s);
    const QString byLocale = ::letterForLocale(QLocale(u"de_DE"_s));
    QVERIFY(setIndividualName(u"2"_s, before));
    QCOMPARE(byText, u"2"_s);
    // It is asked for the whole name before the language alone.
    QCOMPARE(byLocale, u"2"_s);
}

void tst_s3LanguageNames::lettersForTexts()
{
    QCOMPARE(::lettersForTexts(u"  de en-US\tKlingonisch\nGerman e "_s), (QStringList{u"D"_s, u"A"_s, u"D"_s, u"E"_s}));
    QCOMPARE(::lettersForTexts(u" "_s), QStringList());
}

void tst_s3LanguageNames::letterForLocale_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("letter");
    QTest::newRow("American") << QLocale(u"en_US"_s) << u"A"_s;
    QTest::newRow("British by the language") << QLocale(u"en_GB"_s) << u"E"_s;
    QTest::newRow("Taiwan") << QLocale(u"zh_TW"_s) << u"H"_s;
    QTest::newRow("Germany by the language") << QLocale(u"de_DE"_s) << u"D"_s;
    QTest::newRow("Austria by the language") << QLocale(u"de_AT"_s) << u"D"_s;
    QTest::newRow("Chinese of Singapore") << QLocale(u"zh_SG"_s) << u""_s;
    QTest::newRow("not in the table") << QLocale(u"sv_SE"_s) << u""_s;
    QTest::newRow("C") << QLocale::c() << u""_s;
}

void tst_s3LanguageNames::letterForLocale()
{
    QFETCH(const QLocale, locale);
    QTEST(::letterForLocale(locale), "letter");
}

void tst_s3LanguageNames::letterForDisplayName_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("letter");
    QTest::newRow("in its own language") << u"English"_s << u"E"_s;
    QTest::newRow("in another language") << u"German"_s << u"D"_s;
    QTest::newRow("in the last language") << u"ドイツ語"_s << u"D"_s;
    QTest::newRow("of the last language") << u"Japanisch"_s << u"7"_s;
    QTest::newRow("in another case") << u"FRANZÖSISCH"_s << u"F"_s;
    QTest::newRow("name of two, the first wins") << u"allemand"_s << u"D"_s;
    QTest::newRow("individual") << u"Individ.1"_s << u"1"_s;
    QTest::newRow("individual in another case") << u"INDIVID.2"_s << u"2"_s;
    QTest::newRow("name with the product's short name") << u"Vexa"_s << u"I"_s;
    QTest::newRow("placeholder is what the dictionary gives") << u"*** 953 ***"_s << u"S"_s;
    QTest::newRow("ISO code is no name") << u"de"_s << u""_s;
    QTest::newRow("letter is no name") << u"D"_s << u""_s;
    QTest::newRow("empty") << u""_s << u""_s;
}

void tst_s3LanguageNames::letterForDisplayName()
{
    QFETCH(const QString, text);
    QTEST(::letterForDisplayName(text), "letter");
}

void tst_s3LanguageNames::displayName_data()
{
    QTest::addColumn<QString>("letter");
    QTest::addColumn<QString>("current");
    QTest::addColumn<QString>("expected");
    QTest::newRow("in the current language") << u"D"_s << u"F"_s << u"allemand"_s;
    QTest::newRow("in lower case") << u"d"_s << u"E"_s << u"German"_s;
    QTest::newRow("individual") << u"1"_s << u"E"_s << u"Individ.1"_s;
    QTest::newRow("without a text") << u"P"_s << u"E"_s << u"*** 955 ***"_s;
    QTest::newRow("unknown letter") << u"?"_s << u"E"_s << u""_s;
    QTest::newRow("no letter") << u""_s << u"E"_s << u""_s;
}

void tst_s3LanguageNames::displayName()
{
    QFETCH(const QString, letter);
    QFETCH(const QString, current);
    QVERIFY(setLanguage(current, u""_s));
    QTEST(::displayName(letter), "expected");
}

void tst_s3LanguageNames::currentDisplayNameFollowsTheLetterOnly()
{
    QCOMPARE(currentDisplayName(), u"Deutsch"_s);
    QVERIFY(setLanguage(u"2"_s, u""_s));
    QCOMPARE(currentDisplayName(), u"Individ.2"_s);
    QVERIFY(setIndividualName(u"2"_s, u"Suomi"_s));
    QCOMPARE(currentDisplayName(), u"Individ.2"_s);
    QVERIFY(setLanguage(u"E"_s, u""_s));
    QCOMPARE(currentDisplayName(), u"English"_s);
    QVERIFY(setLanguage(u"2"_s, u""_s));
    QCOMPARE(currentDisplayName(), u"Suomi"_s);
}

void tst_s3LanguageNames::yesTextStaysInTheLanguageOfItsFirstUse()
{
    QVERIFY(setLanguage(u"E"_s, u""_s));
    QCOMPARE(yesText(true), u"Yes"_s);
    QVERIFY(setLanguage(u"D"_s, u""_s));
    QCOMPARE(yesText(true), u"Yes"_s);
    QCOMPARE(yesText(false), u"Nein"_s);
    QVERIFY(setLanguage(u"E"_s, u""_s));
    QCOMPARE(yesText(false), u"Nein"_s);
    QVERIFY(isYesText(u"Yes"_s));
    QVERIFY(!isYesText(u"yes"_s));
    QVERIFY(!isYesText(u"Ja"_s));
    QVERIFY(!isYesText(u""_s));
}

void tst_s3LanguageNames::chooseLanguage_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<QString>("third");
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("current");
    QTest::addColumn<QStringList>("found");

    const QLocale french(u"fr_FR"_s);
    const QLocale swedish(u"sv_SE"_s);
    const QLocale austrian(u"de_AT"_s);
    const QString none;
    QTest::newRow("first") << u"S"_s << u"I"_s << u"E"_s << french << u"S"_s << QStringList();
    QTest::newRow("first is no language") << u"?"_s << u"i"_s << u"E"_s << french << u"I"_s << QStringList();
    QTest::newRow("second") << none << u"I"_s << u"English"_s << french << u"I"_s << QStringList{u"E"_s, u"D"_s};
    QTest::newRow("settings are letters only") << u"it"_s << u"de"_s << none << french << u"F"_s << QStringList();
    QTest::newRow("third") << none << none << u"en"_s << french << u"E"_s << QStringList{u"E"_s, u"D"_s};
    QTest::newRow("locale") << none << none << none << french << u"F"_s << QStringList{u"F"_s, u"D"_s};
    QTest::newRow("third is no language") << none << none << u"sv"_s << french << u"F"_s << QStringList{u"F"_s, u"D"_s};
    QTest::newRow("German is there once") << none << none << none << austrian << u"D"_s << QStringList{u"D"_s};
    QTest::newRow("nothing fits") << none << none << none << swedish << u"A"_s << QStringList{u"D"_s};
    QTest::newRow("nothing fits but first isn't empty") << u"?"_s << none << none << swedish << u"A"_s << QStringList();
}

void tst_s3LanguageNames::chooseLanguage()
{
    QFETCH(const QString, first);
    QFETCH(const QString, second);
    QFETCH(const QString, third);
    QFETCH(const QLocale, locale);
    QTEST(::chooseLanguage(first, second, third, locale), "found");
    QTEST(currentLetter(), "current");
}

QTEST_MAIN(tst_s3LanguageNames)
#include "tst_s3languagenames.moc"
