#pragma once

#include <QByteArray>
#include <QString>

/// Writes the file \a path anew and returns its path. A test that can't write its own input ends here.
QString writeTestFile(const QString &path, const QByteArray &bytes);
