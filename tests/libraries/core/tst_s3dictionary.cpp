#include "dictionarybuilder.h"
#include "s3dictionary.h"
#include "testfile.h"

#include <QTemporaryDir>
#include <QTest>

#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint32 source = -1;
constexpr qint32 german = 0;
constexpr qint32 english = 1;
constexpr qint32 french = 2;
constexpr qint32 american = 13;
constexpr qint32 last = 31;
constexpr qint32 smallest = std::numeric_limits<qint32>::min();
constexpr qint32 largest = std::numeric_limits<qint32>::max();

const s3Dictionary madeBeforeMain(u"missing"_s);
const QString textBeforeMain = madeBeforeMain.text(7, german);

QString placeholder(qint32 number)
{
    return u"*** %1 ***"_s.arg(number);
}

/// Seven texts, of which those in the middle aren't in use.
DictionaryBuilder sevenTexts()
{
    DictionaryBuilder builder;
    builder.setText(1, source, u"Größe"_s).setText(1, english, u"Size"_s).setSymbol(1, "SIZE");
    builder.setText(7, source, u"Sieben"_s).setText(7, english, u"Seven"_s).setSymbol(7, "GRÖSSE");
    return builder;
}

} // namespace

class tst_s3Dictionary : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void worksBeforeMain();
    void closedDictionaryAnswersAsForUnknownNumbers();
    void eachCellHasItsText();
    void text_data();
    void text();
    void emptyTextIsNoPlaceholder();
    void sourceText_data();
    void sourceText();
    void hasText_data();
    void hasText();
    void equalTextsStoredApartAreTranslated();
    void symbol_data();
    void symbol();
    void moreColumnsThanLanguages();
    void lastLanguageWithoutColumn();
    void textCountThatIsNoNumberIsZero();

private:
    QString path(const QString &name) const { return m_directory->filePath(name); }

    std::unique_ptr<QTemporaryDir> m_directory;
};

void tst_s3Dictionary::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
}

void tst_s3Dictionary::worksBeforeMain()
{
    QCOMPARE(textBeforeMain, u"*** 7 ***"_s);
}

void tst_s3Dictionary::closedDictionaryAnswersAsForUnknownNumbers()
{
    const s3Dictionary dictionary(writeTestFile(path(u"a"_s), sevenTexts().build()));
    QCOMPARE(dictionary.textCount(), 0);
    QCOMPARE(dictionary.text(1, german), u"*** 1 ***"_s);
    QVERIFY(!dictionary.hasText(1, german));
    QCOMPARE(dictionary.sourceText(1), u""_s);
    QVERIFY(dictionary.symbol(1).isNull());
}

void tst_s3Dictionary::eachCellHasItsText()
{
    const auto cell = [](int number, int language) {
        return u"%1/%2"_s.arg(number).arg(language);
    };
    DictionaryBuilder builder;
    for (int number = 1; number <= 40; ++number) {
        for (int language = source; language <= last; ++language)
            builder.setText(number, language, cell(number, language));
    }
    s3Dictionary dictionary(writeTestFile(path(u"a"_s), builder.build()));
    QVERIFY(dictionary.openQuietly());
    QCOMPARE(dictionary.textCount(), 40);
    for (int number = 1; number <= 40; ++number) {
        for (int language = source; language <= last; ++language)
            QCOMPARE(dictionary.text(number, language), cell(number, language));
        QCOMPARE(dictionary.sourceText(number), cell(number, source));
    }
}

void tst_s3Dictionary::text_data()
{
    QTest::addColumn<qint32>("number");
    QTest::addColumn<qint32>("language");
    QTest::addColumn<QString>("expected");

    QTest::newRow("own text") << 7 << english << u"Seven"_s;
    QTest::newRow("shared with the source text") << 7 << french << u"Sieben"_s;
    QTest::newRow("source text") << 1 << source << u"Größe"_s;
    QTest::newRow("last language") << 7 << last << u"Sieben"_s;
    QTest::newRow("negative number is the same text") << -7 << english << u"Seven"_s;
    QTest::newRow("unused number") << 3 << english << u"*** 3 ***"_s;
    QTest::newRow("zero") << 0 << english << u"*** 0 ***"_s;
    QTest::newRow("behind the last number") << 8 << english << u"*** 8 ***"_s;
    QTest::newRow("placeholder keeps the sign") << -9999 << english << u"*** -9999 ***"_s;
    QTest::newRow("largest number") << largest << english << placeholder(largest);
    QTest::newRow("smallest number") << smallest << english << placeholder(smallest);
    QTest::newRow("behind the last column") << 7 << 32 << u"*** 7 ***"_s;
    QTest::newRow("before the first column") << 7 << -2 << u"*** 7 ***"_s;
    QTest::newRow("largest language") << 7 << largest << u"*** 7 ***"_s;
    QTest::newRow("smallest language") << 7 << smallest << u"*** 7 ***"_s;
}

void tst_s3Dictionary::text()
{
    QFETCH(const qint32, number);
    QFETCH(const qint32, language);
    s3Dictionary dictionary(writeTestFile(path(u"a"_s), sevenTexts().build()));
    QVERIFY(dictionary.openQuietly());
    QTEST(dictionary.text(number, language), "expected");
}

void tst_s3Dictionary::emptyTextIsNoPlaceholder()
{
    DictionaryBuilder builder;
    builder.setText(1, source, u"a"_s).setText(1, english, u""_s).setText(1, french, u"\U0001F4E7 Zürich"_s);
    s3Dictionary dictionary(writeTestFile(path(u"a"_s), builder.build()));
    QVERIFY(dictionary.openQuietly());
    QCOMPARE(dictionary.text(1, english), u""_s);
    QCOMPARE(dictionary.text(1, french), u"\U0001F4E7 Zürich"_s);
    QVERIFY(dictionary.hasText(1, english));
}

void tst_s3Dictionary::sourceText_data()
{
    QTest::addColumn<qint32>("number");
    QTest::addColumn<QString>("expected");

    QTest::newRow("text") << 11 << u"elf"_s;
    QTest::newRow("negative number") << -11 << u"elf"_s;
    QTest::newRow("placeholder of this number") << 12 << u""_s;
    QTest::newRow("placeholder with another sign is a text") << -12 << u"*** 12 ***"_s;
    QTest::newRow("placeholder of another number is a text") << 13 << u"*** 12 ***"_s;
    QTest::newRow("placeholder and more is a text") << 14 << u"*** 14 *** "_s;
    QTest::newRow("asterisk") << 15 << u"*"_s;
    QTest::newRow("zero") << 0 << u""_s;
    QTest::newRow("behind the last number") << 16 << u""_s;
}

void tst_s3Dictionary::sourceText()
{
    QFETCH(const qint32, number);
    DictionaryBuilder builder;
    builder.setText(11, source, u"elf"_s)
        .setText(12, source, u"*** 12 ***"_s)
        .setText(13, source, u"*** 12 ***"_s)
        .setText(14, source, u"*** 14 *** "_s)
        .setText(15, source, u"*"_s);
    s3Dictionary dictionary(writeTestFile(path(u"a"_s), builder.build()));
    QVERIFY(dictionary.openQuietly());
    QTEST(dictionary.sourceText(number), "expected");
}

void tst_s3Dictionary::hasText_data()
{
    QTest::addColumn<qint32>("number");
    QTest::addColumn<qint32>("language");
    QTest::addColumn<bool>("expected");

    QTest::newRow("own text") << 1 << english << true;
    QTest::newRow("negative number") << -1 << english << true;
    QTest::newRow("German") << 1 << german << true;
    QTest::newRow("German, shared with the source text") << 3 << german << true;
    QTest::newRow("shared with German") << 1 << last << false;
    QTest::newRow("American") << 1 << american << true;
    QTest::newRow("American, shared with German") << 3 << american << false;
    QTest::newRow("shared with American") << 1 << french << false;
    QTest::newRow("source text apart from German") << 1 << source << true;
    QTest::newRow("source text shared with German") << 3 << source << false;
    QTest::newRow("unused number") << 2 << german << false;
    QTest::newRow("placeholder of this number") << 4 << english << false;
    QTest::newRow("placeholder of another number") << 4 << french << true;
    QTest::newRow("zero") << 0 << german << false;
    QTest::newRow("behind the last number") << 5 << german << false;
    QTest::newRow("behind the last column") << 1 << 32 << false;
}

void tst_s3Dictionary::hasText()
{
    QFETCH(const qint32, number);
    QFETCH(const qint32, language);
    DictionaryBuilder builder;
    builder.setText(1, source, u"a"_s)
        .setText(1, german, u"A"_s)
        .setText(1, english, u"b"_s)
        .setText(1, american, u"c"_s)
        .share(1, french, american);
    builder.setText(3, source, u"d"_s);
    builder.setText(4, source, u"e"_s).setText(4, english, placeholder(4)).setText(4, french, placeholder(1));
    s3Dictionary dictionary(writeTestFile(path(u"a"_s), builder.build()));
    QVERIFY(dictionary.openQuietly());
    QTEST(dictionary.hasText(number, language), "expected");
}

void tst_s3Dictionary::equalTextsStoredApartAreTranslated()
{
    DictionaryBuilder builder;
    builder.setText(1, source, u"Name"_s)
        .setText(1, german, u"Name"_s)
        .setText(1, american, u"Name"_s)
        .setText(1, english, u"Name"_s);
    s3Dictionary dictionary(writeTestFile(path(u"a"_s), builder.build()));
    QVERIFY(dictionary.openQuietly());
    QVERIFY(dictionary.hasText(1, english));
    QVERIFY(dictionary.hasText(1, american));
    QVERIFY(!dictionary.hasText(1, french));
}

void tst_s3Dictionary::symbol_data()
{
    QTest::addColumn<qint32>("number");
    QTest::addColumn<QString>("expected");

    QTest::newRow("first number") << 1 << u"SIZE"_s;
    QTest::newRow("last number") << 7 << u"GRÖSSE"_s;
    QTest::newRow("negative number") << -7 << u"GRÖSSE"_s;
    QTest::newRow("no symbol") << 2 << u""_s;
    QTest::newRow("zero") << 0 << QString();
    QTest::newRow("behind the last number") << 8 << QString();
    QTest::newRow("smallest number") << smallest << QString();
}

void tst_s3Dictionary::symbol()
{
    QFETCH(const qint32, number);
    QFETCH(const QString, expected);
    s3Dictionary dictionary(writeTestFile(path(u"a"_s), sevenTexts().build()));
    QVERIFY(dictionary.openQuietly());
    QCOMPARE(dictionary.symbol(number), expected);
    QCOMPARE(dictionary.symbol(number).isNull(), expected.isNull());
}

void tst_s3Dictionary::moreColumnsThanLanguages()
{
    DictionaryBuilder builder(98);
    builder.setText(2, source, u"a"_s).setText(2, last, u"b"_s).setText(2, 97, u"c"_s);
    s3Dictionary dictionary(writeTestFile(path(u"a"_s), builder.build()));
    QVERIFY(dictionary.openQuietly());
    QCOMPARE(dictionary.text(2, last), u"b"_s);
    QCOMPARE(dictionary.text(2, 97), u"c"_s);
    QCOMPARE(dictionary.text(2, 98), u"*** 2 ***"_s);
}

void tst_s3Dictionary::lastLanguageWithoutColumn()
{
    DictionaryBuilder builder(31);
    builder.setText(1, source, u"a"_s).setText(1, last - 1, u"b"_s);
    s3Dictionary dictionary(writeTestFile(path(u"a"_s), builder.build()));
    QVERIFY(dictionary.openQuietly());
    QCOMPARE(dictionary.text(1, last - 1), u"b"_s);
    QCOMPARE(dictionary.text(1, last), u"*** 1 ***"_s);
    QVERIFY(!dictionary.hasText(1, last));
}

void tst_s3Dictionary::textCountThatIsNoNumberIsZero()
{
    DictionaryBuilder builder = sevenTexts();
    builder.textCount = "0000x"_ba;
    s3Dictionary dictionary(writeTestFile(path(u"a"_s), builder.build()));
    QVERIFY(dictionary.openQuietly());
    QCOMPARE(dictionary.textCount(), 0);
    QCOMPARE(dictionary.text(1, german), u"*** 1 ***"_s);
}

QTEST_APPLESS_MAIN(tst_s3Dictionary)
#include "tst_s3dictionary.moc"
