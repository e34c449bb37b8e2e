#pragma once

#include "languages.h"

#include <QList>
#include <QString>

#include <map>

/// A text in one language.
struct Cell
{
    enum Kind {
        /// No translation: what is read is the text in United States English, or else the German one, or else the
        /// source.
        Untranslated,
        /// No translation, and what is read is the German text even where there is one in United States English.
        AsGerman,
        /// A translation, which may be empty.
        Own,
    };

    Kind kind = Untranslated;
    QString text;

    bool operator==(const Cell &) const = default;
};

struct Entry
{
    QString source;
    QString symbol;
    /// One for each language.
    QList<Cell> cells = QList<Cell>(languages().size());

    /// The language whose own text is read in \a language; -1 if that is the source text.
    [[nodiscard]] int languageRead(int language) const;

    /// The text that is read in \a language.
    [[nodiscard]] const QString &textRead(int language) const;
};

struct Dictionary
{
    enum Key { ByNumber, BySource };

    /// How texts are looked up: numbers are unique anyway, source texts have to be for BySource.
    Key key = ByNumber;
    /// The highest number; that of the last entry if not higher.
    int textCount = 0;
    std::map<int, Entry> entries;
};

/// The highest number that the file format has room for.
constexpr int maximumTextCount = 99999;

/// What stands in all cells of a number that has no text.
QString placeholderOf(int number);
