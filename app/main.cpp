#include "TavrelMain.h"

int main(int argc, char** argv)
{
    return tavrelMain(argc, argv);
}
