#include "s3wellformed.h"

QString s3WellFormed(QString text)
{
    if (text.isValidUtf16())
        return text;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (s3SplitsPair(text, i + 1))
            ++i;
        else if (text.at(i).isSurrogate())
            text[i] = QChar::ReplacementCharacter;
    }
    return text;
}

bool s3SplitsPair(const QString &text, qsizetype position)
{
    return position > 0 && position < text.size() && text.at(position - 1).isHighSurrogate() &&
           text.at(position).isLowSurrogate();
}
