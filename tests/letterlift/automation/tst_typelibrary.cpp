// What the stand-in tells clients of its objects is what the model does.

#include "simulation/outlookmodel.h"
#include "typelibrary.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

class tst_TypeLibrary : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void membersAreThoseOfTheModel_data();
    void membersAreThoseOfTheModel();
    void itemTypeIsAnEnumeration();
    void fileWithoutLibrary();

private:
    TypeLibrary m_library;
};

void tst_TypeLibrary::initTestCase()
{
    // The same resource as the stand-in's.
    QVERIFY(m_library.load(QCoreApplication::applicationFilePath()));
}

void tst_TypeLibrary::membersAreThoseOfTheModel_data()
{
    QTest::addColumn<ObjectKind>("kind");

    for (int kind = 0; kind < objectKindCount; ++kind)
        QTest::newRow(qPrintable(objectKindName(ObjectKind(kind)))) << ObjectKind(kind);
}

void tst_TypeLibrary::membersAreThoseOfTheModel()
{
    QFETCH(const ObjectKind, kind);
    const auto &described = m_library.type(kind).members;
    const QList<OutlookModel::MemberTraits> members = OutlookModel::members(kind);
    QCOMPARE(described.size(), members.size());
    for (const OutlookModel::MemberTraits &member : members) {
        const auto found = std::find_if(described.begin(), described.end(),
                                        [&member](const TypeMember &other) { return other.name == member.name; });
        QVERIFY2(found != described.end(), qPrintable(member.name));
        const bool isFunction = (found->invokeKinds & INVOKE_FUNC) != 0;
        const bool isReadable = isFunction || (found->invokeKinds & INVOKE_PROPERTYGET) != 0;
        const bool isWritable = (found->invokeKinds & (INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF)) != 0;
        QVERIFY2(isReadable == member.readable, qPrintable(member.name));
        QVERIFY2(isWritable == member.writable, qPrintable(member.name));
        QVERIFY2(found->argumentCount == member.argumentCount, qPrintable(member.name));
    }
}

void tst_TypeLibrary::itemTypeIsAnEnumeration()
{
    const auto &members = m_library.type(ObjectKind::Application).members;
    const auto createItem = std::find_if(members.begin(), members.end(),
                                         [](const TypeMember &member) { return member.name == u"CreateItem"_s; });
    QVERIFY(createItem != members.end());
    QVERIFY(createItem->givesObject);
    QCOMPARE(createItem->enumerationKeys.value(0), u"olMailItem"_s);
    QCOMPARE(createItem->enumerationKeys.value(6), u"olPostItem"_s);
}

void tst_TypeLibrary::fileWithoutLibrary()
{
    TypeLibrary library;
    QVERIFY(!library.load(u"C:/no/such/file.exe"_s));
}

QTEST_GUILESS_MAIN(tst_TypeLibrary)
#include "tst_typelibrary.moc"
