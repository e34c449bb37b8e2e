#include "dictionaryfile.h"

#include <QStringDecoder>
#include <QtEndian>

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto version = "004"_L1;
constexpr char charset = 'U';
constexpr qsizetype headerSize = 19;
constexpr qsizetype offsetSize = 4;
constexpr qsizetype recordSize = 18;
constexpr qsizetype symbolInRecord = 14;

void appendNumber(QByteArray &bytes, quint32 number)
{
    char buffer[offsetSize];
    qToBigEndian(number, buffer);
    bytes.append(buffer, offsetSize);
}

QByteArray digits(int number, int width)
{
    return QByteArray::number(number).rightJustified(width, '0');
}

/// The texts of one column behind each other, each with an end mark.
class TextPool
{
public:
    qsizetype add(const QString &text)
    {
        const qsizetype offset = m_bytes.size();
        for (const QChar unit : text)
            appendUnit(unit.unicode());
        appendUnit(0);
        return offset;
    }

    [[nodiscard]] const QByteArray &bytes() const { return m_bytes; }

private:
    void appendUnit(char16_t unit)
    {
        m_bytes.append(static_cast<char>(unit & 0xFF));
        m_bytes.append(static_cast<char>(unit >> 8));
    }

    QByteArray m_bytes;
};

/// The texts of a language lie together, and so do the source texts, since a program reads the sources and one
/// language: with the texts of a row together it would touch a page of memory for each.
class Encoder
{
public:
    Encoder()
    {
        // An empty one, for what has no text: row 0 belongs to no text and is never read.
        const Place empty = addText(sourceColumn, {});
        m_rows.append(QList<Place>(m_pools.size(), empty));
    }

    void addUnused(int number)
    {
        m_rows.append(QList<Place>(m_pools.size(), addText(sourceColumn, placeholderOf(number))));
        addRecord({});
    }

    void add(const Entry &entry)
    {
        QList<Place> row{addText(sourceColumn, entry.source)};
        QList<Place> own;
        for (int language = 0; language < entry.cells.size(); ++language) {
            const Cell &cell = entry.cells.at(language);
            own.append(cell.kind == Cell::Own ? addText(language + 1, cell.text) : row.constFirst());
        }
        for (int language = 0; language < own.size(); ++language) {
            const int read = entry.languageRead(language);
            row.append(read < 0 ? row.constFirst() : own.at(read));
        }
        m_rows.append(row);
        addRecord(entry.symbol);
    }

    [[nodiscard]] std::optional<QByteArray> file(int textCount, qsizetype poolSize, QString &error) const
    {
        QList<qsizetype> starts;
        qsizetype size = 0;
        for (const TextPool &pool : m_pools) {
            starts.append(size);
            size += pool.bytes().size();
        }
        if (size > poolSize || m_symbols.size() > poolSize) {
            error = u"The texts are more than the %1 bytes that the format has room for."_s.arg(poolSize);
            return {};
        }
        QByteArray bytes = QByteArray(version.data(), version.size()) + digits(int(m_pools.size()), 2) +
                           digits(textCount, 5) + charset;
        appendNumber(bytes, static_cast<quint32>(size));
        appendNumber(bytes, 0);
        for (const QList<Place> &row : m_rows) {
            for (const Place &place : row)
                appendNumber(bytes, static_cast<quint32>(starts.at(place.column) + place.offset));
        }
        bytes += m_records;
        for (const TextPool &pool : m_pools)
            bytes += pool.bytes();
        return bytes + m_symbols;
    }

private:
    struct Place
    {
        int column;
        qsizetype offset;
    };

    static constexpr int sourceColumn = 0;

    Place addText(int column, const QString &text) { return {column, m_pools[column].add(text)}; }

    void addRecord(const QString &symbol)
    {
        quint32 offset = 0;
        if (!symbol.isEmpty()) {
            offset = static_cast<quint32>(m_symbols.size());
            m_symbols += symbol.toUtf8() + '\0';
        }
        m_records.append(symbolInRecord, '\0');
        appendNumber(m_records, offset);
    }

    QList<TextPool> m_pools = QList<TextPool>(languages().size() + 1);
    QList<QList<Place>> m_rows;
    QByteArray m_records;
    QByteArray m_symbols = QByteArray(1, '\0');
};

class Decoder
{
public:
    explicit Decoder(const QByteArray &file)
        : m_file(file)
    {
    }

    std::optional<Dictionary> dictionary(QString &error)
    {
        if (!readHeader() || !readRows()) {
            error = m_error;
            return {};
        }
        return m_dictionary;
    }

private:
    bool fail(const QString &reason)
    {
        m_error = reason;
        return false;
    }

    [[nodiscard]] quint32 numberAt(qsizetype position) const
    {
        return qFromBigEndian<quint32>(m_file.constData() + position);
    }

    bool readDigits(qsizetype position, qsizetype width, int &number)
    {
        number = 0;
        for (const char digit : m_file.mid(position, width)) {
            if (digit < '0' || digit > '9')
                return fail(u"The header has something else than digits at offset %1."_s.arg(position));
            number = number * 10 + (digit - '0');
        }
        return true;
    }

    bool readHeader()
    {
        if (m_file.size() < headerSize)
            return fail(u"The file is shorter than a header."_s);
        if (!m_file.startsWith(version))
            return fail(u"The version isn't \"%1\"."_s.arg(version));
        if (m_file.at(10) != charset)
            return fail(u"The texts aren't marked as UTF-16."_s);
        if (!readDigits(3, 2, m_columns) || !readDigits(5, 5, m_dictionary.textCount))
            return false;
        if (m_columns < languages().size())
            return fail(u"There are %1 columns, and at least %2 are needed."_s.arg(m_columns).arg(languages().size()));
        const qsizetype rows = qsizetype(m_dictionary.textCount) + 1;
        m_records = headerSize + rows * m_columns * offsetSize;
        m_texts = m_records + qsizetype(m_dictionary.textCount) * recordSize;
        m_textsEnd = m_texts + numberAt(11);
        m_symbols = m_textsEnd + numberAt(15);
        if (m_symbols > m_file.size())
            return fail(u"The file ends before its tables and pools do."_s);
        return true;
    }

    bool readRows()
    {
        for (int number = 1; number <= m_dictionary.textCount; ++number) {
            Entry entry;
            if (!readRow(number, entry) || !readSymbol(number, entry.symbol)) {
                m_error = u"Text %1: "_s.arg(number) + m_error;
                return false;
            }
            if (!isUnused(number, entry))
                m_dictionary.entries.emplace(number, std::move(entry));
        }
        return true;
    }

    bool readRow(int number, Entry &entry)
    {
        const quint32 source = offsetAt(number, 0);
        if (!readText(source, entry.source))
            return false;
        const quint32 first = offsetAt(number, firstLanguage + 1);
        const quint32 second = offsetAt(number, secondLanguage + 1);
        // With as many columns as languages the last language has none.
        for (int language = 0; language < languages().size() && language + 1 < m_columns; ++language) {
            const quint32 offset = offsetAt(number, language + 1);
            Cell &cell = entry.cells[language];
            if (language == firstLanguage)
                cell.kind = offset == source ? Cell::Untranslated : Cell::Own;
            else if (language == secondLanguage)
                cell.kind = offset == first ? Cell::Untranslated : Cell::Own;
            else if (offset == second)
                cell.kind = Cell::Untranslated;
            else
                cell.kind = offset == first ? Cell::AsGerman : Cell::Own;
            if (cell.kind == Cell::Own && !readText(offset, cell.text))
                return false;
        }
        return true;
    }

    [[nodiscard]] quint32 offsetAt(int number, int column) const
    {
        return numberAt(headerSize + (qsizetype(number) * m_columns + column) * offsetSize);
    }

    bool readText(quint32 offset, QString &text)
    {
        text.clear();
        for (qsizetype position = m_texts + offset;; position += 2) {
            if (position + 2 > m_textsEnd)
                return fail(u"It doesn't end within the text pool."_s);
            const auto unit = qFromLittleEndian<quint16>(m_file.constData() + position);
            if (unit == 0)
                break;
            text += QChar(unit);
        }
        if (!text.isValidUtf16())
            return fail(u"It is no valid UTF-16."_s);
        return true;
    }

    bool readSymbol(int number, QString &symbol)
    {
        const qsizetype record = m_records + qsizetype(number - 1) * recordSize;
        const qsizetype start = m_symbols + numberAt(record + symbolInRecord);
        const qsizetype end = m_file.indexOf('\0', start);
        if (start >= m_file.size() || end < 0)
            return fail(u"Its symbol doesn't end within the file."_s);
        auto toText = QStringDecoder(QStringDecoder::Utf8,
                                     QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
        symbol = toText(QByteArrayView(m_file).sliced(start, end - start));
        if (toText.hasError())
            return fail(u"Its symbol is no valid UTF-8."_s);
        if (symbol.contains(u'\n') || symbol != symbol.trimmed())
            return fail(u"Its symbol has white space that a catalogue has no room for."_s);
        return true;
    }

    /// An unused number reads as its placeholder in every language, which is what the reader makes of no entry at all.
    [[nodiscard]] static bool isUnused(int number, const Entry &entry)
    {
        const QString placeholder = placeholderOf(number);
        if (entry.source != placeholder || !entry.symbol.isEmpty())
            return false;
        for (int language = 0; language < languages().size(); ++language) {
            if (entry.textRead(language) != placeholder)
                return false;
        }
        return true;
    }

    const QByteArray &m_file;
    QString m_error;
    Dictionary m_dictionary;
    int m_columns = 0;
    qsizetype m_records = 0;
    qsizetype m_texts = 0;
    qsizetype m_textsEnd = 0;
    qsizetype m_symbols = 0;
};

} // namespace

std::optional<QByteArray> encodeDictionary(const Dictionary &dictionary, QString &error, qsizetype poolSize)
{
    const int lastNumber = dictionary.entries.empty() ? 0 : dictionary.entries.rbegin()->first;
    const int textCount = std::max(dictionary.textCount, lastNumber);
    if (textCount > maximumTextCount) {
        error = u"There are more than the %1 numbers that the format has room for."_s.arg(maximumTextCount);
        return {};
    }
    Encoder encoder;
    for (int number = 1; number <= textCount; ++number) {
        const auto entry = dictionary.entries.find(number);
        if (entry == dictionary.entries.end())
            encoder.addUnused(number);
        else
            encoder.add(entry->second);
    }
    return encoder.file(textCount, poolSize, error);
}

std::optional<Dictionary> decodeDictionary(const QByteArray &file, QString &error)
{
    return Decoder(file).dictionary(error);
}
