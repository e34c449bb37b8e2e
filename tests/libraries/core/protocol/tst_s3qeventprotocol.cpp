#include "protocol/s3customevent.h"
#include "protocol/s3qeventprotocol.h"
#include "test/s3testausproxyprivate.h"

#include "assertion.h"

#include <QTest>
#include <QThread>

#include <atomic>
#include <thread>
#include <type_traits>
#include <vector>

using namespace Qt::Literals::StringLiterals;

class SilentEvent : public s3CustomEventBase<SilentEvent>
{
};

class TalkingEvent : public s3CustomEventBase<TalkingEvent>
{
public:
    explicit TalkingEvent(QString arguments)
        : m_arguments(std::move(arguments))
    {
    }
    [[nodiscard]] QString formatted() const override { return m_arguments; }

private:
    QString m_arguments;
};

namespace space {

class NestedEvent : public s3CustomEventBase<NestedEvent>
{
};

} // namespace space

class ContestedEvent : public s3CustomEventBase<ContestedEvent>
{
};

class TracedEvent : public s3CustomEventBase<TracedEvent>
{
};

class tst_s3QEventProtocol : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void typeBelongsToTheClass();
    void typeIsThatOfTheEvent();
    void nameWithTheWordClass_data();
    void nameWithTheWordClass();
    void typeIsGivenOnceForAllThreads();
    void typeIsTracedOnceWithFlag404();
    void registeredTypesBetween1000And65535_data();
    void registeredTypesBetween1000And65535();
    void eventName_data();
    void eventName();
    void typeWithoutNameIsDecimal();
    void objectText();
    void objectTextInAnotherThread();
    void noObject();
    void builtInEventHasNoArguments();
    void customEventGivesNoText();
    void customEventTakenOutOfTheIgnored();
    void customEventWithoutArguments();
    void builtInEventCanBeIgnored();
    void typeOfQtsThatIsNotFormattable();
};

static_assert(std::is_base_of_v<QEvent, SilentEvent>);
static_assert(std::is_base_of_v<s3IFormattable, SilentEvent>);
static_assert(std::has_virtual_destructor_v<s3IFormattable>);

namespace {

QString addressOf(const void *pointer)
{
    return u"0x"_s + QString::number(quintptr(pointer), 16).rightJustified(16, u'0');
}

const QString line = QString(120, u'-');

QStringList written;

} // namespace

void tst_s3QEventProtocol::typeBelongsToTheClass()
{
    QCOMPARE(SilentEvent::type(), SilentEvent::type());
    QVERIFY(SilentEvent::type() != TalkingEvent::type());
    QVERIFY(SilentEvent::type() >= QEvent::User && SilentEvent::type() <= QEvent::MaxUser);
}

void tst_s3QEventProtocol::typeIsThatOfTheEvent()
{
    const SilentEvent event;
    const QEvent &base = event;
    QCOMPARE(qint32(base.type()), SilentEvent::type());
}

void tst_s3QEventProtocol::nameWithTheWordClass_data()
{
    QTest::addColumn<qint32>("type");
    QTest::addColumn<QString>("name");
    QTest::newRow("flush event") << s3TestausProxyPrivatFlushEvent::type() << u"class s3TestausProxyPrivatFlushEvent"_s;
    QTest::newRow("in a namespace") << space::NestedEvent::type() << u"class space::NestedEvent"_s;
}

void tst_s3QEventProtocol::nameWithTheWordClass()
{
    QFETCH(const qint32, type);
    QTEST(s3QEventProtocol::eventName(type), "name");
}

void tst_s3QEventProtocol::typeIsGivenOnceForAllThreads()
{
    std::vector<std::thread> threads;
    threads.reserve(8);
    std::vector<qint32> types(8);
    std::atomic<int> ready = 0;
    for (qint32 &type : types) {
        threads.emplace_back([&type, &ready] {
            for (++ready; ready < 8;) {
            }
            type = ContestedEvent::type();
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    for (const qint32 type : types)
        QCOMPARE(type, ContestedEvent::type());
}

void tst_s3QEventProtocol::typeIsTracedOnceWithFlag404()
{
    s3TestFlagsGUI::instance()->insert(404);
    s3TestausProxy::instance()->setCallback([](const QString &text, bool) { written.append(text); });
    const qint32 type = TracedEvent::type();
    QCOMPARE(TracedEvent::type(), type);
    s3TestausProxy::instance()->setCallback(nullptr);
    s3TestFlagsGUI::instance()->remove(404);
    QCOMPARE(written, QStringList{u"s3CustomEventBase<class TracedEvent>::type() = %1"_s.arg(type)});
}

void tst_s3QEventProtocol::registeredTypesBetween1000And65535_data()
{
    QTest::addColumn<qint32>("type");
    QTest::addColumn<bool>("fails");
    QTest::newRow("999") << 999 << true;
    QTest::newRow("1000") << 1000 << false;
    QTest::newRow("65535") << 65535 << false;
    QTest::newRow("65536") << 65536 << true;
    QTest::newRow("-1, as when there is no number left") << -1 << true;
}

void tst_s3QEventProtocol::registeredTypesBetween1000And65535()
{
    QFETCH(const qint32, type);
    QFETCH(const bool, fails);
    const QHash<qint32, QString> before = s3QEventProtocol::customEventNames();
    const QString text = failedAssertion([type] { s3QEventProtocol::registerCustomEvent(type, u"class A"_s); });
    if (fails) {
        QVERIFY(isAssertion(text, u"type >= QEvent::User && type <= QEvent::MaxUser"_s,
                            u"libraries/core/src/protocol/s3qeventprotocol"_s, 125,
                            u"s3QEventProtocol::registerCustomEvent"_s));
        QVERIFY(!s3QEventProtocol::customEventNames().contains(type));
    } else {
        QCOMPARE(text, QString());
        QCOMPARE(s3QEventProtocol::eventName(type), u"class A"_s);
    }
    s3QEventProtocol::customEventNames() = before;
}

void tst_s3QEventProtocol::eventName_data()
{
    QTest::addColumn<qint32>("type");
    QTest::addColumn<QString>("name");
    QTest::newRow("none") << 0 << u"None"_s;
    QTest::newRow("built in") << qint32(QEvent::KeyPress) << u"KeyPress"_s;
    QTest::newRow("no such key") << 999 << u"999"_s;
    QTest::newRow("negative") << -5 << u"-5"_s;
    QTest::newRow("nothing is registered for User") << 1000 << u"1000"_s;
    QTest::newRow("nor for MaxUser and above") << 65536 << u"65536"_s;
}

void tst_s3QEventProtocol::eventName()
{
    QFETCH(const qint32, type);
    QTEST(s3QEventProtocol::eventName(type), "name");
}

void tst_s3QEventProtocol::typeWithoutNameIsDecimal()
{
    const int type = QEvent::registerEventType();
    QCOMPARE(s3QEventProtocol::eventName(type), QString::number(type));
}

void tst_s3QEventProtocol::objectText()
{
    setObjectName(u"the %1 object"_s);
    QCOMPARE(s3QEventProtocol::objectText(this),
             u"tst_s3QEventProtocol(this="_s + addressOf(this) + u", thread=main      , name=the %1 object)"_s);
    setObjectName(QString());
    QVERIFY(s3QEventProtocol::objectText(this).endsWith(u", name=)"_s));
}

void tst_s3QEventProtocol::objectTextInAnotherThread()
{
    QThread thread;
    QObject object;
    object.moveToThread(&thread);
    QCOMPARE(s3QEventProtocol::objectText(&object),
             u"QObject(this="_s + addressOf(&object) + u", thread="_s + addressOf(&thread) + u", name=)"_s);
}

void tst_s3QEventProtocol::noObject()
{
    QCOMPARE(s3QEventProtocol::objectText(nullptr), QString());
    const QEvent event(QEvent::Close);
    QCOMPARE(s3QEventProtocol::eventText(nullptr, &event), u"QEVENT : Close\nQOBJECT: \n"_s + line);
}

void tst_s3QEventProtocol::builtInEventHasNoArguments()
{
    const QEvent event(QEvent::Close);
    QCOMPARE(s3QEventProtocol::eventText(this, &event),
             u"QEVENT : Close\nQOBJECT: "_s + s3QEventProtocol::objectText(this) + u'\n' + line);
}

void tst_s3QEventProtocol::customEventGivesNoText()
{
    const TalkingEvent event(u"a=1"_s);
    QCOMPARE(s3QEventProtocol::eventText(this, &event), QString());
}

void tst_s3QEventProtocol::customEventTakenOutOfTheIgnored()
{
    const TalkingEvent event(u"a=1"_s);
    QVERIFY(s3QEventProtocol::ignoredEvents().remove(TalkingEvent::type()));
    QCOMPARE(s3QEventProtocol::eventText(this, &event), u"QEVENT : class TalkingEvent\nQOBJECT: "_s +
                                                            s3QEventProtocol::objectText(this) + u"\nARGS   : a=1\n"_s +
                                                            line);
    s3QEventProtocol::ignoreEvent(TalkingEvent::type());
    QCOMPARE(s3QEventProtocol::eventText(this, &event), QString());
}

void tst_s3QEventProtocol::customEventWithoutArguments()
{
    const SilentEvent event;
    QVERIFY(s3QEventProtocol::ignoredEvents().remove(SilentEvent::type()));
    QCOMPARE(s3QEventProtocol::eventText(nullptr, &event), u"QEVENT : class SilentEvent\nQOBJECT: \n"_s + line);
    s3QEventProtocol::ignoreEvent(SilentEvent::type());
}

void tst_s3QEventProtocol::builtInEventCanBeIgnored()
{
    s3QEventProtocol::ignoreEvent(QEvent::Timer);
    const QEvent event(QEvent::Timer);
    QCOMPARE(s3QEventProtocol::eventText(this, &event), QString());
}

void tst_s3QEventProtocol::typeOfQtsThatIsNotFormattable()
{
    const auto type = QEvent::Type(QEvent::registerEventType());
    const QEvent event(type);
    QCOMPARE(s3QEventProtocol::eventText(nullptr, &event), u"QEVENT : %1\nQOBJECT: \n"_s.arg(int(type)) + line);
}

QTEST_GUILESS_MAIN(tst_s3QEventProtocol)
#include "tst_s3qeventprotocol.moc"
