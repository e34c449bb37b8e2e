// The words for languages: what the user calls one, and what it is called for him.

#include "s3dictionaries.h"
#include "s3language.h"
#include "s3string.h"

#include <QLocale>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The number of the message text that has the language's name.
constexpr qint32 nameNumber(qint32 index)
{
    return 950 + index;
}

bool isSameWord(const QString &one, const QString &other)
{
    return one.compare(other, Qt::CaseInsensitive) == 0;
}

bool isNameOf(const QString &text, qint32 index)
{
    if (isSameWord(text, individualName(letterAt(index))))
        return true;
    for (qint32 language = 0; language < languageCount(); ++language) {
        if (isSameWord(text, messageText(nameNumber(index), language)))
            return true;
    }
    return false;
}

} // namespace

QString letterForText(const QString &text)
{
    if (text.isEmpty())
        return {};
    const QStringList letters = languageLetters();
    for (const QString &letter : letters) {
        if (isSameWord(text, letter) || isSameWord(text, isoCode(letter)))
            return letter;
    }
    return letterForDisplayName(text);
}

QStringList lettersForTexts(const QString &text)
{
    QStringList letters;
    const QStringList items = s3String::splitAtBlanks(text);
    for (const QString &item : items) {
        const QString letter = letterForText(item);
        if (!letter.isEmpty())
            letters += letter;
    }
    return letters;
}

QString letterForLocale(const QLocale &locale)
{
    if (locale.language() == QLocale::C)
        return {};
    const QString name = locale.name().replace(u'_', u'-');
    const QString letter = letterForText(name);
    return letter.isEmpty() ? letterForText(name.split(u'-').constFirst()) : letter;
}

QString letterForDisplayName(const QString &text)
{
    if (text.isEmpty())
        return {};
    for (qint32 index = 0; index < languageCount(); ++index) {
        if (isNameOf(text, index))
            return letterAt(index);
    }
    return {};
}

QString displayName(const QString &letter)
{
    const QString individual = individualName(letter);
    if (!individual.isEmpty())
        return individual;
    const qint32 index = indexOfLetter(letter);
    return index < 0 ? QString() : messageText(nameNumber(index));
}

QString currentDisplayName()
{
    static QString name;
    static QString letterOfName;
    const QString letter = currentLetter();
    if (letterOfName != letter) {
        name = displayName(letter);
        letterOfName = letter;
    }
    return name;
}

QString yesText(bool yes)
{
    if (yes) {
        static const QString word = messageText(531);
        return word;
    }
    static const QString word = messageText(532);
    return word;
}

bool isYesText(const QString &text)
{
    return text == yesText(true);
}

QStringList chooseLanguage(const QString &first, const QString &second, const QString &third, const QLocale &locale)
{
    QString users = letterForText(third);
    if (users.isEmpty())
        users = letterForLocale(locale);
    const QStringList candidates{first, second, users, u"A"_s, u"D"_s};
    for (const QString &candidate : candidates) {
        if (setLanguage(candidate, QString()))
            break;
    }

    QStringList found;
    if (first.isEmpty()) {
        found += u"D"_s;
        if (!users.isEmpty() && !found.contains(users))
            found.prepend(users);
    }
    return found;
}
