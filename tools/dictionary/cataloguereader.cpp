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
        readTemplate(folder.filePath(templateName));
        for (const QString &name : folder.entryList({u"*.po"_s}, QDir::Files, QDir::Name))
            readLanguage(folder.filePath(name), name);
        return m_dictionary;
    }

private:
    void complain(Defect::Weight weight, const QString &entry, const QString &reason)
    {
        m_defects.append({weight, m_name, entry, reason});
    }

    void readTemplate(const QString &path)
    {
        m_name = m_template;
        const std::optional<PoFile> file = readPo(path, m_name, m_defects);
        if (!file)
            return;
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

    void readLanguage(const QString &path, const QString &fileName)
    {
        m_name = m_folder + u'/' + fileName;
        const QString name = QFileInfo(fileName).completeBaseName();
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
        if (number == 0)
            return;
        const auto entry = m_dictionary.entries.find(number);
        if (entry == m_dictionary.entries.end() || entry->second.source != message.id) {
            complain(Defect::Fatal, message.context,
                     u"%1 has no such text; msgmerge brings the two together."_s.arg(m_template));
            return;
        }
        Cell &cell = entry->second.cells[language];
        const QStringList comments = message.comments.split(u'\n');
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
            if (!line.startsWith(symbolMark))
                continue;
            if (!symbol.isEmpty())
                complain(Defect::Fatal, message.context, u"There is more than one symbol."_s);
            symbol = line.mid(symbolMark.size()).trimmed();
        }
        return symbol;
    }

    Defects &m_defects;
    Dictionary m_dictionary;
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
