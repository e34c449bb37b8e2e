#include "s3assert.h"

#include "assertion.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <QTest>

#include <cstring>
#include <type_traits>

using namespace Qt::Literals::StringLiterals;

class tst_s3Assert : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void flag191Throws_data();
    void flag191Throws();
    void withoutTheFlagTheProcessEndsWithAllPieces();
    void assertionThatHolds();
    void messageIsMadeOnlyForAFailure();
    void exceptionIsCopiedWithItsBytes();
};

static_assert(std::is_base_of_v<std::exception, s3Exception>);
static_assert(std::has_virtual_destructor_v<s3Exception>);

void tst_s3Assert::flag191Throws_data()
{
    QTest::addColumn<QByteArray>("condition");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QByteArray>("function");
    QTest::addColumn<QString>("text");

    QTest::newRow("empty message")
        << QByteArray("a > 0") << QString() << QByteArray("s3A::b")
        << u"\nBedingung nicht erfuellt\na > 0\nFehlernummer -1111: in x/y.cpp:7 in s3A::b()\n\n"_s;
    QTest::newRow("message")
        << QByteArray("a > 0") << u"Grund"_s << QByteArray("s3A::b")
        << u"\nBedingung nicht erfuellt\na > 0\nFehlernummer -1111: in x/y.cpp:7 in s3A::b()\nGrund\n"_s;
    QTest::newRow("no function") << QByteArray("a > 0") << u"Grund"_s << QByteArray()
                                 << u"\nBedingung nicht erfuellt\na > 0\nFehlernummer -1111: in x/y.cpp:7\nGrund\n"_s;
    QTest::newRow("condition false") << QByteArray("false") << u"Grund"_s << QByteArray("s3A::b")
                                     << u"\nFehlernummer -1111: in x/y.cpp:7 in s3A::b()\nGrund\n"_s;
    QTest::newRow("no condition") << QByteArray() << u"Grund"_s << QByteArray("s3A::b")
                                  << u"\nFehlernummer -1111: in x/y.cpp:7 in s3A::b()\nGrund\n"_s;
    QTest::newRow("placeholders and umlauts are taken as they are")
        << QByteArray("%1 \xC3\xA4") << u"%2"_s << QByteArray("%3")
        << u"\nBedingung nicht erfuellt\n%1 ä\nFehlernummer -1111: in x/y.cpp:7 in %3()\n%2\n"_s;
}

void tst_s3Assert::flag191Throws()
{
    QFETCH(const QByteArray, condition);
    QFETCH(const QString, message);
    QFETCH(const QByteArray, function);
    QTEST(failedAssertion(
              [&] { assertionFailed(1111, condition.constData(), message, "x/y.cpp", 7, function.constData()); }),
          "text");
}

void tst_s3Assert::withoutTheFlagTheProcessEndsWithAllPieces()
{
    QProcess process;
    // On Windows Qt's messages go to a debugger otherwise.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QT_FORCE_STDERR_LOGGING"_s, u"1"_s);
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(), {u"--fail"_s});
    QVERIFY(process.waitForFinished());
    QVERIFY(process.exitStatus() == QProcess::CrashExit || process.exitCode() != 0);
    const QByteArray output = process.readAllStandardError();
    for (const char *piece : {"a > 0", "Grund", "1111", "x/y.cpp", "47", "s3A::b"})
        QVERIFY2(output.contains(piece), output.constData());
    QVERIFY2(!output.contains("still here"), output.constData());
}

void tst_s3Assert::assertionThatHolds()
{
    QCOMPARE(failedAssertion([] { S3_ASSERT_AT(1 + 1 == 2, "1 + 1 == 2", u"x"_s, 1, "f"); }), QString());
}

void tst_s3Assert::messageIsMadeOnlyForAFailure()
{
    int made = 0;
    const auto message = [&made] {
        ++made;
        return u"m"_s;
    };
    const auto check = [&message](bool holds) {
        S3_ASSERT_AT(holds, "holds", message(), 5, "f");
    };
    check(true);
    QCOMPARE(made, 0);
    QVERIFY(isAssertion(failedAssertion([&check] { check(false); }), u"holds"_s, u"error/tst_s3assert"_s, 5, u"f"_s,
                        u"m"_s));
    QCOMPARE(made, 1);
}

void tst_s3Assert::exceptionIsCopiedWithItsBytes()
{
    const s3Exception exception(u"Größe"_s);
    const s3Exception copy(exception); // NOLINT(performance-unnecessary-copy-initialization): is what is tested
    QCOMPARE(QByteArray(copy.what()), "Größe"_ba);
}

int main(int argc, char *argv[])
{
    if (argc == 2 && std::strcmp(argv[1], "--fail") == 0) {
        assertionFailed(1111, "a > 0", u"Grund"_s, "x/y.cpp", 47, "s3A::b");
        qInfo("still here");
        return 0;
    }
    QCoreApplication application(argc, argv);
    tst_s3Assert test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_s3assert.moc"
