#include "boxwatcher.h"

#include <QAbstractButton>
#include <QApplication>

#include <utility>

using namespace std::chrono_literals;

BoxWatcher::BoxWatcher(QMessageBox::StandardButton answer, Inspector inspect)
    : m_answer(answer)
    , m_inspect(std::move(inspect))
{
    connect(&m_timer, &QTimer::timeout, this, &BoxWatcher::closeBox);
    m_timer.start(10ms);
}

void BoxWatcher::closeBox()
{
    auto *const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    if (box == nullptr)
        return;
    m_boxes.append(
        {box->icon(), box->windowTitle(), box->text(), box->standardButtons(), box->parentWidget() != nullptr});
    if (m_inspect)
        m_inspect(*box);
    box->button(m_answer)->click();
}
