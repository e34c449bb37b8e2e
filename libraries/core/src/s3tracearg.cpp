#include "s3tracearg.h"

#include "s3replaceall.h"
#include "s3string.h"

#include <QColor>
#include <QModelIndex>
#include <QPoint>
#include <QRect>
#include <QSize>

using namespace Qt::Literals::StringLiterals;

namespace {

QString onOneLine(QString text)
{
    s3String::replaceLineEnds(text, u"\\n"_s);
    return s3ReplaceAll(text, u"\t", u"\\t");
}

QString valueText(const QVariant &value)
{
    switch (value.metaType().id()) {
    case QMetaType::QString:
        return s3String::quoted(onOneLine(value.toString()));
    case QMetaType::QChar:
        return u'\'' + value.toString() + u'\'';
    case QMetaType::QStringList:
        return s3String::fromStringList(value.toStringList());
    case QMetaType::QPoint:
        return s3String::fromPoint(value.toPoint());
    case QMetaType::QSize:
        return s3String::fromSize(value.toSize());
    case QMetaType::QRect:
        return s3String::fromRect(value.toRect());
    case QMetaType::QModelIndex:
        return s3String::fromModelIndex(value.toModelIndex());
    case QMetaType::QColor:
        return s3String::fromColor(value.value<QColor>());
    default:
        return value.toString();
    }
}

QString item(const QString &name, const QString &value)
{
    return u' ' + name + u'=' + value;
}

} // namespace

QString s3TraceArg(const QString &name, const QVariant &value)
{
    return item(name, valueText(value));
}

QString s3TraceArg(const QString &name, const void *pointer)
{
    if (pointer == nullptr)
        return item(name, u"nullptr"_s);
    QString text = s3String::toHex(reinterpret_cast<quintptr>(pointer), 0, true);
    text.replace(u"0x00000000"_s, u"0x"_s);
    return item(name, text);
}
