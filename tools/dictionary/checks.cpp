#include "checks.h"

#include "catalogueformat.h"

#include <QHash>
#include <QMap>
#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

namespace {

using Placeholders = QMap<int, int>;

/// How often each of those that QString::arg() replaces is there: "%01" is "%1" to it, and "%0" one like the others.
Placeholders placeholdersIn(const QString &text)
{
    static const QRegularExpression placeholder(u"%L?([0-9]{1,2})"_s);
    Placeholders counts;
    for (const QRegularExpressionMatch &match : placeholder.globalMatch(text))
        ++counts[match.captured(1).toInt()];
    return counts;
}

QString describeDifference(const Placeholders &source, const Placeholders &translation)
{
    QStringList differences;
    Placeholders all = source;
    all.insert(translation);
    for (const int number : all.keys()) {
        if (source.value(number) != translation.value(number))
            differences.append(
                u'%' + QString::number(number) +
                u" is there %1 times instead of %2"_s.arg(translation.value(number)).arg(source.value(number)));
    }
    return differences.join(u", "_s);
}

/// Of these the program knows the source text with the short name of the product, too.
bool hasTwoSpellings(int number)
{
    return number == 896 || number == 931 || number == 938 || number == 939;
}

class Checks
{
public:
    Checks(const Dictionary &dictionary, const QString &folder, Defects &defects)
        : m_dictionary(dictionary)
        , m_folder(folder)
        , m_defects(defects)
    {
    }

    void run()
    {
        for (const auto &[number, entry] : m_dictionary.entries) {
            if (m_dictionary.key == Dictionary::BySource)
                checkSourceIsUnique(number, entry.source);
            if (!entry.symbol.isEmpty())
                checkUnique(m_symbols, entry.symbol, number, u"symbol"_s);
            checkSource(number, entry);
            checkTranslations(number, entry);
        }
    }

private:
    void complain(const QString &catalogue, int number, const QString &reason)
    {
        m_defects.append({Defect::Tolerable, m_folder + u'/' + catalogue, u"#%1"_s.arg(number), reason});
    }

    void checkUnique(QHash<QString, int> &seen, const QString &text, int number, const QString &what)
    {
        if (const int first = seen.value(text); first != 0)
            complain(templateName, number, u"#%1 has the same %2."_s.arg(first).arg(what));
        else
            seen.insert(text, number);
    }

    void checkSourceIsUnique(int number, const QString &source)
    {
        checkUnique(m_sources, source, number, u"source text"_s);
        QString other = source;
        if (hasTwoSpellings(number) && other.replace(u"vexa ERP"_s, u"Vexa"_s) != source)
            checkUnique(m_sources, other, number, u"source text as its second spelling"_s);
    }

    void checkSource(int number, const Entry &entry)
    {
        if (entry.source.isEmpty())
            complain(templateName, number, u"The source text is empty."_s);
        else if (entry.source == placeholderOf(number))
            complain(templateName, number, u"The source text says that there is none."_s);
    }

    void checkTranslations(int number, const Entry &entry)
    {
        const Placeholders source = placeholdersIn(entry.source);
        for (int language = 0; language < languages().size(); ++language) {
            const Cell &cell = entry.cells.at(language);
            if (cell.kind != Cell::Own)
                continue;
            const QString catalogue = languages().at(language).name + u".po"_s;
            if (cell.text == placeholderOf(number))
                complain(catalogue, number, u"The translation says that there is none."_s);
            const QString difference = describeDifference(source, placeholdersIn(cell.text));
            if (!difference.isEmpty())
                complain(catalogue, number, difference + u'.');
        }
    }

    const Dictionary &m_dictionary;
    QString m_folder;
    Defects &m_defects;
    QHash<QString, int> m_sources;
    QHash<QString, int> m_symbols;
};

} // namespace

void checkTexts(const Dictionary &dictionary, const QString &folder, Defects &defects)
{
    Checks(dictionary, folder, defects).run();
}
