#include "s3basicbox.h"

#include "s3basicboxwin.h"
#include "s3dictionaries.h"
#include "s3errorchannel.h"
#include "s3keytext.h"
#include "s3trace.h"
#include "s3tracearg.h"

#include <QCoreApplication>
#include <QLabel>
#include <QResizeEvent>
#include <QScreen>
#include <QStyle>
#include <QTextDocument>
#include <QWindow>

#include <algorithm>
#include <thread>

using namespace Qt::Literals::StringLiterals;

namespace {

// What the box has beside icon and text, in pixels.
constexpr int margins = 50;

// Taken before main(). There may be no application that could be asked.
const std::thread::id mainThread = std::this_thread::get_id();

QString productTitle()
{
    const QString product = s3KeyText(u"Vexa"_s);
    // translate() notes what it is asked for, without a lock.
    const QString title = std::this_thread::get_id() == mainThread ? translate(product) : guiTranslation(product);
    // Without a dictionary the program speaks the language of its source texts, titles included.
    const bool isUnknown = guiTextCount() > 0 && !guiHasSourceText(product);
    return isUnknown ? qAppName() : title;
}

} // namespace

s3BasicBox::s3BasicBox(QWidget *parent)
    : QMessageBox(parent)
{
    adaptToParent();
}

s3BasicBox::s3BasicBox(Icon type, const QString &title, const QString &text, StandardButtons buttons, QWidget *parent)
    : QMessageBox(type, title, text, buttons, parent, Qt::Dialog | Qt::MSWindowsFixedSizeDialogHint)
{
    adaptToParent();
}

s3BasicBox::~s3BasicBox() = default;

void s3BasicBox::adaptToParent()
{
    if (const QWidget *const parent = parentWidget()) {
        if (const QWidget *const window = parent->window())
            setFont(window->font());
        setWindowModality(Qt::WindowModal);
    }
    if (layoutDirection() != Qt::RightToLeft)
        return;
    if (QLabel *const label = textLabel())
        label->setAlignment(QStyle::visualAlignment(layoutDirection(), label->alignment()));
}

int s3BasicBox::fatal(const QString &text)
{
    return show(Critical, QString(), text, Ok, NoButton, true);
}

int s3BasicBox::critical(const QString &text)
{
    return show(Critical, QString(), text, Ok, NoButton, false);
}

int s3BasicBox::warning(const QString &text)
{
    return show(Warning, QString(), text, Ok, NoButton, false);
}

int s3BasicBox::information(const QString &text)
{
    return show(Information, QString(), text, Ok, NoButton, false);
}

int s3BasicBox::fatalChoice(const QString &text, StandardButtons buttons, StandardButton defaultButton)
{
    return show(Critical, QString(), text, buttons, defaultButton, true);
}

int s3BasicBox::show(Icon type, const QString &title, const QString &text, StandardButtons buttons,
                     StandardButton defaultButton, bool isFatal)
{
    const QString myTitle = title.isEmpty() ? titleFor(productTitle()) : title;
    if (s3HasTestFlag(335))
        isFatal = true;
    if (s3HasTestFlag(336))
        isFatal = false;
    S3_TRACE(334, u"s3BasicBox::show()"_s + s3TraceArg(u"isFatal"_s, isFatal) + s3TraceArg(u"myTitle"_s, myTitle) +
                      s3TraceArg(u"text"_s, text));
    if (type == Critical && s3WriteToErrorChannel(u"s3BasicBox::show(): "_s + text))
        return NoButton;
    if (isFatal)
        return s3BasicBoxWin::show(type, myTitle, text, buttons, defaultButton);
    s3BasicBox box(type, myTitle, text, buttons, nullptr);
    box.setDefaultButton(defaultButton);
    return box.exec();
}

QString s3BasicBox::titleFor(const QString &translation)
{
    // The mark of a text that the dictionary doesn't have in this language.
    return translation.startsWith(u"*** ") ? qAppName() : translation;
}

void s3BasicBox::setPlainTextLines(const QStringList &lines)
{
    setTextFormat(Qt::PlainText);
    setText(u'\n' + lines.join(u'\n') + u'\n');
}

void s3BasicBox::setRichTextLines(const QStringList &lines)
{
    setTextFormat(Qt::RichText);
    setText(u"<br>"_s + lines.join(u"<br>"_s) + u"<br><br>"_s);
}

void s3BasicBox::setPlainTextLine(const QString &line)
{
    setPlainTextLines({line});
}

void s3BasicBox::setRichTextLine(const QString &line)
{
    setRichTextLines({line});
}

void s3BasicBox::resizeEvent(QResizeEvent *event)
{
    const QLabel *const label = textLabel();
    if (event == nullptr || isHidden() || label == nullptr)
        return;
    const int needed = iconPixmap().width() + label->minimumWidth() + margins;
    if (needed > event->size().width())
        setFixedWidth(needed);
}

void s3BasicBox::showEvent(QShowEvent *event)
{
    updateTextLabelMinimumWidth();
    QMessageBox::showEvent(event);
}

void s3BasicBox::updateTextLabelMinimumWidth()
{
    QLabel *const label = textLabel();
    if (label == nullptr)
        return;
    const int minimumWidth =
        textLabelMinimumWidth(text(), textFormat(), label->font(), availableScreenGeometry().width());
    label->setMinimumWidth(minimumWidth);
    S3_TRACE(334, u"s3BasicBox::updateTextLabelMinimumWidth()"_s + s3TraceArg(u"minimumWidth"_s, minimumWidth));
}

QRect s3BasicBox::availableScreenGeometry() const
{
    QRect availableGeometry;
    const QWindow *const handle = window()->windowHandle();
    if (const QScreen *const screen = handle == nullptr ? nullptr : handle->screen())
        availableGeometry = screen->availableGeometry();
    S3_TRACE(334, u"s3BasicBox::availableScreenGeometry()"_s + s3TraceArg(u"availableGeometry"_s, availableGeometry));
    return availableGeometry;
}

int s3BasicBox::textLabelMinimumWidth(const QString &text, Qt::TextFormat format, const QFont &font, int screenWidth)
{
    const int limit = screenWidth * 9 / 10;
    if (limit <= 0)
        return 0;
    QTextDocument document;
    if (format == Qt::PlainText)
        document.setPlainText(text);
    else if (format == Qt::RichText)
        document.setHtml(text);
    if (document.isEmpty())
        return 0;
    document.setDefaultFont(font);
    return std::min(document.size().toSize().width() + 1, limit);
}

QLabel *s3BasicBox::textLabel() const
{
    return findChild<QLabel *>(u"qt_msgbox_label"_s);
}
