#include "mailtext.h"

#include <QRegularExpression>
#include <QStringDecoder>
#include <QTextDocumentFragment>

using namespace Qt::Literals::StringLiterals;

namespace {

QString bodyContent(const QString &html)
{
    static const QRegularExpression bodyStart(u"<body[^>]*>"_s, QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch start = bodyStart.match(html);
    if (!start.hasMatch())
        return html;
    const qsizetype end = html.lastIndexOf("</body"_L1, -1, Qt::CaseInsensitive);
    return end < start.capturedEnd() ? html.sliced(start.capturedEnd())
                                     : html.sliced(start.capturedEnd(), end - start.capturedEnd());
}

} // namespace

QString plainTextToHtml(const QString &text)
{
    if (text.isEmpty())
        return text;
    QString content = text.toHtmlEscaped();
    content.replace(u"\r\n"_s, u"\n"_s).replace(u'\n', u"<br>\n"_s);
    return u"<html><body>"_s + content + u"</body></html>"_s;
}

QString htmlToPlainText(const QString &html)
{
    return QTextDocumentFragment::fromHtml(html).toPlainText();
}

QString decodeHtmlFile(const QByteArray &bytes)
{
    // Without any sign of its own, Qt's answer for html is Latin-1 or UTF-8 by guess; validity says more than the
    // guess.
    QStringDecoder utf8(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    const QString decoded = utf8(bytes);
    const auto declared = QStringConverter::encodingForHtml(bytes);
    if (declared && *declared != QStringConverter::Utf8) {
        QStringDecoder decoder(*declared);
        return decoder(bytes);
    }
    return utf8.hasError() ? QString::fromLatin1(bytes) : decoded;
}

QString insertHtml(const QString &inserted, const QString &existing)
{
    if (existing.isEmpty())
        return inserted;
    const qsizetype bodyEnd = inserted.lastIndexOf("</body"_L1, -1, Qt::CaseInsensitive);
    if (bodyEnd < 0)
        return inserted + existing;
    return inserted.left(bodyEnd) + bodyContent(existing) + inserted.sliced(bodyEnd);
}
