// How Qt's values and those of MessageBoxW become each other. The trace lines end here: this program has a writer of
// its own in place of the library's.

#include "s3basicboxwin.h"
#include "s3language.h"
#include "s3trace.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

QStringList lines;

} // namespace

void s3WriteTrace(const QString &line)
{
    lines += line;
}

class tst_s3BasicBoxWin : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void iconAndButtons_data();
    void iconAndButtons();
    void defaultButton_data();
    void defaultButton();
    void rightToLeftLanguage();
    void boxTypeIsTracedInDecimalDigits();
    void result2Button_data();
    void result2Button();
    void buttonIsTracedByItsName_data();
    void buttonIsTracedByItsName();
    void nothingIsTracedWithoutTheFlag();
};

void tst_s3BasicBoxWin::cleanup()
{
    s3TestFlagsGUI::instance()->clear();
    lines.clear();
}

void tst_s3BasicBoxWin::iconAndButtons_data()
{
    QTest::addColumn<QMessageBox::Icon>("type");
    QTest::addColumn<QMessageBox::StandardButtons>("buttons");
    QTest::addColumn<quint32>("flags");

    const struct
    {
        const char *name;
        QMessageBox::Icon type;
        quint32 flag;
    } icons[] = {{"critical", QMessageBox::Critical, 0x10},
                 {"warning", QMessageBox::Warning, 0x30},
                 {"information", QMessageBox::Information, 0x40},
                 {"question", QMessageBox::Question, 0x20},
                 {"no icon", QMessageBox::NoIcon, 0},
                 {"unknown icon", QMessageBox::Icon(7), 0}};
    const struct
    {
        const char *name;
        QMessageBox::StandardButtons buttons;
        quint32 flag;
    } masks[] = {{"Ok", QMessageBox::Ok, 0},
                 {"Ok, Cancel", QMessageBox::Ok | QMessageBox::Cancel, 1},
                 {"Yes, No", QMessageBox::Yes | QMessageBox::No, 4},
                 {"Yes, No, Cancel", QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, 3},
                 {"none", QMessageBox::NoButton, 0},
                 {"Yes alone", QMessageBox::Yes, 0},
                 {"Cancel alone", QMessageBox::Cancel, 0},
                 {"Ok, Cancel, Help", QMessageBox::Ok | QMessageBox::Cancel | QMessageBox::Help, 0}};
    for (const auto &icon : icons) {
        for (const auto &mask : masks)
            QTest::addRow("%s: %s", icon.name, mask.name)
                << icon.type << mask.buttons << (0x40000u | icon.flag | mask.flag);
    }
}

void tst_s3BasicBoxWin::iconAndButtons()
{
    QFETCH(const QMessageBox::Icon, type);
    QFETCH(const QMessageBox::StandardButtons, buttons);
    QTEST(s3BasicBoxWin::boxType(type, buttons, QMessageBox::NoButton), "flags");
}

void tst_s3BasicBoxWin::defaultButton_data()
{
    QTest::addColumn<QMessageBox::StandardButtons>("buttons");
    QTest::addColumn<QMessageBox::StandardButton>("button");
    QTest::addColumn<quint32>("flags");

    const QMessageBox::StandardButtons okCancel = QMessageBox::Ok | QMessageBox::Cancel;
    const QMessageBox::StandardButtons yesNo = QMessageBox::Yes | QMessageBox::No;
    const QMessageBox::StandardButtons yesNoCancel = yesNo | QMessageBox::Cancel;
    QTest::newRow("Yes, No, Cancel: none") << yesNoCancel << QMessageBox::NoButton << 0x40003u;
    QTest::newRow("Yes, No, Cancel: Yes") << yesNoCancel << QMessageBox::Yes << 0x40003u;
    QTest::newRow("Yes, No, Cancel: No") << yesNoCancel << QMessageBox::No << 0x40103u;
    QTest::newRow("Yes, No, Cancel: Cancel") << yesNoCancel << QMessageBox::Cancel << 0x40203u;
    QTest::newRow("Yes, No, Cancel: Ok isn't there") << yesNoCancel << QMessageBox::Ok << 0x40003u;
    QTest::newRow("Ok, Cancel: Ok") << okCancel << QMessageBox::Ok << 0x40001u;
    QTest::newRow("Ok, Cancel: Cancel") << okCancel << QMessageBox::Cancel << 0x40101u;
    QTest::newRow("Ok, Cancel: No isn't there") << okCancel << QMessageBox::No << 0x40001u;
    QTest::newRow("Yes, No: No") << yesNo << QMessageBox::No << 0x40104u;
    QTest::newRow("Yes, No: Cancel isn't there") << yesNo << QMessageBox::Cancel << 0x40004u;
    QTest::newRow("Ok: Ok") << QMessageBox::StandardButtons(QMessageBox::Ok) << QMessageBox::Ok << 0x40000u;
    // Masks that the system doesn't have still give a default.
    QTest::newRow("Ok, No: No") << (QMessageBox::Ok | QMessageBox::No) << QMessageBox::No << 0x40100u;
    QTest::newRow("Cancel: Cancel") << QMessageBox::StandardButtons(QMessageBox::Cancel) << QMessageBox::Cancel
                                    << 0x40200u;
}

void tst_s3BasicBoxWin::defaultButton()
{
    QFETCH(const QMessageBox::StandardButtons, buttons);
    QFETCH(const QMessageBox::StandardButton, button);
    QTEST(s3BasicBoxWin::boxType(QMessageBox::NoIcon, buttons, button), "flags");
}

void tst_s3BasicBoxWin::rightToLeftLanguage()
{
    QVERIFY(!isRightToLeft());
    s3TestFlagsGUI::instance()->insert(229);
    QVERIFY(isRightToLeft());
    QCOMPARE(s3BasicBoxWin::boxType(QMessageBox::Critical, QMessageBox::Yes | QMessageBox::No, QMessageBox::No),
             0x140114u);
}

void tst_s3BasicBoxWin::boxTypeIsTracedInDecimalDigits()
{
    s3TestFlagsGUI::instance()->insert(334);
    QCOMPARE(s3BasicBoxWin::boxType(QMessageBox::Warning, QMessageBox::Ok, QMessageBox::NoButton), 262192u);
    QCOMPARE(lines, QStringList{u"s3BasicBoxWin::boxType() type=262192"_s});
}

void tst_s3BasicBoxWin::result2Button_data()
{
    QTest::addColumn<int>("result");
    QTest::addColumn<int>("button");

    QTest::newRow("IDOK") << 1 << 0x400;
    QTest::newRow("IDCANCEL") << 2 << 0x400000;
    QTest::newRow("IDYES") << 6 << 0x4000;
    QTest::newRow("IDNO") << 7 << 0x10000;
    QTest::newRow("no box") << 0 << 0;
    QTest::newRow("IDABORT") << 3 << 0;
    QTest::newRow("IDTIMEOUT") << 32000 << 0;
    QTest::newRow("below") << -1 << 0;
}

void tst_s3BasicBoxWin::result2Button()
{
    QFETCH(const int, result);
    QTEST(int(s3BasicBoxWin::result2Button(result)), "button");
}

void tst_s3BasicBoxWin::buttonIsTracedByItsName_data()
{
    QTest::addColumn<int>("result");
    QTest::addColumn<QString>("name");
    QTest::newRow("Ok") << 1 << u"Ok"_s;
    QTest::newRow("Cancel") << 2 << u"Cancel"_s;
    QTest::newRow("Yes") << 6 << u"Yes"_s;
    QTest::newRow("No") << 7 << u"No"_s;
    QTest::newRow("outside the table") << 3 << u"NoButton"_s;
}

void tst_s3BasicBoxWin::buttonIsTracedByItsName()
{
    QFETCH(const int, result);
    QFETCH(const QString, name);
    s3TestFlagsGUI::instance()->insert(334);
    static_cast<void>(s3BasicBoxWin::result2Button(result));
    QCOMPARE(lines, QStringList{u"s3BasicBoxWin::result2Button() button="_s + name});
    const QMetaType type = QMetaType::fromName("QMessageBox::StandardButton");
    QVERIFY(type.isValid());
    QCOMPARE(type, QMetaType::fromType<QMessageBox::StandardButton>());
}

void tst_s3BasicBoxWin::nothingIsTracedWithoutTheFlag()
{
    static_cast<void>(s3BasicBoxWin::boxType(QMessageBox::Warning, QMessageBox::Ok, QMessageBox::NoButton));
    static_cast<void>(s3BasicBoxWin::result2Button(1));
    QCOMPARE(lines, QStringList());
}

QTEST_GUILESS_MAIN(tst_s3BasicBoxWin)
#include "tst_s3basicboxwin.moc"
