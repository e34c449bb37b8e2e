#include "s3desktopbox.h"

#include "s3basicboxwin.h"
#include "s3readabletext.h"

#include <algorithm>
#include <array>

using namespace Qt::Literals::StringLiterals;
using namespace s3BasicBoxWin;

namespace {

constexpr s3DesktopBox::Button ok{resultOk, "OK"};
constexpr s3DesktopBox::Button cancel{resultCancel, "Cancel"};
constexpr s3DesktopBox::Button yes{resultYes, "Yes"};
constexpr s3DesktopBox::Button no{resultNo, "No"};

constexpr s3DesktopBox::Button okAlone[] = {ok};
constexpr s3DesktopBox::Button okCancel[] = {ok, cancel};
constexpr s3DesktopBox::Button yesNo[] = {yes, no};
constexpr s3DesktopBox::Button yesNoCancel[] = {yes, no, cancel};

std::span<const s3DesktopBox::Button> buttonsOf(quint32 flags)
{
    switch (flags & maskButtons) {
    case flagOkCancel:
        return okCancel;
    case flagYesNo:
        return yesNo;
    case flagYesNoCancel:
        return yesNoCancel;
    default:
        return okAlone;
    }
}

size_t defaultIndexOf(quint32 flags, size_t count)
{
    const size_t index = (flags & maskDefaultButton) / flagDefaultButton2;
    return index < count ? index : 0;
}

QByteArray option(const char *name, const QByteArray &value)
{
    return QByteArray("--") + name + '=' + value;
}

QByteArray numbered(const char *name, int number)
{
    return QByteArray(name) + QByteArray::number(number);
}

// --- kdialog: takes text for HTML when it looks so, and a backslash for an escape ---

// In ASCII, whatever the locale.
QByteArray htmlOf(const QString &text)
{
    QByteArray html;
    for (const uint code : text.toHtmlEscaped().toUcs4()) {
        if (code >= 0x80)
            html += "&#" + QByteArray::number(code) + ';';
        else if (code == '\\')
            html += "\\\\";
        else
            html += char(code);
    }
    return html;
}

QByteArrayList kdialogArguments(const s3DesktopBox &box)
{
    const bool isAlarm = box.icon() == flagIconError || box.icon() == flagIconWarning;
    QByteArray kind;
    if (box.buttons().size() > 1)
        kind = QByteArray(isAlarm ? "warning" : "") + (box.buttons().size() == 2 ? "yesno" : "yesnocancel");
    else if (box.icon() == flagIconError)
        kind = "error";
    else
        kind = isAlarm ? "sorry" : "msgbox";

    const QByteArray direction = box.isRightToLeft() ? " dir=\"rtl\"" : "";
    const QByteArray text = "<p style=\"white-space:pre-wrap\"" + direction + '>' + htmlOf(box.text()) + "</p>";
    QByteArrayList arguments{option("title", box.title().toUtf8()), option(kind.constData(), text)};
    static constexpr std::array labels = {"yes-label", "no-label", "cancel-label"};
    if (box.buttons().size() > 1) {
        for (size_t i = 0; i < std::min(labels.size(), box.buttons().size()); ++i)
            arguments += option(labels[i], box.buttons()[i].label);
    }
    return arguments;
}

// Its first button is the default. And 1 is the end of its second button, of a box of two that is closed, and of one
// that has lost its display: as good as the second button of two, but not of three.
bool kdialogFits(const s3DesktopBox &box)
{
    return box.buttons().size() == 1 || (box.buttons().size() == 2 && box.isFirstTheDefault());
}

std::optional<int> kdialogResult(const s3DesktopBox &box, const s3DesktopTool::End &end)
{
    // The order is MessageBoxW's, so that a box that is closed gives the number of its last button: 1 or 2.
    const auto index = size_t(end.status);
    if (end.status >= 0 && index < box.buttons().size())
        return box.buttons()[index].result;
    return end.status == 2 ? std::optional(box.dismissed()) : std::nullopt;
}

// --- zenity: its exit status is 1 both for a button and when there is no display, unless it is told other numbers ---

constexpr int zenityOk = 101;
constexpr int zenityCancel = 102;
constexpr int zenityExtra = 103;
constexpr int zenityEscape = 104;

const char *zenityIcon(quint32 icon)
{
    switch (icon) {
    case flagIconError:
        return "error";
    case flagIconWarning:
        return "warning";
    case flagIconQuestion:
        return "question";
    default:
        return "info";
    }
}

QByteArray zenityText(const s3DesktopBox &box)
{
    if (!box.isRightToLeft())
        return box.text().toUtf8();
    // The toolkit finds the direction of each line by its first strong character.
    const QChar rightToLeftMark(0x200F);
    return QString(rightToLeftMark + QString(box.text()).replace(u'\n', u"\n"_s + rightToLeftMark)).toUtf8();
}

QByteArrayList zenityArguments(const s3DesktopBox &box)
{
    const size_t count = box.buttons().size();
    const QByteArray icon = zenityIcon(box.icon());
    QByteArrayList arguments;
    if (count > 1) {
        arguments << "--question";
        // Version 4 complains about the option, though it heeds it; version 3 refuses the new one, "--icon".
        if (icon != "question")
            arguments << option("icon-name", "dialog-" + (icon == "info" ? "information" : icon));
    } else {
        // A question has two buttons there.
        arguments << "--" + (icon == "question" ? "info" : icon);
    }
    arguments << "--no-markup" << option("title", box.title().toUtf8()) << option("text", zenityText(box));
    if (count > 1)
        arguments << option("ok-label", box.slot(0).label) << option("cancel-label", box.slot(count - 1).label);
    if (count > 2)
        arguments << option("extra-button", box.slot(1).label);
    return arguments;
}

std::optional<int> zenityResult(const s3DesktopBox &box, const s3DesktopTool::End &end)
{
    const size_t count = box.buttons().size();
    // Version 3 ends as if the box had been closed, and prints the button's label.
    if (count > 2 && (end.status == zenityExtra || end.output.trimmed() == box.slot(1).label))
        return box.slot(1).result;
    switch (end.status) {
    case 0:
    case zenityOk:
        return box.slot(0).result;
    case zenityCancel:
        return box.slot(count - 1).result;
    case zenityEscape:
        return box.dismissed();
    default:
        return {};
    }
}

// --- xmessage: knows Latin-1 and no icons, and would look for its own options in a text among its arguments ---

constexpr int xmessageBase = 100;

QByteArray latin1Of(QString text)
{
    // What German and English texts have beyond Latin-1; the rest becomes a question mark.
    static constexpr struct
    {
        char16_t from;
        const char *to;
    } replacements[] = {{0x2013, "-"},  {0x2014, "-"},  {0x2018, "'"},  {0x2019, "'"},   {0x201A, "'"},
                        {0x201C, "\""}, {0x201D, "\""}, {0x201E, "\""}, {0x2026, "..."}, {0x20AC, "EUR"}};
    for (const auto &[from, to] : replacements)
        text.replace(QChar(from), QLatin1StringView(to));
    return text.toLatin1();
}

QByteArrayList xmessageArguments(const s3DesktopBox &box)
{
    QByteArrayList labels;
    for (const s3DesktopBox::Button &button : box.buttons())
        labels += QByteArray(button.label) + ':' + QByteArray::number(xmessageBase + button.result);
    return {"-center",
            "-title",
            latin1Of(box.title()),
            "-xrm",
            "*message.wrap: word",
            "-buttons",
            labels.join(','),
            "-default",
            box.defaultButton().label,
            "-file",
            "-"};
}

QByteArray xmessageInput(const s3DesktopBox &box)
{
    // Without any input there would be no telling whether it has been read.
    return latin1Of(box.text()) + '\n';
}

std::optional<int> xmessageResult(const s3DesktopBox &box, const s3DesktopTool::End &end)
{
    for (const s3DesktopBox::Button &button : box.buttons()) {
        if (end.status == xmessageBase + button.result)
            return button.result;
    }
    // It ends alike when its window is closed and when it finds no display; but then it reads nothing.
    return end.status == 1 && end.hasReadInput ? std::optional(box.dismissed()) : std::nullopt;
}

QByteArray noInput(const s3DesktopBox & /*box*/)
{
    return {};
}

bool never(const s3DesktopBox & /*box*/)
{
    return false;
}

bool always(const s3DesktopBox & /*box*/)
{
    return true;
}

bool hasThreeButtons(const s3DesktopBox &box)
{
    return box.buttons().size() > 2;
}

} // namespace

s3DesktopBox::s3DesktopBox(const QString &title, const QString &text, quint32 flags)
    : m_title(title)
    , m_wholeText(s3ReadableText(text))
    , m_text(s3ShortenedText(m_wholeText))
    , m_flags(flags)
    , m_buttons(buttonsOf(flags))
    , m_defaultIndex(defaultIndexOf(flags, m_buttons.size()))
{
    m_title.remove(QChar(u'\0'));
}

quint32 s3DesktopBox::icon() const
{
    return m_flags & maskIcon;
}

bool s3DesktopBox::isRightToLeft() const
{
    return (m_flags & flagRightToLeft) != 0;
}

const s3DesktopBox::Button &s3DesktopBox::slot(size_t index) const
{
    if (index == 0)
        return defaultButton();
    return m_buttons[index <= m_defaultIndex ? index - 1 : index];
}

int s3DesktopBox::dismissed() const
{
    // Ok, No and Cancel stand at the end of their boxes.
    return m_buttons.back().result;
}

std::span<const s3DesktopTool> s3DesktopTool::all()
{
    static constexpr s3DesktopTool tools[] = {
        {"kdialog", false, kdialogFits, kdialogArguments, noInput, never, kdialogResult},
        {"zenity", false, always, zenityArguments, noInput, hasThreeButtons, zenityResult},
        {"xmessage", true, always, xmessageArguments, xmessageInput, never, xmessageResult},
    };
    return tools;
}

QByteArrayList s3DesktopTool::environment()
{
    return {numbered("ZENITY_OK=", zenityOk), numbered("ZENITY_CANCEL=", zenityCancel),
            numbered("ZENITY_EXTRA=", zenityExtra), numbered("ZENITY_ESC=", zenityEscape)};
}
