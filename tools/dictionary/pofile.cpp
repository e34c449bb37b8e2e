#include "pofile.h"

#include <QFile>
#include <QStringDecoder>

#include <gettext-po.h>

#include <csetjmp>
#include <memory>
#include <type_traits>

using namespace Qt::Literals::StringLiterals;

namespace {

// libgettextpo hands its complaints to a function that gets nothing of the caller's, and which mustn't return from the
// gravest of them.
struct Complaint
{
    int severity;
    QString place;
    QString text;

    bool operator==(const Complaint &) const = default;
};
QList<Complaint> complaints;
std::jmp_buf abandoned;

void complain(int severity, const char *file, size_t line, const char *text)
{
    const bool known = file != nullptr && line != size_t(-1);
    const Complaint complaint{severity, known ? u":%1"_s.arg(line) : QString(), QString::fromUtf8(text).trimmed()};
    // Of several in a line it says the same, since the columns aren't told.
    if (!complaints.contains(complaint))
        complaints.append(complaint);
}

extern "C" {

void complainOfOne(int severity, po_message_t /*message*/, const char *file, size_t line, size_t /*column*/,
                   int /*multiline*/, const char *text)
{
    complain(severity, file, line, text);
    if (severity == PO_SEVERITY_FATAL_ERROR)
        std::longjmp(abandoned, 1);
}

void complainOfTwo(int severity, po_message_t /*message*/, const char *file, size_t line, size_t /*column*/,
                   int /*multiline*/, const char *text, po_message_t /*other*/, const char * /*otherFile*/,
                   size_t /*otherLine*/, size_t /*otherColumn*/, int /*otherMultiline*/, const char * /*otherText*/)
{
    complain(severity, file, line, text);
    if (severity == PO_SEVERITY_FATAL_ERROR)
        std::longjmp(abandoned, 1);
}

} // extern "C"

constexpr po_xerror_handler handler{complainOfOne, complainOfTwo};

// Nothing in these two has a destructor that the jump would pass by.
po_file_t readAtRisk(const char *path)
{
    if (setjmp(abandoned) != 0) // NOLINT(cert-err52-cpp)
        return nullptr;
    return po_file_read(path, &handler);
}

bool writeAtRisk(po_file_t file, const char *path)
{
    if (setjmp(abandoned) != 0) // NOLINT(cert-err52-cpp)
        return false;
    return po_file_write(file, path, &handler) != nullptr;
}

struct FreePo
{
    void operator()(po_file_t file) const { po_file_free(file); }
    void operator()(po_message_iterator_t iterator) const { po_message_iterator_free(iterator); }
};
using PoFilePointer = std::unique_ptr<std::remove_pointer_t<po_file_t>, FreePo>;
using PoIteratorPointer = std::unique_ptr<std::remove_pointer_t<po_message_iterator_t>, FreePo>;

class Reader
{
public:
    Reader(const QString &name, Defects &defects)
        : m_name(name)
        , m_defects(defects)
    {
    }

    std::optional<PoFile> read(const QString &path)
    {
        if (!checkBytes(path))
            return {};
        complaints.clear();
        const PoFilePointer po(readAtRisk(QFile::encodeName(path).constData()));
        for (const Complaint &complaint : std::as_const(complaints))
            m_defects.append({Defect::Fatal, m_name + complaint.place, {}, complaint.text});
        if (po == nullptr || !complaints.isEmpty())
            return {};
        PoFile file;
        const PoIteratorPointer iterator(po_message_iterator(po.get(), nullptr));
        while (po_message *const message = po_next_message(iterator.get()))
            add(message, file);
        checkHeader(file);
        return file;
    }

private:
    /// libgettextpo ends a text at a zero without a word.
    bool checkBytes(const QString &path)
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            m_defects.append({Defect::Fatal, m_name, {}, file.errorString()});
            return false;
        }
        bool clean = true;
        for (int line = 1; !file.atEnd(); ++line) {
            const QByteArray bytes = file.readLine();
            const QString reason = whyUnclean(bytes, line == 1);
            if (!reason.isEmpty()) {
                m_defects.append({Defect::Fatal, u"%1:%2"_s.arg(m_name).arg(line), {}, reason});
                clean = false;
            }
        }
        return clean;
    }

    [[nodiscard]] static QString whyUnclean(const QByteArray &line, bool isFirst)
    {
        if (isFirst && line.startsWith("\xEF\xBB\xBF"))
            return u"The file begins with a byte order mark, which gettext takes for text."_s;
        // Obsolete entries are comments, too; what they say isn't read.
        const bool isComment = line.trimmed().startsWith('#');
        if (isComment && line.contains('\0'))
            return u"The character U+0000 would end the comment."_s;
        if (!isComment && (line.contains('\0') || hasEscapedZero(line)))
            return u"The character U+0000 would end the text."_s;
        return {};
    }

    [[nodiscard]] static bool hasEscapedZero(const QByteArray &line)
    {
        const auto isOctal = [](char digit) {
            return digit >= '0' && digit <= '7';
        };
        const auto isHexadecimal = [](char digit) {
            return std::isxdigit(static_cast<unsigned char>(digit)) != 0;
        };
        for (qsizetype at = line.indexOf('\\'); at >= 0; at = line.indexOf('\\', at)) {
            ++at;
            const bool hexadecimal = at < line.size() && line.at(at) == 'x';
            const qsizetype start = hexadecimal ? at + 1 : at;
            qsizetype end = start;
            while (end < line.size() && (hexadecimal ? isHexadecimal(line.at(end)) : isOctal(line.at(end))) &&
                   (hexadecimal || end - start < 3))
                ++end;
            // A byte has room for the last two digits of any number of them, and for three less a bit in octal.
            const QByteArray digits =
                hexadecimal ? line.mid(start, end - start).right(2) : line.mid(start, end - start);
            if (end > start && digits.toUInt(nullptr, hexadecimal ? 16 : 8) % 256 == 0)
                return true;
            at = std::max(end, at + 1);
        }
        return false;
    }

    void add(po_message_t message, PoFile &file)
    {
        if (po_message_is_obsolete(message) != 0)
            return;
        PoMessage read;
        read.context = text(po_message_msgctxt(message), {});
        read.id = text(po_message_msgid(message), read.context);
        read.text = text(po_message_msgstr(message), read.context);
        read.comments = text(po_message_comments(message), read.context);
        read.extractedComments = text(po_message_extracted_comments(message), read.context);
        read.fuzzy = po_message_is_fuzzy(message) != 0;
        read.plural = po_message_msgid_plural(message) != nullptr;
        if (po_message_msgctxt(message) == nullptr && read.id.isEmpty())
            file.header = read.text;
        else
            file.messages.append(read);
    }

    QString text(const char *bytes, const QString &entry)
    {
        if (bytes == nullptr)
            return {};
        // U+FEFF is a character like any other in here.
        auto toText = QStringDecoder(QStringDecoder::Utf8,
                                     QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
        const QString result = toText(bytes);
        if (toText.hasError())
            m_defects.append({Defect::Fatal, m_name, entry, u"A text is no valid UTF-8."_s});
        return result;
    }

    void checkHeader(const PoFile &file)
    {
        if (!file.field(u"Content-Type"_s).contains(u"charset=UTF-8"_s, Qt::CaseInsensitive))
            m_defects.append({Defect::Fatal, m_name, {}, u"The header doesn't say \"charset=UTF-8\"."_s});
    }

    QString m_name;
    Defects &m_defects;
};

po_message_t poMessage(const PoMessage &message)
{
    po_message *const made = po_message_create();
    if (!message.context.isNull())
        po_message_set_msgctxt(made, message.context.toUtf8().constData());
    po_message_set_msgid(made, message.id.toUtf8().constData());
    po_message_set_msgstr(made, message.text.toUtf8().constData());
    if (!message.comments.isEmpty())
        po_message_set_comments(made, message.comments.toUtf8().constData());
    if (!message.extractedComments.isEmpty())
        po_message_set_extracted_comments(made, message.extractedComments.toUtf8().constData());
    return made;
}

} // namespace

QString PoFile::field(const QString &name) const
{
    for (const QString &line : header.split(u'\n')) {
        if (line.startsWith(name + u':', Qt::CaseInsensitive))
            return line.mid(name.size() + 1).trimmed();
    }
    return {};
}

std::optional<PoFile> readPo(const QString &path, const QString &name, Defects &defects)
{
    return Reader(name, defects).read(path);
}

QString writePo(const QString &path, const PoFile &file)
{
    complaints.clear();
    const PoFilePointer po(po_file_create());
    const PoIteratorPointer iterator(po_message_iterator(po.get(), nullptr));
    po_message_insert(iterator.get(), poMessage({{}, {}, file.header, {}, {}}));
    for (const PoMessage &message : file.messages)
        po_message_insert(iterator.get(), poMessage(message));
    const bool written = writeAtRisk(po.get(), QFile::encodeName(path).constData());
    // Its warnings are about characters that translators seldom want.
    for (const Complaint &complaint : std::as_const(complaints)) {
        if (complaint.severity != PO_SEVERITY_WARNING)
            return complaint.text;
    }
    if (!written)
        return u"%1 can't be written."_s.arg(path);
    // It doesn't tell of a disk that is full.
    Defects defects;
    const std::optional<PoFile> readBack = readPo(path, path, defects);
    return readBack == file && defects.isEmpty() ? QString() : u"%1 can't be written as it should be."_s.arg(path);
}
