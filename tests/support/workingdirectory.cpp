#include "workingdirectory.h"

#include "testfile.h"

#include <QDir>
#include <QFileInfo>

WorkingDirectory::WorkingDirectory()
    : m_before(QDir::currentPath())
{
    if (!m_directory.isValid() || !QDir::setCurrent(m_directory.path()))
        qFatal("There is no working directory");
}

WorkingDirectory::~WorkingDirectory()
{
    QDir::setCurrent(m_before);
}

QString WorkingDirectory::write(const QString &name, const QByteArray &bytes) const
{
    const QString path = m_directory.filePath(name);
    if (!QDir().mkpath(QFileInfo(path).path()))
        qFatal("There is no folder for %s", qPrintable(path));
    return writeTestFile(path, bytes);
}
