// language_box LETTER FILE: shows the box of a file that can't be opened, in a language, as the program would. For
// pictures; the dictionaries lie in the working directory and in the program's resources.

#include "s3basicbox.h"
#include "s3dictionaries.h"
#include "s3file.h"
#include "s3language.h"

#include <QApplication>

#include <cstdio>

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    QString error;
    if (argc != 3 || !openDictionaries(error) || !setLanguage(QString::fromLocal8Bit(argv[1]), QString())) {
        std::fprintf(stderr, "language_box LETTER FILE\n%s\n", qPrintable(error));
        return 1;
    }
    s3File file(QString::fromLocal8Bit(argv[2]));
    if (file.open(QIODevice::ReadOnly))
        return 1;
    s3BasicBox::critical(file.errorText(QFileDevice::OpenError));
    return 0;
}
