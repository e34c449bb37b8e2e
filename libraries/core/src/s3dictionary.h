#pragma once

#include <QString>

#include <memory>

class s3File;

/// The reader of one dictionary file, whose texts have numbers from 1 on. The file is mapped into memory and used in
/// place; what is handed out are copies.
///
/// open() looks at the header and at nothing else. The length of the file, the sizes of its parts and all offsets are
/// trusted: a lookup in a file that is cut short, or isn't the work of the tool that makes them, reads whatever lies
/// there, and may end the process.
///
/// A language is an index of the table of languages (s3language.h), and -1 the language of the source texts, in which
/// the program's authors wrote it. A number may be negative and means the same text then. Lookups never fail, and may
/// be made from any thread while the dictionary isn't being opened or closed. Can be constructed before main().
class s3Dictionary
{
public:
    /// Touches no file. \a filePath is relative to the working directory that is there when the file is opened.
    explicit s3Dictionary(const QString &filePath);
    virtual ~s3Dictionary();

    Q_DISABLE_COPY_MOVE(s3Dictionary)

    /// Returns false, with the path and the reason in English in \a errorText, if the file can't be used; the
    /// dictionary is closed then. One that is open stays as it is.
    [[nodiscard]] virtual bool open(QString &errorText);

    /// open() for those who don't want the reason.
    bool openQuietly();

    /// Ends the mapping. There are no texts then.
    void close();

    /// The highest number; 0 when closed.
    [[nodiscard]] qint32 textCount() const { return m_textCount; }

    /// "*** number ***" where there is no such number, or no column for \a language.
    [[nodiscard]] QString text(qint32 number, qint32 language) const;

    /// Whether \a language has a text of its own: one that isn't stored once for it and German, or for it and United
    /// States English (equal texts that are stored apart are two). German has its own wherever there is one.
    [[nodiscard]] bool hasText(qint32 number, qint32 language) const;

    /// Empty where the number isn't in use.
    [[nodiscard]] QString sourceText(qint32 number) const;

    /// The symbol of the text; null where there is no such number.
    [[nodiscard]] QString symbol(qint32 number) const;

protected:
    [[nodiscard]] const QString &filePath() const { return m_filePath; }

    /// The zero-ended UTF-16 text within the mapping, null where there is none. It has an odd address as a rule, so its
    /// units are to be read byte-wise.
    [[nodiscard]] const uchar *rawText(qint32 number, qint32 language) const;

private:
    [[nodiscard]] QString mapAndCheck();

    QString m_filePath;
    // Closed, but it holds the mapping; that it is there is what makes the dictionary open.
    std::unique_ptr<s3File> m_file;
    qint32 m_languageCount = 0;
    qint32 m_textCount = 0;
    qint32 m_offsetsPerRecord = 4;
    qint32 m_firstLanguage;
    qint32 m_secondLanguage;
    const uchar *m_textOffsets = nullptr;
    const uchar *m_textPool = nullptr;
    const uchar *m_records = nullptr;
    const uchar *m_symbolPool = nullptr;
};
