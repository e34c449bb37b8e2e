#include "simulation/mailtext.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

class tst_MailText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void plainToHtml();
    void htmlToPlain();
    void decodeHtmlFile_data();
    void decodeHtmlFile();
    void insertHtml_data();
    void insertHtml();
};

void tst_MailText::plainToHtml()
{
    QCOMPARE(plainTextToHtml(u""_s), u""_s);
    QCOMPARE(plainTextToHtml(u"a<b\r\nc"_s), u"<html><body>a&lt;b<br>\nc</body></html>"_s);
}

void tst_MailText::htmlToPlain()
{
    QCOMPARE(htmlToPlainText(u""_s), u""_s);
    QCOMPARE(htmlToPlainText(u"<p>a &lt; b</p><p>c<br>d</p>"_s), u"a < b\nc\nd"_s);
}

void tst_MailText::decodeHtmlFile_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("html");

    QTest::newRow("empty") << QByteArray() << u""_s;
    QTest::newRow("UTF-8, nothing said") << QByteArray("<p>\xc3\xa4") << u"<p>ä"_s;
    QTest::newRow("Latin-1, nothing said") << QByteArray("<p>\xe4") << u"<p>ä"_s;
    QTest::newRow("UTF-8, said") << QByteArray("<meta charset=\"utf-8\"><p>\xc3\xa4")
                                 << u"<meta charset=\"utf-8\"><p>ä"_s;
    QTest::newRow("Latin-1, said")
        << QByteArray("<meta http-equiv=Content-Type content=\"text/html; charset=iso-8859-1\"><p>\xc3\xa4")
        << u"<meta http-equiv=Content-Type content=\"text/html; charset=iso-8859-1\"><p>Ã¤"_s;
    QTest::newRow("UTF-16LE, marked") << QByteArray("\xff\xfe<\0p\0>\0\xe4\0", 10) << u"<p>ä"_s;
}

void tst_MailText::decodeHtmlFile()
{
    QFETCH(const QByteArray, bytes);
    QTEST(::decodeHtmlFile(bytes), "html");
}

void tst_MailText::insertHtml_data()
{
    QTest::addColumn<QString>("inserted");
    QTest::addColumn<QString>("existing");
    QTest::addColumn<QString>("result");

    const QString document = u"<html><head></head><BODY class=x>%1</BODY></html>"_s;
    QTest::newRow("into nothing") << document.arg(u"a"_s) << u""_s << document.arg(u"a"_s);
    QTest::newRow("fragments") << u"<p>a"_s << u"<p>b"_s << u"<p>a<p>b"_s;
    QTest::newRow("document before fragment") << document.arg(u"a"_s) << u"<p>b"_s << document.arg(u"a<p>b"_s);
    QTest::newRow("two documents") << document.arg(u"a"_s) << document.arg(u"b"_s) << document.arg(u"ab"_s);
    QTest::newRow("fragment before document") << u"<p>a"_s << document.arg(u"b"_s) << u"<p>a"_s + document.arg(u"b"_s);
    QTest::newRow("body without end") << document.arg(u"a"_s) << u"<body>b"_s << document.arg(u"ab"_s);
}

void tst_MailText::insertHtml()
{
    QFETCH(const QString, inserted);
    QFETCH(const QString, existing);
    QTEST(::insertHtml(inserted, existing), "result");
}

QTEST_GUILESS_MAIN(tst_MailText)
#include "tst_mailtext.moc"
