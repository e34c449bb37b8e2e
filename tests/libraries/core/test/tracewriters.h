#pragma once

#include <QStringList>

/// Threads that write lines, some of them in pieces, to the output proxy at once, and what has to come of it.

/// A callback for the proxy, and the whole lines that it has got. On the main thread.
void recordLine(const QString &text, bool endOfLine);
[[nodiscard]] QStringList &writtenLines();

/// Writes the lines of one writer.
void writeLines(int writer);
/// Starts \a threads writers, lets the main thread be one as well, and runs its event loop until all have ended.
void writeFromThreads(int threads);

/// What is wrong with these lines; empty if each is whole, none is missing and those of each writer are in order.
[[nodiscard]] QString fault(const QStringList &lines, int writers, bool withTime);
