#include "s3guidictionary.h"

#include "s3elapsedtimer.h"
#include "s3features.h"
#include "s3language.h"
#include "s3string.h"
#include "s3trace.h"
#include "s3tracearg.h"

using namespace Qt::Literals::StringLiterals;

namespace {

s3TextSet &unknownTexts()
{
    static s3TextSet texts;
    return texts;
}

quint32 cacheKey(qint32 number, qint32 language)
{
    return quint32(number) | quint32(language) << 24;
}

/// The texts with the product's name that the code asks for with either spelling of it.
bool hasTwoSpellings(qint32 number)
{
    return number == 896 || number == 931 || number == 938 || number == 939;
}

bool fallbackIsForced()
{
    static const QString feature = u"forceFallbackDictionary"_s;
    return s3ExperimentalFeatures::instance()->contains(feature);
}

bool fallbackIsSwitchedOff()
{
    static const QString feature = u"useFallbackDictionary"_s;
    return s3DisabledFeatures::instance()->contains(feature);
}

/// Those whose texts the main file has whole.
bool isMainLanguage(qint32 language)
{
    static const QSet<qint32> languages{indexOfLetter(u"D"_s), indexOfLetter(u"A"_s), indexOfLetter(u"E"_s)};
    return languages.contains(language);
}

} // namespace

s3GuiDictionary::s3GuiDictionary(const QString &filePath, const QString &fallbackPath)
    : s3Dictionary(filePath)
    , m_fallback(fallbackPath)
{
}

s3GuiDictionary::~s3GuiDictionary() = default;

bool s3GuiDictionary::open(QString &errorText)
{
    m_fallback.openQuietly();
    if (!s3Dictionary::open(errorText))
        return false;
    m_sourceTextNumbers.reserve(size_t(textCount()));
    for (qint32 number = 1; number <= textCount(); ++number) {
        QString source = sourceText(number);
        if (source.isEmpty())
            continue;
        m_sourceTextNumbers.insert_or_assign(source, number);
        if (hasTwoSpellings(number)) {
            s3String::replaceProductName(source);
            m_sourceTextNumbers.insert_or_assign(source, number);
        }
    }
    return true;
}

QString s3GuiDictionary::translateText(const QString &source, qint32 language)
{
    s3ElapsedTimer timer(s3HasTestFlag(460));
    const auto found = m_sourceTextNumbers.find(source);
    if (found != m_sourceTextNumbers.end()) {
        const qint32 number = found->second;
        QString text = cachedText(number, language);
        const bool foundInCache = !text.isEmpty();
        if (!foundInCache) {
            text = textWithFallback(number, language);
            storeCachedText(number, language, text);
        }
        S3_TRACE(460, u"s3GuiDictionary::translateText()"_s + s3TraceArg(u"sourceText"_s, source) +
                          s3TraceArg(u"textNumber"_s, number) + s3TraceArg(u"languageText"_s, text) +
                          s3TraceArg(u"foundInCache"_s, foundInCache) +
                          s3TraceArg(u"elapsed"_s, timer.textMicroseconds(false)));
        return text;
    }
    if (source.endsWith("..."_L1))
        return translateText(source.chopped(3).trimmed(), language) + u"..."_s;
    unknownTexts().insert(source);
    S3_TRACE_EITHER(460, 404,
                    u"s3GuiDictionary::translateText()"_s + s3TraceArg(u"m_filePath"_s, filePath()) +
                        s3TraceArg(u"sourceText"_s, source) + u" not in dictionary"_s);
    return source;
}

QString s3GuiDictionary::translation(const QString &source, qint32 language) const
{
    const auto found = m_sourceTextNumbers.find(source);
    return found == m_sourceTextNumbers.end() ? source : textWithFallback(found->second, language);
}

bool s3GuiDictionary::hasSourceText(const QString &source) const
{
    return m_sourceTextNumbers.contains(source);
}

QString s3GuiDictionary::textWithFallback(qint32 number, qint32 language) const
{
    if (m_fallback.textCount() <= 1)
        return text(number, language);
    if (fallbackIsForced())
        return hasFallbackFor(number) ? m_fallback.text(number, language) : text(number, language);
    if (fallbackIsSwitchedOff() || isGoodEnough(number, language) || !hasFallbackFor(number) ||
        !m_fallback.hasText(number, language))
        return text(number, language);
    const QString fallbackText = m_fallback.text(number, language);
    S3_TRACE(460, u"s3GuiDictionary::textWithFallback()"_s + s3TraceArg(u"textNumber"_s, number) +
                      s3TraceArg(u"languageISO"_s, isoCode(language)) +
                      s3TraceArg(u"sourceText"_s, m_fallback.sourceText(number)) +
                      s3TraceArg(u"fallbackText"_s, fallbackText));
    return fallbackText;
}

QString s3GuiDictionary::cachedText(qint32 number, qint32 language) const
{
    return m_translationCache.value(cacheKey(number, language));
}

void s3GuiDictionary::storeCachedText(qint32 number, qint32 language, const QString &text)
{
    m_translationCache.insert(cacheKey(number, language), text);
}

const s3TextSet &s3GuiDictionary::unknownSourceTexts()
{
    return unknownTexts();
}

bool s3GuiDictionary::isGoodEnough(qint32 number, qint32 language) const
{
    return isMainLanguage(language) || (!isIndividual(language) && hasText(number, language));
}

// A file of another build may mean something else by a number.
bool s3GuiDictionary::hasFallbackFor(qint32 number) const
{
    return m_fallback.sourceText(number) == sourceText(number);
}
