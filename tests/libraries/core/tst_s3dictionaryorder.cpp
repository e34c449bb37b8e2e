// In which order the files are opened, as Linux tells it. The main file of the process's dictionary of the GUI is a
// resource, of whose opening nobody is told.

#include "dictionarybuilder.h"
#include "s3dictionaries.h"
#include "s3guidictionary.h"
#include "testfile.h"
#include "workingdirectory.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <cstring>

#include <sys/inotify.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {

const WorkingDirectory directory;

/// The files of a folder that are opened while this object lives.
class OpenedFiles
{
public:
    explicit OpenedFiles(const QString &folder)
        : m_queue(inotify_init1(IN_NONBLOCK))
    {
        if (inotify_add_watch(m_queue, QFile::encodeName(folder).constData(), IN_OPEN) < 0)
            qFatal("The folder can't be watched");
    }
    ~OpenedFiles() { ::close(m_queue); }

    Q_DISABLE_COPY_MOVE(OpenedFiles)

    /// Their names in the order in which they have been opened, one opening after the other.
    [[nodiscard]] QStringList names() const
    {
        QStringList names;
        QByteArray bytes(65536, '\0');
        const ssize_t size = ::read(m_queue, bytes.data(), size_t(bytes.size()));
        for (ssize_t place = 0; place + ssize_t(sizeof(inotify_event)) <= size;) {
            inotify_event event;
            std::memcpy(&event, bytes.constData() + place, sizeof(event));
            place += ssize_t(sizeof(event));
            if (event.len > 0)
                names += QFile::decodeName(bytes.constData() + place);
            place += ssize_t(event.len);
        }
        return names;
    }

private:
    int m_queue;
};

QByteArray someTexts()
{
    DictionaryBuilder builder;
    builder.setText(2, -1, u"Datei"_s);
    return builder.build();
}

} // namespace

class tst_s3DictionaryOrder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fallbackIsOpenedBeforeTheMainFile();
    void dictionaryOfTheGuiIsOpenedBeforeTheMessages();
};

void tst_s3DictionaryOrder::fallbackIsOpenedBeforeTheMainFile()
{
    const QTemporaryDir folder;
    s3GuiDictionary dictionary(writeTestFile(folder.filePath(u"main"_s), someTexts()),
                               writeTestFile(folder.filePath(u"fallback"_s), someTexts()));
    const OpenedFiles opened(folder.path());
    QVERIFY(dictionary.openQuietly());
    QCOMPARE(opened.names(), (QStringList{u"fallback"_s, u"main"_s}));
}

void tst_s3DictionaryOrder::dictionaryOfTheGuiIsOpenedBeforeTheMessages()
{
    directory.write(u"data/msg.dat.0"_s, someTexts());
    directory.write(u"data/mng.dat.0"_s, someTexts());
    const OpenedFiles opened(u"data"_s);
    QString error;
    QVERIFY2(openDictionaries(error), qPrintable(error));
    QCOMPARE(opened.names(), (QStringList{u"mng.dat.0"_s, u"msg.dat.0"_s}));
}

QTEST_APPLESS_MAIN(tst_s3DictionaryOrder)
#include "tst_s3dictionaryorder.moc"
