#include "s3qeventprotocol.h"

#include "s3assert.h"
#include "s3iformattable.h"

#include <QCoreApplication>
#include <QEvent>
#include <QMetaEnum>
#include <QMutex>
#include <QThread>

#include <mutex>

using namespace Qt::Literals::StringLiterals;

namespace {

constinit QMutex tableMutex;

bool isCustom(qint32 type)
{
    return type >= QEvent::User && type <= QEvent::MaxUser;
}

QString address(const void *pointer)
{
    return u"0x%1"_s.arg(quintptr(pointer), 16, 16, QChar(u'0'));
}

QString threadText(const QThread *thread)
{
    const QCoreApplication *const application = QCoreApplication::instance();
    const bool isMain = application != nullptr && thread == application->thread();
    return (isMain ? u"main"_s : address(thread)).leftJustified(10);
}

QString argumentsOf(const QEvent *event)
{
    const auto *const formattable = isCustom(event->type()) ? dynamic_cast<const s3IFormattable *>(event) : nullptr;
    return formattable != nullptr ? formattable->formatted() : QString();
}

} // namespace

QHash<qint32, QString> &s3QEventProtocol::customEventNames()
{
    static QHash<qint32, QString> names;
    return names;
}

QSet<qint32> &s3QEventProtocol::ignoredEvents()
{
    static QSet<qint32> types;
    return types;
}

void s3QEventProtocol::registerCustomEvent(qint32 type, const QString &name)
{
    S3_ASSERT_AT(isCustom(type), "type >= QEvent::User && type <= QEvent::MaxUser", QString(), 125,
                 "s3QEventProtocol::registerCustomEvent");
    const std::lock_guard lock(tableMutex);
    customEventNames()[type] = name;
}

void s3QEventProtocol::ignoreEvent(qint32 type)
{
    const std::lock_guard lock(tableMutex);
    ignoredEvents().insert(type);
}

QString s3QEventProtocol::eventName(qint32 type)
{
    QString name;
    if (type < QEvent::User) {
        name = QString::fromLatin1(QMetaEnum::fromType<QEvent::Type>().valueToKey(type));
    } else {
        const std::lock_guard lock(tableMutex);
        name = customEventNames().value(type);
    }
    return name.isEmpty() ? QString::number(type) : name;
}

QString s3QEventProtocol::objectText(const QObject *object)
{
    if (object == nullptr)
        return {};
    return u"%1(this=%2, thread=%3, name=%4)"_s.arg(QString::fromUtf8(object->metaObject()->className()),
                                                    address(object), threadText(object->thread()),
                                                    object->objectName());
}

QString s3QEventProtocol::eventText(const QObject *object, const QEvent *event)
{
    const qint32 type = event->type();
    {
        const std::lock_guard lock(tableMutex);
        if (ignoredEvents().contains(type))
            return {};
    }
    QString text = u"QEVENT : "_s + eventName(type) + u"\nQOBJECT: "_s + objectText(object) + u'\n';
    const QString arguments = argumentsOf(event);
    if (!arguments.isEmpty())
        text += u"ARGS   : "_s + arguments + u'\n';
    return text + QString(120, u'-');
}
