// Percent decoding undoes the encoding, and leaves what isn't encoded.

#include "s3string.h"

#include <cstdlib>

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    const QString decoded = s3String::percentDecode(text);
    require(decoded.size() <= text.size());
    if (!text.contains(u'%') && !text.contains(u'+'))
        require(decoded == text);

    // U+FEFF at the start of bytes is their mark.
    const QString encoded = s3String::percentEncode(text);
    if (!text.startsWith(QChar::ByteOrderMark))
        require(s3String::percentDecode(encoded) == text);
    require(s3String::percentEncodeKeepingPercent(encoded) == encoded);
    return 0;
}
