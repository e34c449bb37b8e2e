#include "desktopprograms.h"

#include "debuggeroutput.h"
#include "s3basicboxwin.h"
#include "s3testflags.h"

#include <QFile>
#include <QMetaEnum>
#include <QTest>

#include <csignal>

using namespace Qt::Literals::StringLiterals;

DesktopPrograms::Call DesktopPrograms::call;
int DesktopPrograms::result = 0;

void DesktopPrograms::reset()
{
    constexpr int neverGiven = -1;
    m_programs = std::make_unique<QTemporaryDir>();
    m_records = std::make_unique<QTemporaryDir>();
    qputenv("PATH", QFile::encodeName(m_programs->path()));
    qputenv("DISPLAY", ":0");
    qunsetenv("WAYLAND_DISPLAY");
    qputenv("LC_ALL", "C.UTF-8");
    // The one that started the tests may have had another.
    std::signal(SIGCHLD, SIG_DFL);
    call = {};
    result = neverGiven;
    s3TestFlagsGUI::instance()->clear();
}

void DesktopPrograms::show()
{
    result = s3BasicBoxWin::show(call.type, call.title, call.text, call.buttons, call.defaultButton);
}

void DesktopPrograms::addProgram(const QString &name, const QByteArray &commands) const
{
    QFile file(programPath(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("#!/bin/sh\n" + commands + '\n');
    file.close();
    QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

void DesktopPrograms::addRecorder(const QString &name, int status, const QByteArray &commands) const
{
    addProgram(name,
               "printf '%s\\0' \"$@\" >" + recordPath(name) + '\n' + commands + "\nexit " + QByteArray::number(status));
}

bool DesktopPrograms::wasCalled(const QString &name) const
{
    return QFile::exists(m_records->filePath(name));
}

QByteArray DesktopPrograms::recordPath(const QString &name) const
{
    return QFile::encodeName(m_records->filePath(name));
}

QByteArray DesktopPrograms::recordOf(const QString &name) const
{
    QFile file(m_records->filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : "no such file"_ba;
}

QStringList DesktopPrograms::argumentsOf(const QString &name) const
{
    QStringList arguments = QString::fromUtf8(recordOf(name)).split(QChar(u'\0'));
    arguments.removeLast();
    return arguments;
}

QString DesktopPrograms::resultOf(const QString &name, int status, const QByteArray &commands) const
{
    addRecorder(name, status, commands);
    const QString output = debuggerOutputOf(show);
    if (!wasCalled(name))
        return u"not called"_s;
    if (!output.isEmpty())
        return result == 0 ? u"failed"_s : output;
    const QMetaObject &boxes = QMessageBox::staticMetaObject;
    return QString::fromLatin1(boxes.enumerator(boxes.indexOfEnumerator("StandardButton")).valueToKey(result));
}
