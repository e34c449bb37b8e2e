#pragma once

#include "s3file.h"

#include <QStringConverter>
#include <QTextStream>

/// A text stream with the file that it writes to.
class s3LogFileStream : public QTextStream
{
public:
    s3LogFileStream();
    ~s3LogFileStream() override;

    /// Opens \a fileName, or "log_NAME.txt" if that is empty, and empties it. Returns false if that can't be done.
    [[nodiscard]] bool open(const QString &name, const QString &fileName, QStringConverter::Encoding encoding);
    [[nodiscard]] QString fileName() const { return m_file.fileName(); }

private:
    Q_DISABLE_COPY_MOVE(s3LogFileStream)

    s3File m_file;
};

/// The channels of the protocol: a name stands for one text stream on one file. What is written, times and levels
/// included, is the writer's own matter, and errors while writing aren't looked at. For one thread at a time, which in
/// this program is the main thread; only whether a channel is there can be asked by any, and what writes to one that
/// others use brings a lock of its own, as s3WriteToErrorChannel() does.
namespace s3LogStream {

/// Opens the channel \a name on a file that is emptied first; a relative \a fileName is relative to the working
/// directory, an empty one stands for "log_NAME.txt". UTF-16 with a fixed byte order starts with its mark. A channel
/// that is open already stays as it is, and the answer is true. False if the file can't be opened.
bool openChannel(const QString &name, const QString &fileName, QStringConverter::Encoding encoding);
[[nodiscard]] bool hasChannel(const QString &name);
/// Closes the file as well. A stream that channelStream() has given for it must not be used any more.
void closeChannel(const QString &name);
/// The stream of the channel, valid until it is closed. For a channel that isn't open, a stream that takes everything
/// and keeps nothing.
[[nodiscard]] QTextStream &channelStream(const QString &name);
/// A line for each open channel, with its name and its file's name.
[[nodiscard]] QString channelList();

} // namespace s3LogStream
