#pragma once

#include <QByteArray>
#include <QString>

/// A file in the resource system, ":/folder/name", while this object lives.
class ResourceFile
{
public:
    ResourceFile(const QString &folder, const QString &name, const QByteArray &contents);
    ~ResourceFile();

    Q_DISABLE_COPY_MOVE(ResourceFile)

    /// False if the resource system hasn't taken it.
    [[nodiscard]] bool isRegistered() const { return m_isRegistered; }

private:
    QByteArray m_block; // the resource system reads it in place
    bool m_isRegistered;
};
