#include "s3assert.h"

#include "s3exception.h"
#include "s3testflags.h"

#include <QByteArrayView>

using namespace Qt::Literals::StringLiterals;

namespace {

QString conditionText(const char *condition)
{
    const QByteArrayView bytes(condition);
    if (bytes.isEmpty() || bytes == "false")
        return {};
    return u"Bedingung nicht erfuellt\n%1\n"_s.arg(QString::fromUtf8(bytes));
}

QString place(qint32 errorNumber, const char *file, int line, const char *function)
{
    QString text = u"Fehlernummer -%1: in %2:%3"_s.arg(QString::number(errorNumber), QString::fromUtf8(file),
                                                       QString::number(line));
    const QString name = QString::fromUtf8(function);
    if (!name.isEmpty())
        text += u" in %1()"_s.arg(name);
    return text;
}

} // namespace

void assertionFailed(qint32 errorNumber, const char *condition, const QString &message, const char *file, int line,
                     const char *function)
{
    const QString text = conditionText(condition);
    const QString where = place(errorNumber, file, line, function);
    if (s3HasTestFlag(191))
        throw s3Exception(u'\n' + text + where + u'\n' + message + u'\n');
    // The box and the report that a user gets of this aren't there yet.
    qFatal("%s", qUtf8Printable(text + message + u'\n' + where));
}
