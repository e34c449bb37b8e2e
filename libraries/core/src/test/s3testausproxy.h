#pragma once

#include "s3singleton.h"

#include <QObject>
#include <QString>

#include <memory>

class s3TestausProxyPrivate;

/// The one way out for every trace line: to the file "testaus.txt" (test flag 55), to the debugger (202) and to a
/// callback. Any thread may write; the output is done on the main thread, so the lines of other threads wait for its
/// event loop, and are lost if the process ends first. Output that can't go out is lost without a word.
class s3TestausProxy : public QObject, public s3Singleton<s3TestausProxy>
{
    Q_OBJECT

public:
    /// Gets each piece of output on the main thread. What it writes to the proxy itself is dropped.
    using Callback = void (*)(const QString &text, bool endOfLine);

    ~s3TestausProxy() override;

    /// Made on the first call, never null. From any thread; see moveToMainThread().
    [[nodiscard]] static s3TestausProxy *instance();
    /// Whether there is one, without making it.
    [[nodiscard]] static bool exists();

    /// Puts the proxy onto the main thread when there is an application. Qt allows that to the thread that the proxy is
    /// on, for which instance() does it, and to any thread if it has been made before the application; for others it
    /// does nothing.
    void moveToMainThread();

    /// Without an application, and without anyone who wants output, this does nothing. Pieces without \a endOfLine and
    /// the one with it that ends them become one line of output: whoever begins a line has to end it on the same
    /// thread, and soon, since other threads wait for it. With test flag 96 a line starts with the time.
    void write(const QString &text, bool endOfLine);

    /// Names the file and sets test flag 55; an empty name does nothing. In UTF-16, little-endian; emptied at the first
    /// output. From the main thread, and before there are others that write, as all that changes the flags.
    void setFileName(const QString &name);
    /// Null for none. From the main thread, while no other one writes.
    void setCallback(Callback callback);

private:
    s3TestausProxy();

    std::unique_ptr<s3TestausProxyPrivate> m_private;
};
