// The yardstick of a whole run: what any Qt program with widgets costs before it does anything.

#include <QApplication>

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    return 0;
}
