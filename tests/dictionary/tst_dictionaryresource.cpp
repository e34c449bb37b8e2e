#include <QFile>
#include <QTest>

#include <cstring>

using namespace Qt::Literals::StringLiterals;

class TestDictionaryResource : public QObject
{
    Q_OBJECT

private slots:
    void isMapped()
    {
        QFile resource(u":/dictionary/mng.dat.0"_s);
        QVERIFY(resource.open(QIODevice::ReadOnly));
        const qint64 size = resource.size();
        const uchar *const mapped = resource.map(0, size);
        QVERIFY(mapped != nullptr);
        QFile file(QStringLiteral(LETTERLIFT_DATA) + u"/mng.dat.0"_s);
        QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.errorString()));
        QCOMPARE(QByteArray(reinterpret_cast<const char *>(mapped), size), file.readAll());
        resource.close();
        QVERIFY2(std::memcmp(mapped, "004", 3) == 0, "The mapping has to outlive the closing.");
    }
};

QTEST_GUILESS_MAIN(TestDictionaryResource)
#include "tst_dictionaryresource.moc"
