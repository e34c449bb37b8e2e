#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

/// An empty folder that is the working directory while this object lives. One that holds what the process's
/// dictionaries map has to be made before them, as a static object of the test: Windows keeps a mapped file.
class WorkingDirectory
{
public:
    WorkingDirectory();
    ~WorkingDirectory();

    Q_DISABLE_COPY_MOVE(WorkingDirectory)

    /// Writes a file, with the folders that it needs; returns its path.
    QString write(const QString &name, const QByteArray &bytes) const;

private:
    QString m_before;
    QTemporaryDir m_directory;
};
