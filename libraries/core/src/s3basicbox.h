#pragma once

#include <QMessageBox>
#include <QStringList>

/// The one way in which the core speaks to the user in a box. Each of the static functions blocks until the box is
/// closed, if there is one: see show(). They are for the GUI thread, but for those that are fatal: these show a box of
/// the system's own (s3basicboxwin.h) and can be called from any thread.
class s3BasicBox : public QMessageBox
{
public:
    explicit s3BasicBox(QWidget *parent);
    s3BasicBox(Icon type, const QString &title, const QString &text, StandardButtons buttons, QWidget *parent);
    ~s3BasicBox() override;

    static int fatal(const QString &text);
    static int critical(const QString &text);
    static int warning(const QString &text);
    static int information(const QString &text);
    static int fatalChoice(const QString &text, StandardButtons buttons, StandardButton defaultButton);

    /// Shows a box and returns the StandardButton that closed it. An empty \a title stands for the product's own:
    /// "Vexa" without a dictionary, and the program's name with one that has no text for that. \a isFatal shows a box
    /// that needs neither Qt's widgets nor an event loop; its result is 0 if it couldn't be shown, as without a
    /// display, or if the answer isn't known. Where the protocol has a channel "error", a Critical box is written to it
    /// and isn't shown; the result is 0. Test flag 335 makes every box fatal, 336 none, so that one of another thread's
    /// mustn't be shown then; 334 traces.
    static int show(Icon type, const QString &title, const QString &text, StandardButtons buttons,
                    StandardButton defaultButton, bool isFatal);

    /// Set text and format; the lines stand between empty ones.
    void setPlainTextLines(const QStringList &lines);
    void setRichTextLines(const QStringList &lines);
    void setPlainTextLine(const QString &line);
    void setRichTextLine(const QString &line);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;

    /// Gives the label the width that a plain or rich text wants, within nine tenths of the screen. Qt would wrap it
    /// early, which makes a long message narrow and tall. A box in automatic format, as those of show(), is left alone.
    void updateTextLabelMinimumWidth();

    /// Null as long as the window has no screen.
    [[nodiscard]] QRect availableScreenGeometry() const;

    /// The rules behind the two. All widths in pixels; 0 stands for no minimum.
    [[nodiscard]] static int textLabelMinimumWidth(const QString &text, Qt::TextFormat format, const QFont &font,
                                                   int screenWidth);
    [[nodiscard]] static QString titleFor(const QString &translation);

private:
    Q_DISABLE_COPY_MOVE(s3BasicBox)

    void adaptToParent();
    [[nodiscard]] QLabel *textLabel() const;
};
