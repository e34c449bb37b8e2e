// The default title of boxes, with the dictionaries of the process. They can't be closed, so the tests build on each
// other.

#include "boxwatcher.h"
#include "dictionarybuilder.h"
#include "resourcefile.h"
#include "s3basicbox.h"
#include "s3dictionaries.h"
#include "workingdirectory.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint32 source = -1;

const WorkingDirectory directory;

QString titleOfABox()
{
    const BoxWatcher watcher;
    s3BasicBox::information(u"text"_s);
    return watcher.boxes().size() == 1 ? watcher.boxes().constFirst().title : u"no box"_s;
}

} // namespace

class tst_s3BoxTitle : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isTheSourceTextWithoutADictionary();
    void isTheProgramsNameWithADictionaryWithoutTheKey();
};

void tst_s3BoxTitle::isTheSourceTextWithoutADictionary()
{
    QCOMPARE(titleOfABox(), u"Vexa"_s);
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
    QCOMPARE(titleOfABox(), qAppName());
    QCOMPARE(qAppName(), u"tst_s3boxtitle"_s);
}

QTEST_MAIN(tst_s3BoxTitle)
#include "tst_s3boxtitle.moc"
