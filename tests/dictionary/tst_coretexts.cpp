// The core's texts with the dictionaries that are shipped.

#include "s3dictionaries.h"
#include "s3file.h"
#include "s3language.h"

#include <QDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

struct Language
{
    const char *letter;
    QString errorOfAMissingFile;
};

const QList<Language> &languages()
{
    static const QList<Language> list{
        {"D", u"Datei nowhere/mail.vxm kann nicht geöffnet werden.\nDatei/Verzeichnis existiert nicht."_s},
        {"E", u"File nowhere/mail.vxm cannot be opened.\nThe file or directory does not exist."_s},
        {"A", u"File nowhere/mail.vxm cannot be opened.\nThe file or directory does not exist."_s},
        {"F", u"Impossible d'ouvrir le fichier nowhere/mail.vxm.\nLe fichier ou le répertoire n'existe pas."_s},
        {"S", u"No se puede abrir el archivo nowhere/mail.vxm.\nEl archivo o el directorio no existe."_s},
        {"I", u"Impossibile aprire il file nowhere/mail.vxm.\nIl file o la directory non esiste."_s},
    };
    return list;
}

/// The numbers that are in use, with their source texts.
QMap<qint32, QString> sourceTexts()
{
    QMap<qint32, QString> texts;
    for (qint32 number = 1; number <= guiTextCount(); ++number) {
        const QString source = guiSourceText(number);
        if (!source.isEmpty())
            texts.insert(number, source);
    }
    return texts;
}

} // namespace

class TestCoreTexts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void switchingTheLanguageChangesAnError_data();
    void switchingTheLanguageChangesAnError();
    void switchingTheLanguageChangesEveryText_data();
    void switchingTheLanguageChangesEveryText();
    void afterAllLanguagesItIsGermanAgain();
};

void TestCoreTexts::initTestCase()
{
    const QDir data(QStringLiteral(LETTERLIFT_DATA));
    QVERIFY(QDir::setCurrent(data.filePath(u".."_s)));
    QString error;
    QVERIFY2(openDictionaries(error), qPrintable(error));
    QVERIFY(sourceTexts().size() > 40);
}

void TestCoreTexts::switchingTheLanguageChangesAnError_data()
{
    QTest::addColumn<QString>("letter");
    QTest::addColumn<QString>("text");
    for (const Language &language : languages())
        QTest::newRow(language.letter) << QString::fromLatin1(language.letter) << language.errorOfAMissingFile;
}

void TestCoreTexts::switchingTheLanguageChangesAnError()
{
    QFETCH(const QString, letter);
    QVERIFY(setLanguage(letter, QString()));
    s3File file(u"nowhere/mail.vxm"_s);
    QVERIFY(!file.open(QIODevice::ReadOnly));
    // The reason is the system's; where the core doesn't know its words, they stay as they are.
    const QString text = file.errorText(QFileDevice::OpenError);
    const QString reason = file.errorString() == u"No such file or directory"_s
                               ? text.section(u'\n', 1)
                               : translate(u"Datei/Verzeichnis existiert nicht."_s);
    QTEST(text.section(u'\n', 0, 0) + u'\n' + reason, "text");
}

void TestCoreTexts::switchingTheLanguageChangesEveryText_data()
{
    QTest::addColumn<QString>("letter");
    for (const char *const letter : {"E", "A", "F", "S", "I"})
        QTest::newRow(letter) << QString::fromLatin1(letter);
}

void TestCoreTexts::switchingTheLanguageChangesEveryText()
{
    QFETCH(const QString, letter);
    // The product, a pattern, and a word that some languages have from the same source.
    const QStringList same{u"Vexa"_s, u"%1 in %2()"_s, u"Details"_s};
    const QMap<qint32, QString> texts = sourceTexts();
    for (auto text = texts.cbegin(); text != texts.cend(); ++text) {
        QVERIFY(setLanguage(u"D"_s, QString()));
        const QString german = translate(text.value());
        QVERIFY(setLanguage(letter, QString()));
        const QString translation = translate(text.value());
        QCOMPARE(translation, guiText(text.key(), indexOfLetter(letter)));
        if (!same.contains(text.value()))
            QVERIFY2(translation != german, qPrintable(translation));
    }
}

void TestCoreTexts::afterAllLanguagesItIsGermanAgain()
{
    QVERIFY(setLanguage(u"D"_s, QString()));
    QCOMPARE(translate(u"Zugriff verweigert"_s), u"Zugriff verweigert"_s);
    QCOMPARE(messageText(531), u"Ja"_s);
    QVERIFY(setLanguage(u"F"_s, QString()));
    QCOMPARE(translate(u"Zugriff verweigert"_s), u"Accès refusé"_s);
    QCOMPARE(messageText(531), u"Oui"_s);
}

QTEST_MAIN(TestCoreTexts)
#include "tst_coretexts.moc"
