// The type information of a server in another process, as the COM client reads it. The server is the stand-in.

#include "automation/comapartment.h"
#include "automation/comenumeration.h"
#include "automation/comserver.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <oleauto.h>

using namespace Qt::Literals::StringLiterals;
using Microsoft::WRL::ComPtr;

class tst_ComTypeInformation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void countIsOne();
    void otherIndexIsRefused();
    void nameOfTheType();
    void enumerationThatOnlyTheServerKnows();
    void keyThatNobodyKnows();

private:
    QTemporaryDir m_directory;
    std::unique_ptr<ComApartment> m_apartment;
    ComPtr<IDispatch> m_application;
};

void tst_ComTypeInformation::initTestCase()
{
    qputenv("LETTERLIFT_OUTLOOK_STORE", QFile::encodeName(m_directory.filePath(u"store"_s)));
    qunsetenv("LETTERLIFT_OUTLOOK_SCENARIO");
    m_apartment = std::make_unique<ComApartment>();
    m_application = createComServer(u"Outlook.Application"_s);
    QVERIFY(m_application != nullptr);
}

void tst_ComTypeInformation::cleanupTestCase()
{
    m_application.Reset();
    m_apartment.reset();
}

void tst_ComTypeInformation::countIsOne()
{
    UINT count = 0;
    QCOMPARE(m_application->GetTypeInfoCount(&count), S_OK);
    QCOMPARE(count, 1U);
}

void tst_ComTypeInformation::otherIndexIsRefused()
{
    ComPtr<ITypeInfo> info;
    QCOMPARE(m_application->GetTypeInfo(1, LOCALE_USER_DEFAULT, info.GetAddressOf()), DISP_E_BADINDEX);
    QVERIFY(info == nullptr);
}

void tst_ComTypeInformation::nameOfTheType()
{
    ComPtr<ITypeInfo> info;
    QCOMPARE(m_application->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.GetAddressOf()), S_OK);
    QCOMPARE(comName(*info.Get()), u"_Application"_s);
}

void tst_ComTypeInformation::enumerationThatOnlyTheServerKnows()
{
    // The client itself has the numbers of OlItemType alone.
    QCOMPARE(enumerationValue(*m_application.Get(), u"OlImportance"_s, u"olImportanceHigh"_s), std::optional(2));
    QCOMPARE(enumerationValue(*m_application.Get(), u"OlBodyFormat"_s, u"olFormatRichText"_s), std::optional(3));
    QCOMPARE(enumerationValue(*m_application.Get(), u"OlItemType"_s, u"olPostItem"_s), std::optional(6));
}

void tst_ComTypeInformation::keyThatNobodyKnows()
{
    QCOMPARE(enumerationValue(*m_application.Get(), u"OlImportance"_s, u"olMailItem"_s), std::nullopt);
    QCOMPARE(enumerationValue(*m_application.Get(), u"OlNoSuchType"_s, u"olMailItem"_s), std::nullopt);
}

QTEST_GUILESS_MAIN(tst_ComTypeInformation)
#include "tst_comtypeinformation.moc"
