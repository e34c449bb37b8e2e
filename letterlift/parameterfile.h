#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringConverter>
#include <QStringList>

#include <optional>

class QTextStream;

/// Reads a mail parameter file, an INI-like text in any of the usual encodings, and gives out the keys of one section.
/// It knows nothing of mails. Section and key names are case-insensitive. Plain value; one thread at a time.
class ParameterFile
{
public:
    /// Reads the whole file. A file that can't be read leaves every key absent.
    ParameterFile(const QString &fileName, const QString &sectionName);

    /// The path as given.
    [[nodiscard]] QString fileName() const { return m_fileName; }

    /// The value of \a key, also an empty one; \a defaultValue if the key isn't there.
    [[nodiscard]] QString value(const QString &key, const QString &defaultValue) const;
    [[nodiscard]] bool containsKey(const QString &key) const;

    /// The value as a number in C's notation ("0x10" is 16, "0b10" 2, "010" 8); 0 for text that is no number of 32
    /// bits.
    [[nodiscard]] int intValue(const QString &key, int defaultValue) const;

    /// True for 1, j and y in either case, and for nothing else.
    [[nodiscard]] bool boolValue(const QString &key) const;

    /// The values of \a prefix with 1, 2, 3 and so on behind it, up to the first that is absent or empty.
    [[nodiscard]] QStringList listValue(const QString &prefix) const;

    /// The encoding of \a bytes: by byte order mark, else UTF-8 if they are valid as such, else the one with the name
    /// \a fallback. Empty if Qt doesn't know that name.
    [[nodiscard]] static std::optional<QStringConverter::Encoding> detectEncoding(const QByteArray &bytes,
                                                                                  const char *fallback);

    /// Makes \a stream, which reads \a bytes, decode them by detectEncoding(). The default fallback is Qt's name for
    /// the system's encoding: the ANSI code page on Windows, UTF-8 elsewhere.
    static void setDetectedEncoding(QTextStream &stream, const QByteArray &bytes, const char *fallback = "Locale");

private:
    void read();

    QString m_fileName;
    QString m_sectionName; // lower case, as are all names in the map
    QHash<QString, QHash<QString, QString>> m_sectionMap;
};
