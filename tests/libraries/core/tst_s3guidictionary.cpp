// The trace lines end here: this program has a writer of its own in place of the library's.

#include "dictionarybuilder.h"
#include "s3features.h"
#include "s3guidictionary.h"
#include "s3testflags.h"
#include "s3trace.h"
#include "testfile.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint32 source = -1;
constexpr qint32 german = 0;
constexpr qint32 english = 1;
constexpr qint32 french = 2;
constexpr qint32 spanish = 3;
constexpr qint32 individual = 10;
constexpr qint32 american = 13;

QStringList lines;

} // namespace

void s3WriteTrace(const QString &line)
{
    lines += line;
}

class tst_s3GuiDictionary : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void withoutFilesTextsComeBack();
    void openGivesReasonOfMainFile();
    void knownTextIsTranslated();
    void knownTextWithoutTranslationIsTheSharedOne();
    void knownTextWithoutColumnIsThePlaceholder();
    void unusedNumberIsNoSourceText();
    void highestNumberWins();
    void productNameHasTwoSpellings_data();
    void productNameHasTwoSpellings();
    void dots_data();
    void dots();
    void unknownTextOfDotsIsNotedWithoutThem();
    void sourceTextOfFallbackIsNotFound();
    void textWithFallback_data();
    void textWithFallback();
    void fallbackWithOneTextIsNone();
    void fallbackThatCannotBeOpenedIsNone();
    void fallbackTextIsCached();
    void cacheKeepsLanguagesApart();
    void cachedTextWins();
    void emptyTranslationIsNotCached();
    void translationIsTraced();
    void unknownTextIsTraced_data();
    void unknownTextIsTraced();
    void fallbackTextIsTraced();
    void forcedFallbackIsNotTraced();
    void nothingIsTracedWithoutItsFlag();

private:
    QString mainPath() const { return m_directory->filePath(u"main"_s); }
    QString fallbackPath() const { return m_directory->filePath(u"fallback"_s); }
    std::unique_ptr<s3GuiDictionary> opened(const DictionaryBuilder &main) const;
    std::unique_ptr<s3GuiDictionary> opened(const DictionaryBuilder &main, const DictionaryBuilder &fallback) const;

    std::unique_ptr<QTemporaryDir> m_directory;
};

void tst_s3GuiDictionary::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
}

void tst_s3GuiDictionary::cleanup()
{
    s3TestFlagsGUI::instance()->clear();
    s3ExperimentalFeatures::instance()->clear();
    s3DisabledFeatures::instance()->clear();
    lines.clear();
}

std::unique_ptr<s3GuiDictionary> tst_s3GuiDictionary::opened(const DictionaryBuilder &main) const
{
    writeTestFile(mainPath(), main.build());
    auto dictionary = std::make_unique<s3GuiDictionary>(mainPath(), fallbackPath());
    if (!dictionary->openQuietly())
        qFatal("The dictionary can't be opened");
    return dictionary;
}

std::unique_ptr<s3GuiDictionary> tst_s3GuiDictionary::opened(const DictionaryBuilder &main,
                                                             const DictionaryBuilder &fallback) const
{
    writeTestFile(fallbackPath(), fallback.build());
    return opened(main);
}

void tst_s3GuiDictionary::withoutFilesTextsComeBack()
{
    s3GuiDictionary dictionary(mainPath(), fallbackPath());
    QVERIFY(!s3GuiDictionary::unknownSourceTexts().contains(u"ohne Datei"_s));
    QVERIFY(!dictionary.openQuietly());
    QCOMPARE(dictionary.translateText(u"ohne Datei"_s, english), u"ohne Datei"_s);
    QVERIFY(s3GuiDictionary::unknownSourceTexts().contains(u"ohne Datei"_s));
    QCOMPARE(dictionary.textWithFallback(1, english), u"*** 1 ***"_s);
}

void tst_s3GuiDictionary::openGivesReasonOfMainFile()
{
    writeTestFile(mainPath(), QByteArray());
    DictionaryBuilder fallback;
    fallback.setText(2, source, u"Datei"_s);
    writeTestFile(fallbackPath(), fallback.build());
    s3GuiDictionary dictionary(mainPath(), fallbackPath());
    QString error;
    QVERIFY(!dictionary.open(error));
    QCOMPARE(error, mainPath() + u":\n\nCannot map dictionary into memory!"_s);
}

void tst_s3GuiDictionary::knownTextIsTranslated()
{
    DictionaryBuilder builder;
    builder.setText(1, source, u"Datei"_s).setText(1, english, u"File"_s).setText(1, american, u"Document"_s);
    const auto dictionary = opened(builder);
    QCOMPARE(dictionary->translateText(u"Datei"_s, english), u"File"_s);
    QCOMPARE(dictionary->translateText(u"Datei"_s, american), u"Document"_s);
    QCOMPARE(dictionary->translateText(u"datei"_s, english), u"datei"_s);
    QVERIFY(!s3GuiDictionary::unknownSourceTexts().contains(u"Datei"_s));
    QVERIFY(s3GuiDictionary::unknownSourceTexts().contains(u"datei"_s));
}

void tst_s3GuiDictionary::knownTextWithoutTranslationIsTheSharedOne()
{
    DictionaryBuilder builder;
    builder.setText(1, source, u"Datei"_s).setText(1, german, u"Die Datei"_s);
    QCOMPARE(opened(builder)->translateText(u"Datei"_s, english), u"Die Datei"_s);
}

void tst_s3GuiDictionary::knownTextWithoutColumnIsThePlaceholder()
{
    DictionaryBuilder builder(31);
    builder.setText(1, source, u"Datei"_s);
    QCOMPARE(opened(builder)->translateText(u"Datei"_s, 31), u"*** 1 ***"_s);
}

void tst_s3GuiDictionary::unusedNumberIsNoSourceText()
{
    DictionaryBuilder builder;
    builder.setText(1, source, u"*** 1 ***"_s).setText(1, english, u"one"_s).setText(2, source, u"zwei"_s);
    builder.setText(3, source, u""_s).setText(3, english, u"three"_s);
    const auto dictionary = opened(builder);
    QCOMPARE(dictionary->translateText(u"*** 1 ***"_s, english), u"*** 1 ***"_s);
    QCOMPARE(dictionary->translateText(u""_s, english), u""_s);
}

void tst_s3GuiDictionary::highestNumberWins()
{
    DictionaryBuilder builder;
    builder.setText(1, source, u"Bank"_s).setText(1, english, u"bench"_s);
    builder.setText(3, source, u"Bank"_s).setText(3, english, u"bank"_s);
    QCOMPARE(opened(builder)->translateText(u"Bank"_s, english), u"bank"_s);
}

void tst_s3GuiDictionary::productNameHasTwoSpellings_data()
{
    QTest::addColumn<qint32>("number");
    QTest::addColumn<bool>("both");
    for (const qint32 number : {896, 931, 938, 939})
        QTest::addRow("%d", number) << number << true;
    for (const qint32 number : {895, 930, 937, 940})
        QTest::addRow("%d", number) << number << false;
}

void tst_s3GuiDictionary::productNameHasTwoSpellings()
{
    QFETCH(const qint32, number);
    QFETCH(const bool, both);
    DictionaryBuilder builder;
    builder.setText(number, source, u"vexa ERP und vexa ERP"_s).setText(number, english, u"found"_s);
    const auto dictionary = opened(builder);
    QCOMPARE(dictionary->translateText(u"vexa ERP und vexa ERP"_s, english), u"found"_s);
    QCOMPARE(dictionary->translateText(u"Vexa und Vexa"_s, english), both ? u"found"_s : u"Vexa und Vexa"_s);
    QCOMPARE(dictionary->translateText(u"Vexa und vexa ERP"_s, english), u"Vexa und vexa ERP"_s);
}

void tst_s3GuiDictionary::dots_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("shorter form is known") << u"Öffnen..."_s << u"Open..."_s;
    QTest::newRow("blanks in front of the dots are lost") << u"Öffnen \t..."_s << u"Open..."_s;
    QTest::newRow("blanks at the start are lost") << u" Öffnen..."_s << u"Open..."_s;
    QTest::newRow("longer form is known") << u"Speichern..."_s << u"Save as"_s;
    QTest::newRow("unknown") << u"Unbekannt..."_s << u"Unbekannt..."_s;
    QTest::newRow("blanks are lost in an unknown text too") << u" Unbekannt ..."_s << u"Unbekannt..."_s;
    QTest::newRow("dots twice") << u"Öffnen ... ..."_s << u"Open......"_s;
    QTest::newRow("blank behind the dots") << u"Öffnen... "_s << u"Öffnen... "_s;
    QTest::newRow("two dots") << u"Öffnen.."_s << u"Öffnen.."_s;
    QTest::newRow("four dots") << u"Öffnen...."_s << u"Öffnen...."_s;
    QTest::newRow("ellipsis character") << u"Öffnen…"_s << u"Öffnen…"_s;
    QTest::newRow("white space and dots") << u" \t\n..."_s << u"..."_s;
    QTest::newRow("dots alone") << u"..."_s << u"..."_s;
    QTest::newRow("nothing") << u""_s << u""_s;
}

void tst_s3GuiDictionary::dots()
{
    QFETCH(const QString, text);
    DictionaryBuilder builder;
    builder.setText(1, source, u"Öffnen"_s).setText(1, english, u"Open"_s);
    builder.setText(2, source, u"Speichern"_s).setText(2, english, u"Save"_s);
    builder.setText(3, source, u"Speichern..."_s).setText(3, english, u"Save as"_s);
    QTEST(opened(builder)->translateText(text, english), "expected");
}

void tst_s3GuiDictionary::unknownTextOfDotsIsNotedWithoutThem()
{
    s3GuiDictionary dictionary(mainPath(), fallbackPath());
    QCOMPARE(dictionary.translateText(u"notiert ..."_s, english), u"notiert..."_s);
    QVERIFY(s3GuiDictionary::unknownSourceTexts().contains(u"notiert"_s));
    QVERIFY(!s3GuiDictionary::unknownSourceTexts().contains(u"notiert ..."_s));
}

void tst_s3GuiDictionary::sourceTextOfFallbackIsNotFound()
{
    DictionaryBuilder main;
    main.setText(2, source, u"Datei"_s);
    DictionaryBuilder fallback;
    fallback.setText(2, source, u"Ordner"_s).setText(2, french, u"dossier"_s);
    QCOMPARE(opened(main, fallback)->translateText(u"Ordner"_s, french), u"Ordner"_s);
}

void tst_s3GuiDictionary::textWithFallback_data()
{
    QTest::addColumn<QString>("experimental");
    QTest::addColumn<QString>("disabled");
    QTest::addColumn<qint32>("number");
    QTest::addColumn<qint32>("language");
    QTest::addColumn<QString>("expected");

    const QString none;
    const QString forced = u"forceFallbackDictionary"_s;
    const QString use = u"useFallbackDictionary"_s;
    QTest::newRow("translated in both") << none << none << 1 << french << u"main french"_s;
    QTest::newRow("translated in the fallback alone") << none << none << 1 << spanish << u"fallback spanish"_s;
    QTest::newRow("translated in the main file alone") << none << none << 2 << french << u"main french 2"_s;
    QTest::newRow("translated in neither") << none << none << 2 << spanish << u"zwei"_s;
    QTest::newRow("German never") << none << none << 1 << german << u"eins"_s;
    QTest::newRow("English never") << none << none << 1 << english << u"eins"_s;
    QTest::newRow("American never") << none << none << 1 << american << u"eins"_s;
    QTest::newRow("individual, in both") << none << none << 1 << individual << u"fallback individual"_s;
    QTest::newRow("individual, in the main file alone") << none << none << 2 << individual << u"main individual 2"_s;
    QTest::newRow("source texts differ") << none << none << 3 << spanish << u"drei"_s;
    QTest::newRow("individual, source texts differ") << none << none << 3 << individual << u"main individual 3"_s;
    QTest::newRow("number only in the main file") << none << none << 4 << spanish << u"vier"_s;
    QTest::newRow("number in neither") << none << none << 5 << spanish << u"*** 5 ***"_s;

    QTest::newRow("forced") << forced << none << 1 << french << u"fallback french"_s;
    QTest::newRow("forced, English") << forced << none << 1 << english << u"fallback english"_s;
    QTest::newRow("forced, without a translation") << forced << none << 2 << french << u"zwei"_s;
    QTest::newRow("forced, source texts differ") << forced << none << 3 << english << u"drei"_s;
    QTest::newRow("forced, number only in the main file") << forced << none << 4 << french << u"main french 4"_s;
    QTest::newRow("forced and switched off") << forced << use << 1 << french << u"fallback french"_s;
    QTest::newRow("switched off") << none << use << 1 << spanish << u"eins"_s;
    QTest::newRow("switched off, individual") << none << use << 1 << individual << u"main individual"_s;
    QTest::newRow("names are exact") << u"forcefallbackdictionary"_s << u"UseFallbackDictionary"_s << 1 << spanish
                                     << u"fallback spanish"_s;
    QTest::newRow("names in the other set") << use << forced << 1 << spanish << u"fallback spanish"_s;
}

void tst_s3GuiDictionary::textWithFallback()
{
    QFETCH(const QString, experimental);
    QFETCH(const QString, disabled);
    QFETCH(const qint32, number);
    QFETCH(const qint32, language);
    s3ExperimentalFeatures::instance()->insert(experimental, true);
    s3DisabledFeatures::instance()->insert(disabled, true);

    DictionaryBuilder main;
    main.setText(1, source, u"eins"_s)
        .setText(1, french, u"main french"_s)
        .setText(1, individual, u"main individual"_s);
    main.setText(2, source, u"zwei"_s)
        .setText(2, french, u"main french 2"_s)
        .setText(2, individual, u"main individual 2"_s);
    main.setText(3, source, u"drei"_s).setText(3, individual, u"main individual 3"_s);
    main.setText(4, source, u"vier"_s).setText(4, french, u"main french 4"_s);
    DictionaryBuilder fallback;
    fallback.setText(1, source, u"eins"_s)
        .setText(1, english, u"fallback english"_s)
        .setText(1, american, u"fallback american"_s)
        .setText(1, french, u"fallback french"_s)
        .setText(1, spanish, u"fallback spanish"_s)
        .setText(1, individual, u"fallback individual"_s);
    fallback.setText(2, source, u"zwei"_s);
    fallback.setText(3, source, u"Drei"_s)
        .setText(3, english, u"fallback english 3"_s)
        .setText(3, spanish, u"fallback spanish 3"_s)
        .setText(3, individual, u"fallback individual 3"_s);
    QTEST(opened(main, fallback)->textWithFallback(number, language), "expected");
}

void tst_s3GuiDictionary::fallbackWithOneTextIsNone()
{
    DictionaryBuilder main;
    main.setText(2, source, u"Datei"_s);
    main.setText(1, source, u"Ende"_s);
    DictionaryBuilder fallback;
    fallback.setText(1, source, u"Ende"_s).setText(1, french, u"fin"_s);
    QCOMPARE(opened(main, fallback)->translateText(u"Ende"_s, french), u"Ende"_s);
    s3ExperimentalFeatures::instance()->insert(u"forceFallbackDictionary"_s, true);
    QCOMPARE(opened(main, fallback)->translateText(u"Ende"_s, french), u"Ende"_s);

    fallback.setText(2, source, u"anything"_s);
    QCOMPARE(opened(main, fallback)->translateText(u"Ende"_s, french), u"fin"_s);
}

void tst_s3GuiDictionary::fallbackThatCannotBeOpenedIsNone()
{
    writeTestFile(fallbackPath(), "no dictionary, but long enough to look into");
    DictionaryBuilder main;
    main.setText(2, source, u"Datei"_s);
    QCOMPARE(opened(main)->translateText(u"Datei"_s, french), u"Datei"_s);
}

void tst_s3GuiDictionary::fallbackTextIsCached()
{
    DictionaryBuilder main;
    main.setText(2, source, u"Datei"_s);
    DictionaryBuilder fallback;
    fallback.setText(2, source, u"Datei"_s).setText(2, french, u"fichier"_s);
    const auto dictionary = opened(main, fallback);
    QCOMPARE(dictionary->translateText(u"Datei"_s, french), u"fichier"_s);
    s3DisabledFeatures::instance()->insert(u"useFallbackDictionary"_s, true);
    QCOMPARE(dictionary->translateText(u"Datei"_s, french), u"fichier"_s);
    QCOMPARE(dictionary->cachedText(2, french), u"fichier"_s);
}

void tst_s3GuiDictionary::cacheKeepsLanguagesApart()
{
    s3GuiDictionary dictionary(mainPath(), fallbackPath());
    QCOMPARE(dictionary.cachedText(99999, 31), u""_s);
    for (qint32 language = 0; language < 32; ++language) {
        dictionary.storeCachedText(99999, language, u"%1"_s.arg(language));
        dictionary.storeCachedText(1, language, u"one in %1"_s.arg(language));
    }
    for (qint32 language = 0; language < 32; ++language) {
        QCOMPARE(dictionary.cachedText(99999, language), u"%1"_s.arg(language));
        QCOMPARE(dictionary.cachedText(1, language), u"one in %1"_s.arg(language));
    }
    dictionary.storeCachedText(1, 31, u"replaced"_s);
    QCOMPARE(dictionary.cachedText(1, 31), u"replaced"_s);
    QCOMPARE(dictionary.cachedText(1, 30), u"one in 30"_s);
}

void tst_s3GuiDictionary::cachedTextWins()
{
    DictionaryBuilder builder;
    builder.setText(1, source, u"Datei"_s).setText(1, english, u"File"_s);
    const auto dictionary = opened(builder);
    dictionary->storeCachedText(1, english, u"from the cache"_s);
    QCOMPARE(dictionary->translateText(u"Datei"_s, english), u"from the cache"_s);
    QCOMPARE(dictionary->translateText(u"Datei"_s, german), u"Datei"_s);
}

void tst_s3GuiDictionary::emptyTranslationIsNotCached()
{
    DictionaryBuilder builder;
    builder.setText(1, source, u"Datei"_s).setText(1, english, u""_s);
    const auto dictionary = opened(builder);
    s3TestFlagsGUI::instance()->insert(460);
    for (int call = 0; call < 2; ++call) {
        QCOMPARE(dictionary->translateText(u"Datei"_s, english), u""_s);
        QVERIFY(lines.takeLast().contains(u" foundInCache=false "_s));
    }
}

void tst_s3GuiDictionary::translationIsTraced()
{
    DictionaryBuilder builder;
    builder.setText(7, source, u"Datei"_s).setText(7, english, u"File"_s);
    const auto dictionary = opened(builder);
    s3TestFlagsGUI::instance()->insert(460);
    const QString format = uR"(\As3GuiDictionary::translateText\(\) sourceText="Datei" textNumber=7 )"
                           uR"(languageText="File" foundInCache=%1 elapsed="\d+(\.\d+)? µs"\z)"_s;
    for (const QString &foundInCache : {u"false"_s, u"true"_s}) {
        QCOMPARE(dictionary->translateText(u"Datei"_s, english), u"File"_s);
        QCOMPARE(lines.size(), 1);
        QVERIFY2(QRegularExpression(format.arg(foundInCache)).match(lines.constFirst()).hasMatch(),
                 qPrintable(lines.constFirst()));
        lines.clear();
    }
}

void tst_s3GuiDictionary::unknownTextIsTraced_data()
{
    QTest::addColumn<qint32>("flag");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("traced");
    QTest::newRow("460") << 460 << u"unbekannt"_s << u"unbekannt"_s;
    QTest::newRow("404") << 404 << u"unbekannt"_s << u"unbekannt"_s;
    QTest::newRow("dots") << 404 << u"unbekannt ..."_s << u"unbekannt"_s;
}

void tst_s3GuiDictionary::unknownTextIsTraced()
{
    QFETCH(const qint32, flag);
    QFETCH(const QString, text);
    QFETCH(const QString, traced);
    s3TestFlagsGUI::instance()->insert(flag);
    s3GuiDictionary dictionary(u":/dictionary/none"_s, fallbackPath());
    static_cast<void>(dictionary.translateText(text, english));
    QCOMPARE(lines, QStringList{u"s3GuiDictionary::translateText() m_filePath=\":/dictionary/none\" sourceText=\"%1\" "
                                u"not in dictionary"_s.arg(traced)});
}

void tst_s3GuiDictionary::fallbackTextIsTraced()
{
    DictionaryBuilder main;
    main.setText(2, source, u"Datei"_s);
    DictionaryBuilder fallback;
    fallback.setText(2, source, u"Datei"_s).setText(2, french, u"fichier"_s);
    const auto dictionary = opened(main, fallback);
    s3TestFlagsGUI::instance()->insert(460);
    QCOMPARE(dictionary->textWithFallback(2, french), u"fichier"_s);
    QCOMPARE(lines, QStringList{u"s3GuiDictionary::textWithFallback() textNumber=2 languageISO=\"fr\" "
                                u"sourceText=\"Datei\" fallbackText=\"fichier\""_s});
}

void tst_s3GuiDictionary::forcedFallbackIsNotTraced()
{
    DictionaryBuilder main;
    main.setText(2, source, u"Datei"_s);
    const auto dictionary = opened(main, main);
    s3TestFlagsGUI::instance()->insert(460);
    s3ExperimentalFeatures::instance()->insert(u"forceFallbackDictionary"_s, true);
    QCOMPARE(dictionary->textWithFallback(2, french), u"Datei"_s);
    QCOMPARE(lines, QStringList());
}

void tst_s3GuiDictionary::nothingIsTracedWithoutItsFlag()
{
    DictionaryBuilder main;
    main.setText(2, source, u"Datei"_s);
    DictionaryBuilder fallback;
    fallback.setText(2, source, u"Datei"_s).setText(2, french, u"fichier"_s);
    const auto dictionary = opened(main, fallback);
    s3TestFlagsGUI::instance()->insert(461);
    QCOMPARE(dictionary->translateText(u"Datei"_s, french), u"fichier"_s);
    QCOMPARE(dictionary->translateText(u"unbekannt"_s, french), u"unbekannt"_s);
    s3TestFlagsGUI::instance()->insert(404); // is for unknown texts only
    QCOMPARE(dictionary->translateText(u"Datei"_s, german), u"Datei"_s);
    QCOMPARE(lines, QStringList());
}

QTEST_APPLESS_MAIN(tst_s3GuiDictionary)
#include "tst_s3guidictionary.moc"
