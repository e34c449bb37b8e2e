#include "s3replaceall.h"
#include "s3string.h"
#include "s3trace.h"

#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QSet>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Each match of \a pattern ends in \a closing.
void expandReferences(QString &text, const QRegularExpression &pattern, QChar closing,
                      const QProcessEnvironment &environment)
{
    // The matches are those of the text before this pass: a reference that a value brings in isn't expanded by it. What
    // is behind the last closing character can't match, but would be tried from every opening one.
    QRegularExpressionMatchIterator matches = pattern.globalMatch(text.first(text.lastIndexOf(closing) + 1));
    QSet<QString>
        gone; // what the text doesn't hold any more: a reference that was there a million times is many matches
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        const QString reference = match.captured(1);
        const QString name = match.captured(2);
        if (gone.contains(reference) || !environment.contains(name))
            continue;
        if (text.contains(reference)) {
            text = s3ReplaceAll(text, reference, environment.value(name));
            gone.clear();
        } else {
            gone.insert(reference);
        }
    }
}

} // namespace

void s3String::expandEnvironmentStrings(QString &text)
{
    static const QRegularExpression percentPattern(uR"((\%([^\%]+)\%))"_s);
    static const QRegularExpression dollarPattern(uR"((\$\{([^\}]+)\}))"_s);

    if (s3HasTestFlag(277))
        return;
    S3_TRACE(276, u"s3String::expandEnvironmentStrings(1) str='%1'"_s.arg(text));

    const QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    expandReferences(text, percentPattern, u'%', environment);
    expandReferences(text, dollarPattern, u'}', environment);

    S3_TRACE(276, u"s3String::expandEnvironmentStrings(2) str='%1'"_s.arg(text));
}
