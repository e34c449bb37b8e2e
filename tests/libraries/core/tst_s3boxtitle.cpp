// The default title of boxes, with the dictionaries of the process. They can't be closed, so the tests build on each
// other.

#include "boxwatcher.h"
#include "dictionarybuilder.h"
#include "protocol/s3logstream.h"
#include "resourcefile.h"
#include "s3basicbox.h"
#include "s3dictionaries.h"
#include "s3guidictionary.h"
#include "s3trace.h"
#include "workingdirectory.h"

#include <QTest>

#include <thread>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint32 source = -1;

const WorkingDirectory directory;

QStringList lines;

QString titleOfABox()
{
    const BoxWatcher watcher;
    s3BasicBox::information(u"text"_s);
    return watcher.boxes().size() == 1 ? watcher.boxes().constFirst().title : u"no box"_s;
}

// The box goes to the channel of tests, and its title stands in the trace.
QStringList traceOfAFatalBoxOfAnotherThread()
{
    lines.clear();
    s3LogStream::openChannel(u"error"_s, u"error.txt"_s, QStringConverter::Utf8);
    s3TestFlagsGUI::instance()->insert(334);
    s3TestFlagsGUI::instance()->insert(404);
    std::thread([] { s3BasicBox::fatal(u"text"_s); }).join();
    s3TestFlagsGUI::instance()->clear();
    s3LogStream::closeChannel(u"error"_s);
    return lines;
}

QString traceOfAFatalBox(const QString &title)
{
    return u"s3BasicBox::show() isFatal=true myTitle=\"%1\" text=\"text\""_s.arg(title);
}

} // namespace

void s3WriteTrace(const QString &line)
{
    lines += line;
}

class tst_s3BoxTitle : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isTheSourceTextWithoutADictionary();
    void isTheProgramsNameWithADictionaryWithoutTheKey();
};

void tst_s3BoxTitle::isTheSourceTextWithoutADictionary()
{
    QCOMPARE(traceOfAFatalBoxOfAnotherThread(), QStringList{traceOfAFatalBox(u"Vexa"_s)});
    // What isn't known is noted, but on the main thread alone.
    QVERIFY(!s3GuiDictionary::unknownSourceTexts().contains(u"Vexa"_s));
    QCOMPARE(titleOfABox(), u"Vexa"_s);
    QVERIFY(s3GuiDictionary::unknownSourceTexts().contains(u"Vexa"_s));
}

void tst_s3BoxTitle::isTheProgramsNameWithADictionaryWithoutTheKey()
{
    DictionaryBuilder messages;
    messages.setText(1, source, u"message"_s);
    directory.write(u"data/msg.dat.0"_s, messages.build());
    DictionaryBuilder gui;
    gui.setText(1, source, u"Ende"_s);
    // It isn't unregistered: the dictionary maps it until the process ends.
    static const ResourceFile resource(u"dictionary"_s, u"mng.dat.0"_s, gui.build());
    QVERIFY(resource.isRegistered());
    QString error;
    QVERIFY2(openDictionaries(error), qPrintable(error));
    lines.clear();
    s3TestFlagsGUI::instance()->insert(404);
    QCOMPARE(titleOfABox(), qAppName());
    s3TestFlagsGUI::instance()->clear();
    QCOMPARE(qAppName(), u"tst_s3boxtitle"_s);
    QCOMPARE(lines.filter(u"sourceText=\"Vexa\" not in dictionary"_s).size(), 1);
    QCOMPARE(traceOfAFatalBoxOfAnotherThread(), QStringList{traceOfAFatalBox(qAppName())});
}

QTEST_MAIN(tst_s3BoxTitle)
#include "tst_s3boxtitle.moc"
