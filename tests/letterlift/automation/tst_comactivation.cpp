// How the COM client gets at a server, when that isn't there.

#include "automation/automation.h"
#include "automation/automationobject.h"

#include <QElapsedTimer>
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
    void expectNullObject();

    QSettings m_classes{u"HKEY_LOCAL_MACHINE\\Software\\Classes"_s, QSettings::NativeFormat};
    const QString m_progId = u"Letterlift.ActivationTest"_s;
    const QString m_classId = u"{6B2E3E9C-9C0E-4E0B-8E51-0B6D2B6F9A11}"_s;
};

void tst_ComActivation::cleanup()
{
    m_classes.remove(m_progId);
    m_classes.remove(u"CLSID/"_s + m_classId);
    m_classes.sync();
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
    m_classes.setValue(m_progId + u"/."_s, u"Test"_s);
    m_classes.sync();
    expectNullObject();
}

void tst_ComActivation::classThatIsNotRegistered()
{
    m_classes.setValue(m_progId + u"/CLSID/."_s, m_classId);
    m_classes.sync();
    expectNullObject();
}

void tst_ComActivation::serverWhoseFileIsMissing()
{
    m_classes.setValue(m_progId + u"/CLSID/."_s, m_classId);
    m_classes.setValue(u"CLSID/%1/LocalServer32/."_s.arg(m_classId), u"\"C:\\no\\such\\server.exe\""_s);
    m_classes.sync();
    if (m_classes.status() != QSettings::NoError)
        QSKIP("The machine's classes can't be written: the test needs an administrator");
    expectNullObject();
}

QTEST_GUILESS_MAIN(tst_ComActivation)
#include "tst_comactivation.moc"
