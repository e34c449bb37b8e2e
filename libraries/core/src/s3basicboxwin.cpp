#include "s3basicboxwin.h"

#include "s3language.h"
#include "s3trace.h"
#include "s3tracearg.h"

#include <QHash>
#include <QMetaEnum>
#include <QVariant>

using namespace Qt::Literals::StringLiterals;

namespace {

quint32 iconFlag(QMessageBox::Icon type)
{
    static const QHash<int, quint32> flags{
        {QMessageBox::Critical, s3BasicBoxWin::flagIconError},
        {QMessageBox::Warning, s3BasicBoxWin::flagIconWarning},
        {QMessageBox::Information, s3BasicBoxWin::flagIconInformation},
        {QMessageBox::Question, s3BasicBoxWin::flagIconQuestion},
    };
    return flags.value(type, 0);
}

quint32 buttonsFlag(QMessageBox::StandardButtons buttons)
{
    static const QHash<int, quint32> flags{
        {QMessageBox::Ok, s3BasicBoxWin::flagOk},
        {QMessageBox::Ok | QMessageBox::Cancel, s3BasicBoxWin::flagOkCancel},
        {QMessageBox::Yes | QMessageBox::No, s3BasicBoxWin::flagYesNo},
        {QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, s3BasicBoxWin::flagYesNoCancel},
    };
    return flags.value(buttons, s3BasicBoxWin::flagOk);
}

quint32 defaultFlag(quint32 nativeButtons, QMessageBox::StandardButtons buttons,
                    QMessageBox::StandardButton defaultButton)
{
    if (!(buttons & defaultButton))
        return 0;
    if (defaultButton == QMessageBox::No)
        return s3BasicBoxWin::flagDefaultButton2;
    if (defaultButton == QMessageBox::Cancel) {
        return nativeButtons == s3BasicBoxWin::flagOkCancel ? s3BasicBoxWin::flagDefaultButton2
                                                            : s3BasicBoxWin::flagDefaultButton3;
    }
    return 0;
}

// Qt 6.4 knows the enumeration as a set of flags only, and has no text for one of them; later ones have.
QVariant traceValue(QMessageBox::StandardButton button)
{
    [[maybe_unused]] static const bool isRegistered =
        QMetaType::registerConverter<QMessageBox::StandardButton, QString>([](QMessageBox::StandardButton value) {
            const QMetaObject &boxes = QMessageBox::staticMetaObject;
            const QMetaEnum names = boxes.enumerator(boxes.indexOfEnumerator("StandardButton"));
            return QString::fromLatin1(names.valueToKey(value));
        });
    return QVariant::fromValue(button);
}

} // namespace

QMessageBox::StandardButton s3BasicBoxWin::show(QMessageBox::Icon type, const QString &title, const QString &text,
                                                QMessageBox::StandardButtons buttons,
                                                QMessageBox::StandardButton defaultButton)
{
    return result2Button(messageBox(title, text, boxType(type, buttons, defaultButton)));
}

quint32 s3BasicBoxWin::boxType(QMessageBox::Icon type, QMessageBox::StandardButtons buttons,
                               QMessageBox::StandardButton defaultButton)
{
    const quint32 nativeButtons = buttonsFlag(buttons);
    quint32 flags = iconFlag(type) | nativeButtons | defaultFlag(nativeButtons, buttons, defaultButton) | flagTopmost;
    if (isRightToLeft())
        flags |= flagRightToLeft;
    S3_TRACE(334, u"s3BasicBoxWin::boxType()"_s + s3TraceArg(u"type"_s, flags));
    return flags;
}

QMessageBox::StandardButton s3BasicBoxWin::result2Button(int result)
{
    static const QHash<int, QMessageBox::StandardButton> buttons{
        {resultOk, QMessageBox::Ok},
        {resultCancel, QMessageBox::Cancel},
        {resultYes, QMessageBox::Yes},
        {resultNo, QMessageBox::No},
    };
    const QMessageBox::StandardButton button = buttons.value(result, QMessageBox::NoButton);
    S3_TRACE(334, u"s3BasicBoxWin::result2Button()"_s + s3TraceArg(u"button"_s, traceValue(button)));
    return button;
}
