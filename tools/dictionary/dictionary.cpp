#include "dictionary.h"

using namespace Qt::Literals::StringLiterals;

int Entry::languageRead(int language) const
{
    if (cells.at(language).kind == Cell::Own)
        return language;
    if (language == firstLanguage)
        return -1;
    if (language == secondLanguage || cells.at(language).kind == Cell::AsGerman)
        return languageRead(firstLanguage);
    return languageRead(secondLanguage);
}

const QString &Entry::textRead(int language) const
{
    const int read = languageRead(language);
    return read < 0 ? source : cells.at(read).text;
}

QString placeholderOf(int number)
{
    return u"*** %1 ***"_s.arg(number);
}
