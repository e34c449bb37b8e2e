#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

#include <utility>

/// Makes the bytes of a dictionary file. A language is its index, -1 that of the source texts. A row without a source
/// text is one that isn't in use; a cell without a text of its own shares that of German, and German the source text.
class DictionaryBuilder
{
public:
    /// One column for the source texts, and one for each language.
    explicit DictionaryBuilder(int languages = 32);

    /// Stores \a text, apart from all others, for a cell. There are rows up to its \a number then.
    DictionaryBuilder &setText(int number, int language, const QString &text);

    /// Lets the cell share the text of another one of its row that has been stored before.
    DictionaryBuilder &share(int number, int language, int other);

    DictionaryBuilder &setSymbol(int number, const QByteArray &symbol);

    [[nodiscard]] QByteArray build() const;

    // Header fields in place of the right ones, where they aren't empty.
    QByteArray version;
    QByteArray languageCount;
    QByteArray textCount;
    QByteArray charset;

private:
    [[nodiscard]] QByteArray textOffsets(QByteArray &pool) const;
    [[nodiscard]] QByteArray records(QByteArray &symbols) const;

    int m_columns;
    int m_rows = 0;
    QMap<std::pair<int, int>, quint32> m_offsets;
    QMap<int, QByteArray> m_symbols;
    QByteArray m_pool;
};
