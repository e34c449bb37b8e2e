#include "defect.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

QString describe(const Defect &defect)
{
    QString line = defect.catalogue + u": "_s;
    if (!defect.entry.isEmpty())
        line += defect.entry + u": "_s;
    line += defect.reason;
    return line.replace(u'\n', u"\\n"_s);
}

bool hasFatalDefect(const Defects &defects)
{
    return std::ranges::any_of(defects, [](const Defect &defect) { return defect.weight == Defect::Fatal; });
}
