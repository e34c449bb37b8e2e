// What the desktop's programs are given for a box, and what their ends mean.

#include "s3basicboxwin.h"
#include "s3desktopbox.h"
#include "s3testflags.h"

#include <QMetaEnum>
#include <QTest>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

struct Call
{
    QMessageBox::Icon type = QMessageBox::Critical;
    QString title = u"Title"_s;
    QString text = u"Text"_s;
    QMessageBox::StandardButtons buttons = QMessageBox::Ok;
    QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;
};

Call call;

const QMessageBox::StandardButtons okCancel = QMessageBox::Ok | QMessageBox::Cancel;
const QMessageBox::StandardButtons yesNo = QMessageBox::Yes | QMessageBox::No;
const QMessageBox::StandardButtons yesNoCancel = yesNo | QMessageBox::Cancel;

s3DesktopBox box()
{
    return {call.title, call.text, s3BasicBoxWin::boxType(call.type, call.buttons, call.defaultButton)};
}

const s3DesktopTool &toolNamed(const QString &name)
{
    const std::span<const s3DesktopTool> tools = s3DesktopTool::all();
    return *std::find_if(tools.begin(), tools.end(),
                         [&](const s3DesktopTool &tool) { return QLatin1StringView(tool.name) == name; });
}

QStringList argumentsOf(const QString &name)
{
    QStringList arguments;
    for (const QByteArray &argument : toolNamed(name).arguments(box()))
        arguments += QString::fromUtf8(argument);
    return arguments;
}

// The button's name, "failed" if there is no answer.
QString resultOf(const QString &name, const s3DesktopTool::End &end)
{
    const std::optional<int> result = toolNamed(name).result(box(), end);
    if (!result)
        return u"failed"_s;
    const QMetaObject &boxes = QMessageBox::staticMetaObject;
    const QMetaEnum names = boxes.enumerator(boxes.indexOfEnumerator("StandardButton"));
    return QString::fromLatin1(names.valueToKey(s3BasicBoxWin::result2Button(*result)));
}

// A number, or what the environment has for "$NAME".
int statusNamed(const QString &text)
{
    if (!text.startsWith(u'$'))
        return text.toInt();
    const QByteArray start = text.sliced(1).toLatin1() + '=';
    for (const QByteArray &assignment : s3DesktopTool::environment()) {
        if (assignment.startsWith(start))
            return assignment.sliced(start.size()).toInt();
    }
    return -1;
}

} // namespace

class tst_s3DesktopBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void order();
    void kdialogIsTheLastResort_data();
    void kdialogIsTheLastResort();
    void kdialogArguments_data();
    void kdialogArguments();
    void kdialogResult_data();
    void kdialogResult();
    void zenityArguments_data();
    void zenityArguments();
    void zenityResult_data();
    void zenityResult();
    void zenityExtraButtonOfVersion3();
    void xmessageArguments_data();
    void xmessageArguments();
    void xmessageText_data();
    void xmessageText();
    void xmessageResult_data();
    void xmessageResult();
    void textIsNeitherOptionNorMarkup_data();
    void textIsNeitherOptionNorMarkup();
    void helpBoxIsReadable();
    void surrogatePairIsNotCut();
    void rightToLeftText();
};

void tst_s3DesktopBox::init()
{
    call = {};
    s3TestFlagsGUI::instance()->clear();
}

void tst_s3DesktopBox::order()
{
    QStringList names;
    for (const s3DesktopTool &tool : s3DesktopTool::all())
        names += QString::fromLatin1(tool.name);
    QCOMPARE(names, (QStringList{u"kdialog"_s, u"zenity"_s, u"xmessage"_s}));
}

void tst_s3DesktopBox::kdialogIsTheLastResort_data()
{
    QTest::addColumn<QMessageBox::StandardButtons>("buttons");
    QTest::addColumn<QMessageBox::StandardButton>("defaultButton");
    QTest::addColumn<bool>("fits");

    const QMessageBox::StandardButtons ok = QMessageBox::Ok;
    const QMessageBox::StandardButton none = QMessageBox::NoButton;
    QTest::newRow("one") << ok << none << true;
    QTest::newRow("two") << okCancel << none << true;
    QTest::newRow("two, first is default") << yesNo << QMessageBox::Yes << true;
    QTest::newRow("two, second is default") << yesNo << QMessageBox::No << false;
    QTest::newRow("Cancel is default") << okCancel << QMessageBox::Cancel << false;
    QTest::newRow("three") << yesNoCancel << none << false;
    QTest::newRow("three, third is default") << yesNoCancel << QMessageBox::Cancel << false;
}

void tst_s3DesktopBox::kdialogIsTheLastResort()
{
    QFETCH(const QMessageBox::StandardButtons, buttons);
    QFETCH(const QMessageBox::StandardButton, defaultButton);
    call.buttons = buttons;
    call.defaultButton = defaultButton;
    QTEST(toolNamed(u"kdialog"_s).fits(box()), "fits");
    QVERIFY(toolNamed(u"zenity"_s).fits(box()));
    QVERIFY(toolNamed(u"xmessage"_s).fits(box()));
}

void tst_s3DesktopBox::kdialogArguments_data()
{
    QTest::addColumn<QMessageBox::Icon>("type");
    QTest::addColumn<QMessageBox::StandardButtons>("buttons");
    QTest::addColumn<QMessageBox::StandardButton>("defaultButton");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("labels");

    const QMessageBox::StandardButtons ok = QMessageBox::Ok;
    const QMessageBox::StandardButton none = QMessageBox::NoButton;
    QTest::newRow("error") << QMessageBox::Critical << ok << none << u"error"_s << u""_s;
    QTest::newRow("warning") << QMessageBox::Warning << ok << none << u"sorry"_s << u""_s;
    QTest::newRow("information") << QMessageBox::Information << ok << none << u"msgbox"_s << u""_s;
    QTest::newRow("no icon") << QMessageBox::NoIcon << ok << none << u"msgbox"_s << u""_s;
    QTest::newRow("two, alarm") << QMessageBox::Critical << okCancel << none << u"warningyesno"_s
                                << u"--yes-label=OK --no-label=Cancel"_s;
    QTest::newRow("two, question") << QMessageBox::Question << yesNo << none << u"yesno"_s
                                   << u"--yes-label=Yes --no-label=No"_s;
    QTest::newRow("two, second is default")
        << QMessageBox::Question << yesNo << QMessageBox::No << u"yesno"_s << u"--yes-label=Yes --no-label=No"_s;
    QTest::newRow("three") << QMessageBox::Warning << yesNoCancel << none << u"warningyesnocancel"_s
                           << u"--yes-label=Yes --no-label=No --cancel-label=Cancel"_s;
    QTest::newRow("three, second is default")
        << QMessageBox::Question << yesNoCancel << QMessageBox::No << u"yesnocancel"_s
        << u"--yes-label=Yes --no-label=No --cancel-label=Cancel"_s;
    QTest::newRow("three, third is default")
        << QMessageBox::Question << yesNoCancel << QMessageBox::Cancel << u"yesnocancel"_s
        << u"--yes-label=Yes --no-label=No --cancel-label=Cancel"_s;
}

void tst_s3DesktopBox::kdialogArguments()
{
    QFETCH(const QMessageBox::Icon, type);
    QFETCH(const QMessageBox::StandardButtons, buttons);
    QFETCH(const QMessageBox::StandardButton, defaultButton);
    QFETCH(const QString, kind);
    QFETCH(const QString, labels);
    call = {type, u"My title"_s, u"Text"_s, buttons, defaultButton};
    QStringList expected{u"--title=My title"_s, u"--%1=<p style=\"white-space:pre-wrap\">Text</p>"_s.arg(kind)};
    if (!labels.isEmpty())
        expected += labels.split(u' ');
    QCOMPARE(argumentsOf(u"kdialog"_s), expected);
}

void tst_s3DesktopBox::kdialogResult_data()
{
    QTest::addColumn<QMessageBox::StandardButtons>("buttons");
    QTest::addColumn<QMessageBox::StandardButton>("defaultButton");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("button");

    const QMessageBox::StandardButtons ok = QMessageBox::Ok;
    const QMessageBox::StandardButton none = QMessageBox::NoButton;
    QTest::newRow("one, pressed") << ok << none << 0 << u"Ok"_s;
    QTest::newRow("one, closed") << ok << none << 2 << u"Ok"_s;
    QTest::newRow("one, refused") << ok << none << 1 << u"failed"_s;
    QTest::newRow("Ok of two") << okCancel << none << 0 << u"Ok"_s;
    QTest::newRow("Cancel of two") << okCancel << none << 1 << u"Cancel"_s;
    QTest::newRow("two, closed") << okCancel << none << 1 << u"Cancel"_s;
    QTest::newRow("two, closed in a version of its own") << okCancel << none << 2 << u"Cancel"_s;
    QTest::newRow("Ok beside the default") << okCancel << QMessageBox::Cancel << 0 << u"Ok"_s;
    QTest::newRow("default Cancel, closed") << okCancel << QMessageBox::Cancel << 1 << u"Cancel"_s;
    QTest::newRow("Yes") << yesNo << none << 0 << u"Yes"_s;
    QTest::newRow("No") << yesNo << none << 1 << u"No"_s;
    QTest::newRow("Yes and No, closed") << yesNo << none << 1 << u"No"_s;
    QTest::newRow("Yes and No, default No, closed") << yesNo << QMessageBox::No << 1 << u"No"_s;
    QTest::newRow("Yes of three") << yesNoCancel << none << 0 << u"Yes"_s;
    QTest::newRow("No of three") << yesNoCancel << none << 1 << u"No"_s;
    QTest::newRow("Cancel of three") << yesNoCancel << none << 2 << u"Cancel"_s;
    QTest::newRow("three, second is default, closed") << yesNoCancel << QMessageBox::No << 2 << u"Cancel"_s;
    QTest::newRow("three, third is default, closed") << yesNoCancel << QMessageBox::Cancel << 2 << u"Cancel"_s;
    QTest::newRow("No as default of three") << yesNoCancel << QMessageBox::No << 1 << u"No"_s;
    QTest::newRow("Yes beside the default of three") << yesNoCancel << QMessageBox::No << 0 << u"Yes"_s;
    QTest::newRow("unknown") << yesNoCancel << none << 3 << u"failed"_s;
    QTest::newRow("refused") << yesNoCancel << none << 255 << u"failed"_s;
}

void tst_s3DesktopBox::kdialogResult()
{
    QFETCH(const int, status);
    QFETCH(const QMessageBox::StandardButtons, buttons);
    QFETCH(const QMessageBox::StandardButton, defaultButton);
    call.buttons = buttons;
    call.defaultButton = defaultButton;
    QTEST(resultOf(u"kdialog"_s, {status, {}, true}), "button");
}

void tst_s3DesktopBox::zenityArguments_data()
{
    QTest::addColumn<QMessageBox::Icon>("type");
    QTest::addColumn<QMessageBox::StandardButtons>("buttons");
    QTest::addColumn<QMessageBox::StandardButton>("defaultButton");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("labels");

    const QMessageBox::StandardButtons ok = QMessageBox::Ok;
    const QMessageBox::StandardButton none = QMessageBox::NoButton;
    QTest::newRow("error") << QMessageBox::Critical << ok << none << u"--error"_s << u""_s;
    QTest::newRow("warning") << QMessageBox::Warning << ok << none << u"--warning"_s << u""_s;
    QTest::newRow("information") << QMessageBox::Information << ok << none << u"--info"_s << u""_s;
    QTest::newRow("question with one button") << QMessageBox::Question << ok << none << u"--info"_s << u""_s;
    QTest::newRow("no icon") << QMessageBox::NoIcon << ok << none << u"--info"_s << u""_s;
    QTest::newRow("two") << QMessageBox::Critical << okCancel << none << u"--question --icon-name=dialog-error"_s
                         << u"--ok-label=OK --cancel-label=Cancel"_s;
    QTest::newRow("two, second is default")
        << QMessageBox::Warning << yesNo << QMessageBox::No << u"--question --icon-name=dialog-warning"_s
        << u"--ok-label=No --cancel-label=Yes"_s;
    QTest::newRow("three") << QMessageBox::Question << yesNoCancel << none << u"--question"_s
                           << u"--ok-label=Yes --cancel-label=Cancel --extra-button=No"_s;
    QTest::newRow("three, second is default")
        << QMessageBox::Information << yesNoCancel << QMessageBox::No << u"--question --icon-name=dialog-information"_s
        << u"--ok-label=No --cancel-label=Cancel --extra-button=Yes"_s;
    QTest::newRow("three, third is default")
        << QMessageBox::NoIcon << yesNoCancel << QMessageBox::Cancel << u"--question --icon-name=dialog-information"_s
        << u"--ok-label=Cancel --cancel-label=No --extra-button=Yes"_s;
}

void tst_s3DesktopBox::zenityArguments()
{
    QFETCH(const QMessageBox::Icon, type);
    QFETCH(const QMessageBox::StandardButtons, buttons);
    QFETCH(const QMessageBox::StandardButton, defaultButton);
    QFETCH(const QString, kind);
    QFETCH(const QString, labels);
    call = {type, u"My title"_s, u"Text"_s, buttons, defaultButton};
    QStringList expected = kind.split(u' ') + QStringList{u"--no-markup"_s, u"--title=My title"_s, u"--text=Text"_s};
    if (!labels.isEmpty())
        expected += labels.split(u' ');
    QCOMPARE(argumentsOf(u"zenity"_s), expected);
}

void tst_s3DesktopBox::zenityResult_data()
{
    QTest::addColumn<QMessageBox::StandardButtons>("buttons");
    QTest::addColumn<QMessageBox::StandardButton>("defaultButton");
    QTest::addColumn<QString>("variable");
    QTest::addColumn<QString>("button");

    const QMessageBox::StandardButtons ok = QMessageBox::Ok;
    const QMessageBox::StandardButton none = QMessageBox::NoButton;
    QTest::newRow("one, pressed") << ok << none << u"$ZENITY_OK"_s << u"Ok"_s;
    QTest::newRow("one, closed") << ok << none << u"$ZENITY_ESC"_s << u"Ok"_s;
    QTest::newRow("a program that doesn't ask the environment") << ok << none << u"0"_s << u"Ok"_s;
    QTest::newRow("no display") << ok << none << u"1"_s << u"failed"_s;
    QTest::newRow("no display, two buttons") << okCancel << none << u"1"_s << u"failed"_s;
    QTest::newRow("option refused") << ok << none << u"255"_s << u"failed"_s;
    QTest::newRow("Ok of two") << okCancel << none << u"$ZENITY_OK"_s << u"Ok"_s;
    QTest::newRow("Cancel of two") << okCancel << none << u"$ZENITY_CANCEL"_s << u"Cancel"_s;
    QTest::newRow("two, closed") << okCancel << none << u"$ZENITY_ESC"_s << u"Cancel"_s;
    QTest::newRow("Cancel as default") << okCancel << QMessageBox::Cancel << u"$ZENITY_OK"_s << u"Cancel"_s;
    QTest::newRow("default Cancel, closed") << okCancel << QMessageBox::Cancel << u"$ZENITY_ESC"_s << u"Cancel"_s;
    QTest::newRow("Yes and No, closed") << yesNo << none << u"$ZENITY_ESC"_s << u"No"_s;
    QTest::newRow("Yes of three") << yesNoCancel << none << u"$ZENITY_OK"_s << u"Yes"_s;
    QTest::newRow("No of three") << yesNoCancel << none << u"$ZENITY_EXTRA"_s << u"No"_s;
    QTest::newRow("Cancel of three") << yesNoCancel << none << u"$ZENITY_CANCEL"_s << u"Cancel"_s;
    QTest::newRow("three, closed") << yesNoCancel << QMessageBox::Cancel << u"$ZENITY_ESC"_s << u"Cancel"_s;
    QTest::newRow("third as default: No") << yesNoCancel << QMessageBox::Cancel << u"$ZENITY_CANCEL"_s << u"No"_s;
    QTest::newRow("extra without a third button") << okCancel << none << u"$ZENITY_EXTRA"_s << u"failed"_s;
}

void tst_s3DesktopBox::zenityResult()
{
    QFETCH(const QMessageBox::StandardButtons, buttons);
    QFETCH(const QMessageBox::StandardButton, defaultButton);
    QFETCH(const QString, variable);
    call.buttons = buttons;
    call.defaultButton = defaultButton;
    QTEST(resultOf(u"zenity"_s, {statusNamed(variable), {}, true}), "button");
}

void tst_s3DesktopBox::zenityExtraButtonOfVersion3()
{
    call.buttons = yesNoCancel;
    QCOMPARE(resultOf(u"zenity"_s, {statusNamed(u"$ZENITY_ESC"_s), "No\n", true}), u"No"_s);
    call.defaultButton = QMessageBox::No;
    QCOMPARE(resultOf(u"zenity"_s, {statusNamed(u"$ZENITY_ESC"_s), "Yes\n", true}), u"Yes"_s);
}

void tst_s3DesktopBox::xmessageArguments_data()
{
    QTest::addColumn<QMessageBox::StandardButtons>("buttons");
    QTest::addColumn<QMessageBox::StandardButton>("defaultButton");
    QTest::addColumn<QString>("labels");
    QTest::addColumn<QString>("defaultLabel");

    QTest::newRow("one") << QMessageBox::StandardButtons(QMessageBox::Ok) << QMessageBox::NoButton << u"OK:101"_s
                         << u"OK"_s;
    QTest::newRow("two") << okCancel << QMessageBox::NoButton << u"OK:101,Cancel:102"_s << u"OK"_s;
    QTest::newRow("two, second is default") << okCancel << QMessageBox::Cancel << u"OK:101,Cancel:102"_s << u"Cancel"_s;
    QTest::newRow("Yes and No") << yesNo << QMessageBox::No << u"Yes:106,No:107"_s << u"No"_s;
    QTest::newRow("three") << yesNoCancel << QMessageBox::Cancel << u"Yes:106,No:107,Cancel:102"_s << u"Cancel"_s;
}

void tst_s3DesktopBox::xmessageArguments()
{
    QFETCH(const QMessageBox::StandardButtons, buttons);
    QFETCH(const QMessageBox::StandardButton, defaultButton);
    QFETCH(const QString, labels);
    QFETCH(const QString, defaultLabel);
    call = {QMessageBox::Critical, u"-title"_s, u"Text"_s, buttons, defaultButton};
    QCOMPARE(argumentsOf(u"xmessage"_s),
             (QStringList{u"-center"_s, u"-title"_s, u"-title"_s, u"-xrm"_s, u"*message.wrap: word"_s, u"-buttons"_s,
                          labels, u"-default"_s, defaultLabel, u"-file"_s, u"-"_s}));
}

void tst_s3DesktopBox::xmessageText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("lines") << u"a\n\nb"_s << "a\n\nb\n"_ba;
    QTest::newRow("umlauts") << u"Gr\u00FC\u00DFe"_s
                             << "Gr\xFC\xDF"
                                "e\n"_ba;
    QTest::newRow("quotation marks and dashes")
        << u"\u201Ea\u201C \u2013 \u2018b\u2019\u2026 5 \u20AC"_s << "\"a\" - 'b'... 5 EUR\n"_ba;
    QTest::newRow("other scripts") << u"\u0416\u05D0\U0001F600"_s << "????\n"_ba;
    QTest::newRow("nothing") << u""_s << "\n"_ba;
    QTest::newRow("options") << u"-buttons x"_s << "-buttons x\n"_ba;
}

void tst_s3DesktopBox::xmessageText()
{
    QFETCH(const QString, text);
    call.text = text;
    QTEST(toolNamed(u"xmessage"_s).input(box()), "bytes");
}

void tst_s3DesktopBox::xmessageResult_data()
{
    QTest::addColumn<QMessageBox::StandardButtons>("buttons");
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("hasReadInput");
    QTest::addColumn<QString>("button");

    const QMessageBox::StandardButtons ok = QMessageBox::Ok;
    QTest::newRow("Ok") << ok << 101 << false << u"Ok"_s;
    QTest::newRow("Cancel") << okCancel << 102 << false << u"Cancel"_s;
    QTest::newRow("Yes") << yesNo << 106 << false << u"Yes"_s;
    QTest::newRow("No") << yesNoCancel << 107 << false << u"No"_s;
    QTest::newRow("a button that isn't there") << ok << 102 << false << u"failed"_s;
    QTest::newRow("closed, one") << ok << 1 << true << u"Ok"_s;
    QTest::newRow("closed, two") << yesNo << 1 << true << u"No"_s;
    QTest::newRow("closed, three") << yesNoCancel << 1 << true << u"Cancel"_s;
    QTest::newRow("no display, so that it reads nothing") << okCancel << 1 << false << u"failed"_s;
    QTest::newRow("unknown") << ok << 2 << true << u"failed"_s;
}

void tst_s3DesktopBox::xmessageResult()
{
    QFETCH(const QMessageBox::StandardButtons, buttons);
    QFETCH(const int, status);
    QFETCH(const bool, hasReadInput);
    call.buttons = buttons;
    QTEST(resultOf(u"xmessage"_s, {status, {}, hasReadInput}), "button");
}

void tst_s3DesktopBox::textIsNeitherOptionNorMarkup_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("forKdialog");

    QTest::newRow("like an option") << u"--title x"_s << u"--title x"_s;
    QTest::newRow("like the end of options") << u"--"_s << u"--"_s;
    QTest::newRow("angle brackets") << u"a < b & \"c\""_s << u"a &lt; b &amp; &quot;c&quot;"_s;
    QTest::newRow("backslashes") << u"C:\\new\\"_s << u"C:\\\\new\\\\"_s;
    QTest::newRow("lines and blanks") << u"a\n  b\tc"_s << u"a\n  b\tc"_s;
    QTest::newRow("other scripts") << u"\u00E4\u0416\U0001F600"_s << u"&#228;&#1046;&#128512;"_s;
    QTest::newRow("what a shell would read") << u"$(x) `y` '%s'"_s << u"$(x) `y` '%s'"_s;
    QTest::newRow("empty") << u""_s << u""_s;
}

void tst_s3DesktopBox::textIsNeitherOptionNorMarkup()
{
    QFETCH(const QString, text);
    QFETCH(const QString, forKdialog);
    call.text = text;
    QCOMPARE(argumentsOf(u"zenity"_s).last(), u"--text="_s + text);
    QCOMPARE(argumentsOf(u"kdialog"_s).last(), u"--error=<p style=\"white-space:pre-wrap\">%1</p>"_s.arg(forKdialog));
}

void tst_s3DesktopBox::helpBoxIsReadable()
{
    call.text = u"<html><head><body><h2>Unknown option 'x'.</h2><pre>Usage: p [options] vxmFile\n\nOptions:\n"
                "  -h, --help  Displays &lt;this&gt; help &amp; more.\n</pre></body></html>"_s;
    QCOMPARE(argumentsOf(u"zenity"_s).last(), u"--text=Unknown option 'x'.\nUsage: p [options] vxmFile\n\nOptions:\n"
                                              "  -h, --help  Displays <this> help & more."_s);
}

void tst_s3DesktopBox::surrogatePairIsNotCut()
{
    call.text = u"x"_s.repeated(2999) + u"\U0001F600 end"_s;
    QCOMPARE(argumentsOf(u"zenity"_s).last(), u"--text="_s + u"x"_s.repeated(2999) + u"\n[...]"_s);
}

void tst_s3DesktopBox::rightToLeftText()
{
    s3TestFlagsGUI::instance()->insert(229);
    call.text = u"one\ntwo"_s;
    QCOMPARE(argumentsOf(u"zenity"_s).last(), u"--text=\u200Fone\n\u200Ftwo"_s);
    QCOMPARE(argumentsOf(u"kdialog"_s).last(), u"--error=<p style=\"white-space:pre-wrap\" dir=\"rtl\">one\ntwo</p>"_s);
}

QTEST_GUILESS_MAIN(tst_s3DesktopBox)
#include "tst_s3desktopbox.moc"
