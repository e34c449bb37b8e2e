#include "s3replaceall.h"
#include "s3string.h"
#include "s3trace.h"
#include "s3wellformed.h"

#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QSet>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Each match of \a pattern ends in \a closing.
void expandReferences(QString &text, const QRegularExpression &pattern, QChar closing,
                      const QProcessEnvironment &environment)
{
    // The matches are those of the text before this pass. What is behind the last closing character can't match, but
    // would be tried from every opening one.
    const QString before = text.first(text.lastIndexOf(closing) + 1);
    QRegularExpressionMatchIterator matches = pattern.globalMatch(s3WellFormed(before));
    // Each reference is replaced once, wherever it stands. What its own value brings in stays: replaced with each
    // further match, a variable that holds its own name twice would fill the memory.
    QSet<QString> replaced;
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        const QString reference = before.sliced(match.capturedStart(1), match.capturedLength(1));
        const QString name = match.captured(2);
        if (replaced.contains(reference) || !environment.contains(name))
            continue;
        text = s3ReplaceAll(text, reference, environment.value(name));
        replaced.insert(reference);
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
