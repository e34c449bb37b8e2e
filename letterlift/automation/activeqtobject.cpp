#include "activeqtobject.h"

#include "callpatience.h"
#include "comapartment.h"

#include <QAxObject>
#include <QMetaMethod>
#include <QMetaProperty>

ActiveQtObject::ActiveQtObject(std::shared_ptr<ComApartment> apartment, std::unique_ptr<QAxObject> object,
                               QObject *parent)
    : AutomationObject(parent)
    , m_apartment(std::move(apartment))
    , m_object(std::move(object))
{
    // It has come as a child of the object that was asked for it; from now on it goes with this one.
    m_object->setParent(nullptr);
}

ActiveQtObject::~ActiveQtObject() = default;

bool ActiveQtObject::isNull() const
{
    return m_object->isNull();
}

AutomationObject *ActiveQtObject::querySubObject(const char *name, const QVariantList &arguments)
{
    if (!canCall(name, arguments))
        return nullptr;
    const CallPatience::Operation operation(CallPatience::ofProcess());
    QVariantList values = arguments;
    std::unique_ptr<QAxObject> object(m_object->querySubObject(name, values));
    return object != nullptr ? new ActiveQtObject(m_apartment, std::move(object), this) : nullptr;
}

QVariant ActiveQtObject::dynamicCall(const char *name, const QVariantList &arguments)
{
    if (!canCall(name, arguments))
        return {};
    const CallPatience::Operation operation(CallPatience::ofProcess());
    QVariantList values = arguments;
    return m_object->dynamicCall(name, values);
}

QVariant ActiveQtObject::property(const char *name)
{
    if (!canUseProperty(name))
        return {};
    const CallPatience::Operation operation(CallPatience::ofProcess());
    return hasProperty(name, false) ? m_object->property(name) : QVariant();
}

bool ActiveQtObject::setProperty(const char *name, const QVariant &value)
{
    if (!canUseProperty(name))
        return false;
    const CallPatience::Operation operation(CallPatience::ofProcess());
    return hasProperty(name, true) && m_object->setProperty(name, value);
}

QVariant ActiveQtObject::asVariant() const
{
    return m_object->isNull() ? QVariant() : m_object->asVariant();
}

void ActiveQtObject::disableMetaObject()
{
    AutomationObject::disableMetaObject();
    m_object->disableMetaObject();
}

bool ActiveQtObject::hasProperty(const char *name, bool toWrite) const
{
    const QMetaObject *const meta = m_object->metaObject();
    const QMetaProperty property = meta->property(meta->indexOfProperty(name));
    const bool found = toWrite ? property.isWritable() : property.isReadable();
    if (!found)
        reportCallError(name, CallError::UnknownMember);
    return found;
}

/// QAxObject warns of an exception that nobody listens to, and so it must not be listened to before somebody does here.
void ActiveQtObject::connectNotify(const QMetaMethod &signal)
{
    if (signal == QMetaMethod::fromSignal(&AutomationObject::exception)) {
        connect(m_object.get(), SIGNAL(exception(int, QString, QString, QString)), this,
                SIGNAL(exception(int, QString, QString, QString)), Qt::UniqueConnection);
    }
}
