// The second file of a dictionary of the GUI. The trace lines end here: this program has a writer of its own in place
// of the library's.

#include "guidictionaryfiles.h"
#include "s3features.h"
#include "s3testflags.h"
#include "s3trace.h"

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

class tst_s3GuiDictionaryFallback : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void sourceTextOfFallbackIsNotFound();
    void textWithFallback_data();
    void textWithFallback();
    void fallbackWithOneTextIsNone();
    void fallbackWithoutTextsIsNone();
    void fallbackThatCannotBeOpenedIsNone();
    void fallbackTextIsCached();
    void fallbackTextIsTraced();
    void forcedFallbackIsNotTraced();

private:
    std::unique_ptr<GuiDictionaryFiles> m_files;
};

void tst_s3GuiDictionaryFallback::init()
{
    m_files = std::make_unique<GuiDictionaryFiles>();
    QVERIFY(m_files->isValid());
}

void tst_s3GuiDictionaryFallback::cleanup()
{
    s3TestFlagsGUI::instance()->clear();
    s3ExperimentalFeatures::instance()->clear();
    s3DisabledFeatures::instance()->clear();
    lines.clear();
}

void tst_s3GuiDictionaryFallback::sourceTextOfFallbackIsNotFound()
{
    DictionaryBuilder main;
    main.setText(2, source, u"Datei"_s);
    DictionaryBuilder fallback;
    fallback.setText(2, source, u"Ordner"_s).setText(2, french, u"dossier"_s);
    QCOMPARE(m_files->opened(main, fallback)->translateText(u"Ordner"_s, french), u"Ordner"_s);
}

void tst_s3GuiDictionaryFallback::textWithFallback_data()
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
    QTest::newRow("forced, German") << forced << none << 1 << german << u"fallback german"_s;
    QTest::newRow("forced, source texts differ") << forced << none << 3 << english << u"drei"_s;
    QTest::newRow("forced, source texts differ, German") << forced << none << 3 << german << u"drei"_s;
    QTest::newRow("forced, source texts differ, American") << forced << none << 3 << american << u"drei"_s;
    QTest::newRow("forced, source texts differ, individual")
        << forced << none << 3 << individual << u"main individual 3"_s;
    QTest::newRow("forced, number only in the main file") << forced << none << 4 << french << u"main french 4"_s;
    QTest::newRow("forced and switched off") << forced << use << 1 << french << u"fallback french"_s;
    QTest::newRow("switched off") << none << use << 1 << spanish << u"eins"_s;
    QTest::newRow("switched off, individual") << none << use << 1 << individual << u"main individual"_s;
    QTest::newRow("names are exact") << u"forcefallbackdictionary"_s << u"UseFallbackDictionary"_s << 1 << spanish
                                     << u"fallback spanish"_s;
    QTest::newRow("names in the other set") << use << forced << 1 << spanish << u"fallback spanish"_s;
}

void tst_s3GuiDictionaryFallback::textWithFallback()
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
        .setText(1, german, u"fallback german"_s)
        .setText(1, english, u"fallback english"_s)
        .setText(1, american, u"fallback american"_s)
        .setText(1, french, u"fallback french"_s)
        .setText(1, spanish, u"fallback spanish"_s)
        .setText(1, individual, u"fallback individual"_s);
    fallback.setText(2, source, u"zwei"_s);
    fallback.setText(3, source, u"Drei"_s)
        .setText(3, german, u"fallback german 3"_s)
        .setText(3, american, u"fallback american 3"_s)
        .setText(3, english, u"fallback english 3"_s)
        .setText(3, spanish, u"fallback spanish 3"_s)
        .setText(3, individual, u"fallback individual 3"_s);
    QTEST(m_files->opened(main, fallback)->textWithFallback(number, language), "expected");
}

void tst_s3GuiDictionaryFallback::fallbackWithOneTextIsNone()
{
    DictionaryBuilder main;
    main.setText(2, source, u"Datei"_s);
    main.setText(1, source, u"Ende"_s);
    DictionaryBuilder fallback;
    fallback.setText(1, source, u"Ende"_s).setText(1, french, u"fin"_s);
    QCOMPARE(m_files->opened(main, fallback)->translateText(u"Ende"_s, french), u"Ende"_s);
    s3ExperimentalFeatures::instance()->insert(u"forceFallbackDictionary"_s, true);
    QCOMPARE(m_files->opened(main, fallback)->translateText(u"Ende"_s, french), u"Ende"_s);

    fallback.setText(2, source, u"anything"_s);
    QCOMPARE(m_files->opened(main, fallback)->translateText(u"Ende"_s, french), u"fin"_s);
}

void tst_s3GuiDictionaryFallback::fallbackWithoutTextsIsNone()
{
    DictionaryBuilder main;
    main.setText(2, source, u"Datei"_s).setText(2, individual, u"own file"_s);
    // Both have the same source text here, none, and only the main file has a text.
    main.setText(1, source, u""_s).setText(1, french, u"without a source"_s);
    const DictionaryBuilder empty;
    const auto dictionary = m_files->opened(main, empty);
    QVERIFY(s3Dictionary(m_files->fallbackPath()).openQuietly());
    for (const bool forced : {false, true}) {
        if (forced)
            s3ExperimentalFeatures::instance()->insert(u"forceFallbackDictionary"_s, true);
        QCOMPARE(dictionary->textWithFallback(2, french), u"Datei"_s);
        QCOMPARE(dictionary->textWithFallback(2, individual), u"own file"_s);
        QCOMPARE(dictionary->textWithFallback(1, french), u"without a source"_s);
    }
}

void tst_s3GuiDictionaryFallback::fallbackThatCannotBeOpenedIsNone()
{
    writeTestFile(m_files->fallbackPath(), "no dictionary, but long enough to look into");
    DictionaryBuilder main;
    main.setText(2, source, u"Datei"_s);
    QCOMPARE(m_files->opened(main)->translateText(u"Datei"_s, french), u"Datei"_s);
}

void tst_s3GuiDictionaryFallback::fallbackTextIsCached()
{
    DictionaryBuilder main;
    main.setText(2, source, u"Datei"_s);
    DictionaryBuilder fallback;
    fallback.setText(2, source, u"Datei"_s).setText(2, french, u"fichier"_s);
    const auto dictionary = m_files->opened(main, fallback);
    QCOMPARE(dictionary->translateText(u"Datei"_s, french), u"fichier"_s);
    s3DisabledFeatures::instance()->insert(u"useFallbackDictionary"_s, true);
    QCOMPARE(dictionary->translateText(u"Datei"_s, french), u"fichier"_s);
    QCOMPARE(dictionary->cachedText(2, french), u"fichier"_s);
}

void tst_s3GuiDictionaryFallback::fallbackTextIsTraced()
{
    DictionaryBuilder main;
    main.setText(2, source, u"Datei"_s);
    DictionaryBuilder fallback;
    fallback.setText(2, source, u"Datei"_s).setText(2, french, u"fichier"_s);
    const auto dictionary = m_files->opened(main, fallback);
    s3TestFlagsGUI::instance()->insert(460);
    QCOMPARE(dictionary->textWithFallback(2, french), u"fichier"_s);
    QCOMPARE(lines, QStringList{u"s3GuiDictionary::textWithFallback() textNumber=2 languageISO=\"fr\" "
                                u"sourceText=\"Datei\" fallbackText=\"fichier\""_s});
}

void tst_s3GuiDictionaryFallback::forcedFallbackIsNotTraced()
{
    DictionaryBuilder main;
    main.setText(2, source, u"Datei"_s);
    const auto dictionary = m_files->opened(main, main);
    s3TestFlagsGUI::instance()->insert(460);
    s3ExperimentalFeatures::instance()->insert(u"forceFallbackDictionary"_s, true);
    QCOMPARE(dictionary->textWithFallback(2, french), u"Datei"_s);
    QCOMPARE(lines, QStringList());
}

QTEST_APPLESS_MAIN(tst_s3GuiDictionaryFallback)
#include "tst_s3guidictionaryfallback.moc"
