// The trace lines end here: this program has a writer of its own in place of the library's.

#include "guidictionaryfiles.h"
#include "s3features.h"
#include "s3testflags.h"
#include "s3trace.h"
#include "testfile.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint32 source = -1;
constexpr qint32 german = 0;
constexpr qint32 english = 1;
constexpr qint32 french = 2;
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
    // First, while nothing else has noted an empty text.
    void dotsAloneAreNotedAsEmptyText();
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
    void cacheKeepsLanguagesApart();
    void cachedTextWins();
    void emptyTranslationIsNotCached();
    void translationIsTraced();
    void unknownTextIsTraced_data();
    void unknownTextIsTraced();
    void nothingIsTracedWithoutItsFlag();

private:
    std::unique_ptr<GuiDictionaryFiles> m_files;
};

void tst_s3GuiDictionary::init()
{
    m_files = std::make_unique<GuiDictionaryFiles>();
    QVERIFY(m_files->isValid());
}

void tst_s3GuiDictionary::cleanup()
{
    s3TestFlagsGUI::instance()->clear();
    s3ExperimentalFeatures::instance()->clear();
    s3DisabledFeatures::instance()->clear();
    lines.clear();
}

void tst_s3GuiDictionary::dotsAloneAreNotedAsEmptyText()
{
    s3GuiDictionary dictionary(m_files->mainPath(), m_files->fallbackPath());
    s3TestFlagsGUI::instance()->insert(404);
    QVERIFY(!s3GuiDictionary::unknownSourceTexts().contains(u""_s));
    QCOMPARE(dictionary.translateText(u"..."_s, english), u"..."_s);
    QVERIFY(s3GuiDictionary::unknownSourceTexts().contains(u""_s));
    QVERIFY(!s3GuiDictionary::unknownSourceTexts().contains(u"..."_s));
    // It was looked for once.
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines.constFirst().contains(u" sourceText=\"\" "_s), qPrintable(lines.constFirst()));
}

void tst_s3GuiDictionary::withoutFilesTextsComeBack()
{
    s3GuiDictionary dictionary(m_files->mainPath(), m_files->fallbackPath());
    QVERIFY(!s3GuiDictionary::unknownSourceTexts().contains(u"ohne Datei"_s));
    QVERIFY(!dictionary.openQuietly());
    QCOMPARE(dictionary.translateText(u"ohne Datei"_s, english), u"ohne Datei"_s);
    QVERIFY(s3GuiDictionary::unknownSourceTexts().contains(u"ohne Datei"_s));
    QCOMPARE(dictionary.textWithFallback(1, english), u"*** 1 ***"_s);
}

void tst_s3GuiDictionary::openGivesReasonOfMainFile()
{
    writeTestFile(m_files->mainPath(), QByteArray());
    DictionaryBuilder fallback;
    fallback.setText(2, source, u"Datei"_s);
    writeTestFile(m_files->fallbackPath(), fallback.build());
    s3GuiDictionary dictionary(m_files->mainPath(), m_files->fallbackPath());
    QString error;
    QVERIFY(!dictionary.open(error));
    QCOMPARE(error, m_files->mainPath() + u":\n\nCannot map dictionary into memory!"_s);
}

void tst_s3GuiDictionary::knownTextIsTranslated()
{
    DictionaryBuilder builder;
    builder.setText(1, source, u"Datei"_s).setText(1, english, u"File"_s).setText(1, american, u"Document"_s);
    const auto dictionary = m_files->opened(builder);
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
    QCOMPARE(m_files->opened(builder)->translateText(u"Datei"_s, english), u"Die Datei"_s);
}

void tst_s3GuiDictionary::knownTextWithoutColumnIsThePlaceholder()
{
    DictionaryBuilder builder(31);
    builder.setText(1, source, u"Datei"_s);
    QCOMPARE(m_files->opened(builder)->translateText(u"Datei"_s, 31), u"*** 1 ***"_s);
}

void tst_s3GuiDictionary::unusedNumberIsNoSourceText()
{
    DictionaryBuilder builder;
    builder.setText(1, source, u"*** 1 ***"_s).setText(1, english, u"one"_s).setText(2, source, u"zwei"_s);
    builder.setText(3, source, u""_s).setText(3, english, u"three"_s);
    const auto dictionary = m_files->opened(builder);
    QCOMPARE(dictionary->translateText(u"*** 1 ***"_s, english), u"*** 1 ***"_s);
    QCOMPARE(dictionary->translateText(u""_s, english), u""_s);
}

void tst_s3GuiDictionary::highestNumberWins()
{
    DictionaryBuilder builder;
    builder.setText(1, source, u"Bank"_s).setText(1, english, u"bench"_s);
    builder.setText(3, source, u"Bank"_s).setText(3, english, u"bank"_s);
    QCOMPARE(m_files->opened(builder)->translateText(u"Bank"_s, english), u"bank"_s);
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
    const auto dictionary = m_files->opened(builder);
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
    QTEST(m_files->opened(builder)->translateText(text, english), "expected");
}

void tst_s3GuiDictionary::unknownTextOfDotsIsNotedWithoutThem()
{
    s3GuiDictionary dictionary(m_files->mainPath(), m_files->fallbackPath());
    QCOMPARE(dictionary.translateText(u"notiert ..."_s, english), u"notiert..."_s);
    QVERIFY(s3GuiDictionary::unknownSourceTexts().contains(u"notiert"_s));
    QVERIFY(!s3GuiDictionary::unknownSourceTexts().contains(u"notiert ..."_s));
}

void tst_s3GuiDictionary::cacheKeepsLanguagesApart()
{
    s3GuiDictionary dictionary(m_files->mainPath(), m_files->fallbackPath());
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
    const auto dictionary = m_files->opened(builder);
    dictionary->storeCachedText(1, english, u"from the cache"_s);
    QCOMPARE(dictionary->translateText(u"Datei"_s, english), u"from the cache"_s);
    QCOMPARE(dictionary->translateText(u"Datei"_s, german), u"Datei"_s);
}

void tst_s3GuiDictionary::emptyTranslationIsNotCached()
{
    DictionaryBuilder builder;
    builder.setText(1, source, u"Datei"_s).setText(1, english, u""_s);
    const auto dictionary = m_files->opened(builder);
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
    const auto dictionary = m_files->opened(builder);
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
    s3GuiDictionary dictionary(u":/dictionary/none"_s, m_files->fallbackPath());
    static_cast<void>(dictionary.translateText(text, english));
    QCOMPARE(lines, QStringList{u"s3GuiDictionary::translateText() m_filePath=\":/dictionary/none\" sourceText=\"%1\" "
                                u"not in dictionary"_s.arg(traced)});
}

void tst_s3GuiDictionary::nothingIsTracedWithoutItsFlag()
{
    DictionaryBuilder main;
    main.setText(2, source, u"Datei"_s);
    DictionaryBuilder fallback;
    fallback.setText(2, source, u"Datei"_s).setText(2, french, u"fichier"_s);
    const auto dictionary = m_files->opened(main, fallback);
    s3TestFlagsGUI::instance()->insert(461);
    QCOMPARE(dictionary->translateText(u"Datei"_s, french), u"fichier"_s);
    QCOMPARE(dictionary->translateText(u"unbekannt"_s, french), u"unbekannt"_s);
    s3TestFlagsGUI::instance()->insert(404); // is for unknown texts only
    QCOMPARE(dictionary->translateText(u"Datei"_s, german), u"Datei"_s);
    QCOMPARE(lines, QStringList());
}

QTEST_APPLESS_MAIN(tst_s3GuiDictionary)
#include "tst_s3guidictionary.moc"
