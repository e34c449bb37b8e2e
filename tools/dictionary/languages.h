#pragma once

#include <QList>
#include <QString>

struct Language
{
    QChar letter;
    /// The name of its catalogue without the suffix, and what the catalogue's header has as "Language".
    QString name;
};

/// In the order of their columns.
const QList<Language> &languages();

/// The index of the language whose catalogue has this name; -1 if there is none.
int languageIndex(const QString &name);

/// German, of which the readers know that its cell may be shared by a text without a translation of its own ...
constexpr int firstLanguage = 0;
/// ... and United States English, the other one.
constexpr int secondLanguage = 13;
