#include "s3string.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

class tst_s3StringEscapes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void toBackslashes();
    void toSlashes();
    void doubleBackslashes();
    void percentEncodeKeepingPercent_data();
    void percentEncodeKeepingPercent();
    void percentEncode_data();
    void percentEncode();
    void percentDecode_data();
    void percentDecode();
    void encodedTextComesBack();
    void escapeNonPrintable_data();
    void escapeNonPrintable();
    void removeMnemonics_data();
    void removeMnemonics();
    void mnemonic_data();
    void mnemonic();
    void elide_data();
    void elide();
    void replaceProductName();
};

void tst_s3StringEscapes::toBackslashes()
{
    const QString path = u"C:/tmp\\a/b"_s;
    QCOMPARE(s3String::toBackslashes(path), u"C:\\tmp\\a\\b"_s);
    QString changed = path;
    s3String::toBackslashes(changed);
    QCOMPARE(changed, u"C:\\tmp\\a\\b"_s);
    QCOMPARE(path, u"C:/tmp\\a/b"_s);
}

void tst_s3StringEscapes::toSlashes()
{
    QCOMPARE(s3String::toSlashes(u"C:\\tmp\\a/b"_s), u"C:/tmp/a/b"_s);
    QCOMPARE(s3String::toSlashes(QString()), QString());
}

void tst_s3StringEscapes::doubleBackslashes()
{
    QCOMPARE(s3String::doubleBackslashes(u"\\a\\\\b/\\"_s), u"\\\\a\\\\\\\\b/\\\\"_s);
    QCOMPARE(s3String::doubleBackslashes(u"a/b"_s), u"a/b"_s);
}

void tst_s3StringEscapes::percentEncodeKeepingPercent_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("encoded");

    QTest::newRow("encoded text passes whole") << u"a b%20c"_s << u"a%20b%20c"_s;
    QTest::newRow("what stays") << u"!/()*':-._~aZ09"_s << u"!/()*':-._~aZ09"_s;
    QTest::newRow("what doesn't") << u"\"#$&+,;<=>?@[\\]^`{|}"_s
                                  << u"%22%23%24%26%2B%2C%3B%3C%3D%3E%3F%40%5B%5C%5D%5E%60%7B%7C%7D"_s;
    QTest::newRow("UTF-8") << u"\u00e4\u20ac"_s << u"%C3%A4%E2%82%AC"_s;
    QTest::newRow("lone percent") << u"100%"_s << u"100%"_s;
    QTest::newRow("encoded percent") << u"%25"_s << u"%25"_s;
    QTest::newRow("empty") << u""_s << u""_s;
}

void tst_s3StringEscapes::percentEncodeKeepingPercent()
{
    QFETCH(const QString, text);
    QTEST(s3String::percentEncodeKeepingPercent(text), "encoded");
}

void tst_s3StringEscapes::percentEncode_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("encoded");

    QTest::newRow("percent") << u"a b%20c"_s << u"a%20b%2520c"_s;
    QTest::newRow("no exclusions") << u"!/()*':"_s << u"%21%2F%28%29%2A%27%3A"_s;
    QTest::newRow("what stays") << u"-._~aZ09"_s << u"-._~aZ09"_s;
    QTest::newRow("UTF-8") << u"\U0001f600"_s << u"%F0%9F%98%80"_s;
    QTest::newRow("empty") << u""_s << u""_s;
}

void tst_s3StringEscapes::percentEncode()
{
    QFETCH(const QString, text);
    QTEST(s3String::percentEncode(text), "encoded");
}

void tst_s3StringEscapes::percentDecode_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("decoded");

    QTest::newRow("plus is a blank") << u"a+b"_s << u"a b"_s;
    QTest::newRow("two digits") << u"a%20b"_s << u"a b"_s;
    QTest::newRow("at the end") << u"a%41"_s << u"aA"_s;
    QTest::newRow("both cases") << u"%c3%A4"_s << u"\u00e4"_s;
    QTest::newRow("percent alone") << u"%"_s << u"%"_s;
    QTest::newRow("one digit") << u"a%4"_s << u"a%4"_s;
    QTest::newRow("no digits") << u"%zz%4g%g4"_s << u"%zz%4g%g4"_s;
    QTest::newRow("a sign is no digit") << u"%+4%-4"_s << u"% 4%-4"_s;
    QTest::newRow("a blank is no digit") << u"% 4"_s << u"% 4"_s;
    QTest::newRow("percent before an escape") << u"%%41"_s << u"%A"_s;
    QTest::newRow("decoded percent isn't looked at again") << u"%2541"_s << u"%41"_s;
    QTest::newRow("null character") << u"a%00b"_s << u"a\0b"_s;
    QTest::newRow("broken UTF-8") << u"%FF"_s << u"\ufffd"_s;
    QTest::newRow("characters beside escapes") << u"\u20ac%20\u20ac"_s << u"\u20ac \u20ac"_s;
    QTest::newRow("nothing to decode") << u"a/b"_s << u"a/b"_s;
    QTest::newRow("empty") << u""_s << u""_s;
}

void tst_s3StringEscapes::percentDecode()
{
    QFETCH(const QString, text);
    QTEST(s3String::percentDecode(text), "decoded");
}

void tst_s3StringEscapes::encodedTextComesBack()
{
    QString text;
    for (char16_t c = 0; c < 0x300; ++c)
        text += QChar(c);
    QCOMPARE(s3String::percentDecode(s3String::percentEncode(text)), text);
}

void tst_s3StringEscapes::escapeNonPrintable_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("escaped");

    QTest::newRow("printable") << u"a \u00e4\u20ac\\"_s << u"a \u00e4\u20ac\\"_s;
    QTest::newRow("tab and line ends stay") << u"\t\r\n"_s << u"\t\r\n"_s;
    QTest::newRow("filled up to three digits") << u"a\x07"
                                                  u"b"_s
                                               << u"a\\007b"_s;
    QTest::newRow("null character") << u"\0"_s << u"\\000"_s;
    QTest::newRow("three digits") << u"\x7f\u00ad"_s << u"\\127\\173"_s;
    QTest::newRow("more digits") << u"\u200b\ufeff"_s << u"\\8203\\65279"_s;
    QTest::newRow("private use") << u"\ue000"_s << u"\\57344"_s;
    QTest::newRow("each half of a pair") << u"\U0001f600"_s << u"\\55357\\56832"_s;
    QTest::newRow("at both ends") << u"\x01"
                                     u"a\x02"_s
                                  << u"\\001a\\002"_s;
    QTest::newRow("empty") << u""_s << u""_s;
}

void tst_s3StringEscapes::escapeNonPrintable()
{
    QFETCH(const QString, text);
    QTEST(s3String::escapeNonPrintable(text), "escaped");
}

void tst_s3StringEscapes::removeMnemonics_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("result");

    QTest::newRow("one") << u"&File"_s << u"File"_s;
    QTest::newRow("two become one") << u"A && B"_s << u"A & B"_s;
    QTest::newRow("three") << u"&&&a"_s << u"&a"_s;
    QTest::newRow("four") << u"&&&&"_s << u"&&"_s;
    QTest::newRow("at the end it stays") << u"a&"_s << u"a&"_s;
    QTest::newRow("alone it stays") << u"&"_s << u"&"_s;
    QTest::newRow("pair at the end") << u"a&&"_s << u"a&"_s;
    QTest::newRow("none") << u"File"_s << u"File"_s;
    QTest::newRow("empty") << u""_s << u""_s;
}

void tst_s3StringEscapes::removeMnemonics()
{
    QFETCH(QString, text);
    s3String::removeMnemonics(text);
    QTEST(text, "result");
}

void tst_s3StringEscapes::mnemonic_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QChar>("character");

    QTest::newRow("first") << u"&File"_s << QChar(u'F');
    QTest::newRow("behind a pair") << u"A && &B"_s << QChar(u'B');
    QTest::newRow("only pairs") << u"A && B &&"_s << QChar();
    QTest::newRow("third of three") << u"&&&a"_s << QChar(u'a');
    QTest::newRow("at the end") << u"a&"_s << QChar();
    QTest::newRow("last character") << u"a&b"_s << QChar(u'b');
    QTest::newRow("the first of two") << u"&a&b"_s << QChar(u'a');
    QTest::newRow("none") << u"File"_s << QChar();
    QTest::newRow("empty") << u""_s << QChar();
}

void tst_s3StringEscapes::mnemonic()
{
    QFETCH(const QString, text);
    QTEST(s3String::mnemonic(text), "character");
}

void tst_s3StringEscapes::elide_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("elided");

    const QString path = u"C:/very/long/path/name.txt"_s;
    QTest::newRow("path in the middle, 12 characters besides the dots") << path << 15 << u"C:/ver...me.txt"_s;
    QTest::newRow("one more on the left") << path << 14 << u"C:/ver...e.txt"_s;
    QTest::newRow("path with one character") << path << 4 << u"C..."_s;
    QTest::newRow("text at the end") << u"no directory here"_s << 9 << u"no dir..."_s;
    QTest::newRow("too narrow for dots") << path << 3 << u"C:/"_s;
    QTest::newRow("one") << path << 1 << u"C"_s;
    QTest::newRow("no width") << path << 0 << path;
    QTest::newRow("negative width") << path << -1 << path;
    QTest::newRow("fits exactly") << u"abcdef"_s << 6 << u"abcdef"_s;
    QTest::newRow("one too long") << u"abcdef"_s << 5 << u"ab..."_s;
    QTest::newRow("directory without name") << u"/directory/"_s << 8 << u"/di...y/"_s;
    QTest::newRow("empty") << u""_s << 2 << u""_s;
}

void tst_s3StringEscapes::elide()
{
    QFETCH(const QString, text);
    QFETCH(const int, width);
    QTEST(s3String::elide(text, width), "elided");
}

void tst_s3StringEscapes::replaceProductName()
{
    QString text = u"vexa ERP, Vexa ERP and vexa ERPvexa ERP"_s;
    s3String::replaceProductName(text);
    QCOMPARE(text, u"Vexa, Vexa ERP and VexaVexa"_s);
}

QTEST_APPLESS_MAIN(tst_s3StringEscapes)
#include "tst_s3stringescapes.moc"
