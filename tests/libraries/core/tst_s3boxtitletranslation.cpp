// The default title of boxes, with a dictionary that has it in some languages.

#include "boxwatcher.h"
#include "dictionarybuilder.h"
#include "protocol/s3logstream.h"
#include "resourcefile.h"
#include "s3basicbox.h"
#include "s3dictionaries.h"
#include "s3language.h"
#include "s3trace.h"
#include "workingdirectory.h"

#include <QTest>

#include <thread>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint32 source = -1;
constexpr qint32 english = 1;

const WorkingDirectory directory;

QString lastLine;

} // namespace

void s3WriteTrace(const QString &line)
{
    lastLine = line;
}

class tst_s3BoxTitleTranslation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void title_data();
    void title();
};

void tst_s3BoxTitleTranslation::initTestCase()
{
    DictionaryBuilder messages;
    messages.setText(1, source, u"message"_s);
    directory.write(u"data/msg.dat.0"_s, messages.build());
    // The last language has no column.
    DictionaryBuilder gui(languageCount() - 1);
    gui.setText(1, source, u"Ende"_s);
    gui.setText(2, source, u"Vexa"_s).setText(2, english, u"Vexa in English"_s);
    // It isn't unregistered: the dictionary maps it until the process ends.
    static const ResourceFile resource(u"dictionary"_s, u"mng.dat.0"_s, gui.build());
    QVERIFY(resource.isRegistered());
    QString error;
    QVERIFY2(openDictionaries(error), qPrintable(error));
}

void tst_s3BoxTitleTranslation::title_data()
{
    QTest::addColumn<qint32>("language");
    QTest::addColumn<QString>("title");
    QTest::newRow("German, which has the source text") << 0 << u"Vexa"_s;
    QTest::newRow("English") << english << u"Vexa in English"_s;
    QTest::newRow("no column") << languageCount() - 1 << qAppName();
}

void tst_s3BoxTitleTranslation::title()
{
    QFETCH(const qint32, language);
    QFETCH(const QString, title);
    QVERIFY(setLanguage(letterAt(language), u""_s));
    QCOMPARE(currentLanguageIndex(), language);
    const BoxWatcher watcher;
    s3BasicBox::information(u"text"_s);
    QCOMPARE(watcher.boxes().size(), 1);
    QCOMPARE(watcher.boxes().constFirst().title, title);

    // From another thread, by way of the channel of tests.
    QVERIFY(s3LogStream::openChannel(u"error"_s, u"error.txt"_s, QStringConverter::Utf8));
    s3TestFlagsGUI::instance()->insert(334);
    std::thread([] { s3BasicBox::fatal(u"text"_s); }).join();
    s3TestFlagsGUI::instance()->clear();
    s3LogStream::closeChannel(u"error"_s);
    QCOMPARE(lastLine, u"s3BasicBox::show() isFatal=true myTitle=\"%1\" text=\"text\""_s.arg(title));
}

QTEST_MAIN(tst_s3BoxTitleTranslation)
#include "tst_s3boxtitletranslation.moc"
