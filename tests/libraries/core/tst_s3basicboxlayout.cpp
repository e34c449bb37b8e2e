// How wide a box becomes. The trace lines end here: this program has a writer of its own in place of the library's.

#include "s3basicbox.h"
#include "s3string.h"
#include "s3trace.h"

#include <QGuiApplication>
#include <QLabel>
#include <QResizeEvent>
#include <QScreen>
#include <QTest>
#include <QTextDocument>

using namespace Qt::Literals::StringLiterals;

namespace {

QStringList lines;

class OpenBox : public s3BasicBox
{
public:
    using s3BasicBox::availableScreenGeometry;
    using s3BasicBox::resizeEvent;
    using s3BasicBox::s3BasicBox;
    using s3BasicBox::textLabelMinimumWidth;
    using s3BasicBox::updateTextLabelMinimumWidth;

    [[nodiscard]] QLabel *label() const { return findChild<QLabel *>(u"qt_msgbox_label"_s); }
};

int documentWidth(const QString &text, const QFont &font)
{
    QTextDocument document;
    document.setPlainText(text);
    document.setDefaultFont(font);
    return document.size().toSize().width();
}

QString textOfWidth(int width, const QFont &font)
{
    QString text(1, u'x');
    while (documentWidth(text, font) < width)
        text += u'x';
    return text;
}

} // namespace

void s3WriteTrace(const QString &line)
{
    lines += line;
}

class tst_s3BasicBoxLayout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void widthOfText_data();
    void widthOfText();
    void widthOfShortTextIsOneMoreThanItsDocument();
    void widthOfRichTextIsThatOfWhatIsShown();
    void shownBoxHasItsMinimum_data();
    void shownBoxHasItsMinimum();
    void boxWithoutScreenHasNoMinimum();
    void boxWithoutLabelIsLeftAlone();
    void layoutIsTraced();
    void resizeMakesRoomForIconTextAndMargins();
    void resizeToEnoughChangesNothing();
    void resizeOfHiddenBoxChangesNothing();
    void resizeWithoutEventOrLabelChangesNothing();
};

void tst_s3BasicBoxLayout::init()
{
    s3TestFlagsGUI::instance()->clear();
    lines.clear();
}

void tst_s3BasicBoxLayout::widthOfText_data()
{
    QTest::addColumn<int>("textWidth");
    QTest::addColumn<Qt::TextFormat>("format");
    QTest::addColumn<int>("screenWidth");
    QTest::addColumn<int>("width");

    QTest::newRow("2,000 pixels on 1,920, plain") << 2000 << Qt::PlainText << 1920 << 1728;
    QTest::newRow("2,000 pixels on 1,920, rich") << 2000 << Qt::RichText << 1920 << 1728;
    QTest::newRow("2,000 pixels on 1,920, automatic") << 2000 << Qt::AutoText << 1920 << 0;
    QTest::newRow("2,000 pixels on 1,920, Markdown") << 2000 << Qt::MarkdownText << 1920 << 0;
    QTest::newRow("limit is truncated") << 2000 << Qt::PlainText << 1001 << 900;
    QTest::newRow("screen without width") << 2000 << Qt::PlainText << 0 << 0;
    QTest::newRow("screen whose limit is nothing") << 2000 << Qt::PlainText << 1 << 0;
    QTest::newRow("no text, plain") << 0 << Qt::PlainText << 1920 << 0;
    QTest::newRow("no text, rich") << 0 << Qt::RichText << 1920 << 0;
}

void tst_s3BasicBoxLayout::widthOfText()
{
    QFETCH(const int, textWidth);
    QFETCH(const Qt::TextFormat, format);
    QFETCH(const int, screenWidth);
    const QFont font = QGuiApplication::font();
    const QString text = textWidth == 0 ? u""_s : textOfWidth(textWidth, font);
    QTEST(OpenBox::textLabelMinimumWidth(text, format, font, screenWidth), "width");
}

void tst_s3BasicBoxLayout::widthOfShortTextIsOneMoreThanItsDocument()
{
    QFont font = QGuiApplication::font();
    for (const int pointSize : {8, 20}) {
        font.setPointSize(pointSize);
        const QString text = u"a line\nand a longer line"_s;
        QCOMPARE(OpenBox::textLabelMinimumWidth(text, Qt::PlainText, font, 1920), documentWidth(text, font) + 1);
    }
}

void tst_s3BasicBoxLayout::widthOfRichTextIsThatOfWhatIsShown()
{
    const QFont font = QGuiApplication::font();
    QCOMPARE(OpenBox::textLabelMinimumWidth(u"<i></i>text &amp; text"_s, Qt::RichText, font, 1920),
             documentWidth(u"text & text"_s, font) + 1);
}

void tst_s3BasicBoxLayout::shownBoxHasItsMinimum_data()
{
    QTest::addColumn<Qt::TextFormat>("format");
    QTest::addColumn<bool>("hasMinimum");
    QTest::newRow("automatic") << Qt::AutoText << false;
    QTest::newRow("plain") << Qt::PlainText << true;
    QTest::newRow("rich") << Qt::RichText << true;
}

void tst_s3BasicBoxLayout::shownBoxHasItsMinimum()
{
    QFETCH(const Qt::TextFormat, format);
    QFETCH(const bool, hasMinimum);
    OpenBox box(QMessageBox::Warning, u"T"_s, u""_s, QMessageBox::Ok, nullptr);
    const int screenWidth = QGuiApplication::primaryScreen()->availableGeometry().width();
    box.setTextFormat(format);
    box.setText(textOfWidth(screenWidth * 2, box.label()->font()));
    box.setVisible(true);
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    QCOMPARE(box.availableScreenGeometry(), QGuiApplication::primaryScreen()->availableGeometry());
    QCOMPARE(box.label()->minimumWidth(), hasMinimum ? screenWidth * 9 / 10 : 0);
    if (hasMinimum)
        QVERIFY2(box.width() >= screenWidth * 9 / 10, qPrintable(QString::number(box.width())));
    box.hide();
    box.setText(u""_s);
    box.setVisible(true);
    QCOMPARE(box.label()->minimumWidth(), 0);
}

void tst_s3BasicBoxLayout::boxWithoutScreenHasNoMinimum()
{
    OpenBox box(QMessageBox::Warning, u"T"_s, textOfWidth(500, QGuiApplication::font()), QMessageBox::Ok, nullptr);
    box.setTextFormat(Qt::PlainText);
    box.label()->setMinimumWidth(10);
    QVERIFY(box.windowHandle() == nullptr);
    QVERIFY(box.availableScreenGeometry().isNull());
    box.updateTextLabelMinimumWidth();
    QCOMPARE(box.label()->minimumWidth(), 0);
}

void tst_s3BasicBoxLayout::boxWithoutLabelIsLeftAlone()
{
    s3TestFlagsGUI::instance()->insert(334);
    OpenBox box(QMessageBox::Warning, u"T"_s, u"text"_s, QMessageBox::Ok, nullptr);
    QLabel *const label = box.label();
    label->setMinimumWidth(10);
    label->setObjectName(u"another"_s);
    box.updateTextLabelMinimumWidth();
    QCOMPARE(label->minimumWidth(), 10);
    QCOMPARE(lines, QStringList());
}

void tst_s3BasicBoxLayout::layoutIsTraced()
{
    s3TestFlagsGUI::instance()->insert(334);
    OpenBox box(QMessageBox::Warning, u"T"_s, u"text"_s, QMessageBox::Ok, nullptr);
    box.setTextFormat(Qt::PlainText);
    box.updateTextLabelMinimumWidth();
    QCOMPARE(
        lines,
        (QStringList{u"s3BasicBox::availableScreenGeometry() availableGeometry=%1"_s.arg(s3String::fromRect(QRect())),
                     u"s3BasicBox::updateTextLabelMinimumWidth() minimumWidth=0"_s}));
    lines.clear();
    box.setVisible(true);
    QCOMPARE(lines, (QStringList{u"s3BasicBox::availableScreenGeometry() availableGeometry=%1"_s.arg(
                                     s3String::fromRect(QGuiApplication::primaryScreen()->availableGeometry())),
                                 u"s3BasicBox::updateTextLabelMinimumWidth() minimumWidth=%1"_s.arg(
                                     documentWidth(u"text"_s, box.label()->font()) + 1)}));
}

void tst_s3BasicBoxLayout::resizeMakesRoomForIconTextAndMargins()
{
    OpenBox box(QMessageBox::Warning, u"T"_s, u"text"_s, QMessageBox::Ok, nullptr);
    box.setVisible(true);
    box.label()->setMinimumWidth(400);
    const int needed = box.iconPixmap().width() + 400 + 50;
    QVERIFY(box.iconPixmap().width() > 0);
    QResizeEvent event(QSize(needed - 1, 100), QSize());
    box.resizeEvent(&event);
    QCOMPARE(box.minimumWidth(), needed);
    QCOMPARE(box.maximumWidth(), needed);
}

void tst_s3BasicBoxLayout::resizeToEnoughChangesNothing()
{
    OpenBox box(QMessageBox::NoIcon, u"T"_s, u"text"_s, QMessageBox::Ok, nullptr);
    box.setVisible(true);
    box.label()->setMinimumWidth(400);
    const int before = box.maximumWidth();
    QResizeEvent event(QSize(450, 100), QSize());
    box.resizeEvent(&event);
    QCOMPARE(box.maximumWidth(), before);
    QVERIFY(before != 450);
}

void tst_s3BasicBoxLayout::resizeOfHiddenBoxChangesNothing()
{
    OpenBox box(QMessageBox::Warning, u"T"_s, u"text"_s, QMessageBox::Ok, nullptr);
    box.label()->setMinimumWidth(400);
    const int before = box.maximumWidth();
    QResizeEvent event(QSize(10, 10), QSize());
    box.resizeEvent(&event);
    QCOMPARE(box.maximumWidth(), before);
}

void tst_s3BasicBoxLayout::resizeWithoutEventOrLabelChangesNothing()
{
    OpenBox box(QMessageBox::Warning, u"T"_s, u"text"_s, QMessageBox::Ok, nullptr);
    box.setVisible(true);
    QLabel *const label = box.label();
    label->setMinimumWidth(400);
    const int before = box.maximumWidth();
    box.resizeEvent(nullptr);
    QCOMPARE(box.maximumWidth(), before);
    label->setObjectName(u"another"_s);
    QResizeEvent event(QSize(10, 10), QSize());
    box.resizeEvent(&event);
    QCOMPARE(box.maximumWidth(), before);
}

QTEST_MAIN(tst_s3BasicBoxLayout)
#include "tst_s3basicboxlayout.moc"
