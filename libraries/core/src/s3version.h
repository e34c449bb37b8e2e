#pragma once

#include <QList>
#include <QString>

#include <compare>

/// A comparable version of up to four numbers, such as 16.0.13231.20126 or the ERP's own 2016r4n07p03.
/// A plain value; every function may be called from any thread.
struct s3Version
{
    int major = 0;
    int minor = 0;
    int third = -1;  ///< -1: there is none
    int fourth = -1; ///< -1: there is none

    s3Version() = default;

    /// A negative \a thirdNumber forces `fourth` to -1.
    s3Version(int majorNumber, int minorNumber, int thirdNumber, int fourthNumber);

    /// Reads dotted text. A part that is no number, or is empty, counts as 0 and keeps its place; what stands behind
    /// the fourth part is ignored. Never fails.
    explicit s3Version(const QString &dottedText);

    /// Whether the version compares at or above 0.0.0: so 0.0 isn't valid, 0.0.0 and 0.1 are.
    [[nodiscard]] bool isValid() const;

    /// The comparable numbers joined with "."; empty for an invalid version.
    [[nodiscard]] QString toString() const;

    /// Reads the ERP's notation, in which the letters r, n and p have fixed places; "-" at the end is padding.
    [[nodiscard]] static s3Version fromVexaVersion(const QString &text);

    /// The ERP's notation; a null text for an invalid version. A fourth number of 0 isn't written, a third of 0 is.
    [[nodiscard]] QString toVexaVersion() const;

    [[nodiscard]] static bool isAtLeast2100(const QString &vexaVersion);
    [[nodiscard]] static bool isAtLeast2101r8n01(const QString &vexaVersion);
    [[nodiscard]] static bool isAtLeast2200(const QString &vexaVersion);

    /// Lexicographic over the numbers that are there: a version that is the beginning of another is the smaller one.
    [[nodiscard]] std::strong_ordering operator<=>(const s3Version &other) const;
    [[nodiscard]] bool operator==(const s3Version &other) const;

private:
    [[nodiscard]] QList<int> comparable() const;
};

/// The version of the client family, compiled in.
[[nodiscard]] QString s3ClientVersion();

/// The client version in the padded form that the server's protocol uses. Main thread.
[[nodiscard]] QString s3ClientVersionBanner();

/// Sets the banner from a version text; an empty text makes the next read start from s3ClientVersion() again. Main
/// thread.
void s3SetClientVersionBanner(const QString &version);
