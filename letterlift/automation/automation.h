#pragma once

#include <QString>

#include <functional>

class AutomationObject;
class QObject;

// The backend that the build has chosen. Exactly one source file implements these two functions.

/// Makes ready what the backend needs before the first object, such as the simulated mailbox. Returns false, with a
/// text for the user in \a errorMessage, if the program can't go on. Main thread.
[[nodiscard]] bool prepareAutomation(QString &errorMessage);

/// A new object for \a progId with \a parent as its owner, attached to a new or running server. Never null: if there is
/// no such server, the object's isNull() is true and a warning has been logged. Main thread.
[[nodiscard]] AutomationObject *createAutomationObject(const QString &progId, QObject *parent);

/// The form of createAutomationObject(), for those who take another source of objects.
using AutomationFactory = std::function<AutomationObject *(const QString &progId, QObject *parent)>;
