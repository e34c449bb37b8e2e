#include "dictionarybuilder.h"

#include <QtEndian>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr quint32 nobodyReadsThis = 0xEEEEEEEE;

template<typename T>
void appendBigEndian(QByteArray &bytes, T value)
{
    const T swapped = qToBigEndian(value);
    bytes.append(reinterpret_cast<const char *>(&swapped), sizeof swapped);
}

/// Returns the offset of the text.
quint32 appendText(QByteArray &pool, const QString &text)
{
    const quint32 offset = quint32(pool.size());
    for (const QChar unit : text) {
        pool += char(unit.unicode() & 0xFF);
        pool += char(unit.unicode() >> 8);
    }
    pool.append(2, '\0');
    return offset;
}

QByteArray digits(int value, int width)
{
    return QByteArray::number(value).rightJustified(width, '0');
}

} // namespace

DictionaryBuilder::DictionaryBuilder(int languages)
    : m_columns(languages + 1)
{
    // An offset that is taken for 0 shows.
    appendText(m_pool, u"start of the pool"_s);
}

DictionaryBuilder &DictionaryBuilder::setText(int number, int language, const QString &text)
{
    m_rows = qMax(m_rows, number);
    m_offsets.insert({number, language}, appendText(m_pool, text));
    return *this;
}

DictionaryBuilder &DictionaryBuilder::share(int number, int language, int other)
{
    m_offsets.insert({number, language}, m_offsets.value({number, other}));
    return *this;
}

DictionaryBuilder &DictionaryBuilder::setSymbol(int number, const QByteArray &symbol)
{
    m_rows = qMax(m_rows, number);
    m_symbols.insert(number, symbol);
    return *this;
}

QByteArray DictionaryBuilder::build() const
{
    QByteArray pool = m_pool;
    QByteArray symbols("start", 6);
    const QByteArray offsets = textOffsets(pool);
    const QByteArray recordTable = records(symbols);
    const QByteArray secondPool("nobody reads\0\xFF this either", 25);

    QByteArray bytes = version.isEmpty() ? "004"_ba : version;
    bytes += languageCount.isEmpty() ? digits(m_columns, 2) : languageCount;
    bytes += textCount.isEmpty() ? digits(m_rows, 5) : textCount;
    bytes += charset.isEmpty() ? "U"_ba : charset;
    appendBigEndian(bytes, quint32(pool.size()));
    appendBigEndian(bytes, quint32(secondPool.size()));
    return bytes + offsets + recordTable + pool + secondPool + symbols;
}

QByteArray DictionaryBuilder::textOffsets(QByteArray &pool) const
{
    QByteArray table;
    for (int column = 0; column < m_columns; ++column)
        appendBigEndian(table, nobodyReadsThis);
    for (int number = 1; number <= m_rows; ++number) {
        const quint32 source = m_offsets.contains({number, -1}) ? m_offsets.value({number, -1})
                                                                : appendText(pool, u"*** %1 ***"_s.arg(number));
        const quint32 german = m_offsets.value({number, 0}, source);
        appendBigEndian(table, source);
        for (int language = 0; language < m_columns - 1; ++language)
            appendBigEndian(table, m_offsets.value({number, language}, german));
    }
    return table;
}

QByteArray DictionaryBuilder::records(QByteArray &symbols) const
{
    QByteArray table;
    for (int number = 1; number <= m_rows; ++number) {
        appendBigEndian(table, quint16(nobodyReadsThis));
        for (int unread = 0; unread < 3; ++unread)
            appendBigEndian(table, nobodyReadsThis);
        appendBigEndian(table, quint32(symbols.size()));
        symbols += m_symbols.value(number) + '\0';
    }
    return table;
}
