#pragma once

#include "callerror.h"

#include <QObject>
#include <QVariant>

/// What a server tells of an exception that it raised (`DISP_E_EXCEPTION`).
struct AutomationException
{
    int code = 0; ///< the exception's `wCode` if that isn't zero, otherwise its `scode` (EXCEPINFO in oaidl.h)
    QString source;
    QString description;
    QString help;
};

/// One object of an Automation server, such as Outlook's application or a mail item. Members are named by text at run
/// time, in ActiveQt's form: "Display()" for a method without arguments, "Session" for a property or collection,
/// "Item(QVariant)" with arguments.
///
/// Nothing here throws by itself. A call fails in one of three ways, each with an empty or null result: there is no
/// server behind the object, or the member can't be called as asked for (both with a warning), or the server raises an
/// exception. The last is signalled by exception(), or warned of if that signal has no receiver. What a receiver of the
/// signal throws leaves through the call that was in progress, which every implementation has to let pass.
///
/// All calls come from the main thread, one at a time.
class AutomationObject : public QObject
{
    Q_OBJECT

public:
    /// ActiveQt's limit for one call.
    static constexpr qsizetype maximumArguments = 8;

    explicit AutomationObject(QObject *parent);
    ~AutomationObject() override;

    /// True if no server object stands behind this one.
    [[nodiscard]] virtual bool isNull() const = 0;

    /// Calls a method or reads a property whose result is an object. The result is a child of this object; null if the
    /// call fails or its result is no object.
    [[nodiscard]] virtual AutomationObject *querySubObject(const char *name, const QVariantList &arguments = {}) = 0;

    /// Calls a method or reads a property. An invalid QVariant if the call fails.
    virtual QVariant dynamicCall(const char *name, const QVariantList &arguments = {}) = 0;

    /// Reads an Automation property; it takes the place of QObject's own, which isn't virtual. An invalid QVariant if
    /// that fails.
    [[nodiscard]] virtual QVariant property(const char *name) = 0;

    /// Writes an Automation property; false if that fails, but ActiveQt doesn't tell of what the server says to it. An
    /// object as value goes in by its asVariant().
    virtual bool setProperty(const char *name, const QVariant &value) = 0;

    /// This object in a form that setProperty() of an object of the same server takes.
    [[nodiscard]] virtual QVariant asVariant() const = 0;

    /// Makes the object cheaper where it would otherwise read type information or listen for events. Calls and queries
    /// work on; property() and setProperty() don't, as ActiveQt needs the meta-object for them.
    virtual void disableMetaObject();

    /// How many objects of this class there are in the process.
    [[nodiscard]] static int liveCount();

Q_SIGNALS:
    void exception(int code, const QString &source, const QString &desc, const QString &help);

protected:
    /// First way of failing: there is no server behind this object.
    void reportNoServer(const char *member) const;
    /// Second way: \a reason tells what is wrong with the member, its arguments or the connection.
    void reportCallError(const char *member, const QString &reason) const;
    void reportCallError(const char *member, CallError error, int argument = 1) const;
    /// Third way: emits exception() if that has a receiver, and warns otherwise.
    void reportException(const char *member, const AutomationException &exception);
    /// What comes before every operation: false, and reported, if it can't be tried at all.
    [[nodiscard]] bool canCall(const char *member, const QVariantList &arguments) const;
    [[nodiscard]] bool canUseProperty(const char *name) const;

private:
    Q_DISABLE_COPY_MOVE(AutomationObject)

    bool m_hasProperties = true;
};
