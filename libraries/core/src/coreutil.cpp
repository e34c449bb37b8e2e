#include "coreutil.h"

#include "s3lasterror.h"

using namespace Qt::Literals::StringLiterals;

QString s3ErrorText(unsigned code)
{
    return qt_error_string(int(code));
}

QString s3LastErrorText()
{
    const unsigned code = s3LastErrorCode();
    QString text = s3ErrorText(code);
    if (!text.isEmpty())
        text += u' ';
    return text + u"(%1)"_s.arg(code);
}
