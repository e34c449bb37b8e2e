#pragma once

#include <QHash>
#include <QSet>
#include <QString>

class QEvent;
class QObject;

/// Names for the types of events, and an event with its receiver as text for a protocol. The functions may be called
/// from any thread, but an object's text belongs to the thread that it lives in.
class s3QEventProtocol
{
public:
    /// \a type has to lie between 1000 and 65535, which is an assertion.
    static void registerCustomEvent(qint32 type, const QString &name);
    /// From now on eventText() is empty for \a type.
    static void ignoreEvent(qint32 type);

    /// The name of a type of Qt's, or of a registered one; otherwise the number.
    [[nodiscard]] static QString eventName(qint32 type);
    /// Class, address, thread and name; empty without an object.
    [[nodiscard]] static QString objectText(const QObject *object);
    /// Several lines, the last one without a line feed; empty for an ignored type.
    [[nodiscard]] static QString eventText(const QObject *object, const QEvent *event);

    /// For programs with an event log, which take out of them what they want to see. The functions lock them; whoever
    /// touches them directly does it while no other thread has events.
    [[nodiscard]] static QHash<qint32, QString> &customEventNames();
    [[nodiscard]] static QSet<qint32> &ignoredEvents();
};
