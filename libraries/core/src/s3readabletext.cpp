#include "s3readabletext.h"

#include <QHash>
#include <QSet>
#include <QStringList>
#include <QTextDocument>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype maximumLines = 40;
constexpr qsizetype maximumLength = 3000;
constexpr qsizetype longestReference = 10;

class HtmlReader
{
public:
    explicit HtmlReader(const QString &html)
        : m_html(html)
    {
    }

    [[nodiscard]] QString text()
    {
        while (m_position < m_html.size())
            readNext();
        return m_text.trimmed();
    }

private:
    void readNext()
    {
        const QChar c = m_html.at(m_position);
        if (c == u'<' && readTag())
            return;
        if (c == u'&' && readReference())
            return;
        ++m_position;
        if (c.isSpace() && !m_isPreformatted)
            appendBlank();
        else
            m_text += c;
    }

    // A sign that begins no tag is text.
    bool readTag()
    {
        const qsizetype end = endOfTag();
        if (end < 0)
            return false;
        QStringView tag = QStringView(m_html).sliced(m_position + 1, end - m_position - 1);
        const bool closes = tag.startsWith(u'/');
        if (closes)
            tag = tag.sliced(1);
        const auto nameEnd = std::find_if_not(tag.begin(), tag.end(), [](QChar c) { return c.isLetterOrNumber(); });
        const QString name = tag.first(nameEnd - tag.begin()).toString().toLower();
        if (name.isEmpty() && !tag.startsWith(u'!'))
            return false;
        m_position = end + 1;
        if (name == u"pre")
            m_isPreformatted = !closes;
        if (name == u"br")
            m_text += u'\n';
        else if (isBlock(name))
            endLine();
        else if (!closes && isUnseen(name))
            skipTo(u"</"_s + name);
        return true;
    }

    // The place of its last sign; -1 for what is no tag. It takes no longer than the tag has characters.
    qsizetype endOfTag()
    {
        if (QStringView(m_html).sliced(m_position).startsWith("<!--"_L1)) {
            const qsizetype end = find(u"-->"_s, m_position + 4);
            return end < 0 ? -1 : end + 2;
        }
        for (qsizetype i = m_position + 1; i < m_html.size(); ++i) {
            const QChar c = m_html.at(i);
            if (c == u'>')
                return i;
            if (c == u'<')
                return -1;
            if (c != u'"' && c != u'\'')
                continue;
            i = find(c, i + 1);
            if (i < 0)
                return -1;
        }
        return -1;
    }

    // What has been looked for in vain isn't looked for again, further on.
    qsizetype find(const QString &text, qsizetype from)
    {
        if (m_missing.contains(text))
            return -1;
        const qsizetype found = m_html.indexOf(text, from, Qt::CaseInsensitive);
        if (found < 0)
            m_missing.insert(text);
        return found;
    }

    void skipTo(const QString &text)
    {
        const qsizetype found = find(text, m_position);
        if (found >= 0)
            m_position = found;
    }

    bool readReference()
    {
        const qsizetype length = QStringView(m_html).sliced(m_position).left(longestReference + 1).indexOf(u';');
        if (length < 0)
            return false;
        const QString replacement = character(m_html.sliced(m_position + 1, length - 1));
        if (replacement.isEmpty())
            return false;
        m_text += replacement;
        m_position += length + 1;
        return true;
    }

    static bool isUnseen(const QString &name) { return name == u"style" || name == u"script" || name == u"title"; }

    static bool isBlock(const QString &name)
    {
        static const QSet<QString> names{u"p"_s,  u"h1"_s, u"h2"_s, u"h3"_s,    u"h4"_s, u"h5"_s,  u"h6"_s, u"div"_s,
                                         u"ul"_s, u"ol"_s, u"li"_s, u"table"_s, u"tr"_s, u"pre"_s, u"hr"_s, u"body"_s};
        return names.contains(name);
    }

    static QString character(const QString &reference)
    {
        static const QHash<QString, QString> named{{u"lt"_s, u"<"_s},    {u"gt"_s, u">"_s},   {u"amp"_s, u"&"_s},
                                                   {u"quot"_s, u"\""_s}, {u"apos"_s, u"'"_s}, {u"nbsp"_s, u" "_s}};
        if (!reference.startsWith(u'#'))
            return named.value(reference);
        const bool isHexadecimal = reference.startsWith(u"#x", Qt::CaseInsensitive);
        bool isNumber = false;
        const uint code =
            isHexadecimal ? reference.sliced(2).toUInt(&isNumber, 16) : reference.sliced(1).toUInt(&isNumber, 10);
        if (!isNumber || code == 0 || code > QChar::LastValidCodePoint || QChar::isSurrogate(code))
            return {};
        return QString::fromUcs4(reinterpret_cast<const char32_t *>(&code), 1);
    }

    void appendBlank()
    {
        if (!m_text.isEmpty() && !m_text.back().isSpace())
            m_text += u' ';
    }

    void endLine()
    {
        if (!m_text.isEmpty() && m_text.back() != u'\n')
            m_text += u'\n';
    }

    const QString m_html;
    QString m_text;
    qsizetype m_position = 0;
    bool m_isPreformatted = false;
    QSet<QString> m_missing;
};

} // namespace

QString s3ReadableText(const QString &text)
{
    QString readable = text;
    readable.remove(QChar(u'\0'));
    readable.remove(u'\r');
    return Qt::mightBeRichText(readable) ? HtmlReader(readable).text() : readable;
}

QString s3ShortenedText(const QString &text)
{
    // The end of the last line begins no other.
    const qsizetype whole = text.endsWith(u'\n') ? text.size() - 1 : text.size();
    qsizetype length = std::min(whole, maximumLength);
    qsizetype lineEnd = -1;
    for (qsizetype line = 0; line < maximumLines; ++line) {
        lineEnd = text.indexOf(u'\n', lineEnd + 1);
        if (lineEnd < 0)
            break;
    }
    if (lineEnd >= 0)
        length = std::min(length, lineEnd);
    if (length == whole)
        return text;
    if (length > 0 && text.at(length - 1).isHighSurrogate())
        --length;
    return text.first(length) + u"\n[...]"_s;
}
