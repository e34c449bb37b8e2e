#include "catalogueformat.h"
#include "catalogues.h"
#include "pofile.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

class Reader
{
public:
    explicit Reader(Defects &defects)
        : m_defects(defects)
    {
    }

    Dictionary read(const QString &path)
    {
        const QDir folder(path);
        m_folder = QFileInfo(folder.absolutePath()).fileName();
        m_template = m_folder + u'/' + templateName;
        m_hasTemplate = readTemplate(folder.filePath(templateName));
        // Also what Qt counts among the files of the system, such as a link that leads nowhere.
        const QDir::Filters filters = QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot;
        for (const QFileInfo &catalogue : folder.entryInfoList({u"*.po"_s}, filters, QDir::Name)) {
            m_name = m_folder + u'/' + catalogue.fileName();
            if (!catalogue.isFile())
                complain(Defect::Fatal, {}, u"It is no file."_s);
            else if (!catalogue.fileName().endsWith(u".po"_s))
                complain(Defect::Fatal, {}, u"The name of a catalogue ends in \".po\"."_s);
            else
                readLanguage(catalogue.filePath(), catalogue.completeBaseName());
        }
        return m_dictionary;
    }

private:
    void complain(Defect::Weight weight, const QString &entry, const QString &reason)
    {
        m_defects.append({weight, m_name, entry, reason});
    }

    /// Returns false if it can't be read at all.
    bool readTemplate(const QString &path)
    {
        m_name = m_template;
        const std::optional<PoFile> file = readPo(path, m_name, m_defects);
        if (!file)
            return false;
        readHeader(*file);
        for (const PoMessage &message : file->messages) {
            const int number = numberOf(message);
            if (number == 0)
                continue;
            if (!message.text.isEmpty())
                complain(Defect::Tolerable, message.context, u"There is a translation in the template."_s);
            Entry entry;
            entry.source = message.id;
            entry.symbol = symbolOf(message);
            if (!m_dictionary.entries.emplace(number, entry).second)
                complain(Defect::Fatal, message.context, u"The number is there twice."_s);
        }
        return true;
    }

    void readHeader(const PoFile &file)
    {
        const QString key = file.field(keyField);
        m_dictionary.key = key == keyIsSource ? Dictionary::BySource : Dictionary::ByNumber;
        if (key != keyIsSource && key != keyIsNumber)
            complain(Defect::Fatal, {},
                     u"The header's \"%1\" has to be \"%2\" or \"%3\"."_s.arg(keyField, keyIsNumber, keyIsSource));
        if (const QString count = file.field(textCountField); !count.isEmpty()) {
            bool isNumber = false;
            m_dictionary.textCount = count.toInt(&isNumber);
            if (!isNumber || m_dictionary.textCount < 0 || m_dictionary.textCount > maximumTextCount) {
                complain(Defect::Fatal, {},
                         u"The header's \"%1\" is no number up to %2."_s.arg(textCountField).arg(maximumTextCount));
                m_dictionary.textCount = 0;
            }
        }
    }

    void readLanguage(const QString &path, const QString &name)
    {
        const int language = languageIndex(name);
        if (language < 0) {
            complain(Defect::Fatal, {}, u"There is no language \"%1\"."_s.arg(name));
            return;
        }
        const std::optional<PoFile> file = readPo(path, m_name, m_defects);
        if (!file)
            return;
        if (file->field(languageField) != name)
            complain(Defect::Tolerable, {},
                     u"The header's language is \"%1\" instead of \"%2\"."_s.arg(file->field(languageField), name));
        for (const PoMessage &message : file->messages)
            readTranslation(message, language);
    }

    void readTranslation(const PoMessage &message, int language)
    {
        const int number = numberOf(message);
        if (number == 0 || !m_hasTemplate)
            return;
        const auto entry = m_dictionary.entries.find(number);
        if (entry == m_dictionary.entries.end() || entry->second.source != message.id) {
            complain(Defect::Fatal, message.context,
                     u"%1 has no such text; msgmerge brings the two together."_s.arg(m_template));
            return;
        }
        Cell &cell = entry->second.cells[language];
        const QStringList comments = message.comments.split(u'\n');
        for (const QString &line : comments)
            checkMark(message, line, u"s3dictc:"_s, line == emptyMark || line == asGermanMark);
        const bool empty = comments.contains(emptyMark);
        const bool asGerman = comments.contains(asGermanMark);
        if ((empty || asGerman) && (empty == asGerman || !message.text.isEmpty()))
            complain(Defect::Fatal, message.context, u"The comment of s3dictc contradicts the rest."_s);
        else if (message.fuzzy)
            cell = {};
        else if (empty || !message.text.isEmpty())
            cell = {Cell::Own, message.text};
        else if (asGerman)
            cell = {Cell::AsGerman, {}};
    }

    /// 0 if it has none that the format has room for.
    int numberOf(const PoMessage &message)
    {
        static const QString example = u"#1204"_s;
        const QString digits = message.context.startsWith(u'#') ? message.context.mid(1) : QString();
        if (message.plural) {
            complain(Defect::Fatal, message.context, u"There are no plural forms in a dictionary."_s);
            return 0;
        }
        for (const QChar digit : digits) {
            if (digit < u'0' || digit > u'9') {
                complainOfNumber(message);
                return 0;
            }
        }
        if (digits.isEmpty() || digits.startsWith(u'0')) {
            complainOfNumber(message);
            return 0;
        }
        if (digits.size() > 5) {
            complain(Defect::Fatal, message.context, u"The number is above %1."_s.arg(maximumTextCount));
            return 0;
        }
        return digits.toInt();
    }

    void complainOfNumber(const PoMessage &message)
    {
        complain(Defect::Fatal, message.context,
                 u"The context of \"%1\" is no number such as \"#1204\"."_s.arg(message.id));
    }

    QString symbolOf(const PoMessage &message)
    {
        QString symbol;
        for (const QString &line : message.extractedComments.split(u'\n')) {
            const bool isSymbol = line.startsWith(symbolMark) && !line.mid(symbolMark.size()).trimmed().isEmpty();
            checkMark(message, line, symbolMark.trimmed(), isSymbol);
            if (!isSymbol)
                continue;
            if (!symbol.isEmpty())
                complain(Defect::Fatal, message.context, u"There is more than one symbol."_s);
            symbol = line.mid(symbolMark.size()).trimmed();
        }
        return symbol;
    }

    /// One that is misspelt must not pass for a remark.
    void checkMark(const PoMessage &message, const QString &line, const QString &start, bool isMark)
    {
        if (!isMark && line.trimmed().startsWith(start, Qt::CaseInsensitive))
            complain(Defect::Fatal, message.context,
                     u"The comment \"%1\" is none that s3dictc knows."_s.arg(line.trimmed()));
    }

    Defects &m_defects;
    Dictionary m_dictionary;
    bool m_hasTemplate = false;
    QString m_folder;
    QString m_template;
    /// Of the catalogue that is read.
    QString m_name;
};

} // namespace

Dictionary readCatalogues(const QString &folder, Defects &defects)
{
    return Reader(defects).read(folder);
}
