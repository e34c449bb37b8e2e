#include "coreutil.h"
#include "systemerror.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

class tst_CoreUtil : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void errorTextIsTheSystems();
    void lastErrorHasItsCodeBehindTheText();
    void codeWithoutTextStandsAlone();
    void codeIsUnsigned();
};

void tst_CoreUtil::errorTextIsTheSystems()
{
    // The code for a missing file on each system.
    QVERIFY(!s3ErrorText(2).isEmpty());
    QVERIFY(s3ErrorText(2) != s3ErrorText(5));
#ifndef Q_OS_WIN // the words there depend on the system's language
    QCOMPARE(s3ErrorText(2), u"No such file or directory"_s);
#endif
}

void tst_CoreUtil::lastErrorHasItsCodeBehindTheText()
{
    setSystemError(5);
    QCOMPARE(s3LastErrorText(), s3ErrorText(5) + u" (5)"_s);
}

void tst_CoreUtil::codeWithoutTextStandsAlone()
{
    if (!s3ErrorText(0).isEmpty())
        QSKIP("This system has a text for each code");
    setSystemError(0);
    QCOMPARE(s3LastErrorText(), u"(0)"_s);
}

void tst_CoreUtil::codeIsUnsigned()
{
    setSystemError(3'221'225'477U);
    QVERIFY(s3LastErrorText().endsWith(u" (3221225477)"_s));
}

QTEST_APPLESS_MAIN(tst_CoreUtil)
#include "tst_coreutil.moc"
