#include "codepage.h"
#include "s3string.h"

#include <QHash>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

const QHash<int, QChar> &changedPositions()
{
    static const QHash<int, QChar> positions = {
        {158, u'İ'}, {177, u'ő'}, {178, u'ű'}, {185, u'Ğ'}, {186, u'ğ'}, {187, u'Ş'}, {188, u'ş'},
        {200, u'Ć'}, {201, u'Ł'}, {202, u'Ń'}, {203, u'Ś'}, {204, u'Ź'}, {205, u'Ż'}, {206, u'ż'},
        {208, u'ą'}, {209, u'ć'}, {219, u'ę'}, {220, u'ł'}, {221, u'Ą'}, {223, u'ń'}, {231, u'ś'},
        {232, u'ź'}, {240, u'Ő'}, {242, u'Ű'}, {243, u'Ę'}, {246, u'œ'}, {247, u'Œ'}, {254, u'€'}};
    return positions;
}

QString characterOf(int byte)
{
    const QByteArray bytes(1, char(byte));
    return s3String::fromByteText(bytes.constData());
}

/// What an escaped character consists of.
QByteArray escaped(const QByteArray &utf8)
{
    return '\xff' + utf8;
}

} // namespace

class tst_s3ByteText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void changedPositionsAreAsListed();
    void otherPositionsAreTheSystemsCodePage850();
    void everyByteComesBack();
    void everyScalarValueComesBack();
    void toByteText_data();
    void toByteText();
    void nullCharacterIsAByte();
    void sizeIsExact();
    void fromByteText_data();
    void fromByteText();
    void nullPointerGivesEmptyText();
    void brokenEscapesAreReadInOne();
};

void tst_s3ByteText::changedPositionsAreAsListed()
{
    QCOMPARE(changedPositions().size(), 28);
    for (auto it = changedPositions().cbegin(); it != changedPositions().cend(); ++it) {
        QCOMPARE(characterOf(it.key()), QString(it.value()));
        QCOMPARE(s3String::toByteText(it.value()), QByteArray(1, char(it.key())));
    }
}

void tst_s3ByteText::otherPositionsAreTheSystemsCodePage850()
{
    QVERIFY2(!fromCodePage(850, "a").isNull(), "This system doesn't know code page 850");
    int compared = 0;
    for (int byte = 1; byte < 255; ++byte) {
        const QString system = fromCodePage(850, QByteArray(1, char(byte)));
        if (changedPositions().contains(byte)) {
            QVERIFY2(characterOf(byte) != system, qPrintable(QString::number(byte)));
        } else {
            QCOMPARE(characterOf(byte), system);
            ++compared;
        }
    }
    QCOMPARE(compared, 254 - 28);
}

void tst_s3ByteText::everyByteComesBack()
{
    for (int byte = 1; byte < 255; ++byte) {
        const QString character = characterOf(byte);
        QCOMPARE(character.size(), 1);
        QCOMPARE(s3String::toByteText(character), QByteArray(1, char(byte)));
    }
}

void tst_s3ByteText::everyScalarValueComesBack()
{
    for (char32_t code = 1; code <= QChar::LastValidCodePoint; ++code) {
        if (QChar::isSurrogate(code))
            continue;
        const QString character = QString::fromUcs4(&code, 1);
        const QByteArray bytes = s3String::toByteText(character);
        if (code == 0xfeff) {
            QVERIFY(bytes.isEmpty());
            continue;
        }
        if (bytes.size() != 1 || bytes == "\xff")
            QCOMPARE(bytes, escaped(character.toUtf8()));
        QCOMPARE(s3String::fromByteText(bytes.constData()), character);
    }
}

void tst_s3ByteText::toByteText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("empty") << u""_s << ""_ba;
    QTest::newRow("ASCII") << u"Abc\t\x7f"_s << "Abc\t\x7f"_ba;
    QTest::newRow("umlauts") << u"äöüß"_s << "\x84\x94\x81\xe1"_ba;
    QTest::newRow("two bytes of UTF-8") << u"aЖb"_s
                                        << "a\xff\xd0\x96"
                                           "b"_ba;
    QTest::newRow("three bytes of UTF-8") << u"a漢b"_s
                                          << "a\xff\xe6\xbc\xa2"
                                             "b"_ba;
    QTest::newRow("four bytes of UTF-8") << u"a😀b"_s
                                         << "a\xff\xf0\x9f\x98\x80"
                                            "b"_ba;
    QTest::newRow("no-break space has no place") << u"\u00a0"_s << "\xff\xc2\xa0"_ba;
    QTest::newRow("character of a changed position") << u"×"_s << "\xff\xc3\x97"_ba;
    QTest::newRow("byte order mark gives nothing") << u"\ufeffa\ufeffb\ufeff"_s << "ab"_ba;
    QTest::newRow("its halves are others") << u"\ufffe\uff00"_s << "\xff\xef\xbf\xbe\xff\xef\xbc\x80"_ba;
    QTest::newRow("lone high surrogate") << QString(QChar(0xd83d)) + u'a' << "?a"_ba;
    QTest::newRow("lone low surrogate") << u'a' + QString(QChar(0xde00)) << "a?"_ba;
    QTest::newRow("surrogates the wrong way round") << QString(QChar(0xde00)) + QChar(0xd83d) << "??"_ba;
    QTest::newRow("nothing but escapes") << u"ЖЖ😀"_s << "\xff\xd0\x96\xff\xd0\x96\xff\xf0\x9f\x98\x80"_ba;
}

void tst_s3ByteText::toByteText()
{
    QFETCH(const QString, text);
    QTEST(s3String::toByteText(text), "bytes");
}

void tst_s3ByteText::nullCharacterIsAByte()
{
    QCOMPARE(s3String::toByteText(u"a\0b"_s), "a\0b"_ba);
    QCOMPARE(s3String::fromByteText("a\0b"), u"a"_s);
}

void tst_s3ByteText::sizeIsExact()
{
    const QByteArray bytes = s3String::toByteText(u"a"_s.repeated(1000) + u"Ж"_s.repeated(1000));
    QCOMPARE(bytes.size(), 4000);
    QCOMPARE(bytes.constData()[4000], '\0');
    QCOMPARE(s3String::toByteText(QString()).constData()[0], '\0');
}

void tst_s3ByteText::fromByteText_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");

    QTest::newRow("empty") << ""_ba << u""_s;
    QTest::newRow("ASCII") << "Abc\t\x7f"_ba << u"Abc\t\x7f"_s;
    QTest::newRow("places") << "\x80\xb1\xfe"_ba << u"Çő€"_s;
    QTest::newRow("escaped, one byte") << "\xff"
                                          "ab"_ba
                                       << u"ab"_s;
    QTest::newRow("escaped, two bytes") << "\xff\xc2\xa0\x84"_ba << u"\u00a0ä"_s;
    QTest::newRow("escaped, three bytes") << "\xff\xe6\xbc\xa2\x84"_ba << u"漢ä"_s;
    QTest::newRow("escaped, four bytes") << "\xff\xf0\x9f\x98\x80\x84"_ba << u"😀ä"_s;
    QTest::newRow("escape at the end") << "a\xff"_ba << u"a"_s;
    QTest::newRow("end within a sequence") << "a\xff\xe6\xbc"_ba << QString::fromUtf8("a\xe6\xbc");
    QTest::newRow("continuation byte is one byte") << "\xff\x80"
                                                      "a"_ba
                                                   << QString::fromUtf8("\x80"
                                                                        "a");
    QTest::newRow("escaped escape") << "\xff\xff"
                                       "a"_ba
                                    << QString::fromUtf8("\xff"
                                                         "a");
    QTest::newRow("lead byte takes what follows") << "\xff\xc3\xff\x84"_ba << QString::fromUtf8("\xc3\xff") + u'ä';
    QTest::newRow("overlong form") << "\xff\xc0\x80"
                                      "a"_ba
                                   << QString::fromUtf8("\xc0\x80"
                                                        "a");
    QTest::newRow("surrogate in UTF-8") << "\xff\xed\xa0\x80"
                                           "a"_ba
                                        << QString::fromUtf8("\xed\xa0\x80"
                                                             "a");
    QTest::newRow("past the last code point") << "\xff\xf4\x90\x80\x80"_ba << QString::fromUtf8("\xf4\x90\x80\x80");
    QTest::newRow("five-byte form is one byte") << "\xff\xf8"
                                                   "abcd"_ba
                                                << QString::fromUtf8("\xf8"
                                                                     "abcd");
    QTest::newRow("byte order mark at the start goes") << "\xff\xef\xbb\xbf"
                                                          "a"_ba
                                                       << u"a"_s;
    QTest::newRow("byte order mark elsewhere stays") << "a\xff\xef\xbb\xbf"_ba << u"a\ufeff"_s;
}

void tst_s3ByteText::fromByteText()
{
    QFETCH(const QByteArray, bytes);
    QTEST(s3String::fromByteText(bytes.constData()), "text");
}

void tst_s3ByteText::nullPointerGivesEmptyText()
{
    QVERIFY(s3String::fromByteText(nullptr).isEmpty());
}

void tst_s3ByteText::brokenEscapesAreReadInOne()
{
    // The last byte that the first escape takes begins a character that the second one completes.
    QCOMPARE(s3String::fromByteText("\xff\xe6"
                                    "a\xc3\xff\xa4"),
             QString::fromUtf8("\xe6"
                               "aä"));
    QCOMPARE(s3String::fromByteText("\x84\xff\xe6"
                                    "a\xc3\xff\xa4\x84"),
             QString::fromUtf8("ä\xe6"
                               "aää"));
}

QTEST_APPLESS_MAIN(tst_s3ByteText)
#include "tst_s3bytetext.moc"
