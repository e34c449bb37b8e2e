// How a client of COM gets at a server, when that isn't there.

#include "automation/automation.h"
#include "automation/automationobject.h"

#include <QElapsedTimer>
#include <QHash>
#include <QSettings>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

class tst_ComActivation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void progIdThatIsNotRegistered();
    void progIdWithoutClass();
    void classThatIsNotRegistered();
    void serverWhoseFileIsMissing();

private:
    /// Writes the entries into the machine's classes. False if that isn't allowed.
    [[nodiscard]] bool registered(const QHash<QString, QString> &entries);
    void expectNullObject();

    QSettings m_classes{u"HKEY_LOCAL_MACHINE\\Software\\Classes"_s, QSettings::NativeFormat};
    const QString m_progId = u"Letterlift.ActivationTest"_s;
    const QString m_classId = u"{6B2E3E9C-9C0E-4E0B-8E51-0B6D2B6F9A11}"_s;
};

namespace {

constexpr auto notAllowed = "The machine's classes can't be written: the test needs an administrator";

} // namespace

void tst_ComActivation::cleanup()
{
    m_classes.remove(m_progId);
    m_classes.remove(u"CLSID/"_s + m_classId);
    m_classes.sync();
}

bool tst_ComActivation::registered(const QHash<QString, QString> &entries)
{
    for (auto entry = entries.cbegin(); entry != entries.cend(); ++entry)
        m_classes.setValue(entry.key(), entry.value());
    m_classes.sync();
    if (m_classes.status() != QSettings::NoError)
        return false;
    // What was written is there for others as well.
    const QSettings classes(m_classes.fileName(), QSettings::NativeFormat);
    for (auto entry = entries.cbegin(); entry != entries.cend(); ++entry) {
        if (classes.value(entry.key()) != entry.value())
            return false;
    }
    return true;
}

void tst_ComActivation::expectNullObject()
{
    const QString warning = u"QAxBase::setControl: requested control %1 could not be instantiated"_s.arg(m_progId);
    QTest::ignoreMessage(QtWarningMsg, qPrintable(warning));
    QElapsedTimer timer;
    timer.start();
    const std::unique_ptr<AutomationObject> object(createAutomationObject(m_progId, nullptr));
    QVERIFY(object->isNull());
    // Not a measurement: the system's own limit for a server that doesn't come is half a minute or more.
    QVERIFY(timer.elapsed() < 20'000);
}

void tst_ComActivation::progIdThatIsNotRegistered()
{
    expectNullObject();
}

void tst_ComActivation::progIdWithoutClass()
{
    if (!registered({{m_progId + u"/."_s, u"Test"_s}}))
        QSKIP(notAllowed);
    expectNullObject();
}

void tst_ComActivation::classThatIsNotRegistered()
{
    if (!registered({{m_progId + u"/CLSID/."_s, m_classId}}))
        QSKIP(notAllowed);
    expectNullObject();
}

void tst_ComActivation::serverWhoseFileIsMissing()
{
    const QString serverKey = u"CLSID/%1/LocalServer32/."_s.arg(m_classId);
    if (!registered({{m_progId + u"/CLSID/."_s, m_classId}, {serverKey, u"\"C:\\no\\such\\server.exe\""_s}}))
        QSKIP(notAllowed);
    expectNullObject();
}

QTEST_GUILESS_MAIN(tst_ComActivation)
#include "tst_comactivation.moc"
