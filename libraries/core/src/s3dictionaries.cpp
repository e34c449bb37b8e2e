#include "s3dictionaries.h"

#include "s3guidictionary.h"
#include "s3language.h"
#include "s3string.h"

using namespace Qt::Literals::StringLiterals;

namespace {

// One object, so that the dictionary of the GUI is made first and goes last, whichever is asked for first.
struct Dictionaries
{
    s3GuiDictionary gui{u":/dictionary/mng.dat.0"_s, u"data/mng.dat.0"_s};
    s3Dictionary message{u"data/msg.dat.0"_s};
};

// Made by the first call, which may come from a static initialiser.
Dictionaries &dictionaries()
{
    static Dictionaries instance;
    return instance;
}

[[maybe_unused]] const Dictionaries &madeBeforeMain = dictionaries();

} // namespace

bool openDictionaries(QString &errorText)
{
    dictionaries().gui.openQuietly();
    return dictionaries().message.open(errorText);
}

qint32 guiTextCount()
{
    return dictionaries().gui.textCount();
}

QString translate(const QString &sourceText)
{
    return dictionaries().gui.translateText(sourceText, currentLanguageIndex());
}

QString guiTranslation(const QString &sourceText)
{
    return dictionaries().gui.translation(sourceText, currentLanguageIndex());
}

bool guiHasSourceText(const QString &sourceText)
{
    return dictionaries().gui.hasSourceText(sourceText);
}

QString guiSourceText(qint32 number)
{
    return dictionaries().gui.sourceText(number);
}

QString guiText(qint32 number, qint32 language)
{
    return dictionaries().gui.text(number, language);
}

bool guiHasText(qint32 number, qint32 language)
{
    return dictionaries().gui.hasText(number, language);
}

QString messageText(qint32 number)
{
    return messageText(number, currentLanguageIndex());
}

QString messageText(qint32 number, qint32 language)
{
    QString text = dictionaries().message.text(number, language);
    s3String::replaceProductName(text);
    return text;
}

QString messageSymbol(qint32 number)
{
    return dictionaries().message.symbol(number);
}
