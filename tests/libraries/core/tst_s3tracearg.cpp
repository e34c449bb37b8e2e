#include "s3tracearg.h"

#include <QColor>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QStandardItemModel>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

struct NoText
{
    int value = 0;
};

} // namespace

Q_DECLARE_METATYPE(NoText)

class tst_s3TraceArg : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void value_data();
    void value();
    void typesOfTheCallersTakeTheValueForm();
    void pointer_data();
    void pointer();
};

void tst_s3TraceArg::value_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("text");

    const QStandardItemModel model(3, 3);
    const auto row = [](const char *name, const QVariant &value, const QString &text) {
        QTest::newRow(name) << QVariant::fromValue(value) << text;
    };
    row("text", u"abc"_s, uR"( x="abc")"_s);
    row("empty text", QString(), uR"( x="")"_s);
    row("line ends and tabs", u"a\r\nb\tc"_s, uR"( x="a\nb\tc")"_s);
    row("lone carriage return disappears", u"a\rb"_s, uR"( x="ab")"_s);
    row("quotation mark isn't escaped", u"a\"b\\"_s, uR"( x="a"b\")"_s);
    row("placeholders in the text", u"%1 %2"_s, uR"( x="%1 %2")"_s);
    row("character", QChar(u'c'), u" x='c'"_s);
    row("character that is a line feed", QChar(u'\n'), u" x='\n'"_s);
    row("list", QStringList{u"a"_s, u"b"_s}, uR"( x={ "a", "b" })"_s);
    row("line end in a list stays", QStringList{u"a\n"_s}, u" x={ \"a\n\" }"_s);
    row("empty list", QStringList(), u" x={ }"_s);
    row("point", QPoint(1, -2), u" x=(1, -2)"_s);
    row("size", QSize(3, 4), u" x=(3 x 4)"_s);
    row("rectangle", QRect(0, 0, 10, 20), u" x=((0, 0), (9, 19), (10 x 20))"_s);
    row("model index", model.index(1, 2), u" x=(1, 2)"_s);
    row("no model index", QModelIndex(), u" x=(-1, -1)"_s);
    row("colour", QColor(255, 0, 0, 128), u" x=#ff0000, 0x80"_s);
    row("true", true, u" x=true"_s);
    row("false", false, u" x=false"_s);
    row("number", -640, u" x=-640"_s);
    row("unsigned", 4294967295U, u" x=4294967295"_s);
    row("64 bits", quint64(18446744073709551615U), u" x=18446744073709551615"_s);
    row("fraction", 1.5, u" x=1.5"_s);
    row("bytes", "ab\t"_ba, u" x=ab\t"_s);
    row("no value", QVariant(), u" x="_s);
    row("no text for it", QVariant::fromValue(NoText{1}), u" x="_s);
}

void tst_s3TraceArg::value()
{
    QFETCH(const QVariant, value);
    QTEST(s3TraceArg(u"x"_s, value), "text");
}

void tst_s3TraceArg::typesOfTheCallersTakeTheValueForm()
{
    QCOMPARE(s3TraceArg(u"result"_s, true), u" result=true"_s);
    QCOMPARE(s3TraceArg(u"path"_s, u"C:/x"_s), u" path=\"C:/x\""_s);
    QCOMPARE(s3TraceArg(u"minimumWidth"_s, 640), u" minimumWidth=640"_s);
    QCOMPARE(s3TraceArg(u"colour"_s, QColor(0, 0, 0, 0)), u" colour="_s);
    QCOMPARE(s3TraceArg(u"%2"_s, u"%1"_s), u" %2=\"%1\""_s);
    QCOMPARE(s3TraceArg(QString(), QPoint()), u" =(0, 0)"_s);
}

void tst_s3TraceArg::pointer_data()
{
    QTest::addColumn<quint64>("address");
    QTest::addColumn<QString>("text");

    QTest::newRow("null") << quint64(0) << u" p=nullptr"_s;
    QTest::newRow("fits into 32 bits") << quint64(0x1000) << u" p=0x00001000"_s;
    QTest::newRow("the last that does") << quint64(0xffffffff) << u" p=0xffffffff"_s;
    QTest::newRow("more than 32 bits") << quint64(0x100000000) << u" p=0x0000000100000000"_s;
    QTest::newRow("all bits") << quint64(0xfedcba9876543210) << u" p=0xfedcba9876543210"_s;
}

void tst_s3TraceArg::pointer()
{
    if constexpr (sizeof(void *) < sizeof(quint64))
        QSKIP("Addresses have 32 bits here");
    QFETCH(const quint64, address);
    // NOLINTNEXTLINE(performance-no-int-to-ptr): it is never followed
    QTEST(s3TraceArg(u"p"_s, reinterpret_cast<const void *>(quintptr(address))), "text");
}

QTEST_APPLESS_MAIN(tst_s3TraceArg)
#include "tst_s3tracearg.moc"
