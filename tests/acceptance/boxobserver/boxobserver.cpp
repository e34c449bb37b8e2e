#include "boxobserver.h"

#include <QAbstractButton>
#include <QEvent>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMessageBox>
#include <QPushButton>
#include <QTextDocumentFragment>
#include <QTextStream>
#include <QWindow>

using namespace Qt::Literals::StringLiterals;

namespace {

QString iconName(QMessageBox::Icon icon)
{
    switch (icon) {
    case QMessageBox::Information:
        return u"information"_s;
    case QMessageBox::Warning:
        return u"warning"_s;
    case QMessageBox::Critical:
        return u"critical"_s;
    case QMessageBox::Question:
        return u"question"_s;
    case QMessageBox::NoIcon:
        break;
    }
    return u"none"_s;
}

/// "&Save && close" reads "Save & close" on the screen.
QString withoutMnemonic(const QString &text)
{
    QString result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text.at(i) == u'&' && ++i == text.size())
            break;
        result += text.at(i);
    }
    return result;
}

/// The button that Return presses: the one that was set, or else the one that the dialog has chosen itself.
QAbstractButton *defaultButton(const QMessageBox &box)
{
    if (QPushButton *const button = box.defaultButton())
        return button;
    const QList<QAbstractButton *> buttons = box.buttons();
    for (QAbstractButton *const button : buttons) {
        const auto *const pushButton = qobject_cast<QPushButton *>(button);
        if (pushButton != nullptr && pushButton->isDefault())
            return button;
    }
    return nullptr;
}

QString asPlainText(const QMessageBox &box)
{
    const bool rich =
        box.textFormat() == Qt::RichText || (box.textFormat() == Qt::AutoText && Qt::mightBeRichText(box.text()));
    return rich ? QTextDocumentFragment::fromHtml(box.text()).toPlainText() : box.text();
}

} // namespace

BoxObserver::BoxObserver(const QString &reportPath, bool closeBoxes, QObject *parent)
    : QObject(parent)
    , m_report(reportPath)
    , m_closeBoxes(closeBoxes)
{
    if (!reportPath.isEmpty() && !m_report.open(QIODevice::WriteOnly | QIODevice::Append))
        QTextStream(stderr) << "boxobserver: " << reportPath << ": " << m_report.errorString() << Qt::endl;
}

bool BoxObserver::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show) {
        auto *const box = qobject_cast<QMessageBox *>(watched);
        if (box != nullptr && box->isWindow() && box->windowHandle() != nullptr)
            m_shown.insert(box->windowHandle(), box);
    } else if (event->type() == QEvent::Expose) {
        // Only now is there a window on the screen that takes keys.
        auto *const window = qobject_cast<QWindow *>(watched);
        if (window != nullptr && window->isExposed()) {
            if (const QPointer<QMessageBox> box = m_shown.take(window))
                boxExposed(*box);
        }
    }
    return QObject::eventFilter(watched, event);
}

void BoxObserver::boxExposed(QMessageBox &box)
{
    if (m_report.isOpen())
        report(box);
    if (!m_closeBoxes)
        return;

    QTextStream(stderr) << asPlainText(box) << Qt::endl;
    // The box isn't to end in the middle of its own expose event.
    QMetaObject::invokeMethod(
        &box,
        [&box] {
            if (QAbstractButton *const button = defaultButton(box))
                button->click();
            else
                box.accept();
        },
        Qt::QueuedConnection);
}

void BoxObserver::report(QMessageBox &box)
{
    QJsonArray buttons;
    const QList<QAbstractButton *> all = box.buttons();
    for (const QAbstractButton *const button : all)
        buttons.append(withoutMnemonic(button->text()));
    const QAbstractButton *const chosen = defaultButton(box);
    const QJsonObject line{
        {u"icon"_s, iconName(box.icon())},
        {u"title"_s, box.windowTitle()},
        {u"text"_s, box.text()},
        {u"buttons"_s, buttons},
        {u"defaultButton"_s, chosen != nullptr ? QJsonValue(withoutMnemonic(chosen->text())) : QJsonValue()},
        {u"window"_s, qint64(box.winId())},
    };
    m_report.write(QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n');
    m_report.flush();
}
