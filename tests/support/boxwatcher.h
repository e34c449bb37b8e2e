#pragma once

#include <QMessageBox>
#include <QObject>
#include <QTimer>

/// Closes the message boxes that a call under test shows, and remembers what they showed.
class BoxWatcher : public QObject
{
    Q_OBJECT

public:
    struct Box
    {
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        QString title;
        QString text;
        QMessageBox::StandardButtons buttons;
        bool hasParent = false;
    };

    BoxWatcher();

    [[nodiscard]] const QList<Box> &boxes() const { return m_boxes; }

private:
    void closeBox();

    QTimer m_timer;
    QList<Box> m_boxes;
};
