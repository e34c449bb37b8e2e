#pragma once

#include <QDebug>
#include <QString>
#include <QStringList>
#include <QtGlobal>

// The run log: a UTF-8 text file that receives every Qt message of one run, the program's own lines among them, which
// are debug messages of Qt's default category. Nothing here reports a failure: a message that can't be written is lost
// for the file.

/// Empties \a fileName inside \a directory and directs Qt's messages there, and on to the handler that was there
/// before. An empty \a fileName leaves the log off. Main thread, before other threads run.
void openRunLog(const QString &directory, const QString &fileName);

/// Sets the logging filter rule "debug=true" or "debug=false". It names a category "debug", which no line uses: the log
/// holds the same lines either way.
void setDebugLogging(bool on);

/// What is streamed into the result forms one message, written when it goes out of scope. Texts stand literally.
[[nodiscard]] QDebug logStream();

/// One message an element: \a label and the element in brackets.
void logList(const QStringList &list, const QString &label);

/// The message handler that openRunLog() installs. Any thread.
void logMessageHandler(QtMsgType type, const QMessageLogContext &context, const QString &message);
