#include "assertion.h"

#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

bool isAssertion(const QString &text, const QString &condition, const QString &source, int line,
                 const QString &function, const QString &message)
{
    const QString pattern =
        u"^\\nBedingung nicht erfuellt\\n%1\\nFehlernummer -1111: in [^\\n]*%2\\.cpp:%3 in %4\\(\\)\\n%5\\n$"_s.arg(
            QRegularExpression::escape(condition), QRegularExpression::escape(source), QString::number(line),
            QRegularExpression::escape(function), QRegularExpression::escape(message));
    const bool matches = QRegularExpression(pattern).match(text).hasMatch();
    if (!matches)
        qWarning().noquote() << "It is" << text;
    return matches;
}
