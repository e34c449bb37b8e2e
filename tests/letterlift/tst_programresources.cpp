// What Windows and other programs read from the built program without starting it.

#include <QDir>
#include <QTest>
#include <QXmlStreamReader>
#include <QtEndian>

#include <windows.h>

using namespace Qt::Literals::StringLiterals;

class tst_ProgramResources : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void translationIsUsEnglishInUtf16();
    void versionField_data();
    void versionField();
    void binaryVersionIsThatOfTheText();
    void iconHasAllSizes();
    void everyPictureOfTheIconIsThere();
    void manifestValue_data();
    void manifestValue();
    void manifestHasNoCodePage();

private:
    /// Null if there is none.
    [[nodiscard]] QByteArray resource(const wchar_t *type, const wchar_t *name) const;
    [[nodiscard]] QByteArray versionValue(const QString &path) const;
    [[nodiscard]] QString versionText(const QString &field) const;

    QString m_program = QDir::toNativeSeparators(QStringLiteral(LETTERLIFT_PROGRAM));
    HMODULE m_module = nullptr;
    QByteArray m_version;
};

namespace {

/// Qt takes the icon of this name for windows that have been given none.
constexpr auto iconName = L"IDI_ICON1";

struct IconPicture
{
    int width;
    int bitsPerPixel;
    qsizetype size;
    int number;
};

const wchar_t *toWide(const QString &text)
{
    return reinterpret_cast<const wchar_t *>(text.utf16());
}

/// The pictures of a group of icons; the layout is GRPICONDIR's.
QList<IconPicture> iconPictures(const QByteArray &group)
{
    constexpr qsizetype headerSize = 6;
    constexpr qsizetype entrySize = 14;
    QList<IconPicture> pictures;
    for (qsizetype start = headerSize; start + entrySize <= group.size(); start += entrySize) {
        const char *const entry = group.constData() + start;
        const int width = uchar(entry[0]);
        pictures.append({width == 0 ? 256 : width, qFromLittleEndian<quint16>(entry + 6),
                         qFromLittleEndian<qint32>(entry + 8), qFromLittleEndian<quint16>(entry + 12)});
    }
    return pictures;
}

/// The texts or, if \a attribute isn't empty, its values of all elements of that name.
QStringList manifestValues(const QByteArray &manifest, const QString &element, const QString &attribute)
{
    QStringList values;
    QXmlStreamReader reader(manifest);
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement || reader.name() != element)
            continue;
        if (attribute.isEmpty())
            values.append(reader.readElementText());
        else
            values.append(reader.attributes().value(attribute).toString());
    }
    if (reader.hasError())
        values.append(reader.errorString());
    return values;
}

} // namespace

void tst_ProgramResources::initTestCase()
{
    const DWORD size = GetFileVersionInfoSizeW(toWide(m_program), nullptr);
    QVERIFY2(size > 0, qPrintable(m_program));
    m_version.resize(size);
    QVERIFY(GetFileVersionInfoW(toWide(m_program), 0, size, m_version.data()));

    m_module = LoadLibraryExW(toWide(m_program), nullptr, LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE);
    QVERIFY(m_module != nullptr);
}

void tst_ProgramResources::cleanupTestCase()
{
    if (m_module != nullptr)
        FreeLibrary(m_module);
}

void tst_ProgramResources::translationIsUsEnglishInUtf16()
{
    const QByteArray translation = versionValue(u"\\VarFileInfo\\Translation"_s);
    QCOMPARE(translation.size(), 4);
    QCOMPARE(qFromLittleEndian<quint16>(translation.constData()), 0x0409);
    QCOMPARE(qFromLittleEndian<quint16>(translation.constData() + 2), 1200);
}

void tst_ProgramResources::versionField_data()
{
    QTest::addColumn<QString>("value");

    const QString version = QStringLiteral(LETTERLIFT_VERSION);
    QTest::newRow("CompanyName") << u"Letterlift"_s;
    QTest::newRow("FileDescription") << u"Hands one e-mail from an ERP client over to Microsoft Outlook"_s;
    QTest::newRow("FileVersion") << version;
    QTest::newRow("InternalName") << u"letterlift"_s;
    QTest::newRow("LegalCopyright") << u"Copyright (c) 2026 the Letterlift authors"_s;
    QTest::newRow("OriginalFilename") << u"letterlift.exe"_s;
    QTest::newRow("ProductName") << u"Letterlift"_s;
    QTest::newRow("ProductVersion") << version;
}

void tst_ProgramResources::versionField()
{
    QFETCH(const QString, value);

    QCOMPARE(versionText(QLatin1StringView(QTest::currentDataTag())), value);
}

void tst_ProgramResources::binaryVersionIsThatOfTheText()
{
    const QByteArray bytes = versionValue(u"\\"_s);
    QVERIFY(bytes.size() >= qsizetype(sizeof(VS_FIXEDFILEINFO)));
    const auto *const fixed = reinterpret_cast<const VS_FIXEDFILEINFO *>(bytes.constData());
    const auto dotted = [](DWORD high, DWORD low) {
        return u"%1.%2.%3.%4"_s.arg(HIWORD(high)).arg(LOWORD(high)).arg(HIWORD(low)).arg(LOWORD(low));
    };
    const QString expected = QStringLiteral(LETTERLIFT_VERSION ".0");
    QCOMPARE(dotted(fixed->dwFileVersionMS, fixed->dwFileVersionLS), expected);
    QCOMPARE(dotted(fixed->dwProductVersionMS, fixed->dwProductVersionLS), expected);
    QCOMPARE(fixed->dwFileType, DWORD(VFT_APP));
}

void tst_ProgramResources::iconHasAllSizes()
{
    QList<int> widths;
    for (const IconPicture &picture : iconPictures(resource(RT_GROUP_ICON, iconName))) {
        QCOMPARE(picture.bitsPerPixel, 32);
        widths.append(picture.width);
    }
    QCOMPARE(widths, (QList<int>{16, 24, 32, 48, 256}));
}

void tst_ProgramResources::everyPictureOfTheIconIsThere()
{
    for (const IconPicture &picture : iconPictures(resource(RT_GROUP_ICON, iconName))) {
        const QByteArray bytes = resource(RT_ICON, MAKEINTRESOURCEW(picture.number));
        QCOMPARE(bytes.size(), picture.size);
        QCOMPARE(bytes.startsWith("\x89PNG"), picture.width == 256);
    }
}

void tst_ProgramResources::manifestValue_data()
{
    QTest::addColumn<QString>("element");
    QTest::addColumn<QString>("attribute");
    QTest::addColumn<QString>("value");

    const QString text;
    QTest::newRow("controls") << u"assemblyIdentity"_s << u"name"_s << u"Microsoft.Windows.Common-Controls"_s;
    QTest::newRow("version of the controls") << u"assemblyIdentity"_s << u"version"_s << u"6.0.0.0"_s;
    QTest::newRow("rights") << u"requestedExecutionLevel"_s << u"level"_s << u"asInvoker"_s;
    QTest::newRow("Windows 10") << u"supportedOS"_s << u"Id"_s << u"{8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}"_s;
    QTest::newRow("resolution") << u"dpiAwareness"_s << text << u"PerMonitorV2"_s;
    QTest::newRow("resolution, first Windows 10") << u"dpiAware"_s << text << u"true/pm"_s;
    QTest::newRow("long paths") << u"longPathAware"_s << text << u"true"_s;
}

void tst_ProgramResources::manifestValue()
{
    QFETCH(const QString, element);
    QFETCH(const QString, attribute);
    QFETCH(const QString, value);

    QCOMPARE(manifestValues(resource(RT_MANIFEST, CREATEPROCESS_MANIFEST_RESOURCE_ID), element, attribute),
             QStringList{value});
}

void tst_ProgramResources::manifestHasNoCodePage()
{
    const QByteArray manifest = resource(RT_MANIFEST, CREATEPROCESS_MANIFEST_RESOURCE_ID);
    QVERIFY(!manifest.isEmpty());
    QCOMPARE(manifestValues(manifest, u"activeCodePage"_s, QString()), QStringList());
}

QByteArray tst_ProgramResources::resource(const wchar_t *type, const wchar_t *name) const
{
    HRSRC place = FindResourceW(m_module, name, type);
    if (place == nullptr)
        return QByteArray();
    const void *const bytes = LockResource(LoadResource(m_module, place));
    return QByteArray(static_cast<const char *>(bytes), qsizetype(SizeofResource(m_module, place)));
}

QByteArray tst_ProgramResources::versionValue(const QString &path) const
{
    void *value = nullptr;
    UINT size = 0;
    if (!VerQueryValueW(m_version.constData(), toWide(path), &value, &size))
        return QByteArray();
    return QByteArray(static_cast<const char *>(value), size);
}

QString tst_ProgramResources::versionText(const QString &field) const
{
    // The way in which programs look a field up: the block is named by the translation.
    const QByteArray translation = versionValue(u"\\VarFileInfo\\Translation"_s);
    if (translation.size() != 4)
        return QString();
    const auto hex = [&translation](qsizetype start) {
        const int number = qFromLittleEndian<quint16>(translation.constData() + start);
        return u"%1"_s.arg(number, 4, 16, QChar(u'0'));
    };
    void *value = nullptr;
    UINT length = 0;
    const QString path = u"\\StringFileInfo\\%1\\%2"_s.arg(hex(0) + hex(2), field);
    if (!VerQueryValueW(m_version.constData(), toWide(path), &value, &length))
        return QString();
    return QString::fromWCharArray(static_cast<const wchar_t *>(value));
}

QTEST_APPLESS_MAIN(tst_ProgramResources)
#include "tst_programresources.moc"
