#pragma once

#include <QString>

/// Writes the stand-in into the machine's classes as "Outlook.Application", with its type library. Nothing is changed
/// if another Outlook stands there. Returns false with the reason in \a errorText. Needs the rights of an
/// administrator.
[[nodiscard]] bool registerStandIn(const QString &program, QString &errorText);

/// Takes out what registerStandIn() has written; what others have written stays.
[[nodiscard]] bool unregisterStandIn(QString &errorText);
