#include "s3dictionaries.h"

using namespace Qt::Literals::StringLiterals;

bool openDictionaries(QString &errorText)
{
    Q_UNUSED(errorText)
    return true;
}

QString translate(const QString &sourceText)
{
    return sourceText;
}

QString messageText(int number)
{
    return u"*** %1 ***"_s.arg(number);
}

QString messageSymbol(int number)
{
    Q_UNUSED(number)
    return {};
}
