#pragma once

#include <QByteArray>
#include <QMessageBox>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

/// What tests of the box without Qt have in common: the call, and stand-ins for the programs of the desktop, which are
/// the only ones that are found. There is one at a time.
class DesktopPrograms
{
public:
    struct Call
    {
        QMessageBox::Icon type = QMessageBox::Critical;
        QString title = QStringLiteral("Title");
        QString text = QStringLiteral("Text");
        QMessageBox::StandardButtons buttons = QMessageBox::Ok;
        QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;
    };

    DesktopPrograms() = default;

    /// For init() and cleanup(): no program, a display that isn't there, the usual call.
    void reset();

    /// The call, as a function without a context for debuggerOutputOf(), and what it has given.
    static Call call;
    static int result;
    static void show();

    void addProgram(const QString &name, const QByteArray &commands) const;
    /// One that notes its arguments, and ends with the status.
    void addRecorder(const QString &name, int status, const QByteArray &commands = {}) const;
    [[nodiscard]] QString programPath(const QString &name) const { return m_programs->filePath(name); }
    [[nodiscard]] QString folder() const { return m_programs->path(); }

    [[nodiscard]] bool wasCalled(const QString &name) const;
    [[nodiscard]] QStringList argumentsOf(const QString &name) const;
    [[nodiscard]] QByteArray recordPath(const QString &name) const;
    [[nodiscard]] QByteArray recordOf(const QString &name) const;
    /// The name of the button that the call gives with a program that is there alone, "failed" if the program counts as
    /// one that has failed.
    [[nodiscard]] QString resultOf(const QString &name, int status, const QByteArray &commands = {}) const;

private:
    Q_DISABLE_COPY_MOVE(DesktopPrograms)

    std::unique_ptr<QTemporaryDir> m_programs;
    std::unique_ptr<QTemporaryDir> m_records;
};

inline const QMessageBox::StandardButtons okCancel = QMessageBox::Ok | QMessageBox::Cancel;
inline const QMessageBox::StandardButtons yesNo = QMessageBox::Yes | QMessageBox::No;
inline const QMessageBox::StandardButtons yesNoCancel = yesNo | QMessageBox::Cancel;
