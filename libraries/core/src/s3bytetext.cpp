#include "s3string.h"

#include <QByteArray>

#include <array>
#include <cstring>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr uchar escape = 255;
constexpr uchar firstUpper = 128;
constexpr char16_t byteOrderMark = 0xfeff;

// Bytes 128 to 254, sixteen a line.
constexpr std::u16string_view upperCharacters = u"ÇüéâäàåçêëèïîìÄÅ"
                                                u"ÉæÆôöòûùÿÖÜø£Øİƒ"
                                                u"áíóúñÑªº¿®¬½¼¡«»"
                                                u"░őű│┤ÁÂÀ©ĞğŞş¢¥┐"
                                                u"└┴┬├─┼ãÃĆŁŃŚŹŻż¤"
                                                u"ąćÊËÈıÍÎÏ┘┌ęłĄÌń"
                                                u"ÓßÔÒõÕµśźÚÛÙýÝ¯´"
                                                u"Ő±ŰĘ¶§œŒ°¨·¹³²€";
static_assert(upperCharacters.size() == escape - firstUpper);

constexpr char16_t characterOf(int byte)
{
    return byte < firstUpper ? char16_t(byte) : upperCharacters[size_t(byte - firstUpper)];
}

/// What a byte stands for. No character of the set needs more than three bytes of UTF-8.
struct Character
{
    std::array<char, 3> utf8{};
    quint8 size = 0;
};

constexpr Character encoded(char16_t unit)
{
    if (unit < 0x80)
        return {{char(unit)}, 1};
    if (unit < 0x800)
        return {{char(0xc0 | unit >> 6), char(0x80 | (unit & 0x3f))}, 2};
    return {{char(0xe0 | unit >> 12), char(0x80 | (unit >> 6 & 0x3f)), char(0x80 | (unit & 0x3f))}, 3};
}

constexpr auto characters = [] {
    std::array<Character, escape> table{};
    for (int byte = 0; byte < escape; ++byte)
        table[size_t(byte)] = encoded(characterOf(byte));
    return table;
}();

constexpr auto unitOfByte = [] {
    std::array<char16_t, escape + 1> table{};
    for (int byte = 0; byte < escape; ++byte)
        table[size_t(byte)] = characterOf(byte);
    return table;
}();

/// From a UTF-16 unit to its byte, by pages of 256 units. Page 0 is that of all units without a place, and the escape
/// is the byte of those: as a byte of a character it doesn't occur.
struct BytesOfUnits
{
    static constexpr size_t pageCount = 5;
    std::array<quint8, 256> pageOfUnit{};
    std::array<std::array<uchar, 256>, pageCount> pages{};

    constexpr BytesOfUnits()
    {
        for (auto &page : pages) {
            for (uchar &byte : page)
                byte = escape;
        }
        quint8 used = 0;
        for (int byte = 0; byte < escape; ++byte) {
            const char16_t unit = characterOf(byte);
            quint8 &page = pageOfUnit[unit >> 8];
            if (page == 0)
                page = ++used;
            pages[page][unit & 0xff] = uchar(byte);
        }
    }

    [[nodiscard]] constexpr uchar operator[](char16_t unit) const { return pages[pageOfUnit[unit >> 8]][unit & 0xff]; }
};
constexpr BytesOfUnits bytesOfUnits;

constexpr qsizetype utf8Size(uchar leadByte)
{
    if ((leadByte & 0xf8) == 0xf0)
        return 4;
    if ((leadByte & 0xf0) == 0xe0)
        return 3;
    return (leadByte & 0xe0) == 0xc0 ? 2 : 1;
}

/// Copies characters up to the first without a place.
void placeAll(const char16_t *&unit, const char16_t *end, char *&out)
{
    for (; unit != end; ++unit) {
        const uchar byte = bytesOfUnits[*unit];
        if (byte == escape)
            return;
        *out++ = char(byte);
    }
}

/// One character that has no place, of one or two units.
void escapeOne(const char16_t *&unit, const char16_t *end, char *&out)
{
    const qsizetype size = end - unit > 1 && QChar::isHighSurrogate(unit[0]) && QChar::isLowSurrogate(unit[1]) ? 2 : 1;
    const QStringView character(unit, size);
    unit += size;
    if (character.front() == byteOrderMark)
        return;
    if (size == 1 && character.front().isSurrogate()) {
        *out++ = '?'; // what QString::toUtf8() makes of it
        return;
    }
    *out++ = char(escape);
    if (size == 1) {
        const Character bytes = encoded(character.front().unicode());
        out = std::copy_n(bytes.utf8.data(), bytes.size, out);
        return;
    }
    const char32_t code = QChar::surrogateToUcs4(character.front(), character.back());
    *out++ = char(0xf0 | code >> 18);
    for (const int shift : {12, 6, 0})
        *out++ = char(0x80 | (code >> shift & 0x3f));
}

/// Reads one sound UTF-8 sequence; false, with nothing changed, for any other and for the byte order mark.
bool readEscaped(const uchar *&byte, const uchar *end, char16_t *&out)
{
    const qsizetype size = byte == end ? 0 : utf8Size(*byte);
    if (size == 0 || end - byte < size)
        return false;
    char32_t code = size == 1 ? *byte : *byte & (0x7f >> size);
    for (qsizetype i = 1; i < size; ++i) {
        if ((byte[i] & 0xc0) != 0x80)
            return false;
        code = code << 6 | (byte[i] & 0x3f);
    }
    constexpr std::array<char32_t, 5> tooSmall = {0, 0, 0x80, 0x800, 0x10000};
    const bool sound = size == 1 ? code < 0x80 : code >= tooSmall[size_t(size)];
    if (!sound || code > QChar::LastValidCodePoint || QChar::isSurrogate(code) || code == byteOrderMark)
        return false;
    if (QChar::requiresSurrogates(code)) {
        *out++ = QChar::highSurrogate(code);
        *out++ = QChar::lowSurrogate(code);
    } else {
        *out++ = char16_t(code);
    }
    byte += size;
    return true;
}

/// The UTF-8 of a whole text, with what follows an escape taken as it is.
QByteArray gatheredUtf8(const uchar *byte, const uchar *end)
{
    QByteArray utf8;
    utf8.reserve(end - byte);
    while (byte != end) {
        if (*byte != escape) {
            const Character &character = characters[*byte++];
            utf8.append(character.utf8.data(), character.size);
        } else if (++byte != end) {
            const qsizetype size = qMin(utf8Size(*byte), qsizetype(end - byte));
            utf8.append(reinterpret_cast<const char *>(byte), size);
            byte += size;
        }
    }
    return utf8;
}

} // namespace

QByteArray s3String::toByteText(const QString &text)
{
    const auto *unit = reinterpret_cast<const char16_t *>(text.utf16());
    const char16_t *const end = unit + text.size();
    QByteArray result(text.size(), Qt::Uninitialized);
    char *out = result.data();
    placeAll(unit, end, out);
    if (unit == end)
        return result;

    const qsizetype placed = out - result.constData();
    constexpr qsizetype mostBytesOfUnit = 4;
    result.resize(placed + (end - unit) * mostBytesOfUnit);
    out = result.data() + placed;
    while (unit != end) {
        escapeOne(unit, end, out);
        placeAll(unit, end, out);
    }
    result.truncate(out - result.constData());
    result.squeeze();
    return result;
}

QString s3String::fromByteText(const char *bytes)
{
    if (bytes == nullptr)
        return {};
    const auto *const begin = reinterpret_cast<const uchar *>(bytes);
    const uchar *const end = begin + std::strlen(bytes);
    QString result(end - begin, Qt::Uninitialized); // no sequence is shorter than the units that it gives
    auto *const units = reinterpret_cast<char16_t *>(result.data());
    char16_t *out = units;
    const uchar *byte = begin;
    while (byte != end) {
        if (*byte != escape)
            *out++ = unitOfByte[*byte++];
        else if (!readEscaped(++byte, end, out)) // broken bytes may belong to what other escapes bring: all in one
            return QString::fromUtf8(gatheredUtf8(begin, end));
    }
    result.truncate(out - units);
    return result;
}
