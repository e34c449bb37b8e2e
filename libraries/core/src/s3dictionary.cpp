#include "s3dictionary.h"

#include "coreutil.h"
#include "s3file.h"
#include "s3fileinfo.h"
#include "s3language.h"
#include "s3lasterror.h"

#include <QtEndian>

#include <cstring>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QByteArrayView versionExpected = "004";
constexpr qsizetype charsetPlace = 10;
constexpr qsizetype headerSize = 19;
constexpr qsizetype offsetSize = 4;
constexpr qsizetype recordPrefixSize = 2; // a field in front of a record's offsets that nobody reads

quint32 offsetAt(const uchar *place)
{
    return qFromBigEndian<quint32>(place);
}

/// A field that isn't a number counts as 0.
qint32 digitsAt(const uchar *place, qsizetype width)
{
    return qint32(QByteArrayView(place, width).toUInt());
}

char16_t unitAt(const uchar *text, qsizetype index)
{
    return qFromUnaligned<char16_t>(text + index * qsizetype(sizeof(char16_t)));
}

QString copyOf(const uchar *text)
{
    qsizetype length = 0;
    while (unitAt(text, length) != 0)
        ++length;
    QString copy(length, Qt::Uninitialized);
    std::memcpy(copy.data(), text, size_t(length) * sizeof(char16_t));
    return copy;
}

QString placeholder(qint32 number)
{
    return u"*** %1 ***"_s.arg(number);
}

bool isPlaceholder(const uchar *text, qint32 number)
{
    return unitAt(text, 0) == u'*' && copyOf(text) == placeholder(number);
}

QString openError()
{
    const QString systemText = s3LastErrorText();
    const QString text = u"Cannot open file"_s;
    return systemText.endsWith("(0)"_L1) ? text : text + u"\n\n"_s + systemText;
}

} // namespace

s3Dictionary::s3Dictionary(const QString &filePath)
    : m_filePath(filePath)
    , m_firstLanguage(indexOfLetter(u"D"_s))
    , m_secondLanguage(indexOfLetter(u"A"_s))
{
}

s3Dictionary::~s3Dictionary()
{
    close();
}

bool s3Dictionary::open(QString &errorText)
{
    errorText.clear();
    if (m_file)
        return true;
    m_file = std::make_unique<s3File>(m_filePath);
    // Qt refuses a directory by itself, and what had failed before must not be taken for the reason.
    s3ClearLastError();
    if (m_file->open(QIODevice::ReadOnly)) {
        errorText = mapAndCheck();
        m_file->close();
    } else {
        errorText = openError();
    }
    if (errorText.isEmpty())
        return true;
    errorText.prepend(s3FileInfo(m_filePath).absoluteFilePath() + u":\n\n"_s);
    close();
    return false;
}

bool s3Dictionary::openQuietly()
{
    QString dropped;
    return open(dropped);
}

QString s3Dictionary::mapAndCheck()
{
    const uchar *const start = m_file->map(0, m_file->size());
    if (start == nullptr)
        return u"Cannot map dictionary into memory!"_s;

    const QByteArrayView version(start, versionExpected.size());
    if (version != versionExpected)
        return u"Wrong dictionary version!\n\n'%1' is expected instead of '%2'."_s.arg(
            QLatin1StringView(versionExpected), QString::fromUtf8(version));
    if (start[charsetPlace] != 'U')
        return u"Wrong CHSET format in dictionary"_s;
    const qint32 count = digitsAt(start + 3, 2);
    if (count < languageCount())
        return u"Wrong language count in dictionary!\n\n'%1' is expected instead of '%2'."_s.arg(languageCount())
            .arg(count);

    m_languageCount = count;
    m_textCount = digitsAt(start + 5, 5);
    m_textOffsets = start + headerSize;
    m_records = m_textOffsets + (qsizetype(m_textCount) + 1) * m_languageCount * offsetSize;
    m_textPool = m_records + qsizetype(m_textCount) * (m_offsetsPerRecord * offsetSize + recordPrefixSize);
    m_symbolPool = m_textPool + qsizetype(offsetAt(start + 11)) + qsizetype(offsetAt(start + 15));
    return {};
}

void s3Dictionary::close()
{
    m_file.reset();
    m_languageCount = 0;
    m_textCount = 0;
    m_textOffsets = nullptr;
    m_textPool = nullptr;
    m_records = nullptr;
    m_symbolPool = nullptr;
}

const uchar *s3Dictionary::rawText(qint32 number, qint32 language) const
{
    // In 64 bits, since the smallest number has no counterpart and the largest language no next in 32.
    const qint64 n = qAbs(qint64(number));
    const qint64 column = qint64(language) + 1;
    if (n < 1 || n > m_textCount || column < 0 || column >= m_languageCount)
        return nullptr;
    return m_textPool + offsetAt(m_textOffsets + (n * m_languageCount + column) * offsetSize);
}

QString s3Dictionary::text(qint32 number, qint32 language) const
{
    const uchar *const found = rawText(number, language);
    return found == nullptr ? placeholder(number) : copyOf(found);
}

bool s3Dictionary::hasText(qint32 number, qint32 language) const
{
    const uchar *const found = rawText(number, language);
    if (found == nullptr || isPlaceholder(found, number))
        return false;
    if (language == m_firstLanguage)
        return true;
    if (found == rawText(number, m_firstLanguage))
        return false;
    return language == m_secondLanguage || found != rawText(number, m_secondLanguage);
}

QString s3Dictionary::sourceText(qint32 number) const
{
    const uchar *const found = rawText(number, -1);
    return found == nullptr || isPlaceholder(found, number) ? QString() : copyOf(found);
}

QString s3Dictionary::symbol(qint32 number) const
{
    const qint64 n = qAbs(qint64(number));
    if (n < 1 || n > m_textCount)
        return {};
    // The last offset of the record: the records are those of the numbers from 1 on.
    const uchar *const place = m_records + n * recordPrefixSize + (n * m_offsetsPerRecord - 1) * offsetSize;
    return QString::fromUtf8(reinterpret_cast<const char *>(m_symbolPool + offsetAt(place)));
}
