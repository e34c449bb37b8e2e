#include "resourcefile.h"

#include <QLocale>
#include <QResource>
#include <QtEndian>

namespace {

constexpr quint16 isDirectory = 2;

template<typename T>
void append(QByteArray &bytes, T value)
{
    const T swapped = qToBigEndian(value);
    bytes.append(reinterpret_cast<const char *>(&swapped), sizeof swapped);
}

/// What Qt finds the names of a resource by.
quint32 hashOf(const QString &name)
{
    quint32 hash = 0;
    for (const QChar unit : name) {
        hash = (hash << 4) + unit.unicode();
        hash ^= (hash & 0xF0000000) >> 23;
        hash &= 0x0FFFFFFF;
    }
    return hash;
}

/// Returns the name's place.
quint32 appendName(QByteArray &names, const QString &name)
{
    const quint32 place = quint32(names.size());
    append(names, quint16(name.size()));
    append(names, hashOf(name));
    for (const QChar unit : name)
        append(names, unit.unicode());
    return place;
}

void appendDirectory(QByteArray &tree, quint32 name, quint32 firstChild)
{
    append(tree, name);
    append(tree, isDirectory);
    append(tree, quint32(1)); // children
    append(tree, firstChild);
}

/// The block that Qt's resource compiler would write in its first format: a root with one folder with one file.
QByteArray resourceBlock(const QString &folder, const QString &name, const QByteArray &contents)
{
    QByteArray names;
    QByteArray tree;
    appendDirectory(tree, 0, 1);
    appendDirectory(tree, appendName(names, folder), 2);
    append(tree, appendName(names, name));
    append(tree, quint16(0)); // neither compressed nor a directory
    append(tree, quint16(QLocale::AnyTerritory));
    append(tree, quint16(QLocale::C));
    append(tree, quint32(0)); // place of the data

    constexpr quint32 headerSize = 20;
    const quint32 dataSize = quint32(contents.size()) + 4;
    QByteArray block("qres");
    append(block, quint32(1)); // format
    append(block, headerSize + dataSize + quint32(names.size()));
    append(block, headerSize);
    append(block, headerSize + dataSize);
    append(block, quint32(contents.size()));
    return block + contents + names + tree;
}

const uchar *bytesOf(const QByteArray &block)
{
    return reinterpret_cast<const uchar *>(block.constData());
}

} // namespace

ResourceFile::ResourceFile(const QString &folder, const QString &name, const QByteArray &contents)
    : m_block(resourceBlock(folder, name, contents))
    , m_isRegistered(QResource::registerResource(bytesOf(m_block)))
{
}

ResourceFile::~ResourceFile()
{
    QResource::unregisterResource(bytesOf(m_block));
}
