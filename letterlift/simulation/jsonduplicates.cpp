#include "jsonduplicates.h"

#include <QSet>

#include <cctype>
#include <vector>

namespace {

/// The place behind the text whose opening quotation mark is at \a begin.
qsizetype endOfText(const QByteArray &json, qsizetype begin)
{
    qsizetype position = begin + 1;
    while (position < json.size() && json.at(position) != '"')
        position += json.at(position) == '\\' ? 2 : 1;
    return qMin(position + 1, json.size());
}

bool isFollowedByColon(const QByteArray &json, qsizetype position)
{
    while (position < json.size() && std::isspace(static_cast<unsigned char>(json.at(position))) != 0)
        ++position;
    return position < json.size() && json.at(position) == ':';
}

} // namespace

std::optional<DuplicateKey> findDuplicateKey(const QByteArray &json)
{
    std::vector<QSet<QByteArray>> openObjects;
    qsizetype position = 0;
    while (position < json.size()) {
        const char c = json.at(position);
        if (c == '{')
            openObjects.emplace_back();
        if (c == '}' && !openObjects.empty())
            openObjects.pop_back();
        if (c != '"') {
            ++position;
            continue;
        }
        const qsizetype end = endOfText(json, position);
        if (isFollowedByColon(json, end) && !openObjects.empty()) {
            const QByteArray key = json.sliced(position + 1, end - position - 2);
            if (openObjects.back().contains(key))
                return DuplicateKey{key, position};
            openObjects.back().insert(key);
        }
        position = end;
    }
    return std::nullopt;
}
