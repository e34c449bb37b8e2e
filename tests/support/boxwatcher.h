#pragma once

#include <QMessageBox>
#include <QObject>
#include <QTimer>

#include <functional>

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
    using Inspector = std::function<void(QMessageBox &box)>;

    /// Each box is closed with \a answer, after \a inspect has seen it.
    explicit BoxWatcher(QMessageBox::StandardButton answer = QMessageBox::Ok, Inspector inspect = {});

    [[nodiscard]] const QList<Box> &boxes() const { return m_boxes; }

private:
    void closeBox();

    QMessageBox::StandardButton m_answer;
    Inspector m_inspect;
    QTimer m_timer;
    QList<Box> m_boxes;
};
