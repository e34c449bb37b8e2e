#include "s3dictionary.h"
#include "s3language.h"

#include <QLocale>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

class tst_s3Language : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void setLanguageSetsDefaultLocale();
    void unknownLetterChangesNothing();
    void translateGivesSourceTextBack();
};

void tst_s3Language::setLanguageSetsDefaultLocale()
{
    QLocale::setDefault(QLocale(u"de_DE"_s));
    QVERIFY(setLanguage(u"a"_s, u""_s));
    QCOMPARE(QLocale().name(), u"en_US"_s);
}

void tst_s3Language::unknownLetterChangesNothing()
{
    QLocale::setDefault(QLocale(u"de_DE"_s));
    QVERIFY(!setLanguage(u"?"_s, u""_s));
    QCOMPARE(QLocale().name(), u"de_DE"_s);
}

void tst_s3Language::translateGivesSourceTextBack()
{
    QCOMPARE(translate(u"Datei/Verzeichnis existiert nicht."_s), u"Datei/Verzeichnis existiert nicht."_s);
}

QTEST_GUILESS_MAIN(tst_s3Language)
#include "tst_s3language.moc"
