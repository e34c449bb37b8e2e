// Bytes are read as the definition says it, by way of UTF-8, and what can be written comes back.

#include "s3string.h"

#include <QByteArray>

#include <cstdlib>

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

int utf8Size(uint8_t leadByte)
{
    if (leadByte >= 0xf0 && leadByte < 0xf8)
        return 4;
    if (leadByte >= 0xe0 && leadByte < 0xf0)
        return 3;
    return leadByte >= 0xc0 && leadByte < 0xe0 ? 2 : 1;
}

/// One byte of each character at a time.
QString expectedText(const QByteArray &bytes)
{
    QByteArray utf8;
    for (qsizetype i = 0; i < bytes.size();) {
        if (uint8_t(bytes[i]) == 255) {
            const QByteArray sequence = i + 1 < bytes.size() ? bytes.mid(i + 1, utf8Size(uint8_t(bytes[i + 1]))) : "";
            utf8 += sequence;
            i += 1 + sequence.size();
        } else {
            utf8 += s3String::fromByteText(QByteArray(1, bytes[i]).constData()).toUtf8();
            ++i;
        }
    }
    return QString::fromUtf8(utf8);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    bytes.replace('\0', 'x'); // it would end them
    const QString text = s3String::fromByteText(bytes.constData());
    require(text == expectedText(bytes));

    QString again = QString::fromUtf8(bytes);
    again.remove(QChar::ByteOrderMark);
    require(s3String::fromByteText(s3String::toByteText(again).constData()) == again);
    return 0;
}
