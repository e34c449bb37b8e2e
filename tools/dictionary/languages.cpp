#include "languages.h"

using namespace Qt::Literals::StringLiterals;

const QList<Language> &languages()
{
    static const QList<Language> table{
        {u'D', u"de"_s},           {u'E', u"en"_s},    {u'F', u"fr"_s},           {u'S', u"es"_s},
        {u'I', u"it"_s},           {u'P', u"pl"_s},    {u'R', u"ru"_s},           {u'U', u"hu"_s},
        {u'C', u"cs"_s},           {u'T', u"tr"_s},    {u'1', u"individual-1"_s}, {u'2', u"individual-2"_s},
        {u'3', u"individual-3"_s}, {u'A', u"en_US"_s}, {u'O', u"ro"_s},           {u'B', u"id"_s},
        {u'N', u"nl"_s},           {u'M', u"mk"_s},    {u'X', u"bg"_s},           {u'Y', u"sr"_s},
        {u'L', u"sl"_s},           {u'W', u"sk"_s},    {u'G', u"pt"_s},           {u'Q', u"zh_CN"_s},
        {u'H', u"zh_TW"_s},        {u'Z', u"el"_s},    {u'K', u"th"_s},           {u'V', u"ar"_s},
        {u'J', u"fa"_s},           {u'9', u"vi"_s},    {u'8', u"ur"_s},           {u'7', u"ja"_s},
    };
    return table;
}

int languageIndex(const QString &name)
{
    for (int index = 0; index < languages().size(); ++index) {
        if (languages().at(index).name == name)
            return index;
    }
    return -1;
}
