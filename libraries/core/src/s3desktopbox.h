#pragma once

#include <QByteArrayList>
#include <QString>

#include <optional>
#include <span>

/// A box of MessageBoxW's, taken apart for the programs with which desktops show boxes.
class s3DesktopBox
{
public:
    struct Button
    {
        int result;        ///< as MessageBoxW gives it
        const char *label; ///< English: in a damaged process no dictionary is asked
    };

    s3DesktopBox(const QString &title, const QString &text, quint32 flags);

    [[nodiscard]] const QString &title() const { return m_title; }
    /// Readable: without HTML.
    [[nodiscard]] const QString &wholeText() const { return m_wholeText; }
    /// Short enough for a screen and for the arguments of a program, too.
    [[nodiscard]] const QString &text() const { return m_text; }
    [[nodiscard]] quint32 icon() const;
    [[nodiscard]] bool isRightToLeft() const;
    /// In MessageBoxW's order, one to three.
    [[nodiscard]] std::span<const Button> buttons() const { return m_buttons; }
    [[nodiscard]] const Button &defaultButton() const { return m_buttons[m_defaultIndex]; }
    [[nodiscard]] bool isFirstTheDefault() const { return m_defaultIndex == 0; }
    /// The buttons with the default in front, for programs whose first button is the default.
    [[nodiscard]] const Button &slot(size_t index) const;
    /// The result of a box that is closed without a button.
    [[nodiscard]] int dismissed() const;

private:
    QString m_title;
    QString m_wholeText;
    QString m_text;
    quint32 m_flags;
    std::span<const Button> m_buttons;
    size_t m_defaultIndex;
};

/// One of those programs: what it is given, and what its end means.
struct s3DesktopTool
{
    /// How a run of the program has ended.
    struct End
    {
        int status = 0;
        QByteArray output;
        bool hasReadInput = false;
    };

    const char *name;
    bool needsX11;
    /// False if the program can't show the box with its default, or its end doesn't tell a person's answer from none.
    /// It is the last resort for such a box, with the first button as the default.
    bool (*fits)(const s3DesktopBox &box);
    QByteArrayList (*arguments)(const s3DesktopBox &box);
    /// For the standard input; empty if it reads none.
    QByteArray (*input)(const s3DesktopBox &box);
    /// Whether result() looks at the output.
    bool (*hasOutput)(const s3DesktopBox &box);
    /// MessageBoxW's result; nothing if the program has failed.
    std::optional<int> (*result)(const s3DesktopBox &box, const End &end);

    /// In the order in which they are tried.
    [[nodiscard]] static std::span<const s3DesktopTool> all();
    /// Assignments for the environment of each, which result() relies on.
    [[nodiscard]] static QByteArrayList environment();
};
