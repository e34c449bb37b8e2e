#include "simulation/mailmessage.h"
#include "simulation/outlookstore.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

class tst_OutlookStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void openMakesTheFolders();
    void openFails();
    void journalIsWrittenAtOnce();
    void journalStartsEmpty();
    void twoProgramsMixTheirLines();
    void fullJournalIsWarnedOfOnce();
    void draftIsWrittenAndReplaced();
    void draftIsRemoved();
    void sentMailsAreNumbered();
    void takenNumbersArePassedOver();
    void unwritableDraftIsWarnedOf();
    void readFile();

private:
    [[nodiscard]] QStringList filesIn(const QString &folder) const;
    [[nodiscard]] QByteArray read(const QString &name) const;

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<OutlookStore> m_store;
};

void tst_OutlookStore::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_store = std::make_unique<OutlookStore>(m_directory->filePath(u"deep/store"_s));
    QString errorText;
    QVERIFY2(m_store->open(errorText), qPrintable(errorText));
}

QStringList tst_OutlookStore::filesIn(const QString &folder) const
{
    return QDir(m_directory->filePath(u"deep/store/"_s + folder)).entryList(QDir::Files);
}

QByteArray tst_OutlookStore::read(const QString &name) const
{
    QFile file(m_directory->filePath(u"deep/store/"_s + name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

void tst_OutlookStore::openMakesTheFolders()
{
    QVERIFY(QDir(m_directory->filePath(u"deep/store/drafts"_s)).exists());
    QVERIFY(QDir(m_directory->filePath(u"deep/store/sent"_s)).exists());
    QCOMPARE(read(u"journal.jsonl"_s), "");
}

void tst_OutlookStore::openFails()
{
    const QString path = m_directory->filePath(u"deep/store/journal.jsonl/x"_s);
    OutlookStore store(path);
    QString errorText;
    QVERIFY(!store.open(errorText));
    QVERIFY2(errorText.contains(path), qPrintable(errorText));
}

void tst_OutlookStore::journalIsWrittenAtOnce()
{
    m_store->record({{ObjectKind::Session, 1}, Operation::Release, {}, {}, {}, {}});
    QCOMPARE(read(u"journal.jsonl"_s), "{\"object\":\"Session#1\",\"operation\":\"release\"}\n");
}

void tst_OutlookStore::journalStartsEmpty()
{
    m_store->record({{ObjectKind::Session, 1}, Operation::Release, {}, {}, {}, {}});
    OutlookStore next(m_directory->filePath(u"deep/store"_s));
    QString errorText;
    QVERIFY(next.open(errorText));
    QCOMPARE(read(u"journal.jsonl"_s), "");
}

void tst_OutlookStore::twoProgramsMixTheirLines()
{
    OutlookStore other(m_directory->filePath(u"deep/store"_s));
    QString errorText;
    QVERIFY(other.open(errorText));
    for (int i = 1; i <= 10; ++i) {
        m_store->record({{ObjectKind::Session, i}, Operation::Release, {}, {}, {}, {}});
        other.record({{ObjectKind::MailItem, i}, Operation::Release, {}, {}, {}, {}});
    }
    const QList<QByteArray> lines = read(u"journal.jsonl"_s).split('\n');
    QCOMPARE(lines.size(), 20 + 1);
    QCOMPARE(lines.at(18), R"({"object":"Session#10","operation":"release"})");
}

void tst_OutlookStore::fullJournalIsWarnedOfOnce()
{
    if (!QFile::exists(u"/dev/full"_s))
        QSKIP("There is no device here that is always full");
    const QString path = m_directory->filePath(u"deep/store/journal.jsonl"_s);
    QVERIFY(QFile::remove(path));
    QVERIFY(QFile::link(u"/dev/full"_s, path));
    OutlookStore store(m_directory->filePath(u"deep/store"_s));
    QString errorText;
    QVERIFY2(store.open(errorText), qPrintable(errorText));
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(u"^Simulated Outlook: .*journal\\.jsonl can't be written: "_s));
    store.record({{ObjectKind::Session, 1}, Operation::Release, {}, {}, {}, {}});
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    store.record({{ObjectKind::Session, 1}, Operation::Release, {}, {}, {}, {}});
}

void tst_OutlookStore::draftIsWrittenAndReplaced()
{
    MailMessage message;
    message.draft = true;
    message.subject = u"first"_s;
    m_store->saveDraft(1, message);
    message.subject = u"second"_s;
    m_store->saveDraft(1, message);
    QCOMPARE(filesIn(u"drafts"_s), QStringList{u"0001.eml"_s});
    QVERIFY(read(u"drafts/0001.eml"_s).contains("Subject: second\r\n"));
    QVERIFY(!read(u"drafts/0001.eml"_s).contains("first"));
    m_store->saveDraft(2, message);
    QCOMPARE(filesIn(u"drafts"_s), QStringList({u"0001.eml"_s, u"0002.eml"_s}));
}

void tst_OutlookStore::draftIsRemoved()
{
    m_store->saveDraft(1, MailMessage());
    m_store->removeDraft(1);
    m_store->removeDraft(7);
    QCOMPARE(filesIn(u"drafts"_s), QStringList());
}

void tst_OutlookStore::sentMailsAreNumbered()
{
    m_store->saveSent(MailMessage());
    m_store->saveSent(MailMessage());
    QCOMPARE(filesIn(u"sent"_s), QStringList({u"0001.eml"_s, u"0002.eml"_s}));
    QVERIFY(read(u"sent/0002.eml"_s).contains("Message-Id: "));
}

void tst_OutlookStore::takenNumbersArePassedOver()
{
    for (const QString &name : {u"0002.eml"_s, u"note.txt"_s}) {
        QFile file(m_directory->filePath(u"deep/store/sent/"_s + name));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    m_store->saveSent(MailMessage());
    QVERIFY(!read(u"sent/0003.eml"_s).isEmpty());
    QCOMPARE(read(u"sent/0002.eml"_s), "");
}

void tst_OutlookStore::unwritableDraftIsWarnedOf()
{
    QVERIFY(QDir(m_directory->filePath(u"deep/store/drafts"_s)).removeRecursively());
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^Simulated Outlook: .*0001\\.eml can't be written: "_s));
    m_store->saveDraft(1, MailMessage());
}

void tst_OutlookStore::readFile()
{
    QFile file(m_directory->filePath(u"a.bin"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write("\0\r\n", 3) == 3);
    file.close();
    QCOMPARE(m_store->readFile(file.fileName()), QByteArray("\0\r\n", 3));
    QVERIFY(!m_store->readFile(m_directory->filePath(u"missing"_s)).has_value());
    QVERIFY(!m_store->readFile(m_directory->path()).has_value());
}

QTEST_GUILESS_MAIN(tst_OutlookStore)
#include "tst_outlookstore.moc"
