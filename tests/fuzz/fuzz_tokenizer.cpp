// Whatever the delimiters make of the pattern, tokens stand one behind the other and come to an end.

#include "s3stringtokenizer.h"

#include <algorithm>
#include <cstdlib>

using namespace Qt::Literals::StringLiterals;

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

/// Text as it comes, lone surrogates among it.
QString units(const uint8_t *data, size_t size)
{
    QString text;
    for (size_t i = 0; i + 1 < size; i += 2)
        text += QChar(data[i], data[i + 1]);
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    // Delimiters are patterns, and a pattern may take as long as it likes: both stay short.
    constexpr int longestDelimiters = 8;
    constexpr size_t longestText = 512;
    if (size < size_t(longestDelimiters))
        return 0;
    const QString delimiters = QString::fromUtf8(reinterpret_cast<const char *>(data), data[0] % longestDelimiters);
    const QString text = units(data + longestDelimiters, std::min(size - longestDelimiters, longestText));

    s3StringTokenizer tokenizer(text, delimiters, false);
    qsizetype position = 0;
    for (qsizetype i = 0; i <= text.size(); ++i) {
        const QString token = i % 2 == 0 ? tokenizer.nextToken() : tokenizer.nextToken(u"a,"_s, false);
        if (token.isEmpty()) {
            // Not a single token is left once one was missing.
            require(tokenizer.nextToken().isEmpty() && tokenizer.nextToken(u"a,"_s, false).isEmpty());
            require(tokenizer.rest(true).isEmpty());
            return 0;
        }
        const qsizetype place = text.indexOf(token, position);
        require(place >= 0 && tokenizer.token() == token);
        position = place + token.size();
    }
    std::abort();
}
