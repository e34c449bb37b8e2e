#include "s3language.h"

#include <QLocale>

using namespace Qt::Literals::StringLiterals;

bool setLanguage(const QString &letter, const QString &isoCodeForIndividual)
{
    Q_UNUSED(isoCodeForIndividual)
    if (letter.toUpper() != u"A"_s)
        return false;
    QLocale::setDefault(QLocale(u"en_US"_s));
    return true;
}
