#include "parameterfile.h"
#include "testfile.h"

#include <QStringEncoder>
#include <QTemporaryDir>
#include <QTest>
#include <QTextStream>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype megabyte = 1'048'576;

} // namespace

class tst_ParameterFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fileNameIsAsGiven();
    void missingFileGivesDefaults();
    void directoryGivesDefaults();
    void emptyFileGivesDefaults();
    void sectionHeader_data();
    void sectionHeader();
    void keysOutsideOfTheSectionAreNotSeen();
    void sectionMayContinue();
    void keyLine_data();
    void keyLine();
    void lineThatIsNoKeyIsIgnored_data();
    void lineThatIsNoKeyIsIgnored();
    void emptyValueIsNotTheDefault();
    void lastOfTwoEqualKeysWins();
    void lineEnds_data();
    void lineEnds();
    void intValue_data();
    void intValue();
    void intValueOfAbsentKeyIsTheDefault();
    void boolValue_data();
    void boolValue();
    void listValue_data();
    void listValue();
    void encodings_data();
    void encodings();
    void notUtf8GoesThroughTheSystemEncoding();
    void sameTextAsUtf8IsRecognised();
    void detectEncoding_data();
    void detectEncoding();
    void unknownFallbackGivesNoEncoding();
    void setDetectedEncoding_data();
    void setDetectedEncoding();
    void oddInput_data();
    void oddInput();
    void manySections();
    void keyOfOneMegabyte();
    void lineOfBlanksAlone();

private:
    [[nodiscard]] ParameterFile parse(const QByteArray &bytes);
    [[nodiscard]] QString valueOf(const QByteArray &line, const QString &key);

    QTemporaryDir m_directory;
};

ParameterFile tst_ParameterFile::parse(const QByteArray &bytes)
{
    return ParameterFile(writeTestFile(m_directory.filePath(u"mail.vxm"_s), bytes), u"VEXAMAIL"_s);
}

QString tst_ParameterFile::valueOf(const QByteArray &line, const QString &key)
{
    return parse("[VEXAMAIL]\n" + line + "\n").value(key, u"default"_s);
}

void tst_ParameterFile::fileNameIsAsGiven()
{
    QCOMPARE(ParameterFile(u"no\\such/file"_s, u"VEXAMAIL"_s).fileName(), u"no\\such/file"_s);
}

void tst_ParameterFile::missingFileGivesDefaults()
{
    const ParameterFile file(m_directory.filePath(u"missing"_s), u"VEXAMAIL"_s);
    QCOMPARE(file.value(u"SUBJECT"_s, u"default"_s), u"default"_s);
    QVERIFY(!file.containsKey(u"SUBJECT"_s));
    QVERIFY(file.listValue(u"TO"_s).isEmpty());
}

void tst_ParameterFile::directoryGivesDefaults()
{
    const ParameterFile file(m_directory.path(), u"VEXAMAIL"_s);
    QCOMPARE(file.value(u"SUBJECT"_s, u"default"_s), u"default"_s);
}

void tst_ParameterFile::emptyFileGivesDefaults()
{
    const ParameterFile file = parse("");
    QCOMPARE(file.value(u"SUBJECT"_s, u"default"_s), u"default"_s);
    QCOMPARE(file.intValue(u"PRIORITY"_s, 3), 3);
    QVERIFY(!file.boolValue(u"SEND"_s));
    QVERIFY(file.listValue(u"TO"_s).isEmpty());
}

void tst_ParameterFile::sectionHeader_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<bool>("opens");

    QTest::newRow("upper case") << QByteArray("[VEXAMAIL]") << true;
    QTest::newRow("lower case") << QByteArray("[vexamail]") << true;
    QTest::newRow("mixed case, blanks around") << QByteArray("  [VeXaMaIl]  ") << true;
    QTest::newRow("tabs around") << QByteArray("\t[VEXAMAIL]\t") << true;
    QTest::newRow("blanks inside belong to the name") << QByteArray("[ VEXAMAIL ]") << false;
    QTest::newRow("text behind") << QByteArray("[VEXAMAIL] x") << false;
    QTest::newRow("no header") << QByteArray("") << false;
    QTest::newRow("last bracket ends the name") << QByteArray("[VEXAMAIL]]") << false;
    QTest::newRow("a header may hold an equals sign") << QByteArray("[VEXAMAIL]\n[KEY=other]") << false;
}

void tst_ParameterFile::sectionHeader()
{
    QFETCH(const QByteArray, header);
    const ParameterFile file = parse(header + "\nKEY=value\n");
    QTEST(file.containsKey(u"KEY"_s), "opens");
}

void tst_ParameterFile::keysOutsideOfTheSectionAreNotSeen()
{
    const ParameterFile file = parse("A=before\n[OTHER]\nB=other\n[VEXAMAIL]\nC=mine\n[ANOTHER]\nD=behind\n");
    QVERIFY(!file.containsKey(u"A"_s));
    QVERIFY(!file.containsKey(u"B"_s));
    QVERIFY(file.containsKey(u"C"_s));
    QVERIFY(!file.containsKey(u"D"_s));
}

void tst_ParameterFile::sectionMayContinue()
{
    const ParameterFile file = parse("[VEXAMAIL]\nA=1\n[OTHER]\nA=2\n[vexamail]\nB=3\n");
    QCOMPARE(file.value(u"A"_s, u""_s), u"1"_s);
    QCOMPARE(file.value(u"B"_s, u""_s), u"3"_s);
}

void tst_ParameterFile::keyLine_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");

    QTest::newRow("plain") << QByteArray("SUBJECT=Figures") << u"SUBJECT"_s << u"Figures"_s;
    QTest::newRow("key in another case") << QByteArray("Subject=Figures") << u"sUBJECT"_s << u"Figures"_s;
    QTest::newRow("value keeps its case") << QByteArray("A=MiXed") << u"A"_s << u"MiXed"_s;
    QTest::newRow("value with equals sign") << QByteArray("BODY=a=b") << u"BODY"_s << u"a=b"_s;
    QTest::newRow("value that is one") << QByteArray("BODY==") << u"BODY"_s << u"="_s;
    QTest::newRow("blanks before the key") << QByteArray("  \tA=1") << u"A"_s << u"1"_s;
    QTest::newRow("blank behind the key belongs to it") << QByteArray("SEND =1") << u"SEND"_s << u"default"_s;
    QTest::newRow("... and makes another key") << QByteArray("SEND =1") << u"SEND "_s << u"1"_s;
    QTest::newRow("value is trimmed") << QByteArray("A= \t b c \t") << u"A"_s << u"b c"_s;
    QTest::newRow("inner white space stays") << QByteArray("A=b \t c") << u"A"_s << u"b \t c"_s;
    QTest::newRow("quotes stay") << QByteArray("A=\"b\"") << u"A"_s << u"\"b\""_s;
    QTest::newRow("no escapes") << QByteArray("A=b\\nc") << u"A"_s << u"b\\nc"_s;
    QTest::newRow("bracket at the front alone") << QByteArray("[A=1") << u"[A"_s << u"1"_s;
    QTest::newRow("semicolon makes another key") << QByteArray("; KEY=value") << u"KEY"_s << u"default"_s;
    QTest::newRow("... of this name") << QByteArray("; KEY=value") << u"; KEY"_s << u"value"_s;
}

void tst_ParameterFile::keyLine()
{
    QFETCH(const QByteArray, line);
    QFETCH(const QString, key);
    QTEST(valueOf(line, key), "value");
}

void tst_ParameterFile::lineThatIsNoKeyIsIgnored_data()
{
    QTest::addColumn<QByteArray>("line");

    QTest::newRow("no equals sign") << QByteArray("SUBJECT Figures");
    QTest::newRow("nothing before the equals sign") << QByteArray("=SUBJECT");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("white space") << QByteArray(" \t ");
    QTest::newRow("comment") << QByteArray("# SUBJECT");
}

void tst_ParameterFile::lineThatIsNoKeyIsIgnored()
{
    QFETCH(const QByteArray, line);
    const ParameterFile file = parse("[VEXAMAIL]\n" + line + "\nA=1\n");
    QVERIFY(!file.containsKey(u"SUBJECT"_s));
    QVERIFY(!file.containsKey(u""_s));
    QCOMPARE(file.value(u"A"_s, u""_s), u"1"_s);
}

void tst_ParameterFile::emptyValueIsNotTheDefault()
{
    QCOMPARE(valueOf("SUBJECT=", u"SUBJECT"_s), u""_s);
    QVERIFY(parse("[VEXAMAIL]\nSUBJECT=\n").containsKey(u"SUBJECT"_s));
}

void tst_ParameterFile::lastOfTwoEqualKeysWins()
{
    QCOMPARE(valueOf("A=1\na=2", u"A"_s), u"2"_s);
}

void tst_ParameterFile::lineEnds_data()
{
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("LF") << QByteArray("[VEXAMAIL]\nA=1\nB=2\n");
    QTest::newRow("CRLF") << QByteArray("[VEXAMAIL]\r\nA=1\r\nB=2\r\n");
    QTest::newRow("mixed") << QByteArray("[VEXAMAIL]\r\nA=1\nB=2\r\n");
    QTest::newRow("none at the end") << QByteArray("[VEXAMAIL]\nA=1\nB=2");
}

void tst_ParameterFile::lineEnds()
{
    QFETCH(const QByteArray, bytes);
    const ParameterFile file = parse(bytes);
    QCOMPARE(file.value(u"A"_s, u""_s), u"1"_s);
    QCOMPARE(file.value(u"B"_s, u""_s), u"2"_s);
}

void tst_ParameterFile::intValue_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<int>("number");

    QTest::newRow("decimal") << QByteArray("2") << 2;
    QTest::newRow("hexadecimal") << QByteArray("0x2") << 2;
    QTest::newRow("hexadecimal 16") << QByteArray("0x10") << 16;
    QTest::newRow("octal") << QByteArray("010") << 8;
    QTest::newRow("binary") << QByteArray("0b10") << 2;
    QTest::newRow("no octal digit") << QByteArray("08") << 0;
    QTest::newRow("negative") << QByteArray("-1") << -1;
    QTest::newRow("no number") << QByteArray("abc") << 0;
    QTest::newRow("number with unit") << QByteArray("2x") << 0;
    QTest::newRow("empty") << QByteArray("") << 0;
    QTest::newRow("over 32 bits") << QByteArray("99999999999") << 0;
}

void tst_ParameterFile::intValue()
{
    QFETCH(const QByteArray, value);
    QTEST(parse("[VEXAMAIL]\nPRIORITY=" + value).intValue(u"PRIORITY"_s, 3), "number");
}

void tst_ParameterFile::intValueOfAbsentKeyIsTheDefault()
{
    QCOMPARE(parse("[VEXAMAIL]\n").intValue(u"PRIORITY"_s, 3), 3);
}

void tst_ParameterFile::boolValue_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<bool>("value");

    for (const char *const word : {"1", "j", "J", "y", "Y", " 1 "})
        QTest::newRow(word) << QByteArray("SEND=") + word << true;
    for (const char *const word : {"0", "yes", "true", "ja", "false", "2", "01", "", "n"})
        QTest::addRow("'%s'", word) << QByteArray("SEND=") + word << false;
    QTest::newRow("absent") << QByteArray("OTHER=1") << false;
}

void tst_ParameterFile::boolValue()
{
    QFETCH(const QByteArray, line);
    QTEST(parse("[VEXAMAIL]\n" + line + "\n").boolValue(u"SEND"_s), "value");
}

void tst_ParameterFile::listValue_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<QStringList>("values");

    QTest::newRow("none") << QByteArray("") << QStringList{};
    QTest::newRow("two, in any order") << QByteArray("TO2=b\nTO1=a") << QStringList{u"a"_s, u"b"_s};
    QTest::newRow("a gap ends it") << QByteArray("TO1=a\nTO3=b") << QStringList{u"a"_s};
    QTest::newRow("an empty value ends it") << QByteArray("TO1=\nTO2=b") << QStringList{};
    QTest::newRow("without a number") << QByteArray("TO=a\nTO0=b") << QStringList{};
    QTest::newRow("with a leading zero") << QByteArray("TO01=a") << QStringList{};
    QTest::newRow("duplicates stay here") << QByteArray("TO1=a\nTO2=a") << QStringList{u"a"_s, u"a"_s};
    QTest::newRow("over ten") << QByteArray("TO1=1\nTO2=2\nTO3=3\nTO4=4\nTO5=5\nTO6=6\nTO7=7\nTO8=8\nTO9=9\nTO10=10")
                              << QStringList{u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s,
                                             u"6"_s, u"7"_s, u"8"_s, u"9"_s, u"10"_s};
}

void tst_ParameterFile::listValue()
{
    QFETCH(const QByteArray, lines);
    QTEST(parse("[VEXAMAIL]\n" + lines + "\n").listValue(u"TO"_s), "values");
}

void tst_ParameterFile::encodings_data()
{
    QTest::addColumn<QStringConverter::Encoding>("encoding");
    QTest::addColumn<bool>("mark");

    QTest::newRow("UTF-8") << QStringConverter::Utf8 << false;
    QTest::newRow("UTF-8, marked") << QStringConverter::Utf8 << true;
    QTest::newRow("UTF-16LE, marked") << QStringConverter::Utf16LE << true;
    QTest::newRow("UTF-16BE, marked") << QStringConverter::Utf16BE << true;
    QTest::newRow("UTF-32LE, marked") << QStringConverter::Utf32LE << true;
    QTest::newRow("UTF-32BE, marked") << QStringConverter::Utf32BE << true;
}

void tst_ParameterFile::encodings()
{
    QFETCH(const QStringConverter::Encoding, encoding);
    QFETCH(const bool, mark);
    QStringEncoder encoder(encoding, mark ? QStringConverter::Flag::WriteBom : QStringConverter::Flag::Default);
    const QByteArray bytes = encoder(u"[VEXAMAIL]\r\nSUBJECT=Größe Zażółć Ωμέγα 😀\r\n"_s);
    QCOMPARE(parse(bytes).value(u"SUBJECT"_s, u""_s), u"Größe Zażółć Ωμέγα 😀"_s);
}

void tst_ParameterFile::notUtf8GoesThroughTheSystemEncoding()
{
    const QByteArray value = "Gr\xf6\xdf"
                             "e";
    const QString subject = parse("[VEXAMAIL]\nSUBJECT=" + value + "\n").value(u"SUBJECT"_s, u""_s);
    QCOMPARE(subject, QString::fromLocal8Bit(value));
#ifndef Q_OS_WIN
    // Qt's system encoding is UTF-8 there, in which these bytes stand for nothing.
    QCOMPARE(subject, u"Gr\uFFFD\uFFFDe"_s);
#endif
}

void tst_ParameterFile::sameTextAsUtf8IsRecognised()
{
    QCOMPARE(valueOf(u"SUBJECT=Größe"_s.toUtf8(), u"SUBJECT"_s), u"Größe"_s);
}

void tst_ParameterFile::detectEncoding_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringConverter::Encoding>("encoding");

    QTest::newRow("empty") << QByteArray() << QStringConverter::Utf8;
    QTest::newRow("ASCII") << QByteArray("abc") << QStringConverter::Utf8;
    QTest::newRow("UTF-8") << QByteArray("\xc3\xb6") << QStringConverter::Utf8;
    QTest::newRow("cut UTF-8") << QByteArray("abc\xc3") << QStringConverter::System;
    QTest::newRow("overlong UTF-8") << QByteArray("\xc0\xaf") << QStringConverter::System;
    QTest::newRow("Latin-1") << QByteArray("\xf6") << QStringConverter::System;
    QTest::newRow("UTF-8 mark") << QByteArray("\xef\xbb\xbf\xf6") << QStringConverter::Utf8;
    QTest::newRow("UTF-16LE mark") << QByteArray("\xff\xfe"
                                                 "a\0",
                                                 4)
                                   << QStringConverter::Utf16LE;
    QTest::newRow("UTF-16BE mark") << QByteArray("\xfe\xff\0a", 4) << QStringConverter::Utf16BE;
    QTest::newRow("UTF-32LE mark") << QByteArray("\xff\xfe\0\0a\0\0\0", 8) << QStringConverter::Utf32LE;
    QTest::newRow("UTF-32BE mark") << QByteArray("\0\0\xfe\xff\0\0\0a", 8) << QStringConverter::Utf32BE;
}

void tst_ParameterFile::detectEncoding()
{
    QFETCH(const QByteArray, bytes);
    const auto detected = ParameterFile::detectEncoding(bytes, "Locale");
    QVERIFY(detected.has_value());
    QTEST(*detected, "encoding");
}

void tst_ParameterFile::unknownFallbackGivesNoEncoding()
{
    QVERIFY(!ParameterFile::detectEncoding("\xf6", "no such encoding").has_value());
}

void tst_ParameterFile::setDetectedEncoding_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("fallback");
    QTest::addColumn<QString>("text");

    QTest::newRow("fallback") << QByteArray("\xe4x") << QByteArray("ISO-8859-1") << u"äx"_s;
    QTest::newRow("fallback not needed") << QByteArray("\xc3\xa4x") << QByteArray("ISO-8859-1") << u"äx"_s;
    QTest::newRow("mark before fallback") << QByteArray("\xff\xfe\xe4\0", 4) << QByteArray("ISO-8859-1") << u"ä"_s;
    QTest::newRow("unknown fallback, the stream's own") << QByteArray("\xe4x") << QByteArray("none") << u"\uFFFDx"_s;
}

void tst_ParameterFile::setDetectedEncoding()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QByteArray, fallback);
    QTextStream stream(bytes, QIODevice::ReadOnly);
    ParameterFile::setDetectedEncoding(stream, bytes, fallback.constData());
    QTEST(stream.readAll(), "text");
}

void tst_ParameterFile::oddInput_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("value");

    QTest::newRow("NUL in the value") << QByteArray("[VEXAMAIL]\nA=b\0c\n", 17) << QString(u"b\0c"_s);
    QTest::newRow("NUL bytes alone") << QByteArray(1000, '\0') << u"default"_s;
    QTest::newRow("UTF-16 cut in a character") << QByteArray("\xff\xfe[\0V\0E", 7) << u"default"_s;
    QTest::newRow("UTF-16 with a lone surrogate") << QByteArray("\xff\xfe\0\xd8", 4) << u"default"_s;
    QTest::newRow("mark alone") << QByteArray("\xff\xfe") << u"default"_s;
    QTest::newRow("UTF-16 without mark") << QByteArray("[\0V\0E\0X\0A\0M\0A\0I\0L\0]\0\n\0A\0=\0b\0", 28)
                                         << u"default"_s;
    // A lone CR ends no line for QTextStream: all of it is one line, and no header.
    QTest::newRow("CR alone") << QByteArray("[VEXAMAIL]\rA=1\rB=2\r") << u"default"_s;
}

void tst_ParameterFile::oddInput()
{
    QFETCH(const QByteArray, bytes);
    QTEST(parse(bytes).value(u"A"_s, u"default"_s), "value");
}

void tst_ParameterFile::manySections()
{
    QByteArray bytes;
    for (int i = 0; i < 100'000; ++i)
        bytes += "[section" + QByteArray::number(i) + "]\nA=" + QByteArray::number(i) + "\n";
    QCOMPARE(parse(bytes + "[VEXAMAIL]\nA=mine\n").value(u"A"_s, u""_s), u"mine"_s);
}

void tst_ParameterFile::keyOfOneMegabyte()
{
    const QByteArray key(megabyte, 'K');
    const ParameterFile file = parse("[VEXAMAIL]\n" + key + "=long\nA=1\n");
    QCOMPARE(file.value(QString::fromLatin1(key), u""_s), u"long"_s);
    QCOMPARE(file.value(u"A"_s, u""_s), u"1"_s);
}

void tst_ParameterFile::lineOfBlanksAlone()
{
    // White space fits both what may stand before a key and the key itself: the pattern has many ways to fail.
    const QByteArray blanks(megabyte, ' ');
    QCOMPARE(valueOf(blanks + "\nA=1", u"A"_s), u"1"_s);
}

QTEST_GUILESS_MAIN(tst_ParameterFile)
#include "tst_parameterfile.moc"
