#pragma once

#include <QFile>

class QFileInfo;

/// A QFile whose name passes through s3String::toSlashes(), so that Windows paths may be handed in as they come, and
/// which tells its failures in the user's language. Nothing here throws: results and error() report. As thread-safe as
/// QFile, but for what gives a text for the user: that is translated, which is for the main thread.
class s3File : public QFile
{
public:
    explicit s3File(const QString &name);
    explicit s3File(const QFileInfo &info);
    ~s3File() override;

    void setFileName(const QString &name);
    [[nodiscard]] QString fileName() const override;

    /// False for a directory.
    [[nodiscard]] bool exists() const;

    /// Makes an empty file; true as well, and nothing is touched, where there is one. The file is closed afterwards.
    [[nodiscard]] bool create();

    bool rename(const QString &newName);

    /// Fails where \a newName exists. Test flag 226 traces it.
    bool copy(const QString &newName);

    /// True where there is nothing to remove. With \a force, a file that can't be removed is made writable and tried
    /// again; it has its former permissions if that doesn't help.
    bool remove(bool force);

    /// Gives everyone the right to write.
    bool makeWritable();

    /// errorString(), in the user's language where that is one of the texts that people run into.
    [[nodiscard]] QString translatedErrorString() const;

    /// What went wrong with which file, and translatedErrorString() on the next line. \a fallback is what the caller
    /// tried; it counts where error() is NoError.
    [[nodiscard]] QString errorText(QFileDevice::FileError fallback) const;

    /// Copies \a from to \a to. With \a overwrite, a file that is there makes way for the copy, unless it is \a from
    /// itself: that fails, and the file stays. \a errorText, empty on success, is for the user, in his language.
    /// \a code and \a errorText may be null.
    static bool copyFile(const QString &from, const QString &to, bool overwrite);
    static bool copyFile(const QString &from, const QString &to, bool overwrite, QString &errorText);
    static bool copyFile(const QString &from, const QString &to, bool overwrite, QFileDevice::FileError *code,
                         QString *errorText);
};
