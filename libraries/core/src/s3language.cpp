#include "s3language.h"

#include "s3testflags.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QLocale>
#include <QMap>

#include <algorithm>
#include <array>

using namespace Qt::Literals::StringLiterals;

namespace {

enum Charset { Ansi, EastEurope, Russian, Greek, Turkish, Gb2312, ChineseBig5, Thai, Vietnamese, Arabic, ShiftJis };

struct CharsetRow
{
    QStringView name;
    qint32 number;
    QStringView writingSystemName;
    QFontDatabase::WritingSystem writingSystem;
};

// In the order of Charset.
constexpr std::array<CharsetRow, 11> charsets{{
    {u"ANSI_CHARSET", 0, u"Latin", QFontDatabase::Latin},
    {u"EASTEUROPE_CHARSET", 238, u"Latin", QFontDatabase::Latin},
    {u"RUSSIAN_CHARSET", 204, u"Cyrillic", QFontDatabase::Cyrillic},
    {u"GREEK_CHARSET", 161, u"Greek", QFontDatabase::Greek},
    {u"TURKISH_CHARSET", 162, u"Latin", QFontDatabase::Latin},
    {u"GB2312_CHARSET", 134, u"SimplifiedChinese", QFontDatabase::SimplifiedChinese},
    {u"CHINESEBIG5_CHARSET", 136, u"TraditionalChinese", QFontDatabase::TraditionalChinese},
    {u"THAI_CHARSET", 222, u"Thai", QFontDatabase::Thai},
    {u"VIETNAMESE_CHARSET", 163, u"Vietnamese", QFontDatabase::Vietnamese},
    {u"ARABIC_CHARSET", 178, u"Arabic", QFontDatabase::Arabic},
    {u"SHIFTJIS_CHARSET", 128, u"Japanese", QFontDatabase::Japanese},
}};

struct Language
{
    QChar letter;
    QStringView isoCode; // none for an individual language
    Charset charset;
};

// The order is that of the columns in the dictionary files.
constexpr std::array<Language, 32> languages{{
    {u'D', u"de", Ansi},
    {u'E', u"en", Ansi},
    {u'F', u"fr", Ansi},
    {u'S', u"es", Ansi},
    {u'I', u"it", Ansi},
    {u'P', u"pl", EastEurope},
    {u'R', u"ru", Russian},
    {u'U', u"hu", EastEurope},
    {u'C', u"cs", EastEurope},
    {u'T', u"tr", Turkish},
    {u'1', u"", Ansi},
    {u'2', u"", Ansi},
    {u'3', u"", Ansi},
    {u'A', u"en-US", Ansi},
    {u'O', u"ro", EastEurope},
    {u'B', u"id", Ansi},
    {u'N', u"nl", Ansi},
    {u'M', u"mk", Russian},
    {u'X', u"bg", Russian},
    {u'Y', u"sr", Russian},
    {u'L', u"sl", EastEurope},
    {u'W', u"sk", EastEurope},
    {u'G', u"pt", Ansi},
    {u'Q', u"zh-CN", Gb2312},
    {u'H', u"zh-TW", ChineseBig5},
    {u'Z', u"el", Greek},
    {u'K', u"th", Thai},
    {u'V', u"ar", Arabic},
    {u'J', u"fa", Arabic},
    {u'9', u"vi", Vietnamese},
    {u'8', u"ur", Arabic},
    {u'7', u"ja", ShiftJis},
}};

struct LocaleException
{
    QStringView isoCode;
    QStringView localeName;
};

// Where the country isn't the language's code in upper case.
constexpr std::array<LocaleException, 10> localeExceptions{{
    {u"en", u"en_GB"},
    {u"cs", u"cs_CZ"},
    {u"sr", u"sr_RS"},
    {u"sl", u"sl_SI"},
    {u"el", u"el_GR"},
    {u"ar", u"ar_EG"},
    {u"fa", u"fa_IR"},
    {u"ur", u"ur_PK"},
    {u"vi", u"vi_VN"},
    {u"ja", u"ja_JP"},
}};

constinit qint32 currentIndex = 0;
constinit bool subdirectoryIsForced = false;

const QStringList &letters()
{
    // Made by the first call: the dictionaries ask for letters from static initialisers.
    static const QStringList list = [] {
        QStringList made;
        for (const Language &language : languages)
            made += QString(language.letter);
        return made;
    }();
    return list;
}

QMap<QString, QString> &individualNames()
{
    static QMap<QString, QString> names{
        {u"1"_s, u"Individ.1"_s},
        {u"2"_s, u"Individ.2"_s},
        {u"3"_s, u"Individ.3"_s},
    };
    return names;
}

QMap<QString, QString> &individualIsoCodes()
{
    static QMap<QString, QString> codes;
    return codes;
}

const CharsetRow &currentCharset()
{
    return charsets.at(languages.at(size_t(currentIndex)).charset);
}

} // namespace

QStringList languageLetters()
{
    return letters();
}

qint32 languageCount()
{
    return qint32(letters().size());
}

qint32 indexOfLetter(const QString &letter)
{
    return qint32(letters().indexOf(letter.toUpper()));
}

QString letterAt(qint32 index)
{
    return letters().value(index);
}

qint32 currentLanguageIndex()
{
    return currentIndex;
}

QString currentLetter()
{
    return letterAt(currentIndex);
}

QString isoCode(const QString &letter)
{
    const QString individual = individualIsoCode(letter);
    if (!individual.isEmpty())
        return individual;
    const qint32 index = indexOfLetter(letter);
    return index < 0 ? QString() : languages.at(size_t(index)).isoCode.toString();
}

QString isoCode(qint32 index)
{
    return isoCode(letterAt(index));
}

QString currentIsoCode()
{
    return isoCode(currentIndex);
}

QString currentLocaleName()
{
    QString name = currentIsoCode();
    const auto *const exception = std::find_if(localeExceptions.cbegin(), localeExceptions.cend(),
                                               [&name](const LocaleException &row) { return row.isoCode == name; });
    if (exception != localeExceptions.cend())
        name = exception->localeName.toString();
    else
        name.replace(u'-', u'_');
    if (name.size() == 2)
        name += u'_' + name.toUpper();
    return name;
}

bool setLanguage(const QString &letter, const QString &isoCodeForIndividual)
{
    const qint32 index = indexOfLetter(letter);
    if (index < 0)
        return false;
    currentIndex = index;
    setIndividualIsoCode(letter, isoCodeForIndividual);
    const QLocale locale(currentLocaleName());
    if (locale.language() != QLocale::C)
        QLocale::setDefault(locale);
    QGuiApplication::setLayoutDirection(isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    return true;
}

QString dictionarySubdirectory(const QString &letter)
{
    return !subdirectoryIsForced && letter == u"D"_s ? QString() : letter + u'/';
}

QString currentDictionarySubdirectory()
{
    return dictionarySubdirectory(currentLetter());
}

bool forceSubdirectory()
{
    return subdirectoryIsForced;
}

void setForceSubdirectory(bool force)
{
    subdirectoryIsForced = force;
}

bool isIndividual(const QString &letter)
{
    return individualNames().contains(letter);
}

bool isIndividual(qint32 index)
{
    return isIndividual(letterAt(index));
}

bool isCurrentIndividual()
{
    return isIndividual(currentIndex);
}

QString individualName(const QString &letter)
{
    return individualNames().value(letter);
}

bool setIndividualName(const QString &letter, const QString &name)
{
    if (name.isEmpty() || !isIndividual(letter))
        return false;
    individualNames().insert(letter, name);
    return true;
}

QString individualIsoCode(const QString &letter)
{
    return isIndividual(letter) ? individualIsoCodes().value(letter, letter) : QString();
}

bool setIndividualIsoCode(const QString &letter, const QString &code)
{
    if (code.isEmpty() || !isIndividual(letter))
        return false;
    individualIsoCodes().insert(letter, code);
    return true;
}

bool isRightToLeft()
{
    return s3HasTestFlag(229) || writingSystem() == QFontDatabase::Arabic;
}

qint32 writingSystem()
{
    return isCurrentIndividual() ? QFontDatabase::Any : currentCharset().writingSystem;
}

QString writingSystemName()
{
    return isCurrentIndividual() ? QString() : currentCharset().writingSystemName.toString();
}

QString charsetName()
{
    return isCurrentIndividual() ? QString() : currentCharset().name.toString();
}

qint32 charsetNumber()
{
    return isCurrentIndividual() ? 1 : currentCharset().number;
}

QString acceptLanguage()
{
    const QString code = currentIsoCode();
    QString value = code;
    double q = 0.9;
    if (code != u"en-US"_s) {
        value += u",en-US;q="_s + QString::number(q, 'g', 6);
        q -= 0.1;
    }
    if (code != u"en"_s)
        value += u",en;q="_s + QString::number(q, 'g', 6);
    return value;
}
