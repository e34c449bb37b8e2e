#pragma once

#include "s3dictionary.h"
#include "s3texthash.h"

#include <QHash>

/// Translates source texts, the very strings that stand in the code. It finds their numbers in its main file, and may
/// take single translations from a second one, the fallback, where both mean the same text by a number. Works without
/// either file, in its source language. Main thread.
class s3GuiDictionary : public s3Dictionary
{
public:
    /// Touches no file.
    s3GuiDictionary(const QString &filePath, const QString &fallbackPath);
    ~s3GuiDictionary() override;

    /// The result is that of the main file; what is wrong with the fallback isn't told.
    [[nodiscard]] bool open(QString &errorText) override;

    /// The text in \a language, from the cache if it has been asked for before. A source text that isn't known is
    /// looked for without "..." at its end, and comes back as it is if that isn't known either, but for the white space
    /// around what was looked for. Test flag 460 traces it; 404 the texts that aren't known.
    [[nodiscard]] QString translateText(const QString &source, qint32 language);

    /// translateText() without its cache, its traces and its notes of what isn't known, and with no mercy on "...". Any
    /// thread, while the dictionary isn't being opened.
    [[nodiscard]] QString translation(const QString &source, qint32 language) const;

    /// Whether the main file has \a source, as it stands. Any thread, while the dictionary isn't being opened.
    [[nodiscard]] bool hasSourceText(const QString &source) const;

    /// The text of the main file or of the fallback. An individual language prefers the fallback, German and English
    /// the main file, and any other language the one that has a translation. The experimental feature
    /// "forceFallbackDictionary" prefers the fallback for all; else, with the feature "useFallbackDictionary" disabled,
    /// there is none. Test flag 460 traces a text that is taken from the fallback without being forced.
    [[nodiscard]] QString textWithFallback(qint32 number, qint32 language) const;

    /// Empty if nothing has been stored.
    [[nodiscard]] QString cachedText(qint32 number, qint32 language) const;
    void storeCachedText(qint32 number, qint32 language, const QString &text);

    /// All texts that no dictionary of this process knew when they were to be translated.
    [[nodiscard]] static const s3TextSet &unknownSourceTexts();

private:
    [[nodiscard]] bool isGoodEnough(qint32 number, qint32 language) const;
    [[nodiscard]] bool hasFallbackFor(qint32 number) const;

    s3TextMap<qint32> m_sourceTextNumbers;
    QHash<quint32, QString> m_translationCache;
    s3Dictionary m_fallback;
};
