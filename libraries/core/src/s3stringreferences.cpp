#include "s3dictionaries.h"
#include "s3string.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QStringView opening = u"Xmsg(";

struct Reference
{
    qsizetype begin = 0;
    qsizetype end = 0; // behind its right parenthesis
    int number = 0;
};

/// Finds the references of a text, one behind the other.
class ReferenceScan
{
public:
    explicit ReferenceScan(QStringView text)
        : m_text(text)
    {
    }

    /// False when there is none left.
    bool next(Reference &reference)
    {
        reference.begin = m_text.indexOf(opening, m_position);
        if (reference.begin < 0)
            return false;
        const qsizetype parenthesis = m_text.indexOf(u')', reference.begin);
        if (parenthesis < 0)
            return false;

        const QStringView head = m_text.first(parenthesis);
        const qsizetype comma = head.indexOf(u',', reference.begin);
        const bool quoted = comma >= 0 && head.indexOf(u'"', comma) >= 0;
        const qsizetype numberBegin = reference.begin + opening.size();
        reference.number = head.sliced(numberBegin, (comma < 0 ? parenthesis : comma) - numberBegin).toInt();
        reference.end = quoted ? endOfQuoted(comma, parenthesis) : parenthesis + 1;
        m_position = reference.end;
        return true;
    }

private:
    /// A right parenthesis within the quoted text doesn't end the reference.
    qsizetype endOfQuoted(qsizetype comma, qsizetype parenthesis)
    {
        // Once there is no pair left there is none behind any later comma: the rest is searched in vain only once.
        const qsizetype pair = m_pairsLeft ? m_text.indexOf(u"\")", comma) : -1;
        m_pairsLeft = pair >= 0;
        return m_pairsLeft ? pair + 2 : parenthesis + 1;
    }

    QStringView m_text;
    qsizetype m_position = 0;
    bool m_pairsLeft = true;
};

} // namespace

int s3String::expandMessageReferences(QString &text, bool asText)
{
    int count = 0;
    QString expanded;
    qsizetype copied = 0;
    ReferenceScan scan(text);
    Reference reference;
    while (scan.next(reference)) {
        if (reference.number == 0)
            continue;
        expanded += QStringView(text).sliced(copied, reference.begin - copied);
        expanded += asText ? messageText(reference.number) : inParentheses(messageSymbol(reference.number));
        copied = reference.end;
        ++count;
    }
    if (count > 0)
        text = expanded.append(QStringView(text).sliced(copied));
    return count;
}
