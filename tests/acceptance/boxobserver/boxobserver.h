#pragma once

#include <QFile>
#include <QHash>
#include <QObject>
#include <QPointer>

class QMessageBox;
class QWindow;

/// Tells what message boxes a program shows. A box is a window for a person: without this, a test sees no more of it
/// than that the program doesn't end, and a machine without a display can't get past it.
///
/// It is an event filter of the application and changes nothing unless it is asked to close the boxes.
class BoxObserver : public QObject
{
    Q_OBJECT

public:
    /// With \a reportPath one JSON object a line is appended to that file for each box; the file is made at once, which
    /// tells that the observer is there. With \a closeBoxes the text of each box goes to the standard error output, and
    /// its default button is pressed.
    BoxObserver(const QString &reportPath, bool closeBoxes, QObject *parent = nullptr);

    [[nodiscard]] bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void boxExposed(QMessageBox &box);
    void report(QMessageBox &box);

    QFile m_report;
    bool m_closeBoxes = false;
    QHash<QWindow *, QPointer<QMessageBox>> m_shown; // on their way to the screen
};
