#pragma once

#include <QFile>

/// A QFile whose name passes through s3String::toSlashes(), so that Windows paths may be handed in as they come.
class s3File : public QFile
{
public:
    explicit s3File(const QString &name);

    void setFileName(const QString &name);
    [[nodiscard]] QString fileName() const override;
};
