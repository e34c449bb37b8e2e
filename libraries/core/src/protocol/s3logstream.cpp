#include "s3logstream.h"

#include <QGlobalStatic>
#include <QMutex>

#include <map>
#include <memory>

using namespace Qt::Literals::StringLiterals;

namespace {

using ChannelTable = std::map<QString, std::unique_ptr<s3LogFileStream>>;

// Destroyed at the end, which writes what the streams still hold. Whoever asks for a channel after that gets none.
Q_GLOBAL_STATIC(ChannelTable, channels)

// Held for no longer than the table is looked at.
constinit QMutex tableMutex;

struct Scratch
{
    QString text;
    s3LogFileStream stream;
};

Scratch &scratch()
{
    // Stays until the process ends, since it is for those who come late, too.
    static auto *const instance = new Scratch;
    return *instance;
}

s3LogFileStream *find(const QString &name)
{
    if (channels.isDestroyed())
        return nullptr;
    const QMutexLocker locker(&tableMutex);
    const auto channel = channels->find(name);
    return channel == channels->end() ? nullptr : channel->second.get();
}

} // namespace

s3LogFileStream::s3LogFileStream()
    : m_file(QString())
{
}

s3LogFileStream::~s3LogFileStream()
{
    // The base outlives the file, which is its device.
    flush();
    setDevice(nullptr);
}

bool s3LogFileStream::open(const QString &name, const QString &fileName, QStringConverter::Encoding encoding)
{
    m_file.setFileName(fileName.isEmpty() ? u"log_%1.txt"_s.arg(name) : fileName);
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    setDevice(&m_file);
    setEncoding(encoding);
    if (encoding == QStringConverter::Utf16LE || encoding == QStringConverter::Utf16BE) {
        // Written and not left to the stream, which would do it with the first text only.
        *this << QChar(QChar::ByteOrderMark);
        flush();
    }
    return true;
}

bool s3LogStream::openChannel(const QString &name, const QString &fileName, QStringConverter::Encoding encoding)
{
    if (hasChannel(name))
        return true;
    auto stream = std::make_unique<s3LogFileStream>();
    if (channels.isDestroyed() || !stream->open(name, fileName, encoding))
        return false;
    const QMutexLocker locker(&tableMutex);
    channels->emplace(name, std::move(stream));
    return true;
}

bool s3LogStream::hasChannel(const QString &name)
{
    return find(name) != nullptr;
}

void s3LogStream::closeChannel(const QString &name)
{
    if (channels.isDestroyed())
        return;
    // It writes what it holds when the lock has been left.
    ChannelTable::node_type closed;
    const QMutexLocker locker(&tableMutex);
    closed = channels->extract(name);
}

QTextStream &s3LogStream::channelStream(const QString &name)
{
    if (QTextStream *const stream = find(name))
        return *stream;
    Scratch &nothing = scratch();
    nothing.text.clear();
    nothing.stream.setString(&nothing.text, QIODevice::WriteOnly);
    return nothing.stream;
}

QString s3LogStream::channelList()
{
    QString list;
    if (channels.isDestroyed())
        return list;
    const QMutexLocker locker(&tableMutex);
    for (const auto &[name, stream] : *channels)
        list += u"%1: %2\n"_s.arg(name, stream->fileName());
    return list;
}
