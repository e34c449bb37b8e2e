#include "automation/comvariant.h"

#include <QDateTime>
#include <QTest>

#include <oleauto.h>

#include <limits>

using namespace Qt::Literals::StringLiterals;

class tst_ComVariant : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thereAndBack_data();
    void thereAndBack();
    void leftOutArgument();
    void unknownTypeIsLeftOut();
    void fromServer_data();
    void fromServer();
    void textWithNullCharacter();
    void valuesByReference();
    void arrayIsNoValue();
};

namespace {

ComVariant made(VARTYPE type, const std::function<void(VARIANT &)> &fill = {})
{
    ComVariant variant;
    V_VT(variant.get()) = type;
    if (fill)
        fill(*variant.get());
    return variant;
}

} // namespace

void tst_ComVariant::thereAndBack_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("type");

    QTest::newRow("text") << QVariant(u"Größe \U0001F4E7"_s) << int(VT_BSTR);
    QTest::newRow("empty text") << QVariant(u""_s) << int(VT_BSTR);
    QTest::newRow("long text") << QVariant(QString(2'000'000, u'ä')) << int(VT_BSTR);
    QTest::newRow("true") << QVariant(true) << int(VT_BOOL);
    QTest::newRow("false") << QVariant(false) << int(VT_BOOL);
    QTest::newRow("integer") << QVariant(-7) << int(VT_I4);
    QTest::newRow("long integer") << QVariant(qlonglong(5'000'000'000)) << int(VT_I8);
    QTest::newRow("floating point") << QVariant(0.5) << int(VT_R8);
    QTest::newRow("date") << QVariant(QDateTime(QDate(2024, 2, 29), QTime(23, 59, 58))) << int(VT_DATE);
    QTest::newRow("date before 1900") << QVariant(QDateTime(QDate(1899, 12, 29), QTime(6, 0))) << int(VT_DATE);
}

void tst_ComVariant::thereAndBack()
{
    QFETCH(const QVariant, value);
    const ComVariant variant = toComVariant(value);
    QTEST(int(V_VT(&variant.value())), "type");
    QCOMPARE(fromComVariant(variant.value()), value);
}

void tst_ComVariant::leftOutArgument()
{
    const ComVariant variant = toComVariant(QVariant());
    QCOMPARE(V_VT(&variant.value()), VARTYPE(VT_ERROR));
    QCOMPARE(V_ERROR(&variant.value()), DISP_E_PARAMNOTFOUND);
}

void tst_ComVariant::unknownTypeIsLeftOut()
{
    QCOMPARE(V_VT(&toComVariant(QVariant::fromValue(QVariantMap())).value()), VARTYPE(VT_ERROR));
    QCOMPARE(V_VT(&toComVariant(QVariant::fromValue(QDateTime())).value()), VARTYPE(VT_ERROR));
}

void tst_ComVariant::fromServer_data()
{
    using Maker = std::function<ComVariant()>;
    QTest::addColumn<Maker>("make");
    QTest::addColumn<QVariant>("value");

    QTest::newRow("VT_EMPTY") << Maker([] { return made(VT_EMPTY); }) << QVariant();
    QTest::newRow("VT_NULL") << Maker([] { return made(VT_NULL); }) << QVariant();
    QTest::newRow("VT_ERROR") << Maker([] { return made(VT_ERROR, [](VARIANT &v) { V_ERROR(&v) = E_FAIL; }); })
                              << QVariant();
    QTest::newRow("null object") << Maker([] {
        return made(VT_DISPATCH, [](VARIANT &v) { V_DISPATCH(&v) = nullptr; });
    }) << QVariant();
    QTest::newRow("null text") << Maker([] { return made(VT_BSTR, [](VARIANT &v) { V_BSTR(&v) = nullptr; }); })
                               << QVariant(u""_s);
    QTest::newRow("VT_I1") << Maker([] { return made(VT_I1, [](VARIANT &v) { V_I1(&v) = -3; }); }) << QVariant(-3);
    QTest::newRow("VT_UI1") << Maker([] { return made(VT_UI1, [](VARIANT &v) { V_UI1(&v) = 200; }); }) << QVariant(200);
    QTest::newRow("VT_I2") << Maker([] { return made(VT_I2, [](VARIANT &v) { V_I2(&v) = -300; }); }) << QVariant(-300);
    QTest::newRow("VT_UI2") << Maker([] { return made(VT_UI2, [](VARIANT &v) { V_UI2(&v) = 60'000; }); })
                            << QVariant(60'000);
    QTest::newRow("VT_UI4") << Maker([] { return made(VT_UI4, [](VARIANT &v) { V_UI4(&v) = 7; }); }) << QVariant(7);
    QTest::newRow("VT_UI4 over 31 bits") << Maker([] {
        return made(VT_UI4, [](VARIANT &v) { V_UI4(&v) = 0xFFFFFFFF; });
    }) << QVariant(qlonglong(std::numeric_limits<quint32>::max()));
    QTest::newRow("VT_R4") << Maker([] { return made(VT_R4, [](VARIANT &v) { V_R4(&v) = 0.25F; }); }) << QVariant(0.25);
    QTest::newRow("VT_CY") << Maker([] { return made(VT_CY, [](VARIANT &v) { V_CY(&v).int64 = 12'500; }); })
                           << QVariant(1.25);
    QTest::newRow("any truth that isn't zero")
        << Maker([] { return made(VT_BOOL, [](VARIANT &v) { V_BOOL(&v) = 1; }); }) << QVariant(true);
}

void tst_ComVariant::fromServer()
{
    QFETCH(const std::function<ComVariant()>, make);
    const QVariant seen = fromComVariant(make().value());
    QTEST(seen, "value");
    QFETCH(const QVariant, value);
    QCOMPARE(seen.typeId(), value.typeId());
}

void tst_ComVariant::textWithNullCharacter()
{
    const QString text = u"a"_s + QChar(0) + u"b"_s;
    QCOMPARE(fromComVariant(toComVariant(text).value()), QVariant(text));
}

void tst_ComVariant::valuesByReference()
{
    LONG number = 42;
    VARIANT byReference;
    V_VT(&byReference) = VT_BYREF | VT_I4;
    V_I4REF(&byReference) = &number;
    QCOMPARE(fromComVariant(byReference), QVariant(42));

    ComVariant text = toComVariant(u"text"_s);
    V_VT(&byReference) = VT_BYREF | VT_VARIANT;
    V_VARIANTREF(&byReference) = text.get();
    QCOMPARE(fromComVariant(byReference), QVariant(u"text"_s));
}

void tst_ComVariant::arrayIsNoValue()
{
    ComVariant variant;
    V_VT(variant.get()) = VT_ARRAY | VT_I4;
    V_ARRAY(variant.get()) = SafeArrayCreateVector(VT_I4, 0, 3);
    QVERIFY(!fromComVariant(variant.value()).isValid());
}

QTEST_APPLESS_MAIN(tst_ComVariant)
#include "tst_comvariant.moc"
