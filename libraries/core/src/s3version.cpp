#include "s3version.h"

#include <QStringList>

#include <algorithm>
#include <array>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype maximumVexaVersionLength = 12;

QString &storedBanner()
{
    static QString banner;
    return banner;
}

} // namespace

s3Version::s3Version(int majorNumber, int minorNumber, int thirdNumber, int fourthNumber)
    : major{majorNumber}
    , minor{minorNumber}
    , third{thirdNumber}
    , fourth{thirdNumber < 0 ? -1 : fourthNumber}
{
}

s3Version::s3Version(const QString &dottedText)
{
    const QStringList parts = dottedText.split(u'.', Qt::KeepEmptyParts);
    const std::array<int *, 4> numbers{&major, &minor, &third, &fourth};
    const qsizetype count = std::min(parts.size(), qsizetype(numbers.size()));
    for (qsizetype i = 0; i < count; ++i)
        *numbers.at(size_t(i)) = parts.at(i).toInt();
}

bool s3Version::isValid() const
{
    return *this >= s3Version(0, 0, 0, -1);
}

QString s3Version::toString() const
{
    if (!isValid())
        return QString();

    QStringList texts;
    for (const int number : comparable())
        texts.append(QString::number(number));
    return texts.join(u'.');
}

s3Version s3Version::fromVexaVersion(const QString &text)
{
    QString dotted = text.left(maximumVexaVersionLength);
    while (dotted.endsWith(u'-'))
        dotted.chop(1);

    const auto makeDot = [&dotted](qsizetype index, QChar letter) {
        if (dotted.size() > index && dotted.at(index) == letter)
            dotted[index] = u'.';
    };
    makeDot(4, u'r');
    makeDot(6, u'n');
    makeDot(9, u'p');
    return s3Version(dotted);
}

QString s3Version::toVexaVersion() const
{
    if (!isValid())
        return QString();

    QString text = u"%1r%2"_s.arg(major).arg(minor);
    if (third >= 0)
        text += u'n' + QString::number(third).rightJustified(2, u'0');
    if (fourth > 0)
        text += u'p' + QString::number(fourth).rightJustified(2, u'0');
    return text;
}

bool s3Version::isAtLeast2100(const QString &vexaVersion)
{
    return fromVexaVersion(vexaVersion) >= s3Version(2100, 0, -1, -1);
}

bool s3Version::isAtLeast2101r8n01(const QString &vexaVersion)
{
    return fromVexaVersion(vexaVersion) >= s3Version(2101, 8, 1, -1);
}

bool s3Version::isAtLeast2200(const QString &vexaVersion)
{
    return fromVexaVersion(vexaVersion) >= s3Version(2200, 0, -1, -1);
}

QList<int> s3Version::comparable() const
{
    QList<int> numbers{major, minor};
    if (third >= 0) {
        numbers.append(third);
        if (fourth >= 0)
            numbers.append(fourth);
    }
    return numbers;
}

std::strong_ordering s3Version::operator<=>(const s3Version &other) const
{
    const QList<int> mine = comparable();
    const QList<int> theirs = other.comparable();
    return std::lexicographical_compare_three_way(mine.begin(), mine.end(), theirs.begin(), theirs.end());
}

bool s3Version::operator==(const s3Version &other) const
{
    return comparable() == other.comparable();
}

QString s3ClientVersion()
{
    return u"5.14.0"_s;
}

QString s3ClientVersionBanner()
{
    if (storedBanner().isEmpty())
        s3SetClientVersionBanner(s3ClientVersion());
    return storedBanner();
}

void s3SetClientVersionBanner(const QString &version)
{
    storedBanner() =
        version.isEmpty() ? version : version.leftJustified(maximumVexaVersionLength, u'-') + u"=----------------2"_s;
}
