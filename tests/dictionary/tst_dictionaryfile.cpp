// The files as the compiler makes them and the program reads them.

#include "dictionaryfile.h"
#include "s3dictionary.h"
#include "s3language.h"
#include "testfile.h"

#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

using namespace Qt::Literals::StringLiterals;

namespace {

/// With a text pool of its size, and a symbol pool of \a symbolSize bytes.
Dictionary oneText(qsizetype symbolSize)
{
    Entry entry;
    entry.source = u"Größe"_s;
    // The empty symbol comes first, and each has an end.
    entry.symbol = QString(symbolSize - 2, u'S');
    Dictionary dictionary;
    dictionary.entries.emplace(1, entry);
    return dictionary;
}

qsizetype sizeOfTextPool(const QByteArray &file)
{
    return qsizetype(qFromBigEndian<quint32>(file.constData() + 11));
}

} // namespace

class tst_DictionaryFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachLanguageHasTheColumnThatTheProgramReads();
    void sharedLanguagesAreThoseOfTheProgram();
    void cataloguesAreNamedByTheCodesOfTheProgram();
    void textsHaveRoomForAsMuchAsTheOffsetsCount();
    void symbolsHaveRoomForAsMuchAsTheOffsetsCount();
};

void tst_DictionaryFile::eachLanguageHasTheColumnThatTheProgramReads()
{
    QCOMPARE(languages().size(), languageCount());
    Entry entry;
    entry.source = u"source"_s;
    for (int index = 0; index < languages().size(); ++index)
        entry.cells[index] = {Cell::Own, u"text of "_s + languages().at(index).letter};
    Dictionary dictionary;
    dictionary.entries.emplace(7, entry);
    QString error;
    const std::optional<QByteArray> bytes = encodeDictionary(dictionary, error);
    QVERIFY2(bytes, qPrintable(error));

    const QTemporaryDir folder;
    s3Dictionary read(writeTestFile(folder.filePath(u"a"_s), *bytes));
    QVERIFY2(read.open(error), qPrintable(error));
    QCOMPARE(read.sourceText(7), u"source"_s);
    for (const QString &letter : languageLetters()) {
        QCOMPARE(read.text(7, indexOfLetter(letter)), u"text of "_s + letter);
        QVERIFY(read.hasText(7, indexOfLetter(letter)));
    }
}

void tst_DictionaryFile::sharedLanguagesAreThoseOfTheProgram()
{
    QCOMPARE(firstLanguage, indexOfLetter(u"D"_s));
    QCOMPARE(secondLanguage, indexOfLetter(u"A"_s));
}

void tst_DictionaryFile::cataloguesAreNamedByTheCodesOfTheProgram()
{
    for (const Language &language : languages()) {
        const QString letter = language.letter;
        const QString expected = isIndividual(letter) ? u"individual-"_s + letter : isoCode(letter).replace(u'-', u'_');
        QCOMPARE(language.name, expected);
    }
}

void tst_DictionaryFile::textsHaveRoomForAsMuchAsTheOffsetsCount()
{
    const Dictionary dictionary = oneText(2);
    QString error;
    const std::optional<QByteArray> bytes = encodeDictionary(dictionary, error);
    QVERIFY2(bytes, qPrintable(error));
    const qsizetype size = sizeOfTextPool(*bytes);
    // The empty text and this one, each with its end.
    QCOMPARE(size, 2 * (1 + 6));
    QCOMPARE(encodeDictionary(dictionary, error, size), bytes);
    QCOMPARE(error, u""_s);
    QVERIFY(!encodeDictionary(dictionary, error, size - 1));
    QCOMPARE(error, u"The texts are more than the 13 bytes that the format has room for."_s);
}

void tst_DictionaryFile::symbolsHaveRoomForAsMuchAsTheOffsetsCount()
{
    const Dictionary dictionary = oneText(100);
    QString error;
    QVERIFY2(encodeDictionary(dictionary, error, 100), qPrintable(error));
    QVERIFY(!encodeDictionary(dictionary, error, 99));
    QCOMPARE(error, u"The texts are more than the 99 bytes that the format has room for."_s);
}

QTEST_APPLESS_MAIN(tst_DictionaryFile)
#include "tst_dictionaryfile.moc"
