#include "journal.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::Literals::StringLiterals;

namespace {

QString operationName(Operation operation)
{
    switch (operation) {
    case Operation::Create:
        return u"create"_s;
    case Operation::Query:
        return u"query"_s;
    case Operation::Call:
        return u"call"_s;
    case Operation::Get:
        return u"get"_s;
    case Operation::Set:
        return u"set"_s;
    case Operation::Release:
        break;
    }
    return u"release"_s;
}

QJsonValue toJson(const QVariant &value)
{
    if (value.typeId() == qMetaTypeId<ObjectReference>())
        return QJsonObject{{u"object"_s, value.value<ObjectReference>().toString()}};
    return QJsonValue::fromVariant(value);
}

QJsonArray toJson(const QVariantList &values)
{
    QJsonArray array;
    for (const QVariant &value : values)
        array.append(toJson(value));
    return array;
}

QJsonObject toJson(const Failure &failure)
{
    QJsonObject object{{u"kind"_s, failureKindName(failure.kind)}};
    if (failure.kind == FailureKind::Exception)
        object.insert(u"code"_s, failure.code);
    return object;
}

// QJsonObject would sort the keys, and a line reads best from object to result.
void appendKey(QByteArray &line, const char *key, const QJsonValue &value)
{
    QByteArray text = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    text = text.sliced(1, text.size() - 2);
    line += (line.isEmpty() ? "{\"" : ",\"") + QByteArray(key) + "\":" + text;
}

} // namespace

QByteArray journalLine(const JournalEntry &entry)
{
    QByteArray line;
    appendKey(line, "object", entry.object.toString());
    appendKey(line, "operation", operationName(entry.operation));
    if (entry.operation != Operation::Release) {
        appendKey(line, "member", entry.member);
        appendKey(line, "arguments", toJson(entry.arguments));
        appendKey(line, "result", toJson(entry.result));
    }
    if (entry.failure)
        appendKey(line, "failure", toJson(*entry.failure));
    return line + '}';
}
