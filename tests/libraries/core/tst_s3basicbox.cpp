#include "boxwatcher.h"
#include "s3basicbox.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

class tst_s3BasicBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void entryPoints_data();
    void entryPoints();
    void givenTitleIsNotReplaced();
};

void tst_s3BasicBox::entryPoints_data()
{
    using EntryPoint = int (*)(const QString &);
    QTest::addColumn<EntryPoint>("show");
    QTest::addColumn<QMessageBox::Icon>("icon");

    QTest::newRow("critical") << EntryPoint(&s3BasicBox::critical) << QMessageBox::Critical;
    QTest::newRow("warning") << EntryPoint(&s3BasicBox::warning) << QMessageBox::Warning;
    QTest::newRow("information") << EntryPoint(&s3BasicBox::information) << QMessageBox::Information;
}

void tst_s3BasicBox::entryPoints()
{
    using EntryPoint = int (*)(const QString &);
    QFETCH(const EntryPoint, show);

    const BoxWatcher watcher;
    QCOMPARE(show(u"text"_s), int(QMessageBox::Ok));
    QCOMPARE(watcher.boxes().size(), 1);
    const BoxWatcher::Box &box = watcher.boxes().first();
    QTEST(box.icon, "icon");
    QCOMPARE(box.title, u"Vexa"_s);
    QCOMPARE(box.text, u"text"_s);
    QCOMPARE(box.buttons, QMessageBox::Ok);
    QVERIFY(!box.hasParent);
}

void tst_s3BasicBox::givenTitleIsNotReplaced()
{
    const BoxWatcher watcher;
    s3BasicBox::show(QMessageBox::Warning, u"Own title"_s, u"text"_s, QMessageBox::Ok, QMessageBox::NoButton);
    QCOMPARE(watcher.boxes().size(), 1);
    QCOMPARE(watcher.boxes().first().title, u"Own title"_s);
}

QTEST_MAIN(tst_s3BasicBox)
#include "tst_s3basicbox.moc"
