// Looking texts up in the dictionaries, against Qt's translator and gettext with the same texts from one catalogue.
//
// dictionary_lookups FOLDER [OPTION OF GOOGLE BENCHMARK...]   measures; FOLDER has what CMakeLists.txt makes
// dictionary_lookups FOLDER --faults=NAME                     prints the page faults of one opening in this process

#include "s3dictionaries.h"
#include "s3dictionary.h"
#include "s3guidictionary.h"
#include "s3language.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QResource>
#include <QTranslator>

#include <algorithm>
#include <array>
#include <chrono>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string_view>

#include <benchmark/benchmark.h>
#include <libintl.h>
#include <sys/resource.h>

// Glibc's, to be increased when its own cache is to be dropped.
extern "C" int _nl_msg_cat_cntr; // NOLINT(bugprone-reserved-identifier)

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint32 french = 2;

/// One text as each of the three is asked for it.
struct Key
{
    qint32 number;
    QString text;
    QByteArray utf8;
    QByteArray latin1; // what msgfmt writes into a file for Qt
};

struct Input
{
    QDir folder;
    QList<Key> keys;     // in the order of looking up
    QList<Key> few;      // the first of them: what a program asks for again and again stays in the processor's cache
    QList<Key> unknown;  // as many that nobody knows
    QString expectation; // the translation of the first key

    [[nodiscard]] QString path(const QString &name) const { return folder.filePath(name); }
    [[nodiscard]] QByteArray bytePath(const QString &name) const { return QFile::encodeName(path(name)); }
};

Input input;

[[noreturn]] void fail(const QString &reason)
{
    std::fprintf(stderr, "%s\n", qPrintable(reason));
    std::exit(1);
}

Key keyOf(const QString &text)
{
    return {0, text, text.toUtf8(), text.toLatin1()};
}

QStringList linesOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        fail(u"There is no "_s + path);
    return QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
}

void readInput(const QString &folder)
{
    input.folder.setPath(QDir(folder).absolutePath());
    const QStringList texts = linesOf(input.path(u"keys.txt"_s));
    for (const QString &text : texts) {
        input.keys += keyOf(text);
        input.unknown += keyOf(text + u'?');
    }
    input.expectation = u"fr: "_s + texts.constFirst();
}

void expectTranslation(const QString &translation, const char *who)
{
    if (translation != input.expectation)
        fail(QLatin1StringView(who) + u" answers: "_s + translation);
}

// --- The three, each opened anew. What opens a file takes its name without extension: there are two of each. ---

QString openMessages(const QString &name)
{
    s3Dictionary dictionary(input.path(name + u".dat.0"_s));
    QString error;
    if (!dictionary.open(error))
        fail(error);
    return dictionary.text(input.keys.constFirst().number, french);
}

QString openGui(const QString &name)
{
    s3GuiDictionary dictionary(input.path(name + u".dat.0"_s), u"none"_s);
    QString error;
    if (!dictionary.open(error))
        fail(error);
    return dictionary.translateText(input.keys.constFirst().text, french);
}

QString translation(const QTranslator &translator, const Key &key)
{
    return translator.translate("", key.latin1.constData());
}

QString openTranslator(const QString &name)
{
    QTranslator translator;
    if (!translator.load(input.path(name + u".qm"_s)))
        fail(u"Qt doesn't load its file"_s);
    return translation(translator, input.keys.constFirst());
}

/// Gettext knows a file by its folder and never closes it, so each opening needs a folder that it doesn't know yet.
QString openGettext(const QString &name)
{
    static int count = 0;
    const QString folder = input.path(u"opened-%1"_s.arg(++count));
    QFile::remove(folder);
    if (!QFile::link(input.path(u"locale-"_s + name), folder))
        fail(u"There is no link "_s + folder);
    bindtextdomain("texts", QFile::encodeName(folder).constData());
    const QString text = QString::fromUtf8(dgettext("texts", input.keys.constFirst().utf8.constData()));
    QFile::remove(folder);
    return text;
}

struct Opener
{
    const char *name;
    QString (*open)(const QString &name);
};

constexpr std::array<Opener, 4> openers{
    {{"messages", openMessages}, {"gui", openGui}, {"qt", openTranslator}, {"gettext", openGettext}}};

void open(benchmark::State &state, const Opener &opener)
{
    expectTranslation(opener.open(u"texts"_s), opener.name);
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(opener.open(u"texts"_s));
}

// --- Page faults, in a process of its own, which has opened another file in the same way before. ---

qint64 faultsOf(const Opener &opener)
{
    const auto count = [] {
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        return qint64(usage.ru_minflt) + usage.ru_majflt;
    };
    expectTranslation(opener.open(u"other"_s), opener.name);
    const qint64 before = count();
    const QString text = opener.open(u"texts"_s);
    const qint64 faults = count() - before;
    expectTranslation(text, opener.name);
    return faults;
}

void faults(benchmark::State &state, const Opener &opener)
{
    double sum = 0;
    for ([[maybe_unused]] auto _ : state) {
        QProcess process;
        process.start(QCoreApplication::applicationFilePath(),
                      {input.folder.path(), u"--faults="_s + QLatin1StringView(opener.name)});
        process.waitForFinished();
        bool isNumber = false;
        sum += process.readAllStandardOutput().trimmed().toDouble(&isNumber);
        if (!isNumber)
            fail(u"no page faults are told"_s);
    }
    state.counters["faults"] = sum / double(state.iterations());
}

// --- Looking up, all keys in each turn ---

template<typename LookUp>
void lookUp(benchmark::State &state, const QList<Key> &keys, LookUp lookUpOne)
{
    for ([[maybe_unused]] auto _ : state) {
        for (const Key &key : keys)
            benchmark::DoNotOptimize(lookUpOne(key));
    }
    state.counters["s_per_text"] = benchmark::Counter(
        double(keys.size()), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

/// Like lookUp(), with something opened for each turn, outside of the measured time.
template<typename Open, typename LookUp>
void lookUpFirst(benchmark::State &state, Open openOne, LookUp lookUpOne)
{
    for ([[maybe_unused]] auto _ : state) {
        const auto opened = openOne();
        const auto begin = std::chrono::steady_clock::now();
        for (const Key &key : input.keys)
            benchmark::DoNotOptimize(lookUpOne(*opened, key));
        state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
    }
    state.counters["s_per_text"] = benchmark::Counter(
        double(input.keys.size()), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

const char *gettextView(const Key &key)
{
    return dgettext("texts", key.utf8.constData());
}

const char *uncachedGettextView(const Key &key)
{
    ++_nl_msg_cat_cntr;
    return gettextView(key);
}

QString gettextText(const Key &key)
{
    return QString::fromUtf8(gettextView(key));
}

QString uncachedGettextText(const Key &key)
{
    return QString::fromUtf8(uncachedGettextView(key));
}

std::unique_ptr<QTranslator> openedTranslator()
{
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(input.path(u"texts.qm"_s)))
        fail(u"Qt doesn't load its file"_s);
    return translator;
}

std::unique_ptr<s3GuiDictionary> openedGui()
{
    auto dictionary = std::make_unique<s3GuiDictionary>(input.path(u"texts.dat.0"_s), u"none"_s);
    if (!dictionary->openQuietly())
        fail(u"The dictionary can't be opened"_s);
    return dictionary;
}

void registerFirst()
{
    benchmark::RegisterBenchmark("translate/first", [](benchmark::State &state) {
        lookUpFirst(state, openedGui, [](s3GuiDictionary &dictionary, const Key &key) {
            return dictionary.translateText(key.text, french);
        });
    })->UseManualTime();
    benchmark::RegisterBenchmark("qt/first", [](benchmark::State &state) {
        lookUpFirst(state, openedTranslator,
                    [](const QTranslator &translator, const Key &key) { return translation(translator, key); });
    })->UseManualTime();
    benchmark::RegisterBenchmark("gettext/first",
                                 [](benchmark::State &state) { lookUp(state, input.keys, uncachedGettextText); });
}

void registerRepeated(const char *kind, const QList<Key> &keys)
{
    const auto named = [kind](const char *what) {
        return std::string(what) + '/' + kind;
    };
    const auto add = [&](const char *what, auto function) {
        benchmark::RegisterBenchmark(named(what).c_str(),
                                     [&keys, function](benchmark::State &state) { lookUp(state, keys, function); });
    };
    static const std::unique_ptr<QTranslator> translator = openedTranslator();
    add("translate", [](const Key &key) { return translate(key.text); });
    add("messageText", [](const Key &key) { return messageText(key.number, french); });
    add("qt", [](const Key &key) { return translation(*translator, key); });
    add("gettext", gettextText);
    add("gettextUncached", uncachedGettextText);
    add("gettextView", gettextView);
    add("gettextUncachedView", uncachedGettextView);
}

/// The dictionaries of the process, from the working directory and a resource, as in a program.
void openProcessDictionaries()
{
    QDir::setCurrent(input.folder.path());
    if (!QResource::registerResource(input.path(u"texts.rcc"_s)))
        fail(u"There is no resource"_s);
    QString error;
    if (!openDictionaries(error))
        fail(error);
    setLanguage(u"F"_s, QString());
    // A key is known by its text here; what number it has stands in the file.
    QHash<QString, qint32> numbers;
    for (qint32 number = 1; number <= guiTextCount(); ++number)
        numbers.insert(guiSourceText(number), number);
    for (Key &key : input.keys)
        key.number = numbers.value(key.text);
    for (Key &key : input.unknown)
        key.number = guiTextCount() + 1;
    input.few = input.keys.first(200);
    expectTranslation(translate(input.keys.constFirst().text), "translate");
    expectTranslation(messageText(input.keys.constFirst().number), "messageText");
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    if (argc < 2)
        fail(u"FOLDER is missing"_s);
    std::setlocale(LC_ALL, "C.UTF-8");
    qputenv("LANGUAGE", "fr");
    readInput(QString::fromLocal8Bit(argv[1]));
    openProcessDictionaries();

    const std::string_view option = argc > 2 ? argv[2] : "";
    for (const Opener &opener : openers) {
        if (option == std::string("--faults=") + opener.name) {
            std::printf("%lld\n", static_cast<long long>(faultsOf(opener)));
            return 0;
        }
        benchmark::RegisterBenchmark((std::string("open/") + opener.name).c_str(), [&opener](benchmark::State &state) {
            open(state, opener);
        })->Iterations(50);
        benchmark::RegisterBenchmark((std::string("faults/") + opener.name).c_str(), [&opener](
                                                                                         benchmark::State &state) {
            faults(state, opener);
        })->Iterations(3);
    }
    bindtextdomain("texts", input.bytePath(u"locale-texts"_s).constData());
    expectTranslation(gettextText(input.keys.constFirst()), "gettext");
    registerFirst();
    registerRepeated("repeated", input.keys);
    registerRepeated("few", input.few);
    registerRepeated("miss", input.unknown);

    --argc;
    argv[1] = argv[0];
    benchmark::Initialize(&argc, argv + 1);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
