#include "TavrelMain.h"

#include <QApplication>

int tavrelMain(int argc, char** argv)
{
    QApplication app(argc, argv);
    return 0;
}
