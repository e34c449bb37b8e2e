#include "s3readabletext.h"

#include <QElapsedTimer>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

class tst_s3ReadableText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readableText_data();
    void readableText();
    void hugeTextIsReadQuickly_data();
    void hugeTextIsReadQuickly();
    void shortenedText_data();
    void shortenedText();
};

void tst_s3ReadableText::readableText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("readable");

    QTest::newRow("plain text stays") << u" a  b\n\n<c> & d "_s << u" a  b\n\n<c> & d "_s;
    QTest::newRow("line ends") << u"a\r\nb"_s << u"a\nb"_s;
    QTest::newRow("null characters") << u"a"_s + QChar(u'\0') + u"b"_s << u"ab"_s;
    QTest::newRow("empty") << u""_s << u""_s;
    QTest::newRow("blocks") << u"<p>a</p><p>b<br>c</p><div>d</div>"_s << u"a\nb\nc\nd"_s;
    QTest::newRow("list") << u"<ul><li>a</li><li>b</li></ul>"_s << u"a\nb"_s;
    QTest::newRow("inline") << u"<b>a</b> <a href=\"x\">b</a>c"_s << u"a bc"_s;
    QTest::newRow("white space") << u"<p>a \n\t b</p>\n\n <p>c</p>"_s << u"a b\nc"_s;
    QTest::newRow("white space in pre") << u"<pre>a  b\n\n c</pre>"_s << u"a  b\n\n c"_s;
    QTest::newRow("behind pre") << u"<pre>a  b</pre>c  d"_s << u"a  b\nc d"_s;
    QTest::newRow("references") << u"<p>&lt;&gt;&amp;&quot;&apos;&nbsp;&#228;&#xE4;&#x1F600;</p>"_s
                                << u"<>&\"' \u00E4\u00E4\U0001F600"_s;
    QTest::newRow("what is no reference") << u"<p>a & b &; &nosuch; &#; &#0; &#xD800; &#x110000; &amp"_s
                                          << u"a & b &; &nosuch; &#; &#0; &#xD800; &#x110000; &amp"_s;
    QTest::newRow("reference made of another") << u"<p>&amp;lt;</p>"_s << u"&lt;"_s;
    QTest::newRow("sign within an attribute")
        << u"<p>a <a title=\"x > y\">b</a> <a title='>\"'>c</a></p>"_s << u"a b c"_s;
    QTest::newRow("quotation mark that isn't closed") << u"<p>a <b title=\"x>c</b>"_s << u"a <b title=\"x>c"_s;
    QTest::newRow("tag within a tag") << u"<p>a <b <i>c</i></p>"_s << u"a <b c"_s;
    QTest::newRow("sign within a comment") << u"<p>a<!-- x > y -->b</p>"_s << u"ab"_s;
    QTest::newRow("comment that doesn't end") << u"<p>a<!-- x > y"_s << u"a<!-- x > y"_s;
    QTest::newRow("document type") << u"<!DOCTYPE html><p>a</p>"_s << u"a"_s;
    QTest::newRow("style, script and title")
        << u"<html><head><title>t</title><STYLE>p > b { x }</style><script>if (a<b) c</script></head><p>a</p></html>"_s
        << u"a"_s;
    QTest::newRow("style that doesn't end") << u"<p>a<style>b"_s << u"ab"_s;
    QTest::newRow("sign that begins no tag") << u"<p>1 < 2, 3 <4> <</p>"_s << u"1 < 2, 3 <"_s;
    QTest::newRow("tag that doesn't end") << u"<p>a <b"_s << u"a <b"_s;
    QTest::newRow("comment") << u"<p>a<!-- x -->b</p>"_s << u"ab"_s;
    QTest::newRow("capitals") << u"<HTML><BODY>a<BR/>b</BODY></HTML>"_s << u"a\nb"_s;
}

void tst_s3ReadableText::readableText()
{
    QFETCH(const QString, text);
    QTEST(s3ReadableText(text), "readable");
}

void tst_s3ReadableText::hugeTextIsReadQuickly_data()
{
    QTest::addColumn<QString>("repeated");
    QTest::newRow("references that don't end") << u"&a"_s;
    QTest::newRow("signs") << u"<"_s;
    QTest::newRow("tags that don't end") << u"<a "_s;
    QTest::newRow("quotation marks") << u"<a \""_s;
    QTest::newRow("quotation marks of both kinds") << u"<a \" <b '"_s;
    QTest::newRow("comments that don't end") << u"<!-- "_s;
    QTest::newRow("styles that don't end") << u"<style>"_s;
}

void tst_s3ReadableText::hugeTextIsReadQuickly()
{
    QFETCH(const QString, repeated);
    const QString text = u"<p>x</p>"_s + repeated.repeated(500'000);
    QElapsedTimer timer;
    timer.start();
    QVERIFY(s3ReadableText(text).startsWith(u'x'));
    QVERIFY2(timer.elapsed() < 10'000, qPrintable(QString::number(timer.elapsed())));
}

void tst_s3ReadableText::shortenedText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shortened");
    const QString lines = u"line\n"_s.repeated(40);
    const QString characters = u"x"_s.repeated(3000);
    QTest::newRow("nothing") << u""_s << u""_s;
    QTest::newRow("line end alone") << u"\n"_s << u"\n"_s;
    QTest::newRow("40 lines") << lines << lines;
    QTest::newRow("40 lines and an empty one") << lines + u'\n' << lines + u"[...]"_s;
    QTest::newRow("41 lines") << lines + u"x"_s << lines + u"[...]"_s;
    QTest::newRow("3,000 characters and a line end") << characters + u'\n' << characters + u'\n';
    QTest::newRow("3,001 characters") << characters + u"x\n"_s << characters + u"\n[...]"_s;
}

void tst_s3ReadableText::shortenedText()
{
    QFETCH(const QString, text);
    QTEST(s3ShortenedText(text), "shortened");
}

QTEST_GUILESS_MAIN(tst_s3ReadableText)
#include "tst_s3readabletext.moc"
