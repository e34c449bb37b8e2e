#include "parameterfile.h"

#include "s3file.h"

#include <QRegularExpression>
#include <QStringDecoder>
#include <QTextStream>

using namespace Qt::Literals::StringLiterals;

ParameterFile::ParameterFile(const QString &fileName, const QString &sectionName)
    : m_fileName(fileName)
    , m_sectionName(sectionName.toLower())
{
    read();
}

void ParameterFile::read()
{
    s3File file(m_fileName);
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QByteArray bytes = file.readAll();

    QTextStream stream(bytes, QIODevice::ReadOnly);
    setDetectedEncoding(stream, bytes);

    static const QRegularExpression sectionPattern(uR"(^\s*\[(.*)\]\s*$)"_s);
    static const QRegularExpression keyPattern(uR"(^\s*([^=]+)=(.*)$)"_s);

    QString section = u""_s;
    while (!stream.atEnd()) {
        const QString line = stream.readLine();
        if (line.isEmpty())
            continue;
        if (const auto match = sectionPattern.match(line); match.hasMatch()) {
            section = match.captured(1).toLower();
            continue;
        }
        // White space fits both leading parts of the key pattern, so that a long run of it without "=" behind would be
        // tried in all its divisions: minutes for a megabyte.
        if (!line.contains(u'='))
            continue;
        if (const auto match = keyPattern.match(line); match.hasMatch())
            m_sectionMap[section].insert(match.captured(1).toLower(), match.captured(2).trimmed());
    }
}

QString ParameterFile::value(const QString &key, const QString &defaultValue) const
{
    const auto section = m_sectionMap.constFind(m_sectionName);
    return section == m_sectionMap.constEnd() ? defaultValue : section->value(key.toLower(), defaultValue);
}

bool ParameterFile::containsKey(const QString &key) const
{
    const auto section = m_sectionMap.constFind(m_sectionName);
    return section != m_sectionMap.constEnd() && section->contains(key.toLower());
}

int ParameterFile::intValue(const QString &key, int defaultValue) const
{
    return value(key, QString::number(defaultValue)).toInt(nullptr, 0);
}

bool ParameterFile::boolValue(const QString &key) const
{
    static const QStringList trueWords{u"1"_s, u"j"_s, u"y"_s};
    return trueWords.contains(value(key, u""_s), Qt::CaseInsensitive);
}

QStringList ParameterFile::listValue(const QString &prefix) const
{
    QStringList values;
    for (int n = 1;; ++n) {
        const QString entry = value(prefix + QString::number(n), u""_s);
        if (entry.isEmpty())
            return values;
        values.append(entry);
    }
}

std::optional<QStringConverter::Encoding> ParameterFile::detectEncoding(const QByteArray &bytes, const char *fallback)
{
    if (const auto marked = QStringConverter::encodingForData(bytes))
        return marked;

    QStringDecoder decoder(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    const QString decoded = decoder(bytes);
    return QStringConverter::encodingForName(decoder.hasError() ? fallback : "UTF-8");
}

void ParameterFile::setDetectedEncoding(QTextStream &stream, const QByteArray &bytes, const char *fallback)
{
    if (const auto encoding = detectEncoding(bytes, fallback))
        stream.setEncoding(*encoding);
}
