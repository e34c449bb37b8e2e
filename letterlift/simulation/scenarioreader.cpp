#include "jsonduplicates.h"
#include "outlookmodel.h"
#include "scenario.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <functional>
#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Walks through the document and stops at the first thing that is not understood. A key handler returns false then.
class Reader
{
public:
    std::optional<Scenario> read(const QByteArray &json);

    QString errorText;

private:
    using KeyHandler = std::function<bool(const QJsonValue &value, const QString &place)>;
    using KeyHandlers = QHash<QString, KeyHandler>;

    bool fail(const QString &place, const QString &reason);
    bool readObject(const QJsonValue &value, const QString &place, const KeyHandlers &handlers);
    bool readList(const QJsonValue &value, const QString &place, const KeyHandler &readEntry);

    KeyHandler textInto(QString &target);
    KeyHandler boolInto(bool &target);
    KeyHandler intInto(int &target);

    bool readAccount(const QJsonValue &value, const QString &place);
    bool readListEntry(const QJsonValue &value, const QString &place);
    bool readAddresses(const QJsonValue &value, const QString &place);
    bool readSignature(const QJsonValue &value, const QString &place);
    bool readFailure(const QJsonValue &value, const QString &place);
    bool readFailureKind(const QJsonValue &value, const QString &place, FailureKind &kind);
    bool readFailureValue(const QJsonValue &value, const QString &place, QVariant &result);

    Scenario m_scenario;
};

/// Line and column of the byte at \a offset, both from 1.
QString placeAt(const QByteArray &json, qsizetype offset)
{
    const QByteArrayView before = QByteArrayView(json).first(qBound(qsizetype(0), offset, json.size()));
    const qsizetype line = before.count('\n') + 1;
    const qsizetype column = before.size() - (before.lastIndexOf('\n') + 1) + 1;
    return u"line %1, column %2"_s.arg(line).arg(column);
}

QString below(const QString &place, const QString &key)
{
    return place.isEmpty() ? key : place + u'.' + key;
}

std::optional<Scenario> Reader::read(const QByteArray &json)
{
    QJsonParseError parseError{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        // Qt's offset is that of the character behind the one that is wrong.
        fail(placeAt(json, parseError.offset - 1), parseError.errorString());
        return std::nullopt;
    }
    // QJsonObject would keep the last of two equal keys and say nothing.
    if (const std::optional<DuplicateKey> duplicate = findDuplicateKey(json)) {
        fail(placeAt(json, duplicate->offset), u"duplicate key \"%1\""_s.arg(QString::fromUtf8(duplicate->key)));
        return std::nullopt;
    }

    const auto listOf = [this](bool (Reader::*readEntry)(const QJsonValue &, const QString &)) -> KeyHandler {
        return [this, readEntry](const QJsonValue &value, const QString &place) {
            return readList(value, place, std::bind_front(readEntry, this));
        };
    };
    const KeyHandlers handlers{
        {u"available"_s, boolInto(m_scenario.available)},
        {u"version"_s, textInto(m_scenario.version)},
        {u"accounts"_s, listOf(&Reader::readAccount)},
        {u"globalAddressList"_s, listOf(&Reader::readListEntry)},
        {u"addresses"_s, std::bind_front(&Reader::readAddresses, this)},
        {u"signature"_s, std::bind_front(&Reader::readSignature, this)},
        {u"failures"_s, listOf(&Reader::readFailure)},
    };
    const QJsonValue root = document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
    return readObject(root, QString(), handlers) ? std::optional(m_scenario) : std::nullopt;
}

bool Reader::fail(const QString &place, const QString &reason)
{
    errorText = (place.isEmpty() ? u"top level"_s : place) + u": "_s + reason;
    return false;
}

bool Reader::readObject(const QJsonValue &value, const QString &place, const KeyHandlers &handlers)
{
    if (!value.isObject())
        return fail(place, u"an object is expected"_s);
    const QJsonObject object = value.toObject();
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        const auto handler = handlers.constFind(entry.key());
        if (handler == handlers.constEnd())
            return fail(place, u"unknown key \"%1\""_s.arg(entry.key()));
        if (!(*handler)(entry.value(), below(place, entry.key())))
            return false;
    }
    return true;
}

bool Reader::readList(const QJsonValue &value, const QString &place, const KeyHandler &readEntry)
{
    if (!value.isArray())
        return fail(place, u"a list is expected"_s);
    const QJsonArray array = value.toArray();
    for (qsizetype i = 0; i < array.size(); ++i) {
        if (!readEntry(array.at(i), u"%1[%2]"_s.arg(place).arg(i)))
            return false;
    }
    return true;
}

Reader::KeyHandler Reader::textInto(QString &target)
{
    return [this, &target](const QJsonValue &value, const QString &place) {
        if (!value.isString())
            return fail(place, u"a text is expected"_s);
        target = value.toString();
        return true;
    };
}

Reader::KeyHandler Reader::boolInto(bool &target)
{
    return [this, &target](const QJsonValue &value, const QString &place) {
        if (!value.isBool())
            return fail(place, u"true or false is expected"_s);
        target = value.toBool();
        return true;
    };
}

Reader::KeyHandler Reader::intInto(int &target)
{
    return [this, &target](const QJsonValue &value, const QString &place) {
        const qint64 number = value.toInteger(std::numeric_limits<qint64>::max());
        if (!value.isDouble() || number < std::numeric_limits<int>::min() || number > std::numeric_limits<int>::max())
            return fail(place, u"a whole number of 32 bits is expected"_s);
        target = int(number);
        return true;
    };
}

bool Reader::readAccount(const QJsonValue &value, const QString &place)
{
    ScenarioAccount account;
    const bool ok = readObject(
        value, place,
        {{u"DisplayName"_s, textInto(account.displayName)}, {u"SmtpAddress"_s, textInto(account.smtpAddress)}});
    m_scenario.accounts.append(account);
    return ok;
}

bool Reader::readListEntry(const QJsonValue &value, const QString &place)
{
    ScenarioListEntry listEntry;
    const bool ok = readObject(value, place,
                               {{u"exchangeUser"_s, boolInto(listEntry.exchangeUser)},
                                {u"Alias"_s, textInto(listEntry.alias)},
                                {u"PrimarySmtpAddress"_s, textInto(listEntry.primarySmtpAddress)}});
    m_scenario.globalAddressList.append(listEntry);
    return ok;
}

bool Reader::readAddresses(const QJsonValue &value, const QString &place)
{
    if (!value.isObject())
        return fail(place, u"an object is expected"_s);
    const QJsonObject object = value.toObject();
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        ScenarioAddress address{true, u"SMTP"_s, QString()};
        const QString entryPlace = u"%1[\"%2\"]"_s.arg(place, entry.key());
        if (!readObject(entry.value(), entryPlace,
                        {{u"resolves"_s, boolInto(address.resolves)},
                         {u"Type"_s, textInto(address.type)},
                         {u"PrimarySmtpAddress"_s, textInto(address.primarySmtpAddress)}}))
            return false;
        m_scenario.addresses.insert(entry.key(), address);
    }
    return true;
}

bool Reader::readSignature(const QJsonValue &value, const QString &place)
{
    return readObject(
        value, place,
        {{u"plain"_s, textInto(m_scenario.plainSignature)}, {u"html"_s, textInto(m_scenario.htmlSignature)}});
}

bool Reader::readFailure(const QJsonValue &value, const QString &place)
{
    PlannedFailure planned;
    QString object;
    int call = 0;
    const bool hasCall = value.toObject().contains(u"call"_s);
    const KeyHandlers handlers{
        {u"object"_s, textInto(object)},
        {u"member"_s, textInto(planned.member)},
        {u"kind"_s,
         [this, &planned](const QJsonValue &kind, const QString &kindPlace) {
             return readFailureKind(kind, kindPlace, planned.failure.kind);
         }},
        {u"value"_s,
         [this, &planned](const QJsonValue &json, const QString &valuePlace) {
             return readFailureValue(json, valuePlace, planned.failure.value);
         }},
        {u"milliseconds"_s, intInto(planned.failure.milliseconds)},
        {u"code"_s, intInto(planned.failure.code)},
        {u"source"_s, textInto(planned.failure.source)},
        {u"description"_s, textInto(planned.failure.description)},
        {u"help"_s, textInto(planned.failure.help)},
        {u"call"_s, intInto(call)},
    };
    if (!readObject(value, place, handlers))
        return false;

    const std::optional<ObjectKind> kind = objectKindFromName(object);
    if (!kind)
        return fail(below(place, u"object"_s), u"the kind of object \"%1\" doesn't exist"_s.arg(object));
    const QString bareName = planned.member.left(planned.member.indexOf(u'('));
    if (planned.member.isEmpty() || OutlookModel::memberSignature(*kind, bareName) != planned.member)
        return fail(below(place, u"member"_s), u"%1 has no member \"%2\""_s.arg(object, planned.member));
    if (planned.failure.milliseconds < 0)
        return fail(below(place, u"milliseconds"_s), u"a time isn't negative"_s);
    if (hasCall && call < 1)
        return fail(below(place, u"call"_s), u"calls are counted from 1"_s);

    planned.object = *kind;
    if (hasCall)
        planned.call = call;
    m_scenario.failures.append(planned);
    return true;
}

bool Reader::readFailureKind(const QJsonValue &value, const QString &place, FailureKind &kind)
{
    const std::optional<FailureKind> named = plannedFailureKindFromName(value.toString());
    if (!named)
        return fail(place, u"the kind of failure \"%1\" doesn't exist"_s.arg(value.toString()));
    kind = *named;
    return true;
}

bool Reader::readFailureValue(const QJsonValue &value, const QString &place, QVariant &result)
{
    if (value.isObject() || value.isArray())
        return fail(place, u"a text, a number, true, false or null is expected"_s);
    if (value.isNull()) {
        result = QVariant();
        return true;
    }
    const int number = value.toInt();
    const bool isInteger = value.isDouble() && double(number) == value.toDouble();
    result = isInteger ? QVariant(number) : value.toVariant();
    return true;
}

} // namespace

std::optional<Scenario> readScenario(const QByteArray &json, QString &errorText)
{
    Reader reader;
    std::optional<Scenario> scenario = reader.read(json);
    errorText = reader.errorText;
    return scenario;
}
