#pragma once

#include <QMessageBox>

/// The one way in which the core speaks to the user in a box. GUI thread; each call blocks until the box is closed.
class s3BasicBox : public QMessageBox
{
public:
    s3BasicBox(Icon type, const QString &title, const QString &text, StandardButtons buttons, QWidget *parent);

    static int critical(const QString &text);
    static int warning(const QString &text);
    static int information(const QString &text);

    /// Shows a box and returns the button that closed it. An empty \a title stands for the product's own.
    static int show(Icon type, const QString &title, const QString &text, StandardButtons buttons,
                    StandardButton defaultButton);
};
