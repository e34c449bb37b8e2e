// Balanced references: all those with a number disappear, and the count says how many there were.

#include "s3string.h"

#include <cstdlib>

using namespace Qt::Literals::StringLiterals;

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    const qsizetype openings = text.count(u"Xmsg("_s);
    if (text.indexOf(u')', text.lastIndexOf(u"Xmsg("_s)) < 0)
        text += u')';

    QString symbols = text;
    const int count = s3String::expandMessageReferences(text, true);
    require(count >= 0 && count <= openings);
    require((count == 0) == (text == symbols));
    require(text.count(u"*** "_s) >= count);
    require(s3String::expandMessageReferences(symbols, false) == count);
    require(symbols.count(u"()"_s) >= count);
    return 0;
}
