// The boxes of Qt, and what is decided before one is shown. The trace lines end here: this program has a writer of its
// own in place of the library's.

#include "boxwatcher.h"
#include "protocol/s3logstream.h"
#include "s3basicbox.h"
#include "s3dictionaries.h"
#include "s3trace.h"

#include <QAbstractButton>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

QStringList lines;

class OpenBox : public s3BasicBox
{
public:
    using s3BasicBox::s3BasicBox;
    using s3BasicBox::titleFor;

    [[nodiscard]] QLabel *label() const { return findChild<QLabel *>(u"qt_msgbox_label"_s); }
};

QString defaultTitle()
{
    const QString translation = translate(u"Vexa"_s);
    return translation.startsWith(u"*** "_s) ? qAppName() : translation;
}

} // namespace

void s3WriteTrace(const QString &line)
{
    lines += line;
}

static_assert(sizeof(s3BasicBox) == sizeof(QMessageBox));

class tst_s3BasicBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void entryPoints_data();
    void entryPoints();
    void entryPointsThatAreFatalAreQtBoxesWithFlag336_data();
    void entryPointsThatAreFatalAreQtBoxesWithFlag336();
    void givenTitleIsNotReplaced();
    void titleThatNoDictionaryHasIsTheProgramsName_data();
    void titleThatNoDictionaryHasIsTheProgramsName();
    void resultIsTheButton();
    void defaultButtonIsSet();
    void flags335And336DecideWhetherItIsFatal_data();
    void flags335And336DecideWhetherItIsFatal();
    void boxIsQtsWithBothFlags();
    void boxIsTracedWithItsEffectiveValues();
    void nothingIsTracedWithoutTheFlag();
    void criticalBoxGoesToTheErrorChannel_data();
    void criticalBoxGoesToTheErrorChannel();
    void otherBoxesAreShownDespiteTheErrorChannel();
    void criticalBoxIsShownDespiteOtherChannels();
    void boxWithoutParentIsApplicationModal();
    void boxWithParentIsWindowModalWithItsWindowsFont();
    void boxOfParentAloneIsEmpty();
    void boxHasTheFlagsOfADialogOfFixedSize();
    void rightToLeftMirrorsTheText_data();
    void rightToLeftMirrorsTheText();
    void setText_data();
    void setText();
};

void tst_s3BasicBox::init()
{
    s3TestFlagsGUI::instance()->clear();
    lines.clear();
}

void tst_s3BasicBox::cleanup()
{
    s3LogStream::closeChannel(u"error"_s);
    s3LogStream::closeChannel(u"errors"_s);
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
}

void tst_s3BasicBox::entryPoints_data()
{
    using EntryPoint = int (*)(const QString &);
    QTest::addColumn<EntryPoint>("show");
    QTest::addColumn<QMessageBox::Icon>("icon");

    QTest::newRow("critical") << EntryPoint(&s3BasicBox::critical) << QMessageBox::Critical;
    QTest::newRow("warning") << EntryPoint(&s3BasicBox::warning) << QMessageBox::Warning;
    QTest::newRow("information") << EntryPoint(&s3BasicBox::information) << QMessageBox::Information;
}

void tst_s3BasicBox::entryPoints()
{
    using EntryPoint = int (*)(const QString &);
    QFETCH(const EntryPoint, show);

    const BoxWatcher watcher;
    QCOMPARE(show(u"text"_s), int(QMessageBox::Ok));
    QCOMPARE(watcher.boxes().size(), 1);
    const BoxWatcher::Box &box = watcher.boxes().first();
    QTEST(box.icon, "icon");
    QCOMPARE(box.title, defaultTitle());
    QCOMPARE(box.text, u"text"_s);
    QCOMPARE(box.buttons, QMessageBox::Ok);
    QVERIFY(!box.hasParent);
}

void tst_s3BasicBox::entryPointsThatAreFatalAreQtBoxesWithFlag336_data()
{
    QTest::addColumn<bool>("hasChoice");
    QTest::newRow("fatal") << false;
    QTest::newRow("fatalChoice") << true;
}

void tst_s3BasicBox::entryPointsThatAreFatalAreQtBoxesWithFlag336()
{
    QFETCH(const bool, hasChoice);
    s3TestFlagsGUI::instance()->insert(336);
    const QMessageBox::StandardButtons choice = QMessageBox::Yes | QMessageBox::No;
    bool isNoTheDefault = false;
    const BoxWatcher watcher(hasChoice ? QMessageBox::No : QMessageBox::Ok, [&](QMessageBox &box) {
        isNoTheDefault = hasChoice && box.defaultButton() == box.button(QMessageBox::No);
    });
    if (hasChoice)
        QCOMPARE(s3BasicBox::fatalChoice(u"text"_s, choice, QMessageBox::No), int(QMessageBox::No));
    else
        QCOMPARE(s3BasicBox::fatal(u"text"_s), int(QMessageBox::Ok));
    QCOMPARE(watcher.boxes().size(), 1);
    QCOMPARE(watcher.boxes().first().icon, QMessageBox::Critical);
    QCOMPARE(watcher.boxes().first().title, defaultTitle());
    QCOMPARE(watcher.boxes().first().buttons, hasChoice ? choice : QMessageBox::Ok);
    QCOMPARE(isNoTheDefault, hasChoice);
}

void tst_s3BasicBox::givenTitleIsNotReplaced()
{
    const BoxWatcher watcher;
    for (const QString &title : {u"Own title"_s, u"*** title ***"_s, u" "_s}) {
        s3BasicBox::show(QMessageBox::Warning, title, u"text"_s, QMessageBox::Ok, QMessageBox::NoButton, false);
        QCOMPARE(watcher.boxes().last().title, title);
    }
    QCOMPARE(watcher.boxes().size(), 3);
}

void tst_s3BasicBox::titleThatNoDictionaryHasIsTheProgramsName_data()
{
    QTest::addColumn<QString>("translation");
    QTest::addColumn<QString>("title");

    QTest::newRow("translated") << u"Product"_s << u"Product"_s;
    QTest::newRow("no such text") << u"*** Vexa ***"_s << qAppName();
    QTest::newRow("nothing but the mark") << u"*** "_s << qAppName();
    QTest::newRow("mark without its blank") << u"***Vexa"_s << u"***Vexa"_s;
    QTest::newRow("mark within the text") << u"Vexa *** "_s << u"Vexa *** "_s;
    QTest::newRow("translated to nothing") << u""_s << u""_s;
}

void tst_s3BasicBox::titleThatNoDictionaryHasIsTheProgramsName()
{
    QFETCH(const QString, translation);
    QTEST(OpenBox::titleFor(translation), "title");
    QCOMPARE(qAppName(), QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName());
}

void tst_s3BasicBox::resultIsTheButton()
{
    for (const QMessageBox::StandardButton button : {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel}) {
        const BoxWatcher watcher(button);
        QCOMPARE(s3BasicBox::show(QMessageBox::Question, u""_s, u"text"_s,
                                  QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Yes, false),
                 int(button));
    }
}

void tst_s3BasicBox::defaultButtonIsSet()
{
    QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;
    const BoxWatcher watcher(QMessageBox::Ok,
                             [&](QMessageBox &box) { defaultButton = box.standardButton(box.defaultButton()); });
    s3BasicBox::show(QMessageBox::Warning, u""_s, u"text"_s, QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Cancel,
                     false);
    QCOMPARE(defaultButton, QMessageBox::Cancel);
}

void tst_s3BasicBox::flags335And336DecideWhetherItIsFatal_data()
{
    QTest::addColumn<QList<qint32>>("flags");
    QTest::addColumn<bool>("isFatal");
    QTest::addColumn<QString>("effective");

    QTest::newRow("none, not fatal") << QList<qint32>{} << false << u"false"_s;
    QTest::newRow("none, fatal") << QList<qint32>{} << true << u"true"_s;
    QTest::newRow("335 makes it fatal") << QList<qint32>{335} << false << u"true"_s;
    QTest::newRow("335 leaves it fatal") << QList<qint32>{335} << true << u"true"_s;
    QTest::newRow("336 makes it not fatal") << QList<qint32>{336} << true << u"false"_s;
    QTest::newRow("336 leaves it not fatal") << QList<qint32>{336} << false << u"false"_s;
    QTest::newRow("336 wins over 335") << QList<qint32>{335, 336} << false << u"false"_s;
    QTest::newRow("336 wins over 335, fatal") << QList<qint32>{335, 336} << true << u"false"_s;
}

void tst_s3BasicBox::flags335And336DecideWhetherItIsFatal()
{
    QFETCH(const QList<qint32>, flags);
    QFETCH(const bool, isFatal);
    QFETCH(const QString, effective);
    for (const qint32 flag : flags)
        s3TestFlagsGUI::instance()->insert(flag);
    s3TestFlagsGUI::instance()->insert(334);
    // The channel, so that none of these boxes is shown: which box it would be stands in the trace.
    const QTemporaryDir directory;
    QVERIFY(s3LogStream::openChannel(u"error"_s, directory.filePath(u"log"_s), QStringConverter::Utf8));
    QCOMPARE(s3BasicBox::show(QMessageBox::Critical, u"T"_s, u"X"_s, QMessageBox::Ok, QMessageBox::NoButton, isFatal),
             0);
    QCOMPARE(lines, QStringList{u"s3BasicBox::show() isFatal=%1 myTitle=\"T\" text=\"X\""_s.arg(effective)});
    s3LogStream::closeChannel(u"error"_s);
}

void tst_s3BasicBox::boxIsQtsWithBothFlags()
{
    s3TestFlagsGUI::instance()->insert(335);
    s3TestFlagsGUI::instance()->insert(336);
    const BoxWatcher watcher;
    QCOMPARE(s3BasicBox::warning(u"text"_s), int(QMessageBox::Ok));
    QCOMPARE(s3BasicBox::fatal(u"text"_s), int(QMessageBox::Ok));
    QCOMPARE(watcher.boxes().size(), 2);
}

void tst_s3BasicBox::boxIsTracedWithItsEffectiveValues()
{
    s3TestFlagsGUI::instance()->insert(334);
    s3TestFlagsGUI::instance()->insert(336);
    const BoxWatcher watcher;
    s3BasicBox::fatal(u"a\r\nb\tc"_s);
    QCOMPARE(lines.value(0),
             u"s3BasicBox::show() isFatal=false myTitle=\"%1\" text=\"a\\nb\\tc\""_s.arg(defaultTitle()));
}

void tst_s3BasicBox::nothingIsTracedWithoutTheFlag()
{
    const BoxWatcher watcher;
    s3BasicBox::warning(u"text"_s);
    QCOMPARE(watcher.boxes().size(), 1);
    QCOMPARE(lines, QStringList());
}

void tst_s3BasicBox::criticalBoxGoesToTheErrorChannel_data()
{
    QTest::addColumn<bool>("isFatal");
    QTest::newRow("not fatal") << false;
    QTest::newRow("fatal") << true;
}

void tst_s3BasicBox::criticalBoxGoesToTheErrorChannel()
{
    QFETCH(const bool, isFatal);
    const QTemporaryDir directory;
    const QString fileName = directory.filePath(u"error.txt"_s);
    QVERIFY(s3LogStream::openChannel(u"error"_s, fileName, QStringConverter::Utf8));
    const BoxWatcher watcher;
    QCOMPARE(s3BasicBox::show(QMessageBox::Critical, u""_s, u"first\nl\u00E4st"_s, QMessageBox::Ok,
                              QMessageBox::NoButton, isFatal),
             0);
    QFile file(fileName);
    QVERIFY(file.open(QIODevice::ReadOnly));
    // Before the channel is closed: each line is flushed.
    QCOMPARE(file.readAll(), "s3BasicBox::show(): first\nl\xC3\xA4st\n"_ba);
    QCOMPARE(watcher.boxes().size(), 0);
    s3LogStream::closeChannel(u"error"_s);
}

void tst_s3BasicBox::otherBoxesAreShownDespiteTheErrorChannel()
{
    const QTemporaryDir directory;
    const QString fileName = directory.filePath(u"error.txt"_s);
    QVERIFY(s3LogStream::openChannel(u"error"_s, fileName, QStringConverter::Utf8));
    const BoxWatcher watcher;
    QCOMPARE(s3BasicBox::warning(u"text"_s), int(QMessageBox::Ok));
    QCOMPARE(s3BasicBox::information(u"text"_s), int(QMessageBox::Ok));
    QCOMPARE(watcher.boxes().size(), 2);
    s3LogStream::closeChannel(u"error"_s);
    QCOMPARE(QFileInfo(fileName).size(), 0);
}

void tst_s3BasicBox::criticalBoxIsShownDespiteOtherChannels()
{
    const QTemporaryDir directory;
    QVERIFY(s3LogStream::openChannel(u"errors"_s, directory.filePath(u"x"_s), QStringConverter::Utf8));
    const BoxWatcher watcher;
    QCOMPARE(s3BasicBox::critical(u"text"_s), int(QMessageBox::Ok));
    QCOMPARE(watcher.boxes().size(), 1);
    s3LogStream::closeChannel(u"errors"_s);
}

void tst_s3BasicBox::boxWithoutParentIsApplicationModal()
{
    Qt::WindowModality modality = Qt::NonModal;
    const BoxWatcher watcher(QMessageBox::Ok, [&](QMessageBox &box) { modality = box.windowModality(); });
    s3BasicBox::warning(u"text"_s);
    QCOMPARE(modality, Qt::ApplicationModal);
}

void tst_s3BasicBox::boxWithParentIsWindowModalWithItsWindowsFont()
{
    QWidget window;
    auto *const child = new QWidget(&window);
    QFont windowFont = window.font();
    windowFont.setPointSize(windowFont.pointSize() + 5);
    window.setFont(windowFont);
    QFont childFont = windowFont;
    childFont.setPointSize(windowFont.pointSize() + 5);
    child->setFont(childFont);

    const s3BasicBox box(QMessageBox::Warning, u"T"_s, u"X"_s, QMessageBox::Ok, child);
    QCOMPARE(box.font().pointSize(), windowFont.pointSize());
    QCOMPARE(box.windowModality(), Qt::WindowModal);
    const s3BasicBox empty(child);
    QCOMPARE(empty.font().pointSize(), windowFont.pointSize());
    QCOMPARE(empty.windowModality(), Qt::WindowModal);
}

void tst_s3BasicBox::boxOfParentAloneIsEmpty()
{
    QWidget parent;
    const s3BasicBox box(&parent);
    QCOMPARE(box.icon(), QMessageBox::NoIcon);
    QCOMPARE(box.windowTitle(), u""_s);
    QCOMPARE(box.text(), u""_s);
    QCOMPARE(box.standardButtons(), QMessageBox::NoButton);
    QCOMPARE(box.parentWidget(), &parent);
}

void tst_s3BasicBox::boxHasTheFlagsOfADialogOfFixedSize()
{
    const s3BasicBox box(QMessageBox::Warning, u"T"_s, u"X"_s, QMessageBox::Ok | QMessageBox::Cancel, nullptr);
    QCOMPARE(box.windowFlags() & Qt::WindowFlags(0x1FF), Qt::WindowFlags(0x103));
    QCOMPARE(box.icon(), QMessageBox::Warning);
    QCOMPARE(box.windowTitle(), u"T"_s);
    QCOMPARE(box.text(), u"X"_s);
    QCOMPARE(box.standardButtons(), QMessageBox::Ok | QMessageBox::Cancel);
}

void tst_s3BasicBox::rightToLeftMirrorsTheText_data()
{
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::addColumn<bool>("isMirrored");
    QTest::newRow("left to right") << Qt::LeftToRight << false;
    QTest::newRow("right to left") << Qt::RightToLeft << true;
}

void tst_s3BasicBox::rightToLeftMirrorsTheText()
{
    QFETCH(const Qt::LayoutDirection, direction);
    QFETCH(const bool, isMirrored);
    const Qt::Alignment before =
        QMessageBox(QMessageBox::Warning, u""_s, u"X"_s).findChild<QLabel *>(u"qt_msgbox_label"_s)->alignment();
    QVERIFY(!(before & Qt::AlignAbsolute));
    QGuiApplication::setLayoutDirection(direction);
    const Qt::Alignment mirrored = (before & ~Qt::AlignLeft) | Qt::AlignRight | Qt::AlignAbsolute;
    const OpenBox box(QMessageBox::Warning, u""_s, u"X"_s, QMessageBox::Ok, nullptr);
    QCOMPARE(box.label()->alignment(), isMirrored ? mirrored : before);
    const OpenBox ofParent(nullptr);
    QCOMPARE(ofParent.label()->alignment(), isMirrored ? mirrored : before);
}

void tst_s3BasicBox::setText_data()
{
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QString>("plain");
    QTest::addColumn<QString>("rich");

    QTest::newRow("two lines") << QStringList{u"a"_s, u"b"_s} << u"\na\nb\n"_s << u"<br>a<br>b<br><br>"_s;
    QTest::newRow("one line") << QStringList{u"a"_s} << u"\na\n"_s << u"<br>a<br><br>"_s;
    QTest::newRow("an empty line") << QStringList{u""_s} << u"\n\n"_s << u"<br><br><br>"_s;
    QTest::newRow("no line") << QStringList{} << u"\n\n"_s << u"<br><br><br>"_s;
    QTest::newRow("markup") << QStringList{u"<b>&"_s} << u"\n<b>&\n"_s << u"<br><b>&<br><br>"_s;
}

void tst_s3BasicBox::setText()
{
    QFETCH(const QStringList, texts);
    s3BasicBox box(nullptr);
    box.setPlainTextLines(texts);
    QTEST(box.text(), "plain");
    QCOMPARE(box.textFormat(), Qt::PlainText);
    box.setRichTextLines(texts);
    QTEST(box.text(), "rich");
    QCOMPARE(box.textFormat(), Qt::RichText);
    if (texts.size() != 1)
        return;
    box.setPlainTextLine(texts.first());
    QTEST(box.text(), "plain");
    QCOMPARE(box.textFormat(), Qt::PlainText);
    box.setRichTextLine(texts.first());
    QTEST(box.text(), "rich");
    QCOMPARE(box.textFormat(), Qt::RichText);
}

QTEST_MAIN(tst_s3BasicBox)
#include "tst_s3basicbox.moc"
