#include "codepage.h"

#include <iconv.h>

QString fromCodePage(int codePage, const QByteArray &bytes)
{
    const QByteArray name = "CP" + QByteArray::number(codePage);
    iconv_t converter = iconv_open("UTF-16LE", name.constData());
    if (converter == iconv_t(-1)) // NOLINT(performance-no-int-to-ptr): that is how it says no
        return {};

    QByteArray input = bytes;
    QString result(bytes.size(), Qt::Uninitialized);
    char *in = input.data();
    size_t inLeft = size_t(input.size());
    char *out = reinterpret_cast<char *>(result.data());
    size_t outLeft = size_t(result.size()) * sizeof(QChar);
    const bool complete = iconv(converter, &in, &inLeft, &out, &outLeft) == 0 && inLeft == 0 && outLeft == 0;
    iconv_close(converter);
    return complete ? result : QString();
}
