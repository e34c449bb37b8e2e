// The dictionaries of the process. They can be opened but not closed, so the tests build on each other.

#include "dictionarybuilder.h"
#include "resourcefile.h"
#include "s3dictionaries.h"
#include "s3guidictionary.h"
#include "s3language.h"
#include "workingdirectory.h"

#include <QDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint32 source = -1;
constexpr qint32 german = 0;
constexpr qint32 english = 1;
constexpr qint32 french = 2;

const WorkingDirectory directory;

const QString translatedBeforeMain = translate(u"before main"_s);
const QString messageBeforeMain = messageText(7);

} // namespace

class tst_s3Dictionaries : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void workBeforeMain();
    void missingMessagesAreReported();
    void programRunsWithoutDictionaryOfTheGui();
    void fallbackOfTheGuiGivesNoSourceTexts();
    void everyPlaceOfTheProductNameIsReplaced();
    void messagesAreInTheCurrentLanguage();
    void messageSymbols();
    void guiTexts();
    void translateFollowsTheLanguage();
};

void tst_s3Dictionaries::workBeforeMain()
{
    QCOMPARE(translatedBeforeMain, u"before main"_s);
    QCOMPARE(messageBeforeMain, u"*** 7 ***"_s);
    QVERIFY(s3GuiDictionary::unknownSourceTexts().contains(u"before main"_s));
}

void tst_s3Dictionaries::missingMessagesAreReported()
{
    QString error;
    QVERIFY(!openDictionaries(error));
    QVERIFY(error.startsWith(QDir::currentPath() + u"/data/msg.dat.0:\n\nCannot open file\n\n"_s));
    QCOMPARE(messageText(1), u"*** 1 ***"_s);
    QVERIFY(messageSymbol(1).isNull());
}

void tst_s3Dictionaries::programRunsWithoutDictionaryOfTheGui()
{
    DictionaryBuilder messages;
    messages.setText(1, source, u"vexa ERP startet Vexa ERP nicht, vexa ERP endet"_s)
        .setText(2, source, u"Zwei"_s)
        .setText(2, english, u"Two"_s)
        .setSymbol(2, "TWO");
    directory.write(u"data/msg.dat.0"_s, messages.build());
    QString error = u"from before"_s;
    QVERIFY(openDictionaries(error));
    QCOMPARE(error, u""_s);
    QCOMPARE(translate(u"Datei"_s), u"Datei"_s);
    QCOMPARE(guiTextCount(), 0);
    QCOMPARE(guiSourceText(1), u""_s);
    QVERIFY(!guiHasSourceText(u"Datei"_s));
    QCOMPARE(guiText(1, german), u"*** 1 ***"_s);
    QVERIFY(!guiHasText(1, german));
}

void tst_s3Dictionaries::fallbackOfTheGuiGivesNoSourceTexts()
{
    DictionaryBuilder fallback;
    fallback.setText(2, source, u"Datei"_s).setText(2, french, u"fichier de secours"_s);
    directory.write(u"data/mng.dat.0"_s, fallback.build());
    QString error;
    QVERIFY(openDictionaries(error));
    QVERIFY(setLanguage(u"F"_s, u""_s));
    QCOMPARE(translate(u"Datei"_s), u"Datei"_s);
}

void tst_s3Dictionaries::everyPlaceOfTheProductNameIsReplaced()
{
    QCOMPARE(messageText(1, german), u"Vexa startet Vexa ERP nicht, Vexa endet"_s);
}

void tst_s3Dictionaries::messagesAreInTheCurrentLanguage()
{
    QVERIFY(setLanguage(u"E"_s, u""_s));
    QCOMPARE(messageText(2), u"Two"_s);
    QCOMPARE(messageText(-2), u"Two"_s);
    QCOMPARE(messageText(2, german), u"Zwei"_s);
    QCOMPARE(messageText(3), u"*** 3 ***"_s);
}

void tst_s3Dictionaries::messageSymbols()
{
    QCOMPARE(messageSymbol(2), u"TWO"_s);
    QCOMPARE(messageSymbol(1), u""_s);
    QVERIFY(!messageSymbol(1).isNull());
    QVERIFY(messageSymbol(3).isNull());
}

void tst_s3Dictionaries::guiTexts()
{
    DictionaryBuilder gui;
    gui.setText(1, source, u"Ende"_s).setText(1, english, u"End"_s);
    gui.setText(2, source, u"Datei"_s).setText(2, english, u"vexa ERP file"_s);
    // It isn't unregistered: the dictionary maps it until the process ends.
    static const ResourceFile resource(u"dictionary"_s, u"mng.dat.0"_s, gui.build());
    QVERIFY(resource.isRegistered());
    QString error;
    QVERIFY(openDictionaries(error));
    QCOMPARE(guiTextCount(), 2);
    QCOMPARE(guiSourceText(1), u"Ende"_s);
    QCOMPARE(guiText(1, english), u"End"_s);
    QCOMPARE(guiText(2, english), u"vexa ERP file"_s);
    QCOMPARE(guiText(3, english), u"*** 3 ***"_s);
    QVERIFY(guiHasText(1, english));
    QVERIFY(!guiHasText(1, french));
    QVERIFY(guiHasSourceText(u"Ende"_s));
    QVERIFY(!guiHasSourceText(u"Anfang"_s));
}

void tst_s3Dictionaries::translateFollowsTheLanguage()
{
    QVERIFY(setLanguage(u"E"_s, u""_s));
    QCOMPARE(translate(u"Ende"_s), u"End"_s);
    QVERIFY(setLanguage(u"D"_s, u""_s));
    QCOMPARE(translate(u"Ende"_s), u"Ende"_s);
    QVERIFY(setLanguage(u"F"_s, u""_s));
    QCOMPARE(translate(u"Datei"_s), u"fichier de secours"_s);
    QCOMPARE(translate(u"Unbekannt"_s), u"Unbekannt"_s);
}

QTEST_APPLESS_MAIN(tst_s3Dictionaries)
#include "tst_s3dictionaries.moc"
