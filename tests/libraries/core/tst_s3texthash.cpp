#include "s3texthash.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

class tst_s3TextHash : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyCharacterCounts();
    void lengthCounts();
    void sameTextsHaveTheSameHashWhereverTheyLie();
    void hashesAreSpread();
    void emptyTextIsFound();
};

void tst_s3TextHash::everyCharacterCounts()
{
    const s3TextHash hash;
    for (qsizetype length = 1; length <= 40; ++length) {
        const QString text(length, u'a');
        for (qsizetype place = 0; place < length; ++place) {
            QString other = text;
            other[place] = u'b';
            QVERIFY2(hash(text) != hash(other), qPrintable(u"%1 of %2"_s.arg(place).arg(length)));
            QVERIFY(!s3TextEqual()(text, other));
        }
    }
}

void tst_s3TextHash::lengthCounts()
{
    const s3TextHash hash;
    // What is missing at the end counts as zeros otherwise.
    for (qsizetype length = 0; length <= 40; ++length) {
        const QString text(length, QChar(0));
        QVERIFY(hash(text) != hash(text + QChar(0)));
        QVERIFY(!s3TextEqual()(text, text + QChar(0)));
    }
}

void tst_s3TextHash::sameTextsHaveTheSameHashWhereverTheyLie()
{
    const QString all = u"A text that is longer than the words in which it is read"_s;
    for (qsizetype start = 0; start < all.size(); ++start) {
        const QString whole = all.mid(start);
        const QString view = QString::fromRawData(all.constData() + start, all.size() - start);
        QCOMPARE(s3TextHash()(view), s3TextHash()(whole));
        QVERIFY(s3TextEqual()(view, whole));
    }
}

void tst_s3TextHash::hashesAreSpread()
{
    // As in messages: texts that differ in a number.
    constexpr size_t count = 20000;
    std::unordered_set<size_t> low;
    for (size_t i = 0; i < count; ++i)
        low.insert(s3TextHash()(u"Datei %1 kann nicht geöffnet werden."_s.arg(i)) % (2 * count));
    // Random numbers would hit about 40 % of twice as many places.
    QVERIFY2(low.size() > count * 7 / 10, qPrintable(QString::number(low.size())));
}

void tst_s3TextHash::emptyTextIsFound()
{
    s3TextMap<int> map{{QString(), 1}, {u"a"_s, 2}};
    QCOMPARE(map.at(u""_s), 1);
    QCOMPARE(map.count(u"b"_s), size_t(0));
    const s3TextSet set{u""_s};
    QVERIFY(set.contains(QString()));
}

QTEST_APPLESS_MAIN(tst_s3TextHash)
#include "tst_s3texthash.moc"
