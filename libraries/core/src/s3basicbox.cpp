#include "s3basicbox.h"

#include "s3dictionaries.h"

using namespace Qt::Literals::StringLiterals;

s3BasicBox::s3BasicBox(Icon type, const QString &title, const QString &text, StandardButtons buttons, QWidget *parent)
    : QMessageBox(type, title, text, buttons, parent, Qt::Dialog | Qt::MSWindowsFixedSizeDialogHint)
{
}

int s3BasicBox::critical(const QString &text)
{
    return show(Critical, QString(), text, Ok, NoButton);
}

int s3BasicBox::warning(const QString &text)
{
    return show(Warning, QString(), text, Ok, NoButton);
}

int s3BasicBox::information(const QString &text)
{
    return show(Information, QString(), text, Ok, NoButton);
}

int s3BasicBox::show(Icon type, const QString &title, const QString &text, StandardButtons buttons,
                     StandardButton defaultButton)
{
    s3BasicBox box(type, title.isEmpty() ? translate(u"Vexa"_s) : title, text, buttons, nullptr);
    box.setDefaultButton(defaultButton);
    return box.exec();
}
